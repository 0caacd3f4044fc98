// What was plugged in or taken away after the OLT was found is kept here: ONUs at PON ports, and devices of users at
// UNI ports.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "model/kept/family.h"
#include "model/kept/loop.h"
#include "model/kept/onu.h"

namespace ponsim
{

// The state says how an ONU is connected to a port.
enum class Plugged : uint32_t {
    gone,    // it was taken away
    leaving, // its fibre is unplugged, and its link has not failed yet
    there
};

// A PluggedOnu describes an ONU that was plugged in at a port, or was taken away from it. It replaces what the plant
// says of this ONU at this port.
struct PluggedOnu {
    Plugged state = Plugged::there;
    uint32_t branch = 0; // the branch at whose end its own fibre begins
    uint32_t fibre = 0;  // its own fibre, by the number of the branch
    uint32_t length = 0; // m, of its own fibre
    std::string name = {};
    std::string loid = {};
    std::string password = {};
    std::string kind = {}; // a kind of the scenario, or a model that the simulator knows; empty: as without this record
    bool silent = false;
    bool in_use = false; // see Device
    std::optional<uint32_t> load_up = {};
    std::optional<uint32_t> load_down = {};

    bool operator==(const PluggedOnu &) const = default;
};

template <>
struct Family<PluggedOnu> {
    static constexpr std::string_view table = "plugged_onu";
    using Key = OnuAtPort;
    static constexpr size_t most_of_port = remembered_per_port;
    static constexpr size_t most = max_ports * most_of_port;
    static constexpr std::tuple key{PortColumn{&Key::pon_port}, Column{"mac", &Key::mac}};
    static constexpr std::tuple value{Column{"state", &PluggedOnu::state, {0, 2}},
                                      Column{"branch", &PluggedOnu::branch, {0, max_branch}},
                                      Column{"fibre", &PluggedOnu::fibre, {0, max_branch}},
                                      Column{"length", &PluggedOnu::length, {0, max_distance}},
                                      Column{"name", &PluggedOnu::name},
                                      Column{"loid", &PluggedOnu::loid},
                                      Column{"password", &PluggedOnu::password},
                                      Column{"kind", &PluggedOnu::kind},
                                      Column{"silent", &PluggedOnu::silent},
                                      Column{"in_use", &PluggedOnu::in_use},
                                      NumberOrNone{"load_up", &PluggedOnu::load_up, -1, {0, line_rate}},
                                      NumberOrNone{"load_down", &PluggedOnu::load_down, -1, {0, line_rate}}};
};

// Returns whether a user's device can have the speed, in Mbit/s.
constexpr bool is_speed(uint32_t speed)
{
    return speed == 10 || speed == 100 || speed == 1000;
}

// A PluggedDevice says which device of a user is plugged in at a UNI port. It replaces what the ONU's own device says.
struct PluggedDevice {
    uint32_t speed = 0; // Mbit/s; 0: nothing is plugged in
    bool full_duplex = false;

    bool operator==(const PluggedDevice &) const = default;
};

template <>
struct Family<PluggedDevice> {
    static constexpr std::string_view table = "plugged_device";
    using Key = UniKey;
    static constexpr size_t most_of_port = remembered_per_port * max_unis;
    static constexpr size_t most = max_ports * most_of_port;
    static constexpr std::tuple key{PortColumn{&Key::pon_port}, Column{"mac", &Key::mac},
                                    Column{"uni", &Key::uni, {1, max_unis}}};
    static constexpr std::tuple value{Column{"speed", &PluggedDevice::speed},
                                      Column{"full_duplex", &PluggedDevice::full_duplex}};

    struct Check {
        const char *operator()(uint32_t, const Key &, const PluggedDevice &device) const
        {
            return device.speed == 0 || is_speed(device.speed) ? nullptr : "there is no device of this speed";
        }
    };
};

} // namespace ponsim
