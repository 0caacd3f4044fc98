// This benchmark measures a view of a full OLT: how long the service takes for it when nothing has changed, when one
// ONU has, and when everything has to be made anew. Then it measures how many readers get along beside each other, and
// how long a look-up takes beside four of them. Ratios are of two sides measured in this one run.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
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

constexpr std::chrono::milliseconds while_measured{2000};

double us_since(Clock::time_point start)
{
    return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

bsp_pon_msg request_of(uint32_t command, uint32_t port, uint32_t onu_id)
{
    bsp_pon_msg record{};
    record.cmd = command;
    record.pon_port = port;
    record.onu_id = onu_id;
    return record;
}

// Returns the median of how long the service takes for the view, with the copy of the result for the client.
// `before_each` is not measured.
double view_time(ponsim::Simulator &simulator, const std::function<void()> &before_each)
{
    const bsp_pon_msg record = request_of(BSP_CMD_VIEW_ONU_INFO_WEB, 0, 0);
    const ponsim::Message message{BSP_MSG_PON, &record, sizeof record};
    std::vector<char> copy(ponsim::max_result);
    std::vector<double> us;
    for (int round = 0; round < 200; ++round) {
        before_each();
        const Clock::time_point start = Clock::now();
        const ponsim::SharedReply reply = simulator.look(message, simulator.olt().now());
        if (!reply || !reply->result) {
            std::fprintf(stderr, "there is no view\n");
            std::exit(1);
        }
        std::copy(reply->result->begin(), reply->result->end(), copy.begin());
        us.push_back(us_since(start));
    }
    return median(us);
}

void measure_views()
{
    ponsim::Store store({}, false);
    const auto scenario = std::make_shared<const ponsim::OltScenario>(scenario_of(1, 16, 128, "registered").olts[0]);
    ponsim::Simulator simulator(store, {}, scenario);
    const double unchanged = view_time(simulator, [] {});
    uint32_t number = 0;
    const auto describe = [&](uint32_t port) {
        ponsim::Change described;
        ponsim::Binding binding = *simulator.olt().port(port)->bindings[5];
        binding.description = "description " + std::to_string(++number);
        described.put<ponsim::Binding>({port, 5}, binding);
        simulator.change(described);
    };
    const double one = view_time(simulator, [&] { describe(1); });
    const double all = view_time(simulator, [&] {
        for (uint32_t port = 1; port <= 16; ++port)
            describe(port);
    });
    std::printf(
        "view of 2048 ONUs: %7.1f us unchanged, %7.1f us when one ONU changed, %7.1f us anew (%.1f and %.1f times "
        "as long)\n",
        unchanged, one, all, all / unchanged, all / one);
}

bool view()
{
    db_handle *db = nullptr;
    const uint32_t status = bsp_pon_exec_get_json_(BSP_CMD_VIEW_ONU_INFO_WEB, 0, 0, &db);
    db_free(db);
    return status == BSP_OK;
}

bool look_up()
{
    bsp_pon_msg record = request_of(BSP_CMD_WHITELIST_GET, 1, 5);
    return bsp_pon_exec_get(&record) == BSP_OK;
}

// A Client is a process that does the same again and again for a while. Its pipe has one time in us for each.
struct Client {
    pid_t process;
    int times;

    Client(const std::string &folder, bool (*call)())
    {
        int ends[2];
        if (pipe(ends)) die("pipe");
        process = fork();
        if (process < 0) die("fork");
        if (process == 0) {
            close(ends[0]);
            setenv("BOARD_IPC_DIR", folder.c_str(), 1);
            std::vector<double> us;
            const Clock::time_point begin = Clock::now();
            while (Clock::now() - begin < while_measured) {
                const Clock::time_point start = Clock::now();
                if (!call()) _exit(1);
                us.push_back(us_since(start));
            }
            const size_t size = us.size() * sizeof us[0];
            for (size_t at = 0; at < size;) {
                const ssize_t written = write(ends[1], reinterpret_cast<const char *>(us.data()) + at, size - at);
                if (written < 0) _exit(1);
                at += static_cast<size_t>(written);
            }
            _exit(0);
        }
        close(ends[1]);
        times = ends[0];
    }
    // Waits for its end, and returns the times.
    std::vector<double> end()
    {
        std::vector<double> us;
        double one;
        while (read(times, &one, sizeof one) == sizeof one)
            us.push_back(one);
        close(times);
        int status = 0;
        waitpid(process, &status, 0);
        if (status != 0) {
            std::fprintf(stderr, "a request failed\n");
            std::exit(1);
        }
        std::ranges::sort(us);
        return us;
    }
};

// Returns how many views a second so many readers get together.
double views_a_second(const std::string &folder, int readers)
{
    std::vector<Client> clients;
    for (int reader = 0; reader < readers; ++reader)
        clients.emplace_back(folder, view);
    size_t count = 0;
    for (Client &client : clients)
        count += client.end().size();
    return static_cast<double>(count) / std::chrono::duration<double>(while_measured).count();
}

// Returns how long look-ups take beside so many pollers of views: all of 100 but the longest one.
double look_up_time(const std::string &folder, int pollers)
{
    std::vector<Client> clients;
    for (int poller = 0; poller < pollers; ++poller)
        clients.emplace_back(folder, view);
    const std::vector<double> us = Client(folder, look_up).end();
    for (Client &client : clients)
        client.end();
    return us[us.size() * 99 / 100];
}

} // namespace

int main()
{
    measure_views();
    std::fflush(stdout);
    std::string folder = "/tmp/bench-XXXXXX";
    if (!mkdtemp(folder.data())) die("mkdtemp");
    {
        const Server server = serve(scenario_of(1, 16, 128, "registered"), folder);
        const std::string olt = folder + "/olt-1";
        const double one = views_a_second(olt, 1), eight = views_a_second(olt, 8);
        std::printf("views of 2048 ONUs: %7.0f a second for one reader, %7.0f for eight (%.2f times as many)\n", one,
                    eight, eight / one);
        const double alone = look_up_time(olt, 0), beside = look_up_time(olt, 4);
        std::printf("look-up: p99 %7.1f us alone, %7.1f us beside four pollers (%.1f times as long)\n", alone, beside,
                    beside / alone);
    }
    std::filesystem::remove_all(folder);
}
