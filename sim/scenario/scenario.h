// A scenario is a TOML text. It says what is found behind an OLT, how the OLT is set up at first, and what happens to
// it at which time.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "expectation/expectation.h"
#include "model/base/time.h"
#include "model/change/change.h"
#include "model/plant/population.h"
#include "toml_file/section.h"

namespace ponsim
{

// This error says what is wrong with a text, and in which line: "FILE:LINE: reason".
using ScenarioError = toml_file::Error;

// An Event is something that happens to an OLT from outside.
struct Event {
    ModelTime at;
    std::string words;               // a control command
    std::string_view kind = "event"; // or failure, repair, or load
    // These are control commands, about other ONUs each. They are carried out together in the place of `words`, which
    // then only say what they are.
    std::shared_ptr<const std::vector<std::string>> together = {};

    bool operator==(const Event &) const = default;
};

// From a CurvePoint on, each day, loads are a percentage of what they are else.
struct CurvePoint {
    ModelTime at; // of the day
    uint32_t percent;
};

// A LoadCurve says how the loads of ONUs change over the day, in one direction.
struct LoadCurve {
    std::string name; // of the curve and the direction
    struct Step {
        ModelTime at; // of the day
        std::string words;
        std::shared_ptr<const std::vector<std::string>> commands; // one for each ONU
    };
    std::vector<Step> steps; // at least one, in the order of time
};

// A FailingPart is a part of the plant that fails by chance, and is repaired after some time.
struct FailingPart {
    std::string failure; // a control command
    std::string repair;
    ModelTime mtbf; // on average, from a repair to the next failure
    ModelTime mttr; // on average, from a failure to its repair
};

// A Check says when an expectation is looked at: after everything that happens by then.
struct Check {
    ModelTime at;
    std::shared_ptr<const Expectation> expectation;
};

class Olt;

struct OltScenario {
    std::string name;
    Settings settings;
    Change provisioning;       // with which a new OLT begins
    std::vector<Event> events; // in the order in which they happen
    std::vector<FailingPart> failing;
    std::vector<LoadCurve> curves;
    std::vector<Check> checks; // in the order of time
};

struct Scenario {
    uint64_t seed = 0;
    std::vector<OltScenario> olts = {};
};

// The Overrides are values that stand in the place of those in the text.
struct Overrides {
    struct Variable {
        std::string name;
        std::string value;
    };

    std::optional<uint64_t> seed = {};
    std::vector<Variable> variables = {};
};

// Reads a text, which includes no files. `name` is the name of the text, for errors. Throws ScenarioError.
Scenario read_scenario(std::string_view text, const std::string &name, const Overrides &overrides = {});
Scenario read_scenario_file(const std::string &file, const Overrides &overrides = {});

// Adds to `change` that all ONUs are switched on together with the OLT.
void power_up(const Olt &olt, Change &change);

} // namespace ponsim
