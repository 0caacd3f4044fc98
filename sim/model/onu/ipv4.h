// IPv4 addresses and networks are numbers here. Blocks have them in transmission order.
#pragma once

#include <bit>
#include <cstdint>
#include <string>

#include "model/olt/remote.h"
#include "text/ipv4.h"

namespace ponsim
{

inline constexpr uint32_t max_vlan = 4094;
inline constexpr uint32_t max_vlan_priority = 7;

using Ipv4Field = layout::At<layout::Bytes<4>>;

inline uint32_t get_ipv4(const OnuBlock &block, Ipv4Field at)
{
    uint32_t address = 0;
    for (const uint8_t byte : block.get(at))
        address = address << 8 | byte;
    return address;
}

inline text::Ipv4 ipv4_bytes(uint32_t address)
{
    text::Ipv4 bytes;
    for (uint32_t byte = 0; byte < bytes.size(); ++byte)
        bytes[byte] = static_cast<uint8_t>(address >> (24 - 8 * byte));
    return bytes;
}

inline void put_ipv4(OnuBlock &block, Ipv4Field at, uint32_t address)
{
    block.put(at, ipv4_bytes(address));
}

inline std::string ipv4_text(uint32_t address)
{
    return text::ipv4_text(ipv4_bytes(address));
}

// Returns whether the mask consists of ones from the left, then zeros. There may be no ones.
inline bool is_mask(uint32_t mask)
{
    return std::countl_one(mask) == std::popcount(mask);
}

inline int mask_length(uint32_t mask)
{
    return std::popcount(mask);
}

// Returns whether the address is a host's in its network, whose mask must have 1 to 30 bits. The first address is the
// network's, and the last is the broadcast address, so neither is a host's.
inline bool is_host(uint32_t address, uint32_t mask)
{
    if (!is_mask(mask) || mask_length(mask) < 1 || mask_length(mask) > 30) return false;
    return (address & ~mask) != 0 && (address | mask) != 0xffffffff;
}

// Returns whether there is no gateway, or the gateway is another host of the address's network.
inline bool is_gateway(uint32_t gateway, uint32_t address, uint32_t mask)
{
    return gateway == 0 || (is_host(gateway, mask) && (gateway & mask) == (address & mask) && gateway != address);
}

} // namespace ponsim
