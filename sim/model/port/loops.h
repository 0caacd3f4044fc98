// Loop detection: forwarding loops behind UNI ports, the ports that it shuts for them, and their recovery.
#pragma once

#include <cstdint>

#include "model/olt/olt.h"
#include "model/olt/plan.h"
#include "model/olt/process.h"
#include "model/onu/remote.h"

namespace ponsim
{

inline constexpr size_t max_loops = 48; // UNI ports that are kept, of the whole OLT

enum class LoopState { looped, shut, recovered };
LoopState state_of(const LoopRecord &record);

// When the port recovers by itself, now at the earliest; none where it is not shut, or recovers by command only.
std::optional<ModelTime> recovery_of(const Olt &olt, const LoopRecord &record);

// A loop appears behind a UNI port of a bound ONU, or is gone. A new one takes the place of the port that recovered
// longest ago where there are max_loops.
Plan set_loop(const Olt &olt, const UniPlace &place, bool looped);

// Whether detection is switched on at a UNI port, as an ONU is told by this block. It is until the ONU is told
// otherwise.
bool detects_loops(const Olt &olt, const UniPlace &place, Side side);
OnuBlock loop_detect_block(bool on);

// The settings, each within its limits. While detection is off, no port recovers but by command.
Plan detect_loops(const Olt &olt, uint32_t on);
Plan set_recovery_mode(const Olt &olt, uint32_t manual);
Plan set_recovery_time(const Olt &olt, uint32_t seconds);
Plan set_packet_interval(const Olt &olt, uint32_t seconds);

// Opens all ports that are shut.
Plan recover_all(const Olt &olt);

// Loops that detection packets begin to reach, or no longer do; those that are found, and their ports shut; ports that
// recover. The packets of a loop start one interval before it is found: when it appears, detection is switched on, its
// ONU comes online, or its port is opened, whichever is last.
extern const Process loop_process;

} // namespace ponsim
