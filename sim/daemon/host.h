// An OLT that is served: what it keeps, its simulator, its time, and its service.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "daemon/access.h"
#include "daemon/clock.h"
#include "daemon/service.h"
#include "engine/simulator.h"
#include "store/store.h"

namespace ponsim
{

struct HostOptions {
    std::string name = {}; // that it has in a scenario or folder; may be empty
    std::string socket_dir = {};
    uint32_t socket_mode = 0660;
    std::string state = {}; // its file; empty: in memory only
    bool fresh = false;     // what is in the file is discarded
    WantedSettings wanted = {};
    std::shared_ptr<const OltScenario> scenario = {}; // null: that of the state, or none
    double speed = 1;
    std::string record = {}; // the file that exchanges are appended to; empty: none
};

// What each of a scenario's OLTs is served with; without OLTs: those of the state's folder, or the one that `together`
// describes. Several, and those whose state is in a folder, have sockets and states that are named after them in the
// folders of `together`. Makes the folders. Throws std::runtime_error: they cannot be made, and StoreError.
std::vector<HostOptions> host_each(const HostOptions &together, Scenario scenario);

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
