// This is the traffic of ONUs. Each ONU that is online wants to send and to be sent frames at some rates. How much of
// that passes follows from the SLAs and the room of the lines, and changes only when the OLT changes. What a port has
// been offered follows from the rates and from how long they held, so that nothing has to happen in between.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

#include "model/base/mac.h"
#include "model/base/time.h"
#include "model/kept/ledger.h"
#include "model/kept/sla.h"
#include "model/kept/traffic.h"

namespace ponsim
{

struct Rates {
    PerFlow up = {};
    PerFlow down = {};
};
// Returns what an ONU is found to offer and to be offered. The ONUs of four full ports together stay below the rate of
// a GE port.
Rates rates_of(uint64_t seed, const Mac &mac);

// Bandwidth is octets a second times rate_unit: those of whole frames with their check sequence or, on a line, those
// with preamble and gap.
using Bandwidth = uint64_t;
constexpr Bandwidth kbits(uint64_t number)
{
    return number * 125 * rate_unit;
}

inline constexpr uint32_t all_errored = 1000000000; // shares of errored frames are parts of this

// A UniDemand says what the users at a UNI port send and are to be sent, as far as the port lets it pass.
struct UniDemand {
    PerFlow up = {};
    PerFlow limited = {}; // which the users send beyond the port's limit
    PerFlow down = {};
    Bandwidth line_down = 0;  // room of the line to the users
    Bandwidth most_down = 0;  // the port's limit, in octets of frames
    uint64_t fragments = 0;   // left of frames of the users that collide, a second, times rate_unit
    uint64_t crc_errored = 0; // frames of the users that are broken off, a second, times rate_unit
};

// Errors say which frames do not arrive as they were sent.
struct Errors {
    // These are the shares of the frames that arrive with bit errors, at the port and at the ONU.
    PerFlow up = {};
    PerFlow down = {};
    bool heard = true; // frames reach the other side
};

// SlowErrors break fewer frames of an ONU than a rate can say: less than one in rate_unit seconds, of one flow. How
// many they have broken follows from the time, so that nothing has to be kept, and however often it is counted, it is
// the same.
struct SlowErrors {
    size_t flow = 0;
    uint64_t rate = 0; // in 2^-32 of the unit of rates

    // Returns how many frames they break from one time to another, in ten-thousandths.
    uint64_t count(ModelTime from, ModelTime to) const;
};

// A Demand says what an online ONU wants to send and is to be sent, and what limits that.
struct Demand {
    Rates wanted; // the sum of all its UNI ports
    std::vector<UniDemand> unis = {};
    Sla sla;
    Bandwidth most_down = 0;
    // By cast, this limits how much of what the ONU sends the OLT lets in. None means that all is let in.
    std::array<std::optional<Bandwidth>, 3> let_in = {};
    Errors errors = {};
};

class Traffic
{
public:
    // An Onu is the traffic of one ONU.
    struct Onu {
        Demand demand;
        Rates passed = {};      // what it sends, and what it is sent
        PerFlow dropped = {};   // by the ONU itself, because its grants are too small
        PerFlow down_lost = {}; // came through the uplink, but is beyond its SLA or the room of the port
    };
    // The capacity says what a PON port has room for.
    struct Capacity {
        Bandwidth up = 0;
        Bandwidth down = 0;
    };

    // Returns what has been offered until `now`, which is not before the last settle().
    Offered offered(ModelTime now) const;
    // Call this before the rates change.
    void settle(ModelTime now) { settled = offered(now); }
    void restore(const Offered &kept) { settled = kept; }

    // Sets what an ONU demands. There is no demand while the ONU is not online. It takes effect when the uplink is
    // shared.
    void set(uint32_t onu_id, const std::optional<Demand> &demand);
    // Sets the errors of an ONU, which need not be online. They take away of what passes, and leave it shared as it is.
    // It takes effect when the uplink passes on what is left.
    void set_errors(uint32_t onu_id, const Errors &errors);
    void set_capacity(const Capacity &room) { capacity = room; }
    // Shares the room of an uplink and of the PON ports that lead to it among all their ONUs. While there is room for
    // all that ONUs may have, what each of them gets does not depend on the others.
    static void share(std::span<Traffic *const> ports, bool uplink_is_up);
    // Shares only the room that the uplink has for what the PON ports receive.
    static void pass_on(std::span<Traffic *const> ports, bool uplink_is_up);

    uint32_t online() const { return static_cast<uint32_t>(onus.size()); }
    // Returns an Onu without traffic when the ONU is not online.
    const Onu &onu(uint32_t onu_id) const;
    // Returns the streams that pass now.
    const Streams &streams() const { return passing; }

private:
    // Needs say how much room ONUs take when there is enough of it. All are bandwidths on the line.
    struct Needs {
        Bandwidth uplink = 0; // what the network sends them
        Bandwidth down = 0;   // what of that their SLAs let pass
        Bandwidth up = 0;     // what they are granted, and what is reserved for them
    };
    // The slow errors of both directions break frames that the port lets in or, where it lets in none, does not let in.
    struct Slow {
        SlowErrors up = {};
        SlowErrors down = {};
        bool of_policed = false;
    };
    static Needs needs_of(const Demand &demand);
    bool has_room() const { return needs.down <= capacity.down && needs.up <= capacity.up; }
    // These add what becomes of the frames of an ONU to that of the others, or take it away.
    void include(uint32_t onu_id, const Onu &onu);
    void exclude(uint32_t onu_id, const Onu &onu);
    // Lets pass what the ONU may have when there is room for all.
    void pass_alone(Onu &onu);
    // These let pass what all ONUs get when they share the room.
    void pass_down(Bandwidth room, Bandwidth wanted);
    void pass_up();

    Offered settled;
    std::map<uint32_t, Onu> onus; // by ONU id
    std::vector<uint32_t> fresh;  // ids of ONUs whose demand has been set since the uplink was shared
    Needs needs;                  // of all ONUs
    bool roomy = true;            // when the uplink was shared last, there was room for all that ONUs may have
    Capacity capacity;
    Streams on_line; // what becomes of the frames of all ONUs that are not fresh, but for the uplink's part
    std::map<uint32_t, Slow> slow; // by ONU id, where there are slow errors
    Streams passing;
};

// Returns what becomes of the frames of each UNI port.
std::vector<UniFrames> uni_rates(const Traffic::Onu &onu);

// Returns an ONU's ledger that begins at a time, with nothing counted.
inline Ledger ledger_from(ModelTime since)
{
    return {.since = since, .until = since};
}
// Returns what the ONU had counted at a time: at any time from the last change of its rates on, and at the start of the
// period of that change and of the period before.
std::vector<UniFrames> counted_at(const Ledger &ledger, const Traffic::Onu &onu, ModelTime time);
// Returns the ledger up to now. Call this before the rates change.
Ledger settled(const Ledger &ledger, const Traffic::Onu &onu, ModelTime now);

} // namespace ponsim
