// The processes that there are, and which of them comes first.
#pragma once

#include <optional>
#include <span>

#include "model/olt/process.h"

namespace ponsim
{

// In the order in which they happen when they are due at the same time.
std::span<const Process> processes();

struct Happening {
    const Process *process;
    ModelTime at;
};
// What happens first, no later than `to`.
std::optional<Happening> first_due(std::span<const Process> processes, const Olt &olt, ModelTime to);

} // namespace ponsim
