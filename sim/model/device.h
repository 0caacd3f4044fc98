// What an ONU is, and how its UNI ports are configured. Both follow from the OLT's seed and the ONU's MAC address
// alone: every ONU has a device, whether it has arrived or not.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/mac.h"

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
    std::vector<Vlan> vlans; // of translation and trunk; ascending

    bool operator==(const UniConfig &) const = default;
};

Device device_of(uint64_t seed, const Mac &mac);

// Of each of the ONU's UNI ports: what they have until they are configured otherwise.
std::vector<UniConfig> default_configs(uint64_t seed, const Mac &mac, const Device &device);

// None while the port is down.
std::optional<LinkMode> link_of(const Uni &uni, const UniConfig &config);

// Speed and duplex: 1000FD, 10HD.
std::string to_text(const LinkMode &mode);
std::string_view to_text(VlanMode mode);
// Separated by commas: the VLAN, or user:network where it is translated.
std::string to_text(std::span<const Vlan> vlans);

} // namespace ponsim
