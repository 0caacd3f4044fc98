#include "snmp/agentx/writer.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace front::snmp::agentx
{
namespace
{

constexpr size_t length_at = 16; // in the header
constexpr std::array<uint32_t, 4> internet{1, 3, 6, 1};

} // namespace

Writer::Writer(const Header &header) : order(header.order())
{
    u8(Header::protocol);
    u8(static_cast<uint8_t>(header.type));
    u8(header.flags);
    u8(0);
    u32(header.session);
    u32(header.transaction);
    u32(header.packet);
    u32(0);
}

template <class Number>
void Writer::number(Number value)
{
    const Number written = in_order(value, order);
    bytes.append(reinterpret_cast<const char *>(&written), sizeof written);
}

void Writer::oid(OidView value, bool included)
{
    // A byte stands for the first five numbers where most object identifiers begin in the same way.
    uint8_t prefix = 0;
    if (value.size() > internet.size() && std::ranges::equal(value.first(internet.size()), internet) &&
        value[internet.size()] > 0 && value[internet.size()] <= 255) {
        prefix = static_cast<uint8_t>(value[internet.size()]);
        value = value.subspan(internet.size() + 1);
    }
    u8(static_cast<uint8_t>(value.size()));
    u8(prefix);
    u8(included);
    u8(0);
    for (const uint32_t subid : value)
        u32(subid);
}

void Writer::octets(std::string_view text)
{
    u32(static_cast<uint32_t>(text.size()));
    bytes.append(text);
    bytes.append((4 - text.size() % 4) % 4, '\0');
}

void Writer::binding(OidView name, const Value &value)
{
    u16(static_cast<uint16_t>(value.type));
    u16(0);
    oid(name);
    switch (value.type) {
    case Type::integer:
    case Type::counter32:
    case Type::gauge32:
    case Type::time_ticks:
        return u32(static_cast<uint32_t>(value.number));
    case Type::counter64:
        return u64(value.number);
    case Type::octets:
    case Type::ip_address:
        return octets(value.octets);
    case Type::oid:
        return oid(value.oid);
    }
}

void Writer::without_value(uint16_t exception, OidView name)
{
    u16(exception);
    u16(0);
    oid(name);
}

std::string Writer::finish()
{
    const uint32_t length = in_order(static_cast<uint32_t>(bytes.size() - Header::size), order);
    std::memcpy(&bytes[length_at], &length, sizeof length);
    return std::move(bytes);
}

} // namespace front::snmp::agentx
