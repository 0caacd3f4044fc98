// A ledger is kept of each ONU that monitors its UNI ports. It says what the ONU had sent and received before its
// traffic last changed.
#pragma once

#include <vector>

#include "model/base/limits.h"
#include "model/base/time.h"
#include "model/kept/family.h"
#include "model/kept/onu.h"
#include "model/kept/traffic.h"

namespace ponsim
{

inline constexpr ModelTime monitoring_period = 900 * ms_per_second;

// UniFrames say what becomes of the frames of a UNI port, as rates or as numbers of frames.
struct UniFrames {
    PerFlow up = {};          // received from its users, and sent to the PON port
    PerFlow dropped = {};     // received from its users, but beyond the port's limit or the ONU's grants
    PerFlow down = {};        // received from the PON port, and sent to its users
    PerFlow discarded = {};   // received from the PON port, but more than the port can send or its limit allows
    uint64_t fragments = 0;   // left of frames of the users that collided
    uint64_t crc_errored = 0; // frames of the users that were broken off

    bool operator==(const UniFrames &) const = default;
};

// A Ledger counts in ten-thousandths of frames. The periods of monitoring begin with it, so that the counts of two
// periods can be told at any time: beside what was counted at `until` it has what was counted when the period of that
// time and the period before began.
struct Ledger {
    ModelTime since = 0; // the ONU monitors from then on; it can be later than now
    ModelTime until = 0;
    std::vector<UniFrames> frames = {}; // by UNI port; a port that is missing has counted nothing
    std::vector<UniFrames> at_period = {};
    std::vector<UniFrames> at_last_period = {};

    bool operator==(const Ledger &) const = default;
};

template <>
struct Family<Ledger> {
    static constexpr std::string_view table = "ledger";
    using Key = OnuAtPort;
    static constexpr std::tuple key{PortColumn{&Key::pon_port}, Column{"mac", &Key::mac}};
    static constexpr Bounds sizes{0, max_unis * sizeof(UniFrames)};
    static constexpr size_t most_of_port = remembered_per_port;
    static constexpr size_t most = max_ports * most_of_port;
    static constexpr std::tuple value{Column{"since", &Ledger::since}, Column{"until", &Ledger::until},
                                      BytesColumn{"frames", &Ledger::frames, sizes},
                                      BytesColumn{"at_period", &Ledger::at_period, sizes},
                                      BytesColumn{"at_last_period", &Ledger::at_last_period, sizes}};
};

} // namespace ponsim
