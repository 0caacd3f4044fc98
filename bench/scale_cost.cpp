// This benchmark measures the simulator at scale: how long ONUs take from power-up to registration when the clock runs
// free, how much memory each of 10,240 ONUs takes, and how long requests take on a small and on a large OLT.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "board/datastore.h"
#include "bsp_pon.h"
#include "generated/service_words.h"
#include "olts.h"

namespace
{

using Clock = std::chrono::steady_clock;

size_t registered(const ponsim::Olt &olt)
{
    size_t count = 0;
    for (const ponsim::PonPort &port : olt.ports())
        for (const std::optional<ponsim::Binding> &binding : port.bindings)
            count += binding && port.online(*binding);
    return count;
}

void measure_registration(int ports, int onus)
{
    const auto scenario = std::make_shared<const ponsim::OltScenario>(scenario_of(1, ports, onus, "cold").olts.front());
    std::vector<double> seconds;
    double model_seconds = 0;
    for (int round = 0; round < 5; ++round) {
        const Clock::time_point start = Clock::now();
        ponsim::Store store({}, false);
        ponsim::Simulator simulator(store, {}, scenario);
        while (!simulator.olt().registrations().empty())
            simulator.advance(simulator.olt().registrations().begin()->at);
        seconds.push_back(std::chrono::duration<double>(Clock::now() - start).count());
        model_seconds = static_cast<double>(simulator.olt().now()) / ponsim::ms_per_second;
        if (registered(simulator.olt()) != static_cast<size_t>(ports * onus)) {
            std::fprintf(stderr, "not all ONUs have registered\n");
            std::exit(1);
        }
    }
    std::printf("%6d ONUs from power-up to registered, clock running free: %7.3f s for %.1f s of model time\n",
                ports * onus, median(seconds), model_seconds);
}

// Returns the memory of a process in KiB.
size_t memory_of(pid_t process)
{
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmRSS:")) return std::stoul(line.substr(6));
    return 0;
}

struct Kind {
    const char *name;
    int samples;
    uint32_t (*call)();
};

uint32_t look_up()
{
    bsp_pon_msg record{};
    record.cmd = BSP_CMD_WHITELIST_GET;
    record.pon_port = 1;
    record.onu_id = 5;
    return bsp_pon_exec_get(&record);
}

uint32_t view(uint32_t port)
{
    db_handle *db = nullptr;
    const uint32_t status = bsp_pon_exec_get_json_(BSP_CMD_VIEW_ONU_INFO_WEB, port, 0, &db);
    db_free(db);
    return status;
}

uint32_t statistics()
{
    uint8_t block[8192];
    return bsp_debug_8022_pon_stats(1, block);
}

uint32_t ask_onu()
{
    uint8_t mode;
    return bsp_pon_onu_ctc_get_mc_switch_remote(1, 5, &mode);
}

uint32_t ask_by_datagram()
{
    char nothing[] = "";
    uint8_t block[4092];
    return bsp_profile_exec_get_(BSP_CMD_PROFILE_LINE_LIST, nothing, 0, block, sizeof block);
}

constexpr Kind kinds[] = {
    {"set: describe an ONU", 20000, [] { return bsp_pon_onu_description(1, 5, "description"); }},
    {"get: look an ONU up", 20000, look_up},
    {"get: counters of a port", 20000, statistics},
    {"get: ask an ONU over OAM", 20000, ask_onu},
    {"datagram: list profiles", 20000, ask_by_datagram},
    {"view of a port", 2000, [] { return view(1); }},
    {"view of the OLT", 200, [] { return view(0); }},
};

// Measures requests in a process of its own, because the library looks for its service only once.
void measure_requests(const std::string &folder, int onus)
{
    std::fflush(stdout);
    const pid_t child = fork();
    if (child < 0) die("fork");
    if (child == 0) {
        setenv("BOARD_IPC_DIR", folder.c_str(), 1);
        for (const Kind &kind : kinds) {
            std::vector<double> us;
            const Clock::time_point start = Clock::now();
            for (int sample = 0; sample < kind.samples; ++sample) {
                const Clock::time_point begin = Clock::now();
                if (kind.call() != BSP_OK) {
                    std::fprintf(stderr, "%s: failed\n", kind.name);
                    _exit(1);
                }
                us.push_back(std::chrono::duration<double, std::micro>(Clock::now() - begin).count());
            }
            const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
            std::ranges::sort(us);
            std::printf("%6d ONUs  %-26s %8.0f a second, p50 %8.1f us, p99 %8.1f us\n", onus, kind.name,
                        kind.samples / seconds, us[us.size() / 2], us[us.size() * 99 / 100]);
        }
        std::fflush(stdout);
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (status != 0) std::exit(1);
}

} // namespace

int main()
{
    measure_registration(2, 128);
    measure_registration(16, 128);

    std::string folder = "/tmp/bench-XXXXXX";
    if (!mkdtemp(folder.data())) die("mkdtemp");
    {
        const Server none = serve({}, folder);
        const Server all = serve(scenario_of(5, 16, 128, "registered"), folder + "/large");
        const size_t memory = memory_of(all.process()) - memory_of(none.process());
        constexpr size_t onus = 5 * 16 * 128;
        std::printf("%6zu ONUs of 5 OLTs in one process: %zu KiB, %.2f KiB an ONU\n", onus, memory,
                    static_cast<double>(memory) / onus);
        const Server small = serve(scenario_of(1, 2, 8, "registered"), folder + "/small");
        measure_requests(folder + "/small/olt-1", 16);
        measure_requests(folder + "/large/olt-1", onus);
    }
    std::filesystem::remove_all(folder);
}
