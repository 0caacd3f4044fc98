// These are a PON port's parameters of the multi-point control protocol.
#pragma once

#include <cstdint>

#include "model/change/plan.h"
#include "model/olt/olt.h"

namespace ponsim
{

// Times are in time quanta of 16 ns, unless the comment behind them says otherwise.
struct Mpcp {
    uint32_t discovery_interval = 1000; // ms from one discovery window to the next
    uint32_t discovery_window = 16384;
    uint32_t report_timeout = 1000; // ms without a REPORT after which an ONU is deregistered
    uint32_t gate_timeout = 50;     // ms without a GATE after which an ONU stops sending
    uint32_t grant_length = 2048;   // for an ONU with full queues
    uint32_t grant_cycle = 1000;    // us from one grant of an ONU to the next
    uint32_t sync_time = 64;        // which the receiver needs at the start of a grant
    uint32_t fec = 0;               // 1: forward error correction is on

    bool operator==(const Mpcp &) const = default;
};

// An MpcpSet says which of the parameters a command sets.
enum class MpcpSet : uint32_t { discovery = 1, timeouts, grants };

// Returns whether a port can have these parameters.
bool is_good(const Mpcp &mpcp);

Mpcp mpcp_of(const Olt &olt, uint32_t pon_port);

// Index 0 of the command's blocks belongs to the optical status, which shares its code.
inline constexpr uint32_t mpcp_index = 1;
// Returns whether the block keeps these parameters.
bool is_mpcp(const BlockKey &key);

// Takes over the named parameters, and leaves the others as they are.
Plan set_mpcp(const Olt &olt, uint32_t pon_port, MpcpSet which, const Mpcp &wanted);

} // namespace ponsim
