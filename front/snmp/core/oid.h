// Object identifiers and values as SNMP has them.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace front::snmp
{

using Oid = std::vector<uint32_t>;
using OidView = std::span<const uint32_t>;

// The numbers are those of AgentX.
enum class Type : uint16_t {
    integer = 2,
    octets = 4,
    oid = 6,
    ip_address = 64,
    counter32 = 65,
    gauge32 = 66,
    time_ticks = 67,
    counter64 = 70,
};

// What a value is depends on its type: octets (also those of an IP address), an object identifier, or else a number. A
// negative integer is the number with the same 32 bits.
struct Value {
    Type type;
    uint64_t number = 0;
    std::string octets = {};
    Oid oid = {};

    bool operator==(const Value &) const = default;
};

struct Binding {
    Oid name;
    Value value;

    bool operator==(const Binding &) const = default;
};

// Returns whether the identifier is this one or stands below it.
bool is_below(OidView oid, OidView top);
// Returns less than 0, 0 or more than 0, in the order in which managers walk.
int compare(OidView one, OidView other);

// That order for sorting and for maps. The operator < of vectors is not to be used: on a big-endian processor the
// standard library of GCC 12 compares only a quarter of the octets of such vectors.
struct OidLess {
    bool operator()(OidView one, OidView other) const { return compare(one, other) < 0; }
};

} // namespace front::snmp
