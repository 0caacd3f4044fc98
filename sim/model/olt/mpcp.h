// The multi-point control protocol's parameters of a PON port.
#pragma once

#include <cstdint>

#include "model/olt/olt.h"
#include "model/olt/plan.h"

namespace ponsim
{

// Times in time quanta of 16 ns, unless something else is said.
struct Mpcp {
    uint32_t discovery_interval = 1000; // ms from one discovery window to the next
    uint32_t discovery_window = 16384;
    uint32_t report_timeout = 1000; // ms without a REPORT after which an ONU is deregistered
    uint32_t gate_timeout = 50;     // ms without a GATE after which an ONU stops sending
    uint32_t grant_length = 2048;   // of an ONU with full queues
    uint32_t grant_cycle = 1000;    // us from one grant of an ONU to the next
    uint32_t sync_time = 64;        // that the receiver needs at a grant's start
    uint32_t fec = 0;               // 1: forward error correction is on

    bool operator==(const Mpcp &) const = default;
};

// Which of them a command sets.
enum class MpcpSet : uint32_t { discovery = 1, timeouts, grants };

Mpcp mpcp_of(const Olt &olt, uint32_t pon_port);

// Whether the block keeps them.
bool is_mpcp(const BlockPlace &place);

// Takes over the parameters that are named, and leaves the others as they are.
Plan set_mpcp(const Olt &olt, uint32_t pon_port, MpcpSet which, const Mpcp &wanted);

} // namespace ponsim
