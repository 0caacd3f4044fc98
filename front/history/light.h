// Light of ONUs over time. What a table of light shows is one block of bytes, so that keeping it costs one row.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "collector/snapshot.h"

namespace front
{

// The values are received power, power that the OLT receives, launch power (dBm) and temperature.
inline constexpr size_t light_values = 4;

struct LightSample {
    UnixTime at = 0;
    std::array<std::optional<double>, light_values> values;
};

// At most one reading in five minutes is kept.
inline constexpr UnixTime light_step = 5 * 60 * 1000, light_hour = 3600 * 1000;

// Returns the block of a table, in which ONUs are in the order of port and address.
std::vector<uint8_t> light_block(std::span<const view::onu_optics_table> table);
// Returns the sample of an ONU in a block, without its time, or none when it is not there or the block is damaged.
std::optional<LightSample> sample_in(std::span<const uint8_t> block, uint32_t port, const view::Mac &mac);

} // namespace front
