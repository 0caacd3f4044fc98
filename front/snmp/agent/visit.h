// One session with the master agent over one connection, from its beginning to its end.
#pragma once

#include <chrono>
#include <future>
#include <optional>
#include <string>

#include "snmp/agent/agent.h"

namespace front::snmp
{

class Visit
{
public:
    // Connects. Throws std::runtime_error that says why it cannot.
    Visit(const AgentSettings &wanted, Mailbox &left, const Notes &note_orders, const Agent::Say &say_line);
    ~Visit(); // after an order that is under way

    // Answers the master until the session ends, and returns why; an empty text where the agent is to stop.
    std::string answer();
    // Returns whether the session was open, so that everything was registered.
    bool was_open() const { return opened; }
    // Is called when it is known when the master's sysUpTime was 0, in milliseconds since 1970.
    std::function<void(int64_t)> on_started;

private:
    using Clock = std::chrono::steady_clock;

    // Does what is to be done, and returns why the session is over, if it is.
    std::optional<std::string> turn();
    void note_state();
    void say_lost();
    void tell_next();
    void order_next();
    int pause(Clock::time_point now) const; // milliseconds

    const AgentSettings &settings;
    Mailbox &mailbox;
    const Notes &notes;
    const Agent::Say &say;
    const Connection connection;
    agentx::Session session;
    bool opened = false, answer_is_wrong = false;
    std::string received;
    Clock::time_point heard = Clock::now(); // when the master said something last
    Clock::time_point asked = heard;        // when it was asked or told something last
    std::optional<Notification> in_flight;
    std::optional<agentx::Commit> commit; // that is carried out
    std::future<agentx::Committed> committed;
};

} // namespace front::snmp
