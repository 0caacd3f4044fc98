// These are the blocks that configure the management address, FEC, time and LLIDs of an ONU. Each is checked here as
// far as it does not matter which ONU it is for.
#pragma once

#include <cstdint>

#include "model/olt/remote.h"

namespace ponsim
{

inline constexpr uint32_t management_size = 17;
inline constexpr uint32_t fec_size = 4;
inline constexpr uint32_t time_size = 16;
inline constexpr uint32_t llids_size = 4;

// The numbers of the mode are those of CTC. An ONU without FEC reports the first one, and cannot be configured.
enum FecMode : uint32_t { fec_unknown = 1, fec_enabled = 2, fec_disabled = 3 };

// These return whether there can be such a block. The block of the management address is zero while it is off, and that
// of the LLIDs is their number.
bool is_good_management(const OnuBlock &block);
bool is_good_fec(const OnuBlock &block);
bool is_good_time(const OnuBlock &block);
bool is_good_llids(const OnuBlock &block);

} // namespace ponsim
