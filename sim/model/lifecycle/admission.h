// What the binding commands do to the OLT. Each function reads it and says what is to change, or why nothing is.
#pragma once

#include <cstdint>
#include <optional>

#include "model/olt/olt.h"
#include "model/olt/plan.h"

namespace ponsim
{

inline constexpr size_t max_onu_records = 1024; // a port

// Binds to `onu_id` or, without one, to the lowest free id, as in lowest_free(). Binding again to the same id, or
// without one on the same port, replaces mode and texts.
Plan bind_onu(const Olt &olt, uint32_t pon_port, std::optional<uint32_t> onu_id, const Binding &binding);

// Releases the ONU that find_bound() of bound.h finds. It waits until it registers again.
Plan release_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id, const Mac &mac);

// All of the ids or, where one is not bound, none. No ids at all are a mistake in the record.
Plan release_onus(const Olt &olt, uint32_t pon_port, const OnuIds &onu_ids);
Plan release_all(const Olt &olt, uint32_t pon_port);
Plan release_offline(const Olt &olt, uint32_t pon_port);

// Reboots all of the ids or, where one is not bound or not online, none. The ONUs are back at once, and
// run their committed images. What they were downloading is lost.
Plan reboot_onus(const Olt &olt, uint32_t pon_port, const OnuIds &onu_ids);

// The ONUs bound to the ids exchange these ids, so that MAC addresses ascend with ids. Ids not bound are left aside.
Plan sort_onus(const Olt &olt, uint32_t pon_port, const OnuIds &onu_ids);

// The ONUs that come into reach register.
Plan set_ranging_limits(const Olt &olt, uint32_t pon_port, const RangingLimits &limits);

// Decides on later bindings; one that exists stays.
Plan set_supported(const Olt &olt, uint32_t pon_port, const Mac &mac, bool supported);

} // namespace ponsim
