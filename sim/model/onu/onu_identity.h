// What ONUs tell of themselves beyond their kind: the chip and the memory that they are made of, how busy these are,
// what their optical transceivers measure, and how their UNI ports are.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/onu/remote.h"
#include "model/plant/module.h"

namespace ponsim
{

// As CTC numbers them: single family unit, home gateway unit, single business unit.
enum class OnuType : uint8_t { sfu, hgu, sbu };

// What a kind of ONU is made of.
struct Hardware {
    std::string_view chipset; // of the kind
    OnuType onu_type;
    uint8_t chip_revision;
    std::array<uint8_t, 3> chip_date; // of its design, YYMMDD in BCD
    uint32_t memory;                  // KiB
    uint32_t flash;                   // KiB
};
const Hardware &hardware_of(const DeviceType &type);

// The model with its user ports, at most 16 characters: H132-1GE3FE2POTS.
std::string extended_model(const DeviceType &type);
// 12 characters: the vendor, and the last four bytes of the address.
std::string serial_number(std::string_view vendor, const Mac &mac);

// How busy an ONU is. It differs from one five seconds to the next.
struct Usage {
    uint32_t memory_free; // KiB
    uint32_t flash_free;  // KiB
    uint32_t cpu_load;    // percent
};
Usage usage_of(const Olt &olt, const RemoteOnu &onu);

// What the optical transceiver of an ONU on the fibre measures.
Readings onu_readings(const Olt &olt, const RemoteOnu &onu);

// How many LLIDs an ONU has, or was told to have.
uint32_t llids_of(const Olt &olt, const RemoteOnu &onu, Side side);

// A UNI port as the ONU has it.
struct OnuUni {
    uint32_t line_rate; // Mbit/s
    bool enabled;
    bool autoneg;
    bool shut;                    // by loop detection
    std::optional<LinkMode> link; // none while the port is down
};
std::vector<OnuUni> unis_of(const Olt &olt, const RemoteOnu &onu);

} // namespace ponsim
