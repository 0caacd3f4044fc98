// A Host is an OLT that is served: what it keeps, its simulator, its time, and its service.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
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
    std::string name = {}; // the OLT's name in a scenario or folder; may be empty
    std::string socket_dir = {};
    uint32_t socket_mode = 0660;
    std::string state = {}; // file of the state; empty: in memory only
    bool fresh = false;     // discard what is in the file
    WantedSettings wanted = {};
    std::shared_ptr<const OltScenario> scenario = {}; // null: that of the state, or none
    double speed = 1;
    std::string upgrade_folder = {}; // of files of upgrade types; empty: "upgrade" in the folder of sockets
    std::string record = {};         // the file to which exchanges are appended; empty: none
    std::string audit = {};          // the file that says who changed what; empty: none
};

// Returns the options with which each of a scenario's OLTs is served. Without OLTs in the scenario these are the OLTs
// of the state's folder, or the one that `together` describes. When there are several, or their state is in a folder,
// sockets and states are named after the OLTs in the folders of `together`. Makes the folders. Throws
// std::runtime_error when they cannot be made, and StoreError.
std::vector<HostOptions> host_each(const HostOptions &together, Scenario scenario);

class Host
{
public:
    // Serves from now on until it is stopped. Access rules and timekeeper must outlive it. Throws StoreError, and
    // std::runtime_error when the sockets could not be opened.
    Host(const HostOptions &options, const Access &access, Timekeeper &timekeeper);
    Host(const Host &) = delete;

    const Simulator &simulator() const { return model; }

    // Stops serving, and keeps the time. Throws StoreError.
    void stop();

private:
    Store store;
    Simulator model;
    Clock clock;
    Journal journal;
    Audit audit;
    std::optional<Service> service; // serves when all else is there
};

} // namespace ponsim
