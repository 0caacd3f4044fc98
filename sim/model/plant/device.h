// A device is what an ONU is, and a UniConfig how one of its UNI ports is configured. Both follow from the OLT's seed
// and the ONU's MAC address alone. So every ONU has a device, whether it has arrived or not.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/base/limits.h"
#include "model/base/mac.h"
#include "model/base/time.h"
#include "model/plant/optical_class.h"

namespace ponsim
{

inline constexpr uint32_t max_vlans = 8;           // of a UNI port
inline constexpr uint32_t max_rate_limit = 999999; // kbit/s; below the fastest port's rate

// A DeviceType is a kind of ONU. Its widths and abilities are those of the CTC attributes ONU serial number and ONU
// capabilities.
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
    const OpticalClass *optics = nullptr;      // of its transceiver; null: that of its port
    ModelTime boot = 30 * ms_per_second;       // time from power to its first answer, to load its software
    ModelTime boot_spread = 5 * ms_per_second; // by so much at most an ONU is faster or slower than that
};

std::span<const DeviceType> device_types();

struct LinkMode {
    uint32_t speed; // Mbit/s
    bool full_duplex;

    bool operator==(const LinkMode &) const = default;
};

// An Ability is a mode that UNI ports may offer in auto-negotiation, with its AutoNegTechnology of IEEE 802.3, Annex
// 30B.
struct Ability {
    uint32_t technology;
    LinkMode mode;
};

// A Uni is a UNI port as it is by nature.
struct Uni {
    uint32_t line_rate;              // Mbit/s; an FE port has 100, a GE port 1000
    std::optional<LinkMode> partner; // mode of the device that is plugged in; none: nothing is plugged in

    bool operator==(const Uni &) const = default;
};

struct Device {
    const DeviceType *type;
    std::string_view hardware; // version, at most 8 characters
    std::string_view software; // version, at most 16
    std::vector<Uni> unis;     // port 1 first
    bool in_use = false;       // each UNI port is enabled and unlimited, and a device of its full speed is plugged in

    bool operator==(const Device &) const = default;
};

// A VlanMode says what a UNI port does with VLAN tags. The names are those of CTC.
enum class VlanMode : uint8_t { transparent, tag, translation, trunk };

struct Vlan {
    uint32_t user;    // VLAN of the tag at the UNI port
    uint32_t network; // VLAN of the tag beyond the ONU; the same in mode trunk

    bool operator==(const Vlan &) const = default;
};

inline constexpr uint32_t every_ability = 0xffffffff;

// A UniConfig says how a UNI port is configured.
struct UniConfig {
    bool enabled;
    bool autoneg;
    LinkMode forced;                 // the mode without auto-negotiation
    bool pause;                      // flow control
    std::optional<uint32_t> ingress; // rate limits, kbit/s; none: the line rate
    std::optional<uint32_t> egress;
    VlanMode vlan_mode;
    uint32_t pvid;
    std::vector<Vlan> vlans;          // in modes translation and trunk; ascending
    uint32_t priority = 0;            // 802.1p, of untagged frames
    uint32_t tpid = 0x8100;           // of tags at the UNI port
    uint32_t offered = every_ability; // in auto-negotiation: bit N is ability N of the port

    bool operator==(const UniConfig &) const = default;
};

// Equipment is what a scenario says of an ONU.
struct Equipment {
    const DeviceType *kind = nullptr; // null: follows from seed and address
    bool in_use = false;              // see Device
};

// Returns the ONU's device. What the equipment leaves open follows from seed and address.
Device device_of(uint64_t seed, const Mac &mac, const Equipment &equipment = {});

// Returns the time that this ONU needs from power to its first answer.
ModelTime boot_time(uint64_t seed, const Mac &mac, const DeviceType &type);

// Returns the configuration that each of the ONU's UNI ports has until it is configured otherwise.
std::vector<UniConfig> default_configs(uint64_t seed, const Mac &mac, const Device &device);

// Returns what a UNI port can offer in auto-negotiation, the slowest mode first.
std::span<const Ability> abilities_of(const Uni &uni);
// Returns what any UNI port can offer.
std::span<const Ability> all_abilities();

// Returns no mode while the port is down.
std::optional<LinkMode> link_of(const Uni &uni, const UniConfig &config);

// Writes speed and duplex: 1000FD, 10HD.
std::string to_text(const LinkMode &mode);
std::string_view to_text(VlanMode mode);
// Separates the VLANs by commas. A VLAN that is translated is written as user:network.
std::string to_text(std::span<const Vlan> vlans);

} // namespace ponsim
