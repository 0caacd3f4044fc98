// What managers can change: an object, and the operation that a value of it asks for. Whether that is allowed is
// decided where the operation is called.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "snmp/core/mib.h"

namespace front::snmp
{

// An Order is a call of an operation at an OLT; its arguments are named as the catalogue does.
struct Order {
    uint32_t olt_index;
    std::string_view operation;
    std::vector<std::pair<std::string, std::string>> arguments;

    bool operator==(const Order &) const = default;
};

// Why a value cannot be set. The numbers are those of AgentX and SNMPv2.
enum class SetError : uint16_t {
    no_access = 6,
    wrong_type = 7,
    wrong_length = 8,
    wrong_value = 10,
    no_creation = 11,
    not_writable = 17,
};

// Returns the order that follows when this instance is set to this value. All of it is checked but what the OLT alone
// knows.
std::variant<Order, SetError> order_of(const Objects &objects, const MibSettings &settings, OidView oid,
                                       const Value &value);

// Returns the columns that can be set, in order.
std::vector<Oid> writable_columns(const MibSettings &settings);

} // namespace front::snmp
