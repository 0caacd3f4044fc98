// This file has the functions of bsp_testing/simulator.h.
#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <unistd.h>

#include "board/service.h"
#include "board/util.h"
#include "bsp_testing/simulator.h"
#include "daemon/access.h"
#include "daemon/control_client.h"
#include "daemon/host.h"
#include "embedded/child.h"
#include "embedded/private_folder.h"
#include "scenario/scenario.h"
#include "storage/private.h"

namespace
{

using namespace ponsim;

constexpr uint32_t socket_mode = 0600; // the sockets are for the test's own user only

// Sets the folder that the calling thread's library uses, until the end of the scope. Its connections end before and
// after.
class ThreadDirectory
{
public:
    explicit ThreadDirectory(const char *directory) : before(board_ipc_use_thread_directory(directory)) {}
    ~ThreadDirectory() { board_ipc_use_thread_directory(before); }
    ThreadDirectory(const ThreadDirectory &) = delete;

private:
    const char *before;
};

// Returns no number for 0, which leaves an option open. Where `none` is allowed, BSP_SIMULATOR_NONE stands for the
// number 0.
std::optional<uint32_t> wanted(const char *name, uint32_t value, uint32_t greatest, bool none)
{
    if (value == 0) return std::nullopt;
    if (none && value == BSP_SIMULATOR_NONE) return 0;
    if (value > greatest)
        throw std::runtime_error(std::string(name) + ": expected at most " + std::to_string(greatest) + ", not " +
                                 std::to_string(value));
    return value;
}

WantedSettings wanted_settings(const bsp_simulator_options &options)
{
    WantedSettings settings;
    if (options.seed) settings.seed = options.seed;
    settings.ports = wanted("ports", options.ports, max_ports, false);
    settings.arrivals = wanted("arrivals", options.arrivals, onus_per_port, true);
    settings.silent = wanted("silent", options.silent, 100, true);
    return settings;
}

Scenario scenario_of(const bsp_simulator_options &options)
{
    if (!options.scenario && !options.scenario_file) return {};
    if (options.scenario && options.scenario_file)
        throw std::runtime_error("scenario and scenario_file are both set; leave one null");
    if (options.seed || options.ports || options.arrivals || options.silent)
        throw std::runtime_error("seed, ports, arrivals and silent are the scenario's; leave them 0");
    return options.scenario ? read_scenario(options.scenario, "scenario") : read_scenario_file(options.scenario_file);
}

void put(const std::string &text, char *to, size_t size)
{
    if (to) snprintf(to, size, "%s", text.c_str());
}

std::string seconds(uint64_t milliseconds)
{
    char text[40];
    snprintf(text, sizeof text, "%" PRIu64 ".%03u", milliseconds / 1000, static_cast<unsigned>(milliseconds % 1000));
    return text;
}

} // namespace

struct bsp_simulator {
    // The constructor does not serve yet.
    explicit bsp_simulator(const bsp_simulator_options &options);
    ~bsp_simulator();

    void serve();
    void spawn(const bsp_simulator_options &options, const char *program);

    const std::string &first_directory() const { return olts[0].socket_dir; }
    // Returns null when there is no such OLT.
    const std::string *directory(const char *olt) const;
    std::string control(const char *olt, const std::string &line) const;
    void step(const char *olt, uint64_t milliseconds) const;
    int64_t now(const char *olt) const;

    const pid_t owner = getpid();

private:
    const std::string &folder();

    std::unique_ptr<PrivateFolder> own;
    HostOptions together;
    std::vector<HostOptions> olts;
    Access access;
    std::unique_ptr<Timekeeper> timekeeper;   // when it serves in this process
    std::vector<std::unique_ptr<Host>> hosts; // when it serves in this process
    std::unique_ptr<Child> child;             // when it serves in a child process
};

bsp_simulator::bsp_simulator(const bsp_simulator_options &options)
{
    sweep_private_folders();
    if (!(options.speed >= 0 && options.speed <= 1e6)) throw std::runtime_error("speed: expected 0 to 1000000");
    Scenario scenario = scenario_of(options);
    together.wanted = wanted_settings(options);
    together.speed = options.speed;
    together.socket_mode = socket_mode;
    if (options.state) together.state = options.state;
    if (options.record) together.record = options.record;
    together.socket_dir = options.socket_dir ? options.socket_dir : folder();
    olts = host_each(together, std::move(scenario));
}

bsp_simulator::~bsp_simulator()
{
    for (const std::unique_ptr<Host> &host : hosts)
        try {
            host->stop();
        } catch (const std::exception &error) {
            userlog_err("bsp_simulator_stop", __LINE__, "%s", error.what());
        }
    child.reset();
    const ThreadDirectory ends_connections(nullptr);
}

const std::string &bsp_simulator::folder()
{
    if (!own) own = std::make_unique<PrivateFolder>();
    return own->path();
}

void bsp_simulator::serve()
{
    timekeeper = std::make_unique<Timekeeper>();
    for (const HostOptions &olt : olts)
        hosts.push_back(std::make_unique<Host>(olt, access, *timekeeper));
}

void bsp_simulator::spawn(const bsp_simulator_options &options, const char *program)
{
    char mode[8], speed[32];
    snprintf(mode, sizeof mode, "%o", socket_mode);
    snprintf(speed, sizeof speed, "%.17g", together.speed);
    std::vector<std::string> words = {program ? program : "ponsim",
                                      "--socket-dir",
                                      together.socket_dir,
                                      "--socket-mode",
                                      mode,
                                      "--speed",
                                      speed,
                                      "--state",
                                      together.state.empty() ? "none" : together.state};
    const auto add = [&](const char *option, const std::string &value) {
        words.push_back(option);
        words.push_back(value);
    };
    if (options.record) add("--record", options.record);
    if (options.scenario_file) add("--scenario", options.scenario_file);
    if (options.scenario) {
        const std::string file = folder() + "/scenario.toml";
        storage::make_private_file(file);
        std::ofstream out(file, std::ios::binary);
        if (!(out << options.scenario).flush()) throw std::runtime_error(file + ": cannot be written");
        add("--scenario", file);
    }
    const WantedSettings &settings = together.wanted;
    if (settings.seed) add("--seed", std::to_string(*settings.seed));
    if (settings.ports) add("--ports", std::to_string(*settings.ports));
    if (settings.arrivals) add("--arrivals", std::to_string(*settings.arrivals));
    if (settings.silent) add("--silent", std::to_string(*settings.silent));
    child = std::make_unique<Child>(std::move(words), own ? own->lock() : -1);
}

const std::string *bsp_simulator::directory(const char *olt) const
{
    if (!olt) return olts.size() == 1 ? &olts[0].socket_dir : nullptr;
    const auto found = std::ranges::find(olts, olt, &HostOptions::name);
    return found == olts.end() ? nullptr : &found->socket_dir;
}

std::string bsp_simulator::control(const char *olt, const std::string &line) const
{
    const std::string *const found = directory(olt);
    if (!found && olt) throw std::runtime_error(std::string(olt) + ": there is no OLT of this name");
    if (!found) throw std::runtime_error("there are several OLTs; name one");
    const ThreadDirectory there(found->c_str());
    try {
        return send_control(line);
    } catch (const std::exception &) {
        const std::string end = child ? child->end() : std::string();
        if (end.empty()) throw;
        throw std::runtime_error("ponsim runs no more: " + end);
    }
}

void bsp_simulator::step(const char *olt, uint64_t milliseconds) const
{
    const std::string line = "step " + seconds(milliseconds);
    if (olt) {
        control(olt, line);
        return;
    }
    for (const HostOptions &each : olts)
        control(olts.size() == 1 ? nullptr : each.name.c_str(), line);
}

int64_t bsp_simulator::now(const char *olt) const
{
    return static_cast<int64_t>(time_told(control(olt, "now")));
}

namespace
{

template <class Serve>
bsp_simulator *start(const bsp_simulator_options *options, char *error, size_t error_size, Serve serve) noexcept
{
    try {
        const bsp_simulator_options standard{};
        const bsp_simulator_options &chosen = options ? *options : standard;
        auto simulator = std::make_unique<bsp_simulator>(chosen);
        serve(*simulator, chosen);
        board_ipc_use_directory(simulator->first_directory().c_str());
        return simulator.release();
    } catch (const std::exception &failure) {
        put(failure.what(), error, error_size);
        return nullptr;
    }
}

} // namespace

bsp_simulator *bsp_simulator_start(const bsp_simulator_options *options, char *error, size_t error_size)
{
    return start(options, error, error_size,
                 [](bsp_simulator &simulator, const bsp_simulator_options &) { simulator.serve(); });
}

bsp_simulator *bsp_simulator_spawn(const bsp_simulator_options *options, const char *program, char *error,
                                   size_t error_size)
{
    return start(options, error, error_size, [&](bsp_simulator &simulator, const bsp_simulator_options &chosen) {
        simulator.spawn(chosen, program);
    });
}

void bsp_simulator_stop(bsp_simulator *simulator)
{
    if (simulator && simulator->owner == getpid()) delete simulator;
}

int bsp_simulator_control(bsp_simulator *simulator, const char *olt, const char *line, char *said, size_t size)
{
    try {
        put(simulator->control(olt, line), said, size);
        return 0;
    } catch (const std::exception &error) {
        put(error.what(), said, size);
        return -1;
    }
}

int bsp_simulator_step(bsp_simulator *simulator, const char *olt, uint64_t milliseconds)
{
    try {
        simulator->step(olt, milliseconds);
        return 0;
    } catch (const std::exception &error) {
        userlog_err(__func__, __LINE__, "%s", error.what());
        return -1;
    }
}

int64_t bsp_simulator_now(bsp_simulator *simulator, const char *olt)
{
    try {
        return simulator->now(olt);
    } catch (const std::exception &error) {
        userlog_err(__func__, __LINE__, "%s", error.what());
        return -1;
    }
}

const char *bsp_simulator_directory(const bsp_simulator *simulator, const char *olt)
{
    const std::string *const found = simulator->directory(olt);
    return found ? found->c_str() : nullptr;
}
