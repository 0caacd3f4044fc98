// This record says what a PON port had been offered before its traffic last changed. It tells the OLT nothing new, and
// only exists to be kept.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "model/base/time.h"
#include "model/kept/family.h"

namespace ponsim
{

enum class Cast : uint8_t { unicast, multicast, broadcast };

// A Flow is made of frames of one length. All that an ONU offers is made of these flows.
struct Flow {
    uint32_t length; // octets, with the frame check sequence
    Cast cast;
};

inline constexpr std::array<Flow, 8> flows{{{64, Cast::unicast},
                                            {96, Cast::unicast},
                                            {192, Cast::unicast},
                                            {384, Cast::unicast},
                                            {768, Cast::unicast},
                                            {1518, Cast::unicast},
                                            {192, Cast::multicast},
                                            {64, Cast::broadcast}}};
inline constexpr size_t longest_flow = 5;
static_assert(std::ranges::max_element(flows, {}, &Flow::length) == &flows[longest_flow]);
using PerFlow = std::array<uint64_t, flows.size()>;

// Rates are in tenths of frames a second, which is fine enough for slow loads. Counts that follow from them are in
// ten-thousandths of frames, and a storm overflows them in 39 years only.
inline constexpr uint64_t rate_unit = 10;
inline constexpr uint64_t count_unit = rate_unit * ms_per_second;

// Streams say what becomes of the frames of a PON port and its uplink, as rates or as numbers of frames.
struct Streams {
    PerFlow up = {};           // sent by its ONUs, and passed on
    PerFlow up_errored = {};   // sent by its ONUs, and broken on the fibre
    PerFlow up_policed = {};   // received from its ONUs, and not let in
    PerFlow up_lost = {};      // received from its ONUs, and let in, but its uplink was down or had no room
    PerFlow down = {};         // sent by the network, and passed on
    PerFlow down_lost = {};    // sent by the network, but beyond the ONU's SLA or the room of the port
    PerFlow up_unheard = {};   // sent by its ONUs, and not heard
    PerFlow down_errored = {}; // a part of `down`: broken on the fibre, or not heard

    bool operator==(const Streams &) const = default;
};

// Offered says what a PON port has been offered up to a time, in ten-thousandths of frames.
struct Offered {
    ModelTime until = 0;
    Streams frames = {};

    bool operator==(const Offered &) const = default;
};

template <>
struct Family<Offered> {
    static constexpr std::string_view table = "traffic";
    using Key = uint32_t;
    static constexpr std::tuple key{PortItself{}};
    static constexpr std::tuple value{Column{"until", &Offered::until, past}, BytesColumn{"frames", &Offered::frames}};
    static constexpr bool placed = true;
    static constexpr size_t most = max_ports;
};

} // namespace ponsim
