// A record is kept of an ONU at one port, bound or not.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "model/base/direction.h"
#include "model/base/mac.h"
#include "model/base/time.h"
#include "model/kept/family.h"
#include "model/kept/sla.h"

namespace ponsim
{

// No laser can be made older than this.
inline constexpr uint32_t max_laser_hours = 10000000;
inline constexpr uint32_t max_flood = 1488095; // frames a second, the most that Gigabit Ethernet carries

struct OnuAtPort {
    uint32_t pon_port;
    Mac mac;

    auto operator<=>(const OnuAtPort &) const = default;
};

// The phase says how far an ONU that is on the fibre has come with its registration.
enum class Phase : uint32_t {
    registered,
    booting,        // it was switched on or restarted
    discovery,      // it waits for a discovery window of its port in which it is heard, or for light
    mpcp,           // it was heard: REGISTER, GATE and REGISTER_ACK follow
    oam,            // the OAM link comes up, then the extended one
    authentication, // it is asked for its LOID
};

// This says how light reaches a receiver.
enum class Light : uint32_t {
    good,
    degraded,   // so weak that there are bit errors
    lost,       // too weak to be heard
    overloaded, // so strong that there are bit errors
    saturated   // too strong to be heard
};

// A Reception is the light of one direction at its receiver.
struct Reception {
    Light light = Light::good;
    uint32_t steps = 0;  // of light with bit errors: how far it is beyond what the receiver bears; see bit_errors.h
    ModelTime since = 0; // while the light is not good: since when the receiver loses frames of a link that was up

    bool heard() const { return light != Light::lost && light != Light::saturated; }
    bool operator==(const Reception &) const = default;
};

struct OnuRecord {
    bool supported = true;
    uint32_t reboots = 0;
    std::string software = {};     // version of the image that replaced its own; empty: that of its device
    std::string upgrade_type = {}; // the type bound to it; empty: that of the port
    bool bad_image = false;        // the image that it downloads fails verification
    bool powered = true;           // without power it is not on the fibre
    Phase phase = Phase::registered;
    ModelTime phase_ends = 0;             // 0: the phase does not end by itself
    Reception up = {};                    // its light at the port
    Reception down = {};                  // the light of the port at the ONU
    uint32_t added_hours = 0;             // its laser's age is this and the time of the OLT
    bool rogue = false;                   // its laser does not go off, and blinds the port for all others
    std::optional<uint32_t> load_up = {}; // kbit/s that it offers; none: what it was found to offer
    std::optional<uint32_t> load_down = {};
    uint32_t flood = 0; // broadcast frames a second that it sends beyond its load

    // An ONU that has arrived, and that the port ranges, is on the fibre when this is true. While it is not heard, it
    // remains there until a time-out of MPCP ends.
    bool present() const { return powered && phase == Phase::registered; }
    // Returns whether the port receives frames of the ONU, and the ONU frames of the port.
    bool heard() const { return up.heard() && down.heard(); }
    const Reception &reception(Direction direction) const { return direction == Direction::up ? up : down; }
    Reception &reception(Direction direction) { return direction == Direction::up ? up : down; }

    bool operator==(const OnuRecord &) const = default;
};

template <>
struct Family<OnuRecord> {
    static constexpr std::string_view table = "onu";
    static constexpr std::array<std::string_view, 1> configured{"upgrade_type"};
    using Key = OnuAtPort;
    static constexpr std::tuple key{PortColumn{&Key::pon_port}, Column{"mac", &Key::mac}};
    static constexpr std::tuple value{
        Column{"supported", &OnuRecord::supported},
        Column{"reboots", &OnuRecord::reboots},
        Column{"software", &OnuRecord::software, {0, 16}},
        Column{"upgrade_type", &OnuRecord::upgrade_type},
        Column{"bad_image", &OnuRecord::bad_image},
        Column{"powered", &OnuRecord::powered},
        Column{"phase", &OnuRecord::phase, {0, 5}},
        Column{"phase_ends", &OnuRecord::phase_ends},
        InnerColumns{&OnuRecord::up, std::tuple{Column{"light", &Reception::light, {0, 4}},
                                                Column{"light_steps", &Reception::steps, {0, 40}},
                                                Column{"light_since", &Reception::since}}},
        InnerColumns{&OnuRecord::down, std::tuple{Column{"down_light", &Reception::light, {0, 4}},
                                                  Column{"down_steps", &Reception::steps, {0, 40}},
                                                  Column{"down_since", &Reception::since}}},
        Column{"added_hours", &OnuRecord::added_hours, {0, max_laser_hours}},
        Column{"rogue", &OnuRecord::rogue},
        NumberOrNone{"load_up", &OnuRecord::load_up, -1, {0, line_rate}},
        NumberOrNone{"load_down", &OnuRecord::load_down, -1, {0, line_rate}},
        Column{"flood", &OnuRecord::flood, {0, max_flood}}};
    static constexpr bool as_new = true;
    static constexpr bool placed = true;
    static constexpr size_t most_of_port = remembered_per_port;
    static constexpr size_t most = max_ports * most_of_port;
};

} // namespace ponsim
