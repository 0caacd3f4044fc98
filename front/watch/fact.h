// What is known of an OLT in single facts, so that two readings can be compared, and what was known before a restart
// with what is found behind it.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "collector/snapshot.h"

namespace front
{

enum class FactKind : uint8_t {
    reach,   // whether the OLT answers: "reached" or "lost"
    onu,     // the state of an ONU
    alarm,   // that an alarm is active; the detail is its name
    light,   // how good light is, "well" or "low"; the detail is who receives it, "olt" or "onu"
    loop,    // the state of a UNI port with a loop; the detail is its number
    upgrade, // the run of an ONU's upgrade
    module,  // the state of what a module measures, whose cage is the port; the detail is the quantity
};
inline constexpr size_t fact_kind_count = 7;

// A FactKey says what a fact is about. The port is 0 of the OLT itself, and of an uplink.
struct FactKey {
    FactKind kind;
    uint32_t port = 0;
    std::string mac; // of an ONU
    std::string detail;

    auto operator<=>(const FactKey &) const = default;
};

struct Fact {
    std::string value;
    std::optional<uint32_t> onu_id = {};
    std::string cause = {}, place = {}; // why it is so, as far as the OLT knows
    std::optional<double> measure = {}; // dBm
    UnixTime since = 0;                 // when the value was found first; 0: it was so when the OLT was looked at first

    bool operator==(const Fact &) const = default;
};

using Facts = std::map<FactKey, Fact>;

// Light is low from one limit on and well again only beyond another, so that an ONU between them is not told of again
// and again. Powers are in dBm.
struct LightLimits {
    double low;
    double well;

    bool operator==(const LightLimits &) const = default;
};
struct Limits {
    LightLimits olt{-27.0, -26.0}; // what the OLT receives
    LightLimits onu{-25.0, -24.0}; // what ONUs receive

    bool operator==(const Limits &) const = default;
};

// Returns what the fact that an alarm is active is about.
FactKey key_of(const view::onu_alarm &alarm);

// Returns the facts of one kind that a snapshot shows. What is not measured now is as it was before.
Facts facts_of(FactKind kind, const Snapshot &snapshot, const Facts &before, const Limits &limits);

} // namespace front
