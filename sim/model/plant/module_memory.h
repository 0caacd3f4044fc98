// This is the memory of an optical module as it is read over I2C, in the layout of SFF-8472.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "model/plant/module.h"

namespace ponsim
{

using ModuleMemory = std::array<uint8_t, 256>;

// Returns the memory at address A0h, which says what the module is.
ModuleMemory identity_memory(const Module &module);
// Returns the memory at address A2h, which holds what the module measures and what its user has written into it.
ModuleMemory diagnostic_memory(const Module &module, ModelTime now);

// Writes to the parts of A2h that can be written: the soft controls in byte 110, of which only TX disable exists, and
// the user's bytes 128 to 247. Returns false when a byte belongs to neither. The caller must then discard `record`.
bool write_diagnostic_memory(ModuleRecord &record, uint32_t offset, std::span<const uint8_t> bytes);

} // namespace ponsim
