// This file shows what differs from a healthy plant, because somebody or something from outside made it so.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "control/sets.h"
#include "model/olt/olt.h"

namespace ponsim
{

// A Difference is one thing that is not as in a healthy plant. What does not apply is empty or 0.
struct Difference {
    std::string_view kind; // see ponsim(8)
    uint32_t pon_port = 0;
    std::string branch = {};
    std::string name = {}; // of an ONU
    std::optional<Mac> mac = {};
    uint32_t uni = 0;
    uint32_t cage = 0;
    std::optional<double> value = {};
    std::string_view unit = {}; // of the value
    std::string text = {};
};

// Returns the differences at the ports, in the order of the ports.
std::vector<Difference> differences_at(const Olt &olt, const Ports &ports);
// Returns those of modules that are at no PON port.
std::vector<Difference> differences_of_uplinks(const Olt &olt);

// Writes a table, or one line that says that there are none.
std::string to_table(const std::vector<Difference> &differences);
std::string to_json(const std::vector<Difference> &differences, ModelTime now);

} // namespace ponsim
