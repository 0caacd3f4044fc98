// These commands make things happen to ONUs from outside.
#include "control/sets.h"
#include "model/lifecycle/registration.h"
#include "model/olt/demand.h"
#include "model/olt/light_watch.h"
#include "model/plant/device.h"
#include "model/port/loops.h"
#include "model/port/optics.h"
#include "model/port/sla.h"

namespace ponsim
{
namespace
{

// Plans something for each ONU that the first two words name.
template <class PlanOne>
Plan plan_onus(const Olt &olt, std::span<const std::string> words, PlanOne plan_one)
{
    return plan_each<OnuAtPort>(
        olt, control_onus(control_ports(olt, words[0]), words[1]),
        [&](const Olt &model, const OnuAtPort &onu) { return plan_one(model, onu.pon_port, onu.mac); });
}

Plan power(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 3) throw ControlError("power: expected a PON port, an ONU, and on or off");
    const bool on = control_switch(words[2]);
    return plan_onus(olt, words, [&](const Olt &model, uint32_t pon_port, const Mac &mac) {
        return set_power(model, pon_port, mac, on);
    });
}

Plan outage(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 2 && words.size() != 3)
        throw ControlError("outage: expected a PON port, a branch of its fibre, and perhaps on or off");
    const bool begins = words.size() == 2 || control_switch(words[2]);
    std::vector<OnuAtPort> onus;
    for (const BranchKey &key : control_branches(control_ports(olt, words[0]), words[1])) {
        const PonPort &port = *olt.port(key.pon_port);
        for (const Arrival &arrival : port.arrivals)
            if (const OnuAtPort onu{port.number, arrival.mac};
                !arrival.unplugged && is_beyond(port, arrival, key.branch))
                if (std::ranges::find(onus, onu) == onus.end()) onus.push_back(onu);
    }
    if (onus.empty()) throw ControlError("outage: there is no ONU beyond " + words[1]);
    return plan_each<OnuAtPort>(olt, onus, [&](const Olt &model, const OnuAtPort &onu) {
        return set_power(model, onu.pon_port, onu.mac, !begins);
    });
}

Plan loop(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 4) throw ControlError("loop: expected a PON port, an ONU, a UNI port, and on or off");
    const bool on = control_switch(words[3]);
    const std::vector<OnuAtPort> onus = control_onus(control_ports(olt, words[0]), words[1]);
    return plan_each<UniKey>(olt, control_unis(olt, onus, words[2]),
                             [&](const Olt &model, const UniKey &uni) { return set_loop(model, uni, on); });
}

Plan age(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 3) throw ControlError("age-onu: expected a PON port, an ONU, and hours");
    const auto hours = static_cast<uint32_t>(control_number(words[2], 0, max_laser_hours));
    return plan_onus(olt, words, [&](const Olt &model, uint32_t pon_port, const Mac &mac) {
        return age_onu(model, pon_port, mac, hours);
    });
}

Plan rogue(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 3) throw ControlError("rogue: expected a PON port, an ONU, and on or off");
    const bool on = control_switch(words[2]);
    return plan_onus(olt, words, [&](const Olt &model, uint32_t pon_port, const Mac &mac) {
        return set_rogue(model, pon_port, mac, on);
    });
}

Plan load(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 4 || (words[2] != "up" && words[2] != "down"))
        throw ControlError("load: expected a PON port, an ONU, up or down, and kbit/s or default");
    const Direction direction = words[2] == "up" ? Direction::up : Direction::down;
    std::optional<uint32_t> kbits;
    if (words[3] != "default") kbits = static_cast<uint32_t>(control_number(words[3], 0, line_rate));
    return plan_onus(olt, words, [&](const Olt &model, uint32_t pon_port, const Mac &mac) {
        return set_load(model, pon_port, mac, direction, kbits);
    });
}

Plan flood(const Olt &olt, std::span<const std::string> words)
{
    if (words.size() != 3) throw ControlError("flood: expected a PON port, an ONU, and broadcast frames a second");
    const auto frames = static_cast<uint32_t>(control_number(words[2], 0, max_flood));
    return plan_onus(olt, words, [&](const Olt &model, uint32_t pon_port, const Mac &mac) {
        return set_flood(model, pon_port, mac, frames);
    });
}

constexpr Control commands[] = {
    {"power", "PORT ONU on|off", "an ONU that has arrived at a PON port has power, or loses it", power},
    {"outage", "PORT BRANCH [on|off]", "all ONUs beyond a branch lose power; off ends it", outage},
    {"loop", "PORT ONU UNI on|off", "there is a loop behind a UNI port of a bound ONU, or none", loop},
    {"age-onu", "PORT ONU HOURS", "makes the laser of an ONU older", age},
    {"rogue", "PORT ONU on|off", "whether an ONU sends all the time, and blinds its port", rogue},
    {"load", "PORT ONU up|down KBITS|default", "what an ONU wants to send, or is to be sent", load},
    {"flood", "PORT ONU FRAMES", "broadcast frames a second that an ONU sends beyond its load; 0 ends it", flood},
};

} // namespace

std::span<const Control> onu_controls()
{
    return commands;
}

} // namespace ponsim
