// Bytes as hexadecimal digits, and MAC addresses, which are six of them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace text
{

// Two lower-case digits are written for each byte, and digits of both cases are read.
std::string to_hex(std::span<const uint8_t> bytes);
std::optional<std::vector<uint8_t>> from_hex(std::string_view digits);

using Mac = std::array<uint8_t, 6>; // in transmission order

// An address is written as 00:1a:ff:33:44:55, and read as that, 00-1A-FF-33-44-55 or 001a.ff33.4455.
std::string mac_text(std::span<const uint8_t, 6> mac);
std::optional<Mac> to_mac(std::string_view text);

} // namespace text
