// Puts the simulator behind the server half of the board's IPC library.
#pragma once

#include <memory>
#include <string>

#include "access.h"
#include "board/service.h"
#include "simulator.h"

namespace ponsim
{

class Service
{
public:
    // Serves on the sockets of `directory`, which get the permission bits `mode`, from now on until destroyed.
    // Simulator and access rules must outlive it.
    Service(Simulator &simulator, const Access &access, const std::string &directory, uint32_t mode);

    // False when the sockets could not be opened; the log says why.
    bool serving() const { return service != nullptr; }

private:
    struct Stop {
        void operator()(board_service *service) const { board_service_stop(service); }
    };

    static void handle(void *context, const board_request *request, board_answer *answer);
    static const char *authorize(void *context, const board_request *request);

    Simulator &simulator;
    const Access &access;
    std::string refusal; // the text that the last refusal was reported with
    std::unique_ptr<board_service, Stop> service;
};

} // namespace ponsim
