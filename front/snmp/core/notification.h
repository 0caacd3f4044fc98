// What managers are told by themselves.
#pragma once

#include <span>
#include <string_view>
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

// Returns the notifications that tell of an event at the OLT with this index; none of what no manager is told. Links
// that go down or come back are told of by IF-MIB, with what these objects say of the interface, unless they are null.
std::vector<Notification> notifications_of(const Event &event, uint32_t olt_index, const MibSettings &settings,
                                           const Objects *objects = nullptr);

// An object that notifications have, whose number stands below bspEvent.
struct EventObject {
    uint32_t number;
    std::string_view name;
    Type type;
};
// Returns them all, and the names of notifications, so that BSP-PON-MIB can be compared with them: what a notification
// has always comes first.
std::span<const EventObject> event_objects();
std::string_view notification_name(EventKind kind); // empty of what only IF-MIB tells of

} // namespace front::snmp
