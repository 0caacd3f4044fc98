// IPv4 addresses as people write them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace text
{

using Ipv4 = std::array<uint8_t, 4>; // in transmission order

// An address is written and read as 10.0.0.2.
std::string ipv4_text(std::span<const uint8_t, 4> address);
std::optional<Ipv4> to_ipv4(std::string_view text);

// Returns the mask of a network with `length` bits from the left, 0 to 32.
Ipv4 ipv4_mask(uint32_t length);

} // namespace text
