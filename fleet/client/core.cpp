#include "fleet/client/core.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <utility>

#include <sys/random.h>

#include "text/hex.h"
#include "text/utf8.h"

namespace fleet
{
namespace
{

using std::chrono::milliseconds;

constexpr size_t most_under_way = 1000;
constexpr milliseconds longest_turn{1000};
constexpr std::string_view marker_correlation = "marker";

std::string new_session()
{
    std::array<uint8_t, 8> chance;
    if (getrandom(chance.data(), chance.size(), 0) != static_cast<ssize_t>(chance.size()))
        throw std::runtime_error(std::string("no random number: ") + std::strerror(errno));
    return text::to_hex(chance);
}

std::string place_of(const Broker &broker)
{
    return broker.socket.empty() ? broker.host + " port " + std::to_string(broker.port) : broker.socket;
}

} // namespace

Client::Core::Core(const Settings &of)
    : topics(of.root),
      connection(of.broker, of.client + "-" + new_session(), {}, *this),
      settings(of),
      session(new_session()),
      reply_topic(topics.reply(of.client, session))
{
    connection.subscribe(reply_topic);
}

template <class IsSo>
void Client::Core::wait(IsSo is_so, uint32_t longest, const std::string &wanted)
{
    const Clock::time_point end = Clock::now() + milliseconds(longest);
    const std::string broker = "the broker at " + place_of(settings.broker);
    loss.clear();
    while (!is_so()) {
        if (!loss.empty()) throw Unreachable(broker + " is not reached: " + loss);
        if (!not_permitted.empty()) throw Unreachable(broker + " " + not_permitted);
        const auto left = std::chrono::ceil<milliseconds>(end - Clock::now()).count();
        if (left <= 0) throw Unreachable(broker + " " + wanted);
        turn(static_cast<uint32_t>(left));
    }
}

void Client::Core::connect(uint32_t longest)
{
    begin_to_learn();
    const Clock::time_point begin = Clock::now();
    open(longest);
    const auto passed = std::chrono::duration_cast<milliseconds>(Clock::now() - begin).count();
    wait([this] { return learnt; }, longest - static_cast<uint32_t>(std::min<int64_t>(passed, longest)),
         "does not say in time which OLTs there are: its max_queued_messages must be as many at least");
}

void Client::Core::open(uint32_t longest)
{
    wait([this] { return is_connected; }, longest, "does not answer in time");
}

void Client::Core::begin_to_learn()
{
    if (std::exchange(learns, true)) return;
    connection.subscribe({topics.bridge("+"), topics.inventory("+")});
    if (is_connected) send_marker();
}

// A broker sends a client its messages in their order: when this one comes back, all that were retained have come.
void Client::Core::send_marker()
{
    marker = connection.publish({.topic = reply_topic,
                                 .payload = {},
                                 .correlation = std::string(marker_correlation) + std::to_string(connections)});
}

void Client::Core::hear(const std::string &of, Heard heard, Heard Core::*into)
{
    this->*into = std::move(heard);
    connection.subscribe(of);
}

void Client::Core::connected()
{
    is_connected = true;
    loss.clear();
    ++connections;
    known.begin_anew();
    if (learns) send_marker();
}

void Client::Core::lost(const std::string &reason)
{
    is_connected = false;
    loss = reason;
    // Numbers begin anew with the next connection. Answers to what was sent may still come, over that one.
    unacknowledged.clear();
    for (auto &[correlation, request] : requests)
        request.number = 0;
    marker = 0;
}

void Client::Core::refused(size_t)
{
    not_permitted = "does not permit " + settings.client + " to subscribe to what concerns it";
}

void Client::Core::arrived(Message message)
{
    if (message.topic != reply_topic) {
        const std::string olt = topics.olt_of(message.topic);
        if (!olt.empty() && message.topic == topics.event(olt)) {
            if (events) events(olt, message.payload);
        } else if (!olt.empty() && message.topic == topics.audit(olt)) {
            if (audit) audit(olt, message.payload);
        } else {
            known.take(topics, message);
        }
        return;
    }
    if (message.correlation == std::string(marker_correlation) + std::to_string(connections)) {
        known.forget_old();
        learnt = true;
        return;
    }
    // What answers no request that waits is late, and nobody wants it any more.
    const auto request = requests.find(message.correlation);
    if (request != requests.end() && request->second.sent)
        finish(request, Reply::Kind::answered, std::move(message.payload));
}

Client::Core::Requests::iterator Client::Core::take_unacknowledged(int number)
{
    const auto correlation = unacknowledged.find(number);
    if (correlation == unacknowledged.end()) return requests.end();
    const auto request = requests.find(correlation->second);
    unacknowledged.erase(correlation);
    if (request != requests.end()) request->second.number = 0;
    return request;
}

void Client::Core::acknowledged(int number, const std::string &error)
{
    if (number == marker) {
        marker = 0;
        if (!error.empty())
            not_permitted = "does not permit " + settings.client + " to publish to itself, on " +
                            topics.reply(settings.client, "#") + ": " + error;
    }
    const auto request = take_unacknowledged(number);
    if (request != requests.end() && !error.empty())
        finish(request, Reply::Kind::refused, "the broker does not take the request: " + error);
}

void Client::Core::unheard(int number)
{
    const auto request = take_unacknowledged(number);
    if (request != requests.end())
        finish(request, Reply::Kind::unreachable, "nobody answers for the OLT " + request->second.olt);
}

void Client::Core::send(const std::string &olt, catalogue::Class impact, std::string request, uint32_t longest,
                        Done done)
{
    if (!is_name(olt)) throw call::UsageError("'" + text::printable(olt) + "' is no name of an OLT");
    // Whoever could guess a correlation could answer in the place of an OLT, if the broker lets him.
    const std::string correlation = session + "-" + std::to_string(++last_request);
    Request made{.message = {.topic = topics.call({olt, impact, settings.client}),
                             .payload = std::move(request),
                             .response_topic = reply_topic,
                             .correlation = correlation,
                             .expiry = longest / 1000 + (longest % 1000 != 0 ? 1 : 0)},
                 .olt = olt,
                 .time = milliseconds(longest),
                 .done = std::move(done)};
    made.due = Clock::now() + made.time;
    requests.emplace(correlation, std::move(made));
    waiting.push_back(correlation);
    connection.wake();
}

void Client::Core::send_waiting()
{
    while (is_connected && !waiting.empty() && deadlines.size() < most_under_way) {
        const std::string correlation = waiting.front();
        const auto found = requests.find(correlation);
        Request &request = found->second;
        try {
            request.number = connection.publish(request.message);
        } catch (const std::runtime_error &error) {
            waiting.pop_front();
            finish(found, Reply::Kind::refused, error.what());
            continue;
        }
        if (request.number == 0) return;
        waiting.pop_front();
        request.sent = true;
        request.message.payload.clear();
        request.due = Clock::now() + request.time;
        deadlines.emplace(request.due, correlation);
        unacknowledged.emplace(request.number, correlation);
    }
}

void Client::Core::give_up_late()
{
    const Clock::time_point now = Clock::now();
    while (!deadlines.empty() && deadlines.begin()->first <= now) {
        const auto request = requests.find(deadlines.begin()->second);
        finish(request, Reply::Kind::silent,
               "no answer of the OLT " + request->second.olt + " came within " +
                   std::to_string(request->second.time.count()) + " ms");
    }
    if (is_connected) return;
    std::vector<std::string> late;
    for (const std::string &correlation : waiting)
        if (requests.find(correlation)->second.due <= now) late.push_back(correlation);
    for (const std::string &correlation : late) {
        std::erase(waiting, correlation);
        finish(requests.find(correlation), Reply::Kind::unreachable,
               "the broker at " + place_of(settings.broker) + " is not reached" + (loss.empty() ? "" : ": " + loss));
    }
}

void Client::Core::finish(Requests::iterator request, Reply::Kind kind, std::string text)
{
    deadlines.erase({request->second.due, request->first});
    if (request->second.number != 0) unacknowledged.erase(request->second.number);
    const Done done = std::move(request->second.done);
    requests.erase(request);
    if (done) done({kind, std::move(text)});
}

void Client::Core::turn(uint32_t longest)
{
    give_up_late();
    send_waiting();
    milliseconds wait = std::min(milliseconds(longest), longest_turn);
    Clock::time_point due = Clock::time_point::max();
    if (!deadlines.empty()) due = deadlines.begin()->first;
    if (!is_connected)
        for (const std::string &correlation : waiting)
            due = std::min(due, requests.find(correlation)->second.due);
    if (due != Clock::time_point::max())
        wait = std::clamp(std::chrono::ceil<milliseconds>(due - Clock::now()), milliseconds(0), wait);
    connection.turn(static_cast<int>(wait.count()));
    send_waiting();
}

} // namespace fleet
