// Scenarios: what is found behind an OLT, what it is set to at first, and what happens to it when, as a TOML text.
#pragma once

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "model/base/time.h"
#include "model/olt/change.h"
#include "model/plant/population.h"

namespace ponsim
{

// What is wrong with a text, and in which of its lines: "FILE:LINE: reason".
class ScenarioError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Something that happens to an OLT from outside.
struct Event {
    ModelTime at;
    std::string words; // of a control command

    bool operator==(const Event &) const = default;
};

class Olt;

struct OltScenario {
    std::string name;
    Settings settings;
    Change provisioning;       // that a new OLT begins with
    std::vector<Event> events; // in the order in which they happen
};

struct Scenario {
    std::vector<OltScenario> olts;
};

// Reads a text; `name` is that of its file, for errors. Throws ScenarioError.
Scenario read_scenario(std::string_view text, const std::string &name);
Scenario read_scenario_file(const std::string &file);

// Adds to `change` that all ONUs are switched on when the OLT is.
void power_up(const Olt &olt, Change &change);

// A table for people: OLTs and their ports, with ONUs, events and the losses between ports and ONUs.
std::string summary_of(const Scenario &scenario);

// The length of a time as scenarios have it: 1h 30min.
std::string time_text(ModelTime time);

} // namespace ponsim
