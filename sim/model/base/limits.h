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
inline constexpr uint32_t max_branch = 4095;    // the greatest number of a branch of a port's fibre

// A port remembers so many ONUs: those that are bound or there, and those that once were. See inventory/forgetting.h.
inline constexpr uint32_t remembered_per_port = 4096;
inline constexpr uint32_t longest_kept_text = 255; // bytes, where nothing shorter is asked for

} // namespace ponsim
