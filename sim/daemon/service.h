// A Service puts the simulator behind the server half of the board's IPC library.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "board/service.h"
#include "daemon/access.h"
#include "daemon/audit.h"
#include "daemon/clock.h"
#include "daemon/journal.h"
#include "daemon/timekeeper.h"
#include "daemon/turns.h"
#include "engine/simulator.h"

namespace ponsim
{

class Service : private Timekeeper::Sleeper
{
public:
    // Serves on the sockets of `directory`, which get the permission bits `mode`, from now on until destroyed. Lets
    // happen what is due by the clock, also without a request. All that is passed must outlive it.
    Service(Simulator &simulator, Clock &clock, Timekeeper &timekeeper, const Access &access,
            const std::string &directory, uint32_t mode, Journal &journal, Audit &audit);
    ~Service() { stop(); }

    // Returns false when the sockets could not be opened. The log says why.
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
    // Records a request that is refused for a reason, and returns the reason, which lives as long as the thread handles
    // the request.
    const char *refuse(uint32_t module, const board_request &request, std::string reason);

    void wake() override;
    // Answers a message that only reads, beside others that do. Returns null when it must have a turn of its own.
    SharedReply look(const Message &message);
    // Handles a message, and answers it as its faults say. Returns for people what came of it.
    std::string answer(const Message &message, board_answer *answer, Loading *loading);
    // Lets happen what is due by the clock, at most so much of it. What has happened and cannot be stored is kept
    // before the next change: requests that read are answered meanwhile. Returns whether everything is stored.
    bool follow_clock(uint32_t happenings = UINT32_MAX);
    // Reads the configuration that the message asks to load, beside other requests. Returns none for other messages.
    std::optional<Loading> load(const Message &message);
    // Lets model time pass. Throws ControlError when the service stops meanwhile, and StoreError.
    void let_pass(ModelTime length);
    // Has the timekeeper wake the service when something is due again.
    void await_due();

    Simulator &simulator;
    Clock &clock;
    Timekeeper &timekeeper;
    const Access &access;
    Journal &journal;
    Audit &audit;
    Turns turns;      // held by whoever uses simulator and clock, and shared by those who only read
    Turns step_turns; // held by a step from beginning to end; others wait before they take a turn above
    std::atomic<bool> stopping = false;
    bool unstored = false; // the log says that the state cannot be stored
    std::unique_ptr<board_service, Stop> service;
    std::unique_ptr<board_service, Stop> control;
};

} // namespace ponsim
