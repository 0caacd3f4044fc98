// A Service puts the simulator behind the server half of the board's IPC library.
#pragma once

#include <memory>
#include <mutex>
#include <string>

#include "board/service.h"
#include "daemon/access.h"
#include "daemon/clock.h"
#include "daemon/files.h"
#include "engine/simulator.h"

namespace ponsim
{

class Service
{
public:
    // Serves on the sockets of `directory`, which get the permission bits `mode`, from now on until destroyed.
    // Simulator, clock and access rules must outlive it. Each exchange, except those that control the simulation, is
    // appended to the file `record`, unless that name is empty.
    Service(Simulator &simulator, Clock &clock, const Access &access, const std::string &directory, uint32_t mode,
            const std::string &record);

    // Returns false when the sockets or the record could not be opened. The log says why.
    bool serving() const { return service && control; }

    // Ends the handling of requests.
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

    Simulator &simulator;
    Clock &clock;
    const Access &access;
    ResultFiles files;
    std::mutex turn;     // held by one of the two services, each of which handles one request at a time
    std::string refusal; // the text of the last refusal that was reported
    std::string control_refusal;
    std::unique_ptr<board_service, Stop> service;
    std::unique_ptr<board_service, Stop> control;
};

} // namespace ponsim
