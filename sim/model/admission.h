// What the binding commands do to the OLT. Each function reads it and says what is to change, or why nothing is.
#pragma once

#include <bitset>
#include <cstdint>
#include <optional>

#include "model/olt.h"

namespace ponsim
{

using OnuIds = std::bitset<onus_per_port>;

inline constexpr size_t max_onu_records = 1024; // a port

struct Plan {
    uint32_t status;
    Change change; // empty unless the status is BSP_OK
};

// Binds to `onu_id` or, without one, to the lowest free id from 1 on; id 0 is used last, because to several commands
// it means "none". Binding again to the same id, or without one on the same port, replaces mode and texts.
Plan bind_onu(const Olt &olt, uint32_t pon_port, std::optional<uint32_t> onu_id, const Binding &binding);

// Releases what the id names or, where `mac` is not zero, what the MAC address names; an id other than 0 must then
// name the same ONU.
Plan release_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id, const Mac &mac);

// All of the ids or, where one is not bound, none. No ids at all are a mistake in the record.
Plan release_onus(const Olt &olt, uint32_t pon_port, const OnuIds &onu_ids);
Plan release_all(const Olt &olt, uint32_t pon_port);
Plan release_offline(const Olt &olt, uint32_t pon_port);

// Reboots all of the ids or, where one is not bound or not online, none. The ONUs are back at once: a reboot shows in
// their count of reboots only.
Plan reboot_onus(const Olt &olt, uint32_t pon_port, const OnuIds &onu_ids);

// The ONUs bound to the ids exchange these ids, so that MAC addresses ascend with ids. Ids not bound are left aside.
Plan sort_onus(const Olt &olt, uint32_t pon_port, const OnuIds &onu_ids);

Plan set_ranging_limits(const Olt &olt, uint32_t pon_port, const RangingLimits &limits);

// Decides on later bindings; one that exists stays.
Plan set_supported(const Olt &olt, uint32_t pon_port, const Mac &mac, bool supported);

} // namespace ponsim
