// A digest is a short name for a long text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ponsim
{

// Returns FNV-1a of 64 bits as 16 hexadecimal digits.
inline std::string digest(std::string_view text)
{
    uint64_t hash = 0xcbf29ce484222325;
    for (const char byte : text)
        hash = (hash ^ static_cast<uint8_t>(byte)) * 0x100000001b3;
    std::string hex;
    for (int shift = 60; shift >= 0; shift -= 4)
        hex += "0123456789abcdef"[hash >> shift & 15];
    return hex;
}

} // namespace ponsim
