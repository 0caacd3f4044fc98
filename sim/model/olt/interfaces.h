// This file describes the board's interfaces beside the PON ports: which there are, their addresses, and whether the
// uplinks carry traffic.
#pragma once

#include <cstdint>

#include "model/base/mac.h"
#include "model/plant/population.h"

namespace ponsim
{

class Olt;

inline constexpr uint32_t xaui_ports = 2;       // between PON chip and switch: 1 leads to GE 1 and 2, 2 to GE 3 and 4
inline constexpr uint32_t management_ports = 1; // out of band

// Returns the GE port through which a PON port's traffic goes.
inline uint32_t uplink_of(uint32_t pon_port)
{
    return (pon_port - 1) % ge_uplinks + 1;
}

inline uint32_t xaui_of(uint32_t uplink)
{
    return (uplink - 1) / (ge_uplinks / xaui_ports) + 1;
}

enum class Interface : uint8_t { pon, ge, xaui, management };

// Returns the OLT's own address on an interface. No ONU has it.
Mac interface_address(uint64_t seed, Interface interface, uint32_t number);

// A PhyControl holds the bits of a GE port's PHY that can be set: the upper byte of its control register, as in IEEE
// 802.3 clause 22. The PHY is of 1000BASE-X, so it has one speed.
struct PhyControl {
    static constexpr uint8_t reset = 0x80;
    static constexpr uint8_t loopback = 0x40;
    static constexpr uint8_t speed = 0x20; // together with the lower byte's speed bit: 100 Mbit/s
    static constexpr uint8_t autoneg = 0x10;
    static constexpr uint8_t power_down = 0x08;
    static constexpr uint8_t isolate = 0x04;
    static constexpr uint8_t restart_autoneg = 0x02;
    static constexpr uint8_t full_duplex = 0x01;

    uint8_t bits = autoneg | full_duplex;

    bool has(uint8_t bit) const { return bits & bit; }
    // The other end of the link negotiates, and accepts full duplex only.
    bool link_up() const { return !has(loopback | power_down | isolate) && (has(autoneg) || has(full_duplex)); }
};

PhyControl phy_control(const Olt &olt, uint32_t uplink);

} // namespace ponsim
