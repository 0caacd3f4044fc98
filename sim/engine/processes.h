// This file lists the processes, and finds the one that comes first.
#pragma once

#include <optional>
#include <span>

#include "model/lifecycle/process.h"

namespace ponsim
{

// Processes that are due at the same time happen in this order.
std::span<const Process> processes();

// A Happening is what happens next: a process or, without one, an event of the scenario.
struct Happening {
    const Process *process;
    ModelTime at;
};
// Returns the process that happens first, no later than `to`.
std::optional<Happening> first_due(std::span<const Process> processes, const Olt &olt, ModelTime to);

} // namespace ponsim
