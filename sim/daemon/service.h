// A Service puts the simulator behind the server half of the board's IPC library.
#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "board/service.h"
#include "daemon/access.h"
#include "daemon/clock.h"
#include "daemon/files.h"
#include "daemon/timekeeper.h"
#include "daemon/turns.h"
#include "engine/simulator.h"

namespace ponsim
{

class Service : private Timekeeper::Sleeper
{
public:
    // Serves on the sockets of `directory`, which get the permission bits `mode`, from now on until destroyed. Lets
    // happen what is due by the clock, also without a request. Simulator, clock, timekeeper and access rules must
    // outlive it. Each exchange, except those that control the simulation, is appended to the file `record`, unless
    // that name is empty.
    Service(Simulator &simulator, Clock &clock, Timekeeper &timekeeper, const Access &access,
            const std::string &directory, uint32_t mode, const std::string &record);
    ~Service() { stop(); }

    // Returns false when the sockets or the record could not be opened. The log says why.
    bool serving() const { return service && control; }

    // Ends the handling of requests, and what happens by itself. A step ends where it is.
    void stop();
    // Writes to the log what happened. Do not call it while requests are handled.
    void write_log();

private:
    struct Stop {
        void operator()(board_service *service) const { board_service_stop(service); }
    };

    static void handle(void *context, const board_request *request, board_answer *answer);
    static void handle_control(void *context, const board_request *request, board_answer *answer);
    static const char *authorize_control(void *context, const board_request *request);
    static const char *authorize(void *context, const board_request *request);

    void wake() override;
    // Answers a message that only reads, beside others that do. Returns null when it must have a turn of its own.
    SharedReply look(const Message &message);
    // Carries out a line of ponsim ctl. Throws as control() does.
    std::string carry_out(std::string_view line);
    std::string carry_out_step(ModelTime length);
    // Has the timekeeper wake the service when something is due again.
    void await_due();

    Simulator &simulator;
    Clock &clock;
    Timekeeper &timekeeper;
    const Access &access;
    ResultFiles files;
    Turns turns;      // held by whoever uses simulator, clock and files, and shared by those who only read
    Turns step_turns; // held by a step from beginning to end; others wait before they take a turn above
    std::atomic<bool> stopping = false;
    std::unique_ptr<board_service, Stop> service;
    std::unique_ptr<board_service, Stop> control;
};

} // namespace ponsim
