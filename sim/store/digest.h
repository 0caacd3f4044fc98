// A digest is a short name for a long text.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "text/hex.h"

namespace ponsim
{

// Returns FNV-1a of 64 bits as 16 hexadecimal digits.
inline std::string digest(std::string_view text)
{
    uint64_t hash = 0xcbf29ce484222325;
    for (const char byte : text)
        hash = (hash ^ static_cast<uint8_t>(byte)) * 0x100000001b3;
    std::array<uint8_t, sizeof hash> bytes;
    for (uint8_t &byte : bytes) {
        byte = static_cast<uint8_t>(hash >> 56);
        hash <<= 8;
    }
    return text::to_hex(bytes);
}

} // namespace ponsim
