// This benchmark measures the round trip of an operation through the host edition. It compares it with a plain blocking
// SOCK_SEQPACKET ping-pong of the same sizes between two processes. The two take turns in one run, so that changes in
// the machine's load affect both.
#include <sched.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <string>

#include "board/ipc.h"
#include "board/service.h"
#include "bsp_pon.h"
#include "frame.h"
#include "processes.h"

namespace
{

constexpr int rounds = 41;
constexpr int exchanges_a_round = 2000;

// Returns the nanoseconds of one call, as the mean of a round.
double time_round(const std::function<void()> &call)
{
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < exchanges_a_round; ++i)
        call();
    const std::chrono::duration<double, std::nano> spent = std::chrono::steady_clock::now() - start;
    return spent.count() / exchanges_a_round;
}

struct Exchange {
    const char *name;
    size_t request; // bytes on the socket, including the header
    size_t answer;
    void (*call)();
};

const Exchange exchanges[] = {
    {"set, 944 bytes", sizeof(board::RequestHeader) + sizeof(bsp_pon_msg), sizeof(board::AnswerHeader),
     [] {
         if (bsp_pon_no_bind_onu_spec_id(1, 5) != BSP_OK) die("bsp_pon_no_bind_onu_spec_id");
     }},
    {"get, 944 bytes back", sizeof(board::RequestHeader) + sizeof(bsp_pon_msg),
     sizeof(board::AnswerHeader) + sizeof(bsp_pon_msg),
     [] {
         static bsp_pon_msg record;
         if (bsp_pon_exec_get(&record) != BSP_OK) die("bsp_pon_exec_get");
     }},
};

void answer_with_record(void *, const board_request *request, board_answer *answer)
{
    if (request->call == BOARD_CALL_GET) board_answer_data(answer, request->data, request->length);
}

void compare(const Exchange &exchange, const char *placing, int client, int server)
{
    cpu_set_t before;
    sched_getaffinity(0, sizeof before, &before);
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends)) die("socketpair");
    Server bare(server, [&](int ready) {
        std::array<char, IPC_MAX_LENGTH> buffer{};
        announce(ready);
        while (recv(ends[1], buffer.data(), buffer.size(), 0) > 0)
            if (send(ends[1], buffer.data(), exchange.answer, 0) < 0) die("send");
    });
    Server service(server, [&](int ready) {
        board_service_config config{};
        config.module = BSP_IPC_MODULE;
        config.handler = answer_with_record;
        if (!board_service_start(&config)) std::exit(1);
        announce(ready);
        pause();
    });
    pin(client);

    std::array<char, IPC_MAX_LENGTH> buffer{};
    const auto ping = [&] {
        if (send(ends[0], buffer.data(), exchange.request, 0) < 0 ||
            recv(ends[0], buffer.data(), buffer.size(), 0) != static_cast<ssize_t>(exchange.answer))
            die("ping");
    };
    std::vector<double> bare_times, times, ratios;
    time_round(ping);
    time_round(exchange.call);
    for (int round = 0; round < rounds; ++round) {
        bare_times.push_back(time_round(ping));
        times.push_back(time_round(exchange.call));
        ratios.push_back(times.back() / bare_times.back());
    }
    std::printf("%-20s  %-15s %8.0f ns %8.0f ns   ratio %.2f\n", exchange.name, placing, median(times),
                median(bare_times), median(ratios));
    close(ends[0]);
    close(ends[1]);
    sched_setaffinity(0, sizeof before, &before);
}

} // namespace

int main()
{
    std::string folder = "/tmp/exchange_cost.XXXXXX";
    if (!mkdtemp(folder.data())) die("mkdtemp");
    setenv("BOARD_IPC_DIR", folder.c_str(), 1);
    std::printf("%-20s  %-15s %11s %11s   median of %d rounds of %d\n", "exchange", "processors", "library", "bare",
                rounds, exchanges_a_round);
    for (const Exchange &exchange : exchanges) {
        if (sysconf(_SC_NPROCESSORS_ONLN) > 1) compare(exchange, "two, pinned", 0, 1);
        compare(exchange, "one, pinned", 0, 0);
        compare(exchange, "as they fall", any_processor, any_processor);
    }
    std::fflush(stdout);
    return std::system(("rm -rf " + folder).c_str()) ? 1 : 0;
}
