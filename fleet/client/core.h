// The Core of a client: what it waits for, and what it knows. It is no business of any file beside those of this room.
#pragma once

#include <chrono>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "fleet/client/client.h"
#include "fleet/client/known_olts.h"
#include "fleet/mqtt/connection.h"

namespace fleet
{

class Client::Core : public Handler
{
public:
    explicit Core(const Settings &settings);

    void connect(uint32_t milliseconds);
    void open(uint32_t milliseconds);
    void begin_to_learn();
    bool has_learnt() const { return learnt; }
    void send(const std::string &olt, catalogue::Class impact, std::string request, uint32_t milliseconds, Done done);
    size_t pending() const { return requests.size(); }
    void hear(const std::string &topics, Heard heard, Heard Core::*into);
    void turn(uint32_t milliseconds);

    void connected() override;
    void lost(const std::string &reason) override;
    void refused(size_t subscriptions) override;
    void arrived(Message message) override;
    void acknowledged(int number, const std::string &error) override;
    void unheard(int number) override;

    Topics topics;
    KnownOlts known;
    Heard events, audit;
    Connection connection;

private:
    using Clock = std::chrono::steady_clock;

    struct Request {
        Message message;
        std::string olt;
        std::chrono::milliseconds time;
        Done done;
        Clock::time_point due = {}; // when no reply is waited for any longer
        int number = 0;             // of the message; 0: it is not sent, or the broker has it
        bool sent = false;
    };
    using Requests = std::map<std::string, Request>; // by their correlations

    // Waits until `is_so`. Throws Unreachable, with what was waited for.
    template <class IsSo>
    void wait(IsSo is_so, uint32_t milliseconds, const std::string &wanted);
    void send_marker();
    void send_waiting();
    void give_up_late();
    // Returns the request of the message that the broker has answered, or the end of all when nobody waits for it.
    Requests::iterator take_unacknowledged(int number);
    void finish(Requests::iterator request, Reply::Kind kind, std::string text);

    const Settings settings;
    const std::string session, reply_topic;
    Requests requests;
    std::deque<std::string> waiting;                               // correlations of requests that are not sent
    std::set<std::pair<Clock::time_point, std::string>> deadlines; // of those that are
    std::map<int, std::string> unacknowledged;                     // correlations by the numbers of messages
    uint64_t last_request = 0;
    bool is_connected = false, learns = false, learnt = false;
    uint64_t connections = 0; // how many there have been
    int marker = 0;           // its number
    std::string loss;         // why there is no connection
    std::string not_permitted;
};

} // namespace fleet
