// These functions are what the binding commands do to the OLT. Each function reads the OLT and returns what is to
// change, or why nothing changes.
#pragma once

#include <cstdint>
#include <optional>

#include "model/change/plan.h"
#include "model/olt/olt.h"

namespace ponsim
{

inline constexpr size_t max_onu_records = 1024; // of each port

// Binds to `onu_id` or, when none is given, to the lowest free id, as lowest_free() finds it. Binding again to the same
// id, or without an id on the same port, replaces mode and texts.
Plan bind_onu(const Olt &olt, uint32_t pon_port, std::optional<uint32_t> onu_id, const Binding &binding);

// Releases the ONU that find_bound() of bound.h finds. The ONU waits until it registers again.
Plan release_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id, const Mac &mac);

// Releases all of the ids or, when one of them is not bound, none. It is a mistake in the record to name no ids at all.
Plan release_onus(const Olt &olt, uint32_t pon_port, const OnuIds &onu_ids);
Plan release_all(const Olt &olt, uint32_t pon_port);
Plan release_offline(const Olt &olt, uint32_t pon_port);

// Reboots the ONUs of all ids or, when one of them is not bound or not online, none. The ONUs are back at once, and run
// their committed images. What they were downloading is lost.
Plan reboot_onus(const Olt &olt, uint32_t pon_port, const OnuIds &onu_ids);

// The ONUs bound to the ids exchange these ids, so that MAC addresses ascend with ids. Ids that are not bound are left
// aside.
Plan sort_onus(const Olt &olt, uint32_t pon_port, const OnuIds &onu_ids);

// Sets the limits. The ONUs that come into reach register.
Plan set_ranging_limits(const Olt &olt, uint32_t pon_port, const RangingLimits &limits);

// Sets whether the ONU is supported. This matters to later bindings. An existing binding stays.
Plan set_supported(const Olt &olt, uint32_t pon_port, const Mac &mac, bool supported);

} // namespace ponsim
