// This benchmark measures a call of an OLT through a broker and a bridge. It compares it with a bare request and
// response of MQTT 5 between two clients of the same broker, with payloads of the same sizes. The two take turns in one
// run, so that changes in the machine's load affect both. A third side is the bare round trip with a responder that
// exchanges a packet with another process before it answers: no bridge can be faster whose OLT is a process.
//
//     fleet_cost PORT CERTIFICATES              the bare round trip alone
//     fleet_cost PORT CERTIFICATES OLT REQUEST  beside it that request, which only reads, to this OLT
//
// CERTIFICATES is a folder with ca.crt and those of the client "bench" and the responder "bare", who answers as a
// bridge for the OLT "bare".
#include <sys/socket.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "mqtt_peer.h"
#include "processes.h"

namespace
{

using Clock = std::chrono::steady_clock;

// Each start has connections and a responder of its own: how they come to lie on the processors changes a start's ratio
// by a tenth, and stays as it is until the next one.
constexpr int starts = 7, rounds = 9;
constexpr int calls_a_round = 200;
constexpr int at_once = 1000;
constexpr double goal = 1.5;
const std::string client = "bench";
const std::string reply = "pon/client/" + client + "/cost";

std::string topic_of(const std::string &olt)
{
    return "pon/olt/" + olt + "/call/read/" + client;
}

// A Neighbour is a process that answers each packet with one of the same size, as an OLT's service does.
class Neighbour
{
public:
    Neighbour()
    {
        if (socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends)) die("socketpair");
        server.emplace(any_processor, [this](int ready) { answer(ready); });
    }

    void ask()
    {
        if (send(ends[0], packet, sizeof packet, 0) < 0 || recv(ends[0], packet, sizeof packet, 0) < 0)
            die("neighbour");
    }

private:
    void answer(int ready)
    {
        announce(ready);
        while (recv(ends[1], packet, sizeof packet, 0) > 0)
            if (send(ends[1], packet, sizeof packet, 0) < 0) die("send");
    }

    char packet[944] = {}; // a record
    int ends[2];
    std::optional<Server> server;
};

// A request with this beginning makes the responder ask a neighbour before it answers.
constexpr char asks = '?';

// Answers every request with so many bytes.
void respond(const Place &place, size_t size, int ready)
{
    Neighbour neighbour;
    Peer peer(place);
    const std::string answer(size, 'a');
    peer.on_message = [&](const Peer::Message &request) {
        if (request.text.starts_with(asks)) neighbour.ask();
        peer.publish(request.reply_to, answer, {}, request.correlation);
    };
    peer.subscribe("pon/olt/bare/call/#");
    announce(ready);
    peer.await([] { return false; });
}

class Asker
{
public:
    explicit Asker(const Place &place) : peer(place)
    {
        peer.on_message = [this](const Peer::Message &message) {
            // An answer to another request would make a round trip look shorter than it is.
            if (calls_under_way == 1 && message.correlation != correlation) fail("an answer to another request");
            answer = message.text;
            --calls_under_way;
        };
        peer.subscribe(reply);
    }

    std::string ask(const std::string &olt, const std::string &request)
    {
        send(olt, request);
        peer.await([this] { return calls_under_way == 0; });
        return answer;
    }

    // Returns the microseconds of each of several calls, one after the other.
    std::vector<double> time_round(const std::string &olt, const std::string &request, size_t size)
    {
        std::vector<double> times;
        for (int call = 0; call < calls_a_round; ++call) {
            const auto start = Clock::now();
            if (ask(olt, request).size() != size) fail("answers differ in size");
            times.push_back(std::chrono::duration<double, std::micro>(Clock::now() - start).count());
        }
        return times;
    }

    // Returns the seconds that so many calls take that are sent at once.
    double time_burst(const std::string &olt, const std::string &request, int calls)
    {
        const auto start = Clock::now();
        for (int call = 0; call < calls; ++call)
            send(olt, request);
        peer.await([this] { return calls_under_way == 0; });
        return std::chrono::duration<double>(Clock::now() - start).count();
    }

    [[noreturn]] static void fail(const char *what)
    {
        std::fprintf(stderr, "%s\n", what);
        std::exit(1);
    }

private:
    void send(const std::string &olt, const std::string &request)
    {
        correlation = std::to_string(++number);
        ++calls_under_way;
        peer.publish(topic_of(olt), request, reply, correlation);
    }

    Peer peer;
    std::string answer, correlation;
    uint64_t number = 0;
    int calls_under_way = 0;
};

void print(const char *what, std::vector<double> &times)
{
    std::ranges::sort(times);
    std::printf("%-36s p50 %8.1f us, p90 %8.1f us, p99 %8.1f us\n", what, times[times.size() / 2],
                times[times.size() * 9 / 10], times[times.size() * 99 / 100]);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3 && argc != 5) Asker::fail("PORT CERTIFICATES [OLT REQUEST]");
    const Place place{std::atoi(argv[1]), argv[2], client};
    const std::string olt = argc == 5 ? argv[3] : "bare";
    const std::string request = argc == 5 ? argv[4] : std::string(130, 'r');

    std::string asking = request;
    asking.front() = asks;
    std::vector<double> bare, asked, bridged, floors, ratios, of_starts;
    double burst = 0;
    size_t size = 300;
    for (int start = 0; start < starts; ++start) {
        Asker asker(place);
        if (olt != "bare") {
            const std::string answer = asker.ask(olt, request);
            if (!answer.starts_with("{\"outcome\"") && !answer.starts_with("{\"exchanged\""))
                Asker::fail(answer.c_str());
            size = answer.size();
        }
        const Server responder(any_processor, [&](int ready) {
            respond({place.port, place.certificates, "bare"}, size, ready);
        });
        std::vector<double> own;
        for (int round = 0; round <= rounds; ++round) {
            std::vector<double> one = asker.time_round("bare", request, size);
            std::vector<double> two = asker.time_round("bare", asking, size);
            std::vector<double> other = olt == "bare" ? one : asker.time_round(olt, request, size);
            if (round == 0) continue; // it warms up
            floors.push_back(median(two) / median(one));
            own.push_back(median(other) / median(one));
            bare.insert(bare.end(), one.begin(), one.end());
            asked.insert(asked.end(), two.begin(), two.end());
            bridged.insert(bridged.end(), other.begin(), other.end());
        }
        ratios.insert(ratios.end(), own.begin(), own.end());
        of_starts.push_back(median(own));
        if (start == 0) burst = asker.time_burst("bare", request, at_once);
    }
    std::printf("a request of %zu bytes, an answer of %zu, over TLS\n", request.size(), size);
    print("bare request and response", bare);
    print("the same, asking another process", asked);
    std::printf("%d bare ones at once: %.3f s\n", at_once, burst);
    if (olt == "bare") return 0;
    print("through broker and bridge to an OLT", bridged);
    const double ratio = median(ratios);
    const auto [least, most] = std::ranges::minmax(of_starts);
    std::printf(
        "ratio %.2f, at most %.2f%s; from start to start %.2f to %.2f; with nothing but the other process %.2f\n",
        ratio, goal, ratio <= goal ? "" : "   MISSED", least, most, median(floors));
    return ratio <= goal ? 0 : 1;
}
