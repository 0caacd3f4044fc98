#include "diagnosis/why.h"

#include <algorithm>
#include <array>

namespace ponctl
{
namespace
{

// These alarms say why an ONU is not online. Of several that were raised at the same time, the first one counts.
constexpr std::array<std::string_view, 10> reasons{"rejected",    "wrong_port", "same_mac",      "same_loid",
                                                   "auth_failed", "dying_gasp", "oam_link_lost", "deregistered",
                                                   "onu_los",     "los"};

size_t rank_of(const AlarmFact &alarm)
{
    return static_cast<size_t>(std::ranges::find(reasons, alarm.name) - reasons.begin());
}

bool is_reason(const AlarmFact &alarm)
{
    return rank_of(alarm) < reasons.size();
}

// Returns whether one alarm tells more of the present state than another one: an active one more than a cleared one,
// then the later one, then the one that comes first among the reasons.
bool tells_more(const AlarmFact &one, const AlarmFact &other)
{
    if (one.active != other.active) return one.active;
    if (one.raised != other.raised) return one.raised > other.raised;
    return rank_of(one) < rank_of(other);
}

// A Doctor makes the diagnosis of one ONU.
class Doctor
{
public:
    explicit Doctor(const Facts &known) : facts(known) {}

    Diagnosis diagnose()
    {
        for (const AlarmFact &alarm : facts.alarms)
            if (alarm.mac == facts.onu.mac || (alarm.mac.empty() && alarm.active)) made.alarms.push_back(alarm);
        if (const AlarmFact *reason = reason_of(facts.alarms, facts.onu)) made.last_cause = *reason;
        find_since();
        look_at_neighbours();
        if (facts.limits && facts.light && facts.light->at_olt) made.margin = *facts.light->at_olt - facts.limits->lost;
        conclude();
        return made;
    }

private:
    bool has(std::string_view name) const
    {
        return std::ranges::any_of(made.alarms,
                                   [name](const AlarmFact &alarm) { return alarm.active && alarm.name == name; });
    }

    // Returns where the fault is, as far as an alarm of this name says so: " (fibre at drop-5)".
    std::string where(std::string_view name) const
    {
        for (const AlarmFact &alarm : made.alarms)
            if (alarm.active && alarm.name == name && !alarm.reason().empty()) return " (" + alarm.reason() + ")";
        return {};
    }

    // An ONU that is online came back when the last of its reasons ended.
    void find_since()
    {
        if (!made.last_cause) return;
        if (facts.onu.state != "online") {
            if (made.last_cause->active) made.since = made.last_cause->raised;
            return;
        }
        for (const AlarmFact &alarm : made.alarms)
            if (alarm.mac == facts.onu.mac && is_reason(alarm) && alarm.cleared)
                made.since = std::max(made.since.value_or(0), *alarm.cleared);
    }

    void look_at_neighbours()
    {
        for (const OnuFact &onu : facts.onus) {
            if (onu.mac == facts.onu.mac || !onu.id) continue;
            ++made.neighbours.bound;
            made.neighbours.online += onu.state == "online";
            if (onu.state != "offline") continue;
            ++made.neighbours.offline;
            const AlarmFact *reason = reason_of(facts.alarms, onu);
            if (facts.onu.state != "offline" || !made.since || !reason || !reason->active || !reason->raised) continue;
            const MilliTime one = *made.since, other = *reason->raised;
            made.neighbours.together += std::max(one, other) - std::min(one, other) <= same_time;
        }
    }

    void say(std::string_view verdict, std::string summary, std::vector<std::string> checks)
    {
        made.verdict = verdict;
        made.summary = std::move(summary);
        made.checks = std::move(checks);
    }

    void conclude()
    {
        const std::string &state = facts.onu.state;
        if (state == "online") return conclude_online();
        if (has("wrong_port"))
            return say("wrong_port", "it is bound at another port" + where("wrong_port"),
                       {"plug it in at the port where it is bound, or release it there and bind it here"});
        if (has("same_mac"))
            return say("same_mac", "an ONU at another port has the same MAC address" + where("same_mac"),
                       {"find out which of the two ONUs is the customer's; one of them is a copy, or has the wrong "
                        "address in its memory"});
        if (state == "rejected" || has("rejected"))
            return say("rejected", "it is on the blacklist, and is not let in",
                       {"see its entry with 'ponctl blacklist list " + std::to_string(facts.onu.port) + "'",
                        "take it off with 'ponctl onu allow " + std::to_string(facts.onu.port) + " " + facts.onu.mac +
                            "' when it may come back"});
        if (state == "waiting") return conclude_waiting();
        if (state == "unauthenticated") return conclude_unauthenticated();
        conclude_offline();
    }

    void conclude_online()
    {
        if (has("receive_degraded") || has("onu_receive_degraded") || is_weak())
            return say("weak_light",
                       "it is online with weak light" +
                           where(has("receive_degraded") ? "receive_degraded" : "onu_receive_degraded"),
                       {"clean and check the connectors at the customer and at the splitter",
                        "look for a bent fibre on the drop", compare_light()});
        if (has("receive_overload") || has("onu_receive_overload"))
            return say("strong_light", "it is online, but light is too strong",
                       {"put an attenuator into the drop, or use a splitter with more loss"});
        if (has("uni_loop"))
            return say("loop", "it is online, and a UNI port is shut for a loop" + where("uni_loop"),
                       {"have the customer remove the cable that makes the loop",
                        "then let the port recover with 'ponctl loop recover'"});
        say("good", "it is online, and nothing is wrong with it", {});
    }

    bool is_weak() const
    {
        return facts.limits && facts.light && facts.light->at_olt && *facts.light->at_olt < facts.limits->weak;
    }

    std::string compare_light() const
    {
        return "compare it with its neighbours: 'ponctl bulk optics " + std::to_string(facts.onu.port) +
               " --sort olt_rx_power'; where all are weak, look at the feeder and at the module of the port";
    }

    void conclude_waiting()
    {
        const std::string port = std::to_string(facts.onu.port);
        if (!facts.onu.supported)
            return say("not_supported", "it waits, and the OLT does not support it", {"replace it by a known kind"});
        say("waiting", "it has registered and waits: nobody has bound it",
            {"bind it with 'ponctl onu bind " + port + " " + facts.onu.mac +
                 "', or let it in with 'ponctl onu confirm " + port + " " + facts.onu.mac + "'",
             "where the port knows ONUs by their LOID, check 'ponctl auth show " + port + "'"});
    }

    void conclude_unauthenticated()
    {
        const std::string port = std::to_string(facts.onu.port);
        if (has("same_loid"))
            return say("same_loid", "another ONU of the port is let in with its LOID" + where("same_loid"),
                       {"give each ONU a LOID of its own; one of the two is set up with the wrong one"});
        say("refused", "it is turned away for its LOID" + (facts.onu.loid.empty() ? "" : " '" + facts.onu.loid + "'"),
            {"see the LOIDs that the port accepts with 'ponctl auth show " + port + "'",
             "correct LOID or password in the ONU, or add its LOID with 'ponctl loid add " + port + " LOID'"});
    }

    void conclude_offline()
    {
        if (!made.last_cause)
            return say("never_seen",
                       "no alarm says that it was ever online: it has not been seen, or its alarms were cleared",
                       {"check that the ONU is plugged in, has power and shows light",
                        "compare the MAC address on its label with " + facts.onu.mac,
                        "look whether it waits at another port: 'ponctl onu find " + facts.onu.mac + "'"});
        const AlarmFact &reason = *made.last_cause;
        if (!reason.active)
            return say("returning", "its last fault has ended, and it is not back yet",
                       {"wait a minute: an ONU boots and registers again", "then ask again"});
        if (reason.cause == "reboot")
            return say("rebooting", "it was rebooted", {"wait a minute: it boots and registers again"});
        if (reason.name == "dying_gasp" || reason.cause == "power") return conclude_power();
        if (reason.cause == "distance")
            return say("distance", "it is outside the ranging limits of the port",
                       {"compare its distance with MIN and MAX of 'ponctl port list'"});
        if (has("transmitter_off") || reason.cause == "transmitter")
            return say("transmitter", "the laser of the port is off or too weak",
                       {"look at the module of the port: 'ponctl optics " + std::to_string(facts.onu.port) + "'"});
        if (has("rogue") || reason.cause == "rogue")
            return say("rogue", "another ONU sends all the time and blinds the port" + where("rogue"),
                       {"take the power of the rogue ONU, and replace it"});
        if (reason.name == "deregistered" || reason.name == "oam_link_lost")
            return say("link_lost", "it was deregistered" + where(reason.name),
                       {reason.cause == "command" ? "somebody ordered it; 'ponctl ops deregister' names the operation "
                                                    "that lets it register again"
                                                  : "look for weak light: clean the connectors of the drop",
                        compare_light()});
        conclude_light_lost();
    }

    void conclude_power()
    {
        if (made.neighbours.together > 0)
            return say("power", "it lost its power, together with " + count_together(),
                       {"ask whether there is a power failure in the area; the fibre need not be looked at"});
        say("power", "it lost its power: it said good-bye with a dying gasp",
            {"ask the customer whether the ONU has power: plug, switch, adapter, fuse",
             "the fibre need not be looked at first"});
    }

    std::string count_together() const
    {
        const uint32_t count = made.neighbours.together;
        return std::to_string(count) + (count == 1 ? " other ONU" : " other ONUs") + " of the port";
    }

    void conclude_light_lost()
    {
        const std::string_view alarm = made.last_cause->name;
        if (made.neighbours.together > 0 && made.neighbours.online == 0)
            return say(
                "feeder", "its light is lost, and the port hears no ONU any more" + where(alarm),
                {"look for a fault that all have in common: the feeder fibre, the first splitter, the patch cord at "
                 "the OLT",
                 "look at the module of the port: 'ponctl optics " + std::to_string(facts.onu.port) + "'"});
        if (made.neighbours.together > 0)
            return say("branch", "its light is lost, together with that of " + count_together() + where(alarm),
                       {"look at what these ONUs have in common: a distribution fibre or a splitter",
                        "see which ONUs they are: 'ponctl onu list " + std::to_string(facts.onu.port) +
                            " --where state=offline'"});
        say("drop", "its light is lost, and that of no other ONU at that time" + where(alarm),
            {"look at its drop fibre and at the connectors at the customer and at the splitter",
             "have the customer look at the light of the ONU: red or dark means no light from the OLT"});
    }

    const Facts &facts;
    Diagnosis made;
};

} // namespace

const AlarmFact *reason_of(const std::vector<AlarmFact> &alarms, const OnuFact &onu)
{
    const AlarmFact *best = nullptr;
    for (const AlarmFact &alarm : alarms)
        if (alarm.port == onu.port && alarm.mac == onu.mac && is_reason(alarm) && (!best || tells_more(alarm, *best)))
            best = &alarm;
    return best;
}

Diagnosis diagnose(const Facts &facts)
{
    return Doctor(facts).diagnose();
}

} // namespace ponctl
