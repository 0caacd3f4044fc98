// This file concludes how well an OLT is, in the words and numbers that monitoring systems use.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "diagnosis/facts.h"

namespace ponctl
{

// The numbers are the exit codes that monitoring systems expect of a check.
enum class Condition { ok = 0, warning = 1, critical = 2, unknown = 3 };

std::string_view word_of(Condition condition);
// Returns the condition that decides: critical before unknown, unknown before warning, warning before ok.
Condition worse(Condition one, Condition other);

// A ModuleFact is the state of a quantity that an optical module measures: "normal", "low warning", "high alarm".
struct ModuleFact {
    uint32_t port;
    std::string quantity, state;
};

// The HealthFacts are what the service says. What it did not answer is empty.
struct HealthFacts {
    std::optional<std::string> olt; // model and version
    std::optional<MilliTime> now;
    std::optional<std::vector<OnuFact>> onus;
    std::optional<std::vector<AlarmFact>> alarms;
    std::optional<std::vector<LightFact>> light;
    std::optional<std::vector<ModuleFact>> modules;
    std::map<uint32_t, LightLimits> limits; // by port
};

// From so many percent of the bound ONUs on, those that are offline, and have not lost their power, are a warning or
// critical.
struct HealthLimits {
    uint32_t warning = 5, critical = 20;
};

struct HealthCheck {
    std::string_view name; // service, alarms, onus, light or modules
    Condition condition = Condition::ok;
    std::string summary = {};
};

struct Health {
    Condition condition = Condition::ok;
    std::string summary; // of the checks that are not ok, or of all is well
    std::array<HealthCheck, 5> checks;
    uint32_t bound = 0, online = 0, offline = 0, waiting = 0;
    uint32_t without_power = 0;       // of those that are offline
    uint32_t weak_light = 0;          // of those that are online
    std::vector<uint32_t> dark_ports; // all of their ONUs, two or more, are offline and have not lost their power
    std::map<std::string, uint32_t> active_alarms; // by severity
};

Health examine(const HealthFacts &facts, const HealthLimits &limits);

} // namespace ponctl
