// These limits say how many ports and ONUs there can be, and how far away an ONU can be.
#pragma once

#include <cstdint>

namespace ponsim
{

inline constexpr uint32_t max_ports = 16;
inline constexpr uint32_t onus_per_port = 128;
inline constexpr uint32_t max_unis = 4;         // of an ONU, numbered from 1
inline constexpr uint32_t ge_uplinks = 4;       // to the network, numbered from 1
inline constexpr uint32_t max_distance = 20000; // m

} // namespace ponsim
