// Puts the simulator behind the server half of the board's IPC library.
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
    // Simulator, clock and access rules must outlive it. Each exchange but those that control the simulation is
    // appended to the file `record`, unless that is empty.
    Service(Simulator &simulator, Clock &clock, const Access &access, const std::string &directory, uint32_t mode,
            const std::string &record);

    // False when the sockets or the record could not be opened; the log says why.
    bool serving() const { return service && control; }

    // Handles no more requests.
    void stop();
    // Tells the log what happened. Not while requests are handled.
    void tell();

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
    std::mutex turn;     // of the two services, each of which calls one at a time
    std::string refusal; // the text that the last refusal was reported with
    std::string control_refusal;
    std::unique_ptr<board_service, Stop> service;
    std::unique_ptr<board_service, Stop> control;
};

} // namespace ponsim
