// This benchmark measures what a broker of a fleet pays for each connection, each inventory that it keeps, each call
// and each event. What many OLTs need follows from these numbers.
//
//     fleet_broker_cost PORT CERTIFICATES BROKER    BROKER is its process; see fleet_cost.cpp for CERTIFICATES
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "mqtt_peer.h"
#include "processes.h"

namespace
{

using Clock = std::chrono::steady_clock;

constexpr int connections = 500;
constexpr int inventories = 100'000;
constexpr int calls = 20'000;
constexpr int events = 2'000;
constexpr int listeners = 10;
constexpr size_t under_way = 200;
constexpr size_t inventory_size = 400, request_size = 130, answer_size = 300, event_size = 300;

// What a process has used up to now.
struct Usage {
    double seconds; // of a processor
    double memory;  // KiB
};

Usage usage_of(pid_t process)
{
    const std::string folder = "/proc/" + std::to_string(process);
    std::string line;
    std::getline(std::ifstream(folder + "/stat"), line);
    // The name of the program may have spaces; user and system time are the 12th and 13th word behind it.
    size_t at = line.rfind(')') + 1;
    for (int word = 0; word < 11; ++word)
        at = line.find(' ', at + 1);
    char *rest = nullptr;
    const double user = std::strtod(line.c_str() + at, &rest), system = std::strtod(rest, nullptr);
    Usage usage{(user + system) / static_cast<double>(sysconf(_SC_CLK_TCK)), 0};
    std::ifstream status(folder + "/status");
    while (std::getline(status, line))
        if (line.starts_with("VmRSS:")) usage.memory = std::stod(line.substr(6));
    return usage;
}

class Bench
{
public:
    Bench(int port, std::string folder, pid_t process) : place{port, std::move(folder), {}}, broker(process) {}

    void run()
    {
        connect();
        keep_inventories();
        call();
        tell();
    }

private:
    Place as(const char *name) const { return {place.port, place.certificates, name}; }

    // Does that, and prints what each of so many cost.
    template <class Action>
    void measure(const char *what, int count, bool memory, Action action)
    {
        const Usage before = usage_of(broker);
        const auto start = Clock::now();
        action();
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        const Usage after = usage_of(broker);
        std::printf("%7d %-34s %7.2f s, each %7.1f us of the broker's processor", count, what, seconds,
                    (after.seconds - before.seconds) / count * 1e6);
        if (memory) std::printf(", %6.2f KiB", (after.memory - before.memory) / count);
        std::printf("\n");
        std::fflush(stdout);
    }

    void connect()
    {
        std::vector<std::unique_ptr<Peer>> peers;
        measure("connections over TLS", connections, true, [&] {
            for (int number = 0; number < connections; ++number)
                peers.push_back(std::make_unique<Peer>(as("bench")));
        });
    }

    void keep_inventories()
    {
        Peer bridge(as("bare"));
        const std::string text(inventory_size, 'i');
        measure("inventories published and kept", inventories, true, [&] {
            for (int olt = 0; olt < inventories; ++olt) {
                bridge.publish("pon/olt/olt-" + std::to_string(olt) + "/inventory", text, {}, {}, true);
                bridge.await([&] { return bridge.waiting() < under_way; });
            }
            bridge.await([&] { return bridge.waiting() == 0; });
        });
        Peer reader(as("bench"));
        int read = 0;
        reader.on_message = [&](const Peer::Message &) { ++read; };
        measure("of them read by who comes", inventories, false, [&] {
            reader.subscribe("pon/olt/+/inventory");
            reader.await([&] { return read == inventories; });
        });
    }

    void call()
    {
        const Server responder(any_processor, [&](int ready) {
            Peer bridge(as("bare"));
            const std::string answer(answer_size, 'a');
            bridge.on_message = [&](const Peer::Message &asked) {
                bridge.publish(asked.reply_to, answer, {}, asked.correlation);
            };
            bridge.subscribe("pon/olt/olt-999/call/#");
            announce(ready);
            bridge.await([] { return false; });
        });
        Peer asker(as("bench"));
        const std::string request(request_size, 'r');
        int answered = 0;
        asker.on_message = [&](const Peer::Message &) { ++answered; };
        asker.subscribe("pon/client/bench/cost");
        measure("calls, 200 at a time", calls, false, [&] {
            for (int sent = 0; sent < calls; ++sent) {
                asker.publish("pon/olt/olt-999/call/read/bench", request, "pon/client/bench/cost", "1");
                asker.await([&] { return sent - answered < static_cast<int>(under_way); });
            }
            asker.await([&] { return answered == calls; });
        });
    }

    void tell()
    {
        std::vector<std::unique_ptr<Peer>> peers;
        std::vector<int> heard(listeners);
        for (int &count : heard) {
            peers.push_back(std::make_unique<Peer>(as("bench")));
            peers.back()->on_message = [&count](const Peer::Message &) { ++count; };
            peers.back()->subscribe("pon/olt/+/event");
        }
        Peer bridge(as("bare"));
        const std::string text(event_size, 'e');
        measure("events, each to 10 listeners", events, false, [&] {
            for (int event = 0; event < events; ++event) {
                bridge.publish("pon/olt/olt-1/event", text, {}, {});
                bridge.await([&] { return bridge.waiting() < under_way; });
            }
            for (int number = 0; number < listeners; ++number)
                peers[number]->await([&] { return heard[number] == events; });
        });
    }

    Place place;
    pid_t broker;
};

} // namespace

int main(int argc, char **argv)
{
    if (argc != 4) {
        std::fprintf(stderr, "PORT CERTIFICATES BROKER\n");
        return 64;
    }
    Bench(std::atoi(argv[1]), argv[2], static_cast<pid_t>(std::atoi(argv[3]))).run();
}
