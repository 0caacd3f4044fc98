// What managers are told by themselves.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "snmp/core/mib.h"
#include "watch/event.h"

namespace front::snmp
{

// A Notification is what follows sysUpTime in a trap: the value of snmpTrapOID, and objects with what they are now.
struct Notification {
    Oid name;
    std::vector<Binding> objects;

    bool operator==(const Notification &) const = default;
};

// Returns the notifications that tell of an event at the OLT with this index; none of what no manager is told. A link
// that goes down or comes back is told by IF-MIB.
std::vector<Notification> notifications_of(const Event &event, uint32_t olt_index, const MibSettings &settings);

} // namespace front::snmp
