#include "snmp/agent/agent.h"

#include <algorithm>
#include <stdexcept>

#include "snmp/agent/visit.h"

namespace front::snmp
{
namespace
{

constexpr int first_pause = 250, longest_pause = 8000; // milliseconds, before the master is tried again

} // namespace

Agent::Agent(AgentSettings wanted, Notes note_orders, Say say_line)
    : settings(std::move(wanted)), notes(std::move(note_orders)), say(std::move(say_line)), thread(&Agent::run, this)
{
}

Agent::~Agent()
{
    mailbox.stop();
    thread.join();
}

void Agent::run()
{
    int pause = first_pause;
    std::string said; // of the master that cannot be reached
    while (!mailbox.is_stopping()) {
        pause = visit(said) ? first_pause : std::min(2 * pause, longest_pause);
        const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(pause);
        while (!mailbox.is_stopping()) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - std::chrono::steady_clock::now());
            if (left.count() <= 0) break;
            mailbox.wait(-1, static_cast<int>(left.count()));
        }
    }
}

bool Agent::visit(std::string &said)
{
    const std::string master = "the SNMP master agent at " + text_of(settings.master);
    bool was_there = false;
    std::string why;
    try {
        Visit visit(settings, mailbox, notes, say);
        visit.on_started = [this](int64_t at) { started = at; };
        why = visit.answer();
        was_there = visit.was_open();
        if (why.empty()) return was_there;
    } catch (const std::exception &error) {
        why = error.what();
    }
    if (was_there) {
        say(false, master + " is gone: " + why + "; it is tried again until it is back");
        said.clear();
    } else if (said != why) {
        say(false, master + " cannot be reached: " + why +
                       "; it is tried again. Is snmpd running, with \"master agentx\" and \"agentXSocket\" in its "
                       "configuration, and may this user open the socket?");
        said = why;
    }
    return was_there;
}

} // namespace front::snmp
