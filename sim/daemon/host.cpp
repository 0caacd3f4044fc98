#include "daemon/host.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include "storage/private.h"

namespace ponsim
{
namespace
{

// Makes the folder in the same way as the board's library does. Clients of other users must reach the sockets in it, as
// far as the sockets' mode lets them.
void make_socket_dir(const std::string &directory)
{
    if (mkdir(directory.c_str(), 0755) && errno != EEXIST)
        throw std::runtime_error("cannot make the sockets' folder " + directory + ": " + std::strerror(errno));
}

} // namespace

std::vector<HostOptions> host_each(const HostOptions &together, Scenario scenario)
{
    const std::filesystem::path socket_dir = together.socket_dir, state = together.state;
    const bool kept = !state.empty();
    const bool in_folder = scenario.olts.size() > 1 || (kept && std::filesystem::is_directory(state));

    std::vector<HostOptions> hosts;
    for (OltScenario &olt : scenario.olts) {
        HostOptions &host = hosts.emplace_back(together);
        host.name = olt.name;
        host.scenario = std::make_shared<const OltScenario>(std::move(olt));
    }
    if (in_folder && hosts.empty()) {
        for (const auto &entry : std::filesystem::directory_iterator(state))
            if (entry.path().extension() == ".db") hosts.emplace_back(together).name = entry.path().stem().string();
        std::ranges::sort(hosts, {}, &HostOptions::name);
        if (hosts.empty()) throw StoreError(state.string() + ": a folder without NAME.db; add --scenario FILE");
    }
    if (hosts.empty()) hosts.push_back(together);

    if (kept) {
        const std::filesystem::path folder = in_folder ? state : state.parent_path();
        storage::make_private_folders(folder);
    }
    make_socket_dir(socket_dir);
    if (in_folder)
        for (HostOptions &host : hosts) {
            host.socket_dir = socket_dir / host.name;
            if (kept) host.state = state / (host.name + ".db");
            if (!together.record.empty()) host.record = together.record + "." + host.name;
            if (!together.audit.empty()) host.audit = together.audit + "." + host.name;
        }
    return hosts;
}

Host::Host(const HostOptions &options, const Access &access, Timekeeper &timekeeper)
    : store(options.state, options.fresh),
      model(store, options.wanted, options.scenario),
      clock(model.olt().now(), options.speed),
      journal(options.record, store, model.olt().now()),
      audit(options.audit)
{
    model.use_upgrade_folder(options.upgrade_folder.empty() ? options.socket_dir + "/upgrade" : options.upgrade_folder);
    service.emplace(model, clock, timekeeper, access, options.socket_dir, options.socket_mode, journal, audit);
    if (!service->serving()) throw std::runtime_error("cannot serve on " + options.socket_dir);
}

void Host::stop()
{
    service->stop();
    model.advance(clock.now());
    model.keep_time();
    service->write_log();
}

} // namespace ponsim
