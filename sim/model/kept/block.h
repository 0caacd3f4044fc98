// A set command leaves a block of bytes for the matching get.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "model/kept/family.h"

namespace ponsim
{

inline constexpr uint32_t longest_block = 4096; // bytes, whatever the command

// A BlockKey names the set command by its channel and code, and has the port and the index that tell its blocks
// apart.
struct BlockKey {
    uint32_t channel;
    uint32_t command;
    uint32_t pon_port; // 0: the block is the OLT's
    uint32_t index;

    auto operator<=>(const BlockKey &) const = default;
};

struct Block {
    std::string bytes;
};

template <>
struct Family<Block> {
    static constexpr std::string_view table = "block";
    static constexpr AllColumns configured = all_columns;
    using Key = BlockKey;
    static constexpr std::tuple key{Column{"channel", &Key::channel}, Column{"command", &Key::command},
                                    Column{"pon_port", &Key::pon_port, {0, max_ports}}, Column{"idx", &Key::index}};
    static constexpr std::tuple value{BytesColumn{"bytes", &Block::bytes, {0, longest_block}}};
    static constexpr size_t most = max_ports * (onus_per_port + 64) + 64;
};

// Without bytes the entry removes the block, as if nothing had been set.
inline Entry<Block> block_at(const BlockKey &key, const std::optional<std::string> &bytes)
{
    return {key, bytes ? std::optional(Block{*bytes}) : std::nullopt};
}

} // namespace ponsim
