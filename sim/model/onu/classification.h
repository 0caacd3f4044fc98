// Classification rules of UNI ports say to which of an ONU's upstream queues frames go.
#pragma once

#include <cstdint>

#include "model/olt/remote.h"

namespace ponsim
{

inline constexpr uint32_t classification_size = 298;

// Returns whether there can be such rules of a UNI port, whatever the ONU is. They are kept in the order of their
// precedence.
bool is_good_classification(const OnuBlock &block);

// Returns the rules of a UNI port.
OnuBlock classification(const Olt &olt, const RemoteOnu &onu, uint32_t uni, Side side);

// Configures the ONU to add, replace or delete rules.
Plan classify(const Olt &olt, const RemoteOnu &onu, uint32_t uni, const OnuBlock &request);

} // namespace ponsim
