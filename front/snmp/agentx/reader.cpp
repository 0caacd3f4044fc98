#include "snmp/agentx/reader.h"

#include <cstring>

namespace front::snmp::agentx
{

std::string_view Reader::take(size_t bytes)
{
    if (bytes > rest.size()) throw Malformed("it ends too early");
    const std::string_view taken = rest.substr(0, bytes);
    rest.remove_prefix(bytes);
    return taken;
}

template <class Number>
Number Reader::number()
{
    Number value;
    std::memcpy(&value, take(sizeof value).data(), sizeof value);
    return in_order(value, order);
}

uint8_t Reader::u8()
{
    return static_cast<uint8_t>(take(1)[0]);
}

uint16_t Reader::u16()
{
    return number<uint16_t>();
}

uint32_t Reader::u32()
{
    return number<uint32_t>();
}

uint64_t Reader::u64()
{
    return number<uint64_t>();
}

bool Reader::oid(Oid &into)
{
    const size_t count = u8();
    const uint8_t prefix = u8();
    const bool included = u8() != 0;
    skip(1);
    into.clear();
    if (prefix) into.assign({1, 3, 6, 1, prefix});
    if (into.size() + count > most_subids) throw Malformed("an object identifier has more than 128 numbers");
    if (count * sizeof(uint32_t) > rest.size()) throw Malformed("an object identifier ends too early");
    for (size_t i = 0; i < count; ++i)
        into.push_back(u32());
    return included;
}

std::string_view Reader::octets()
{
    const uint32_t length = u32();
    if (length > rest.size()) throw Malformed("a text ends too early");
    const std::string_view text = take(length);
    skip((4 - length % 4) % 4);
    return text;
}

Binding Reader::binding()
{
    constexpr uint16_t null = 5, opaque = 68; // which no object has
    const uint16_t type = u16();
    skip(2);
    Binding binding{.name = {}, .value = {.type = static_cast<Type>(type)}};
    oid(binding.name);
    switch (type) {
    case static_cast<uint16_t>(Type::integer):
    case static_cast<uint16_t>(Type::counter32):
    case static_cast<uint16_t>(Type::gauge32):
    case static_cast<uint16_t>(Type::time_ticks):
        binding.value.number = u32();
        break;
    case static_cast<uint16_t>(Type::counter64):
        binding.value.number = u64();
        break;
    case static_cast<uint16_t>(Type::octets):
    case static_cast<uint16_t>(Type::ip_address):
    case opaque:
        binding.value.octets = octets();
        break;
    case static_cast<uint16_t>(Type::oid):
        oid(binding.value.oid);
        break;
    case null:
        break;
    default:
        throw Malformed("a value has the type " + std::to_string(type));
    }
    return binding;
}

} // namespace front::snmp::agentx
