// What set commands left for the matching get, as bytes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "model/kept/family.h"

namespace ponsim
{

// The set command, by its channel and code, the port and what else tells one from another.
struct BlockPlace {
    uint32_t channel;
    uint32_t command;
    uint32_t pon_port; // 0: of the OLT
    uint32_t index;

    auto operator<=>(const BlockPlace &) const = default;
};

struct Block {
    std::string bytes;
};

template <>
struct Family<Block> {
    static constexpr std::string_view table = "block";
    using Key = BlockPlace;
    static constexpr std::tuple key{Column{"channel", &Key::channel}, Column{"command", &Key::command},
                                    Column{"pon_port", &Key::pon_port}, Column{"idx", &Key::index}};
    static constexpr std::tuple value{BytesColumn{"bytes", &Block::bytes}};
};

// None: as if nothing had been set.
inline Entry<Block> block_at(const BlockPlace &place, const std::optional<std::string> &bytes)
{
    return {place, bytes ? std::optional(Block{*bytes}) : std::nullopt};
}

} // namespace ponsim
