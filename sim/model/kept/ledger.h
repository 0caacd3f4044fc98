// A ledger is kept of each ONU that monitors its UNI ports. It says what the ONU had sent and received before its
// traffic last changed.
#pragma once

#include "model/base/time.h"
#include "model/kept/family.h"
#include "model/kept/onu.h"
#include "model/kept/traffic.h"

namespace ponsim
{

inline constexpr ModelTime monitoring_period = 900 * ms_per_second;

// OnuFrames say what becomes of the frames of an ONU, as rates or as numbers of frames.
struct OnuFrames {
    PerFlow up = {};      // sent to its PON port
    PerFlow dropped = {}; // received from its users, but beyond its grants
    PerFlow down = {};    // received from its PON port

    bool operator==(const OnuFrames &) const = default;
};

// A Ledger counts in ten-thousandths of frames. The periods of monitoring begin with it, so that the counts of two
// periods can be told at any time: beside what was counted at `until` it has what was counted when the period of that
// time and the period before began.
struct Ledger {
    ModelTime since = 0; // the ONU monitors from then on; it can be later than now
    ModelTime until = 0;
    OnuFrames frames = {};
    OnuFrames at_period = {};
    OnuFrames at_last_period = {};

    bool operator==(const Ledger &) const = default;
};

template <>
struct Family<Ledger> {
    static constexpr std::string_view table = "ledger";
    using Key = OnuAtPort;
    static constexpr std::tuple key{PortColumn{&Key::pon_port}, Column{"mac", &Key::mac}};
    static constexpr std::tuple value{
        Column{"since", &Ledger::since}, Column{"until", &Ledger::until},
        BytesColumn{"frames", &Ledger::frames, "a count of an ONU's frames"},
        BytesColumn{"at_period", &Ledger::at_period, "a count of an ONU's frames"},
        BytesColumn{"at_last_period", &Ledger::at_last_period, "a count of an ONU's frames"}};
};

} // namespace ponsim
