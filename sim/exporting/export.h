// A running OLT is written as a scenario, from which an OLT with the same ports, fibre, ONUs and services is made.
#pragma once

#include <span>
#include <stdexcept>
#include <string>

#include "model/olt/olt.h"
#include "scenario/scenario.h"

namespace ponsim
{

// This error says why an OLT cannot be written as a scenario.
class ExportError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Returns the text. What scenarios cannot say is left out, and comments at the beginning say what that is. `upcoming`
// are the events that have not happened yet; their times count from now on, in whole seconds. `scenario` is that of the
// OLT, or null. Throws ExportError.
std::string export_scenario(const Olt &olt, std::span<const Event> upcoming, const OltScenario *scenario);

} // namespace ponsim
