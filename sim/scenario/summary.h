// The summary of a scenario is for people who want to see whether it describes what they mean.
#pragma once

#include <cstdint>
#include <string>

#include "scenario/scenario.h"

namespace ponsim
{

// Returns a table of OLTs and their ports, with ONUs, events, the losses between ports and ONUs, and how far the losses
// are from what the optical class of the port is made for. A line for each port that is outside of that warns.
std::string summary_of(const Scenario &scenario);

// Writes 0.01 dB in dB.
std::string to_db(int32_t loss);

} // namespace ponsim
