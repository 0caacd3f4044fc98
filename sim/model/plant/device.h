// What an ONU is, and how its UNI ports are configured. Both follow from the OLT's seed and the ONU's MAC address
// alone: every ONU has a device, whether it has arrived or not.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/base/mac.h"

namespace ponsim
{

inline constexpr uint32_t max_unis = 4;            // of an ONU, numbered from 1
inline constexpr uint32_t max_vlans = 8;           // of a UNI port
inline constexpr uint32_t max_rate_limit = 999999; // kbit/s: below the fastest port's rate

// A kind of ONU, with the widths and the abilities of the CTC attributes ONU serial number and ONU capabilities.
struct DeviceType {
    std::string_view vendor;  // 4 characters
    std::string_view model;   // at most 4
    std::string_view chipset; // at most 8
    uint32_t ge_ports;        // UNI ports 1 to ge_ports; FE ports follow
    uint32_t fe_ports;
    uint32_t pots_ports;
    uint32_t us_queues;
    bool fec;
    bool battery;
    bool igmp_snooping;
    bool multicast_control;
    bool fast_leave;
    bool vlan_translation;
    bool vlan_trunk;
};

std::span<const DeviceType> device_types();

struct LinkMode {
    uint32_t speed; // Mbit/s
    bool full_duplex;

    bool operator==(const LinkMode &) const = default;
};

// A mode that UNI ports may offer in auto-negotiation, by its AutoNegTechnology of IEEE 802.3, Annex 30B.
struct Ability {
    uint32_t technology;
    LinkMode mode;
};

// A UNI port by nature.
struct Uni {
    uint32_t line_rate;              // Mbit/s: 100 of an FE port, 1000 of a GE port
    std::optional<LinkMode> partner; // what auto-negotiation finds; none where nothing is plugged in

    bool operator==(const Uni &) const = default;
};

struct Device {
    const DeviceType *type;
    std::string_view hardware; // version, at most 8 characters
    std::string_view software; // version, at most 16
    std::vector<Uni> unis;     // port 1 first

    bool operator==(const Device &) const = default;
};

// As CTC names them: what a UNI port does with VLAN tags.
enum class VlanMode : uint8_t { transparent, tag, translation, trunk };

struct Vlan {
    uint32_t user;    // as tagged at the UNI port
    uint32_t network; // as tagged beyond the ONU; of a trunk the same

    bool operator==(const Vlan &) const = default;
};

inline constexpr uint32_t every_ability = 0xffffffff;

// How a UNI port is configured.
struct UniConfig {
    bool enabled;
    bool autoneg;
    LinkMode forced;                 // the mode without auto-negotiation
    bool pause;                      // flow control
    std::optional<uint32_t> ingress; // rate limits, kbit/s; none: the line rate
    std::optional<uint32_t> egress;
    VlanMode vlan_mode;
    uint32_t pvid;
    std::vector<Vlan> vlans;          // of translation and trunk; ascending
    uint32_t priority = 0;            // 802.1p, of untagged frames
    uint32_t tpid = 0x8100;           // of tags at the UNI port
    uint32_t offered = every_ability; // in auto-negotiation: bit N is ability N of the port

    bool operator==(const UniConfig &) const = default;
};

// Of the kind that is given, or else of one that follows from seed and address, as all the rest does.
Device device_of(uint64_t seed, const Mac &mac, const DeviceType *kind = nullptr);

// Of each of the ONU's UNI ports: what they have until they are configured otherwise.
std::vector<UniConfig> default_configs(uint64_t seed, const Mac &mac, const Device &device);

// What a UNI port can offer in auto-negotiation, the slowest first.
std::span<const Ability> abilities_of(const Uni &uni);

// None while the port is down.
std::optional<LinkMode> link_of(const Uni &uni, const UniConfig &config);

// Speed and duplex: 1000FD, 10HD.
std::string to_text(const LinkMode &mode);
std::string_view to_text(VlanMode mode);
// Separated by commas: the VLAN, or user:network where it is translated.
std::string to_text(std::span<const Vlan> vlans);

} // namespace ponsim
