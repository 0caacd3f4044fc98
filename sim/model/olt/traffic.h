// The traffic of ONUs. Each ONU that is online wants to send and to be sent frames at some rates; what passes of them
// follows from the SLAs and the room of the lines, and changes with the OLT only. What a port has been offered follows
// from the rates and from how long they held, so that nothing has to happen in between.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <span>

#include "model/base/mac.h"
#include "model/base/time.h"

namespace ponsim
{

enum class Cast : uint8_t { unicast, multicast, broadcast };

// Frames of one length: all that an ONU offers is made of these.
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
using PerFlow = std::array<uint64_t, flows.size()>;

// Rates are in tenths of frames a second, which is fine enough for slow loads, and what is counted by them in
// ten-thousandths of frames: a storm overflows that in 39 years.
inline constexpr uint64_t rate_unit = 10;
inline constexpr uint64_t count_unit = rate_unit * ms_per_second;

struct Rates {
    PerFlow up = {};
    PerFlow down = {};
};
// What an ONU is found to offer and to be offered. The ONUs of four full ports together stay below the rate of a GE
// port.
Rates rates_of(uint64_t seed, const Mac &mac);

// An upstream service level agreement. Bandwidths are in kbit/s.
struct Sla {
    uint32_t fixed = 0;
    uint32_t assured = 0;
    uint32_t maximum = 0;
    uint32_t priority = 0;
    uint32_t weight = 0;

    bool operator==(const Sla &) const = default;
};

// Bandwidth: octets a second of whole frames with their check sequence, without preamble and gap, times rate_unit.
using Bandwidth = uint64_t;
constexpr Bandwidth kbits(uint64_t number)
{
    return number * 125 * rate_unit;
}

// What an online ONU wants to send and is to be sent, and what limits that.
struct Demand {
    Rates wanted;
    Sla sla;
    Bandwidth most_down = 0;
    // Of what it sends, by cast: what the OLT lets in; none: all.
    std::array<std::optional<Bandwidth>, 3> let_in = {};
    PerFlow errored = {}; // of a million frames that it sends, those that reach the port with bit errors
};

// What becomes of the frames of a PON port and its uplink, as rates or as numbers of frames.
struct Streams {
    PerFlow up = {};         // sent by its ONUs, and passed on
    PerFlow up_errored = {}; // sent by its ONUs, and broken on the fibre
    PerFlow up_policed = {}; // received from its ONUs, and not let in
    PerFlow up_lost = {};    // received from its ONUs, and let in, but its uplink was down or had no room
    PerFlow down = {};       // sent by the network, and passed on
    PerFlow down_lost = {};  // sent by the network, but beyond the ONU's SLA or the room of the port

    bool operator==(const Streams &) const = default;
};

// What a PON port has been offered up to a time, in ten-thousandths of frames.
struct Offered {
    ModelTime until = 0;
    Streams frames = {};

    bool operator==(const Offered &) const = default;
};

class Traffic
{
public:
    // Of one ONU.
    struct Onu {
        Demand demand;
        Rates passed = {};    // what it sends, and what it is sent
        PerFlow dropped = {}; // by itself, for want of grants
    };
    // What a PON port has room for.
    struct Capacity {
        Bandwidth up = 0;
        Bandwidth down = 0;
    };

    // What has been offered until then, which is not before it was last settled.
    Offered offered(ModelTime now) const;
    // To be called before what follows changes.
    void settle(ModelTime now) { settled = offered(now); }
    void restore(const Offered &kept) { settled = kept; }

    // What an ONU demands; none while it is not online. It takes effect when the uplink is shared.
    void set(uint32_t onu_id, const std::optional<Demand> &demand);
    void set_capacity(const Capacity &room) { capacity = room; }
    // Shares the room of an uplink and of the PON ports that lead to it among all their ONUs.
    static void share(std::span<Traffic *const> ports, bool uplink_is_up);

    uint32_t online() const { return static_cast<uint32_t>(onus.size()); }
    // Of an ONU that is not online there is none.
    const Onu &onu(uint32_t onu_id) const;
    // Now.
    const Streams &streams() const { return passing; }

private:
    Bandwidth wanted_down() const;
    void pass_down(Bandwidth room, Bandwidth wanted);
    void pass_up();

    Offered settled;
    std::map<uint32_t, Onu> onus; // by ONU id
    Capacity capacity;
    Streams passing;
};

} // namespace ponsim
