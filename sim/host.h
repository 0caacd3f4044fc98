// An OLT that is served: what it keeps, its simulator, its time, and its service.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "access.h"
#include "clock.h"
#include "service.h"
#include "simulator.h"
#include "store/store.h"

namespace ponsim
{

struct HostOptions {
    std::string socket_dir;
    uint32_t socket_mode = 0660;
    std::string state = {}; // its file; empty: in memory only
    bool fresh = false;     // what is in the file is discarded
    WantedSettings wanted = {};
    std::shared_ptr<const OltScenario> scenario = {}; // null: that of the state, or none
    double speed = 1;
    std::string record = {}; // the file that exchanges are appended to; empty: none
};

class Host
{
public:
    // Serves from now on until stopped. The access rules must outlive it. Throws StoreError, and std::runtime_error:
    // the sockets could not be opened.
    Host(const HostOptions &options, const Access &access);
    Host(const Host &) = delete;

    const Simulator &simulator() const { return model; }

    // Serves no more, and keeps the time. Throws StoreError.
    void stop();

private:
    Store store;
    Simulator model;
    Clock clock;
    Service service;
};

} // namespace ponsim
