// The digest SHA-256, which names a text by what it says.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace text
{

using Sha256 = std::array<uint8_t, 32>;

Sha256 sha256(std::string_view text);

} // namespace text
