// An SLA is the bandwidth that an ONU has by contract. It is part of the binding, and moves with it.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

#include "model/change/plan.h"
#include "model/olt/olt.h"

namespace ponsim
{

// These store an SLA. Without a value they remove the stored one.
Plan set_sla(const Olt &olt, uint32_t pon_port, uint32_t onu_id, const std::optional<Sla> &sla);
Plan set_sla_down(const Olt &olt, uint32_t pon_port, uint32_t onu_id, std::optional<uint32_t> maximum);

// Granted says how much of a port's upstream capacity its ONUs have been promised, in kbit/s. What the grants of all
// bound ONUs take of the line cannot be promised.
struct Granted {
    uint32_t onus = 0; // with a stored SLA
    uint32_t fixed = 0;
    uint32_t assured = 0;
    uint32_t capacity = 0;

    uint32_t free() const { return capacity - std::min(capacity, fixed + assured); }
};
Granted granted_at(const Olt &olt, const PonPort &port);

} // namespace ponsim
