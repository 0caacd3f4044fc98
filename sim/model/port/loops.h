// Loop detection finds forwarding loops behind UNI ports. It shuts such ports, and they recover.
#pragma once

#include <cstdint>

#include "model/change/plan.h"
#include "model/lifecycle/process.h"
#include "model/olt/olt.h"
#include "model/olt/remote.h"

namespace ponsim
{

enum class LoopState { looped, shut, recovered };
LoopState state_of(const LoopRecord &record);

// Returns when the port recovers by itself, which is now at the earliest. Returns no time when the port is not shut, or
// recovers by command only.
std::optional<ModelTime> recovery_of(const Olt &olt, const LoopRecord &record);

// Makes a loop appear behind a UNI port of a bound ONU, or disappear. When there are max_loops records, a new one
// replaces that of the port that recovered longest ago.
Plan set_loop(const Olt &olt, const UniKey &key, bool looped);

// Returns whether detection is switched on at a UNI port. An ONU receives this setting as the block below. Until then
// detection is on.
bool detects_loops(const Olt &olt, const UniKey &key, Side side);
OnuBlock loop_detect_block(bool on);

// These set the settings, each within its limits. While detection is off, ports recover only by command.
Plan detect_loops(const Olt &olt, uint32_t on);
Plan set_recovery_mode(const Olt &olt, uint32_t manual);
Plan set_recovery_time(const Olt &olt, uint32_t seconds);
Plan set_packet_interval(const Olt &olt, uint32_t seconds);

// Opens all ports that are shut.
Plan recover_all(const Olt &olt);

// In this process detection packets begin or cease to reach loops, loops are found and their ports shut, and ports
// recover. The packets of a loop start one interval before it is found: when the loop appears, detection is switched
// on, the ONU comes online, or the port is opened, whichever is last.
extern const Process loop_process;

} // namespace ponsim
