#include "snmp/agent/visit.h"

#include <algorithm>

#include "collector/clock.h"

namespace front::snmp
{
namespace
{

using agentx::CloseReason;
using agentx::Error;
using agentx::Session;
using std::chrono::milliseconds;

constexpr milliseconds patience{10'000}, // for an answer of the master
    silence{15'000};                     // after which it is asked whether it is there

std::string text_of(const Oid &oid)
{
    std::string text;
    for (const uint32_t subid : oid)
        text += (text.empty() ? "" : ".") + std::to_string(subid);
    return text;
}

agentx::Plan plan_of(const AgentSettings &settings)
{
    const auto objects = Mib(settings.mib).objects({}, {});
    return {.mib = settings.mib,
            .id = settings.mib.root,
            .description = "ponfront, which reads OLTs",
            .regions = {objects->regions().begin(), objects->regions().end()},
            .priority = settings.priority,
            .timeout = master_time};
}

Session::Permit permit_of(const AgentSettings &settings, const Notes &notes)
{
    if (!settings.sets.up_to) return nullptr;
    return [&sets = settings.sets, &notes](const Order &order) { return permit(order, sets, notes); };
}

std::string refusal_of(const agentx::Refusal &refused)
{
    std::string text =
        "the SNMP master agent does not take " + text_of(refused.region) + ": " + std::string(text_of(refused.error));
    if (refused.error == Error::duplicate_registration)
        text += "; another subagent has it with this priority: end that one, or choose another priority or root in "
                "[snmp]";
    return text;
}

} // namespace

Visit::Visit(const AgentSettings &wanted, Mailbox &left, const Notes &note_orders, const Agent::Say &say_line)
    : settings(wanted),
      mailbox(left),
      notes(note_orders),
      say(say_line),
      connection(wanted.master),
      session(plan_of(wanted), permit_of(wanted, note_orders))
{
}

Visit::~Visit()
{
    if (in_flight) mailbox.give_back(std::move(*in_flight));
}

std::string Visit::answer()
{
    const std::string gone = "the connection has ended";
    while (true) {
        const std::optional<std::string> over = turn();
        if (!connection.send(session.take_output())) return gone;
        if (over) return *over;
        mailbox.wait(connection.socket(), pause(Clock::now()));
        received.clear();
        if (!connection.receive(received)) return gone;
        if (received.empty()) continue;
        heard = Clock::now();
        session.receive(received, *mailbox.objects());
        note_state();
    }
}

std::optional<std::string> Visit::turn()
{
    if (session.state() == Session::State::closed) return session.reason();
    if (mailbox.is_stopping()) {
        session.close(CloseReason::shutdown, {});
        return session.reason();
    }
    if (session.waits()) {
        if (Clock::now() - asked < patience) {
            order_next();
            return {};
        }
        session.close(CloseReason::timeouts, "it does not answer");
        return session.reason();
    }
    if (session.state() == Session::State::open) tell_next();
    order_next();
    return {};
}

// Says and hands on what the master has answered.
void Visit::note_state()
{
    if (!opened) asked = Clock::now(); // it has answered, and is asked the next thing
    if (session.state() == Session::State::open && !opened) {
        opened = true;
        const size_t refused = session.refused().size();
        if (on_started) on_started(unix_time_now() - 10 * int64_t{session.up_time()});
        for (const agentx::Refusal &one : session.refused())
            say(false, refusal_of(one));
        say(refused == 0, "SNMP is answered by the master agent at " + front::snmp::text_of(settings.master) +
                              (refused ? ", without what it does not take" : ""));
        say_lost();
    }
    if (const std::optional<Error> answered = session.take_answer()) {
        in_flight.reset();
        if (*answered != Error::none && !std::exchange(answer_is_wrong, true))
            say(false, "the SNMP master agent does not take a notification: " + std::string(text_of(*answered)));
        say_lost();
    }
}

void Visit::say_lost()
{
    if (const uint64_t lost = mailbox.take_lost())
        say(false, std::to_string(lost) + " SNMP notifications are lost, for more came than can be kept for the master "
                                          "agent while it does not take them");
}

void Visit::tell_next()
{
    if (auto next = mailbox.take_notification()) {
        in_flight = std::move(next);
        session.notify(*in_flight);
        asked = Clock::now();
    } else if (Clock::now() - heard >= silence) {
        session.ping();
        asked = Clock::now();
    }
}

// An order takes as long as the OLT takes, and the master is answered meanwhile.
void Visit::order_next()
{
    if (commit) {
        if (committed.wait_for(milliseconds(0)) != std::future_status::ready) return;
        session.committed(*commit, committed.get());
        commit.reset();
    }
    commit = session.take_commit();
    if (!commit) return;
    committed = std::async(std::launch::async,
                           [this, orders = commit->orders] { return carry_out(orders, settings.sets, notes, say); });
}

int Visit::pause(Clock::time_point now) const
{
    constexpr milliseconds look_after_order{20};
    const auto due = session.waits() ? asked + patience : heard + silence;
    const auto left = std::chrono::ceil<milliseconds>(due - now);
    return static_cast<int>(std::clamp(left, milliseconds(0), commit ? look_after_order : silence).count());
}

} // namespace front::snmp
