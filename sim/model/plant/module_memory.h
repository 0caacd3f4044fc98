// The memory of an optical module as it is read over I2C, in the layout of SFF-8472.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "model/plant/module.h"

namespace ponsim
{

using ModuleMemory = std::array<uint8_t, 256>;

// What it is, at address A0h.
ModuleMemory identity_memory(const Module &module);
// What it measures, and what its user may keep in it, at address A2h.
ModuleMemory diagnostic_memory(const Module &module, ModelTime now);

// Writes to A2h, as far as it can be written: the soft controls in byte 110, of which there is one, TX disable, and the
// user's bytes 128 to 247. False when a byte is none of these; then `record` is of no use.
bool write_diagnostic_memory(ModuleRecord &record, uint32_t offset, std::span<const uint8_t> bytes);

} // namespace ponsim
