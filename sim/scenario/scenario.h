// A scenario is a TOML text. It says what is found behind an OLT, how the OLT is set up at first, and what happens to
// it at which time.
#pragma once

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "model/base/time.h"
#include "model/change/change.h"
#include "model/plant/population.h"

namespace ponsim
{

// This error says what is wrong with a text, and in which line: "FILE:LINE: reason".
class ScenarioError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// An Event is something that happens to an OLT from outside.
struct Event {
    ModelTime at;
    std::string words; // a control command

    bool operator==(const Event &) const = default;
};

class Olt;

struct OltScenario {
    std::string name;
    Settings settings;
    Change provisioning;       // with which a new OLT begins
    std::vector<Event> events; // in the order in which they happen
};

struct Scenario {
    std::vector<OltScenario> olts;
};

// Reads a text. `name` is the name of its file, for errors. Throws ScenarioError.
Scenario read_scenario(std::string_view text, const std::string &name);
Scenario read_scenario_file(const std::string &file);

// Adds to `change` that all ONUs are switched on together with the OLT.
void power_up(const Olt &olt, Change &change);

// Writes the length of a time as scenarios write it: 1h 30min.
std::string time_text(ModelTime time);

} // namespace ponsim
