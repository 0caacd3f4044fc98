// This file holds what ONUs report of themselves beyond their kind: their chip and memory, how busy these are, what
// their optical transceivers measure, and the state of their UNI ports.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/olt/remote.h"
#include "model/plant/module.h"

namespace ponsim
{

// The numbers are those of CTC: single family unit, home gateway unit, single business unit.
enum class OnuType : uint8_t { sfu, hgu, sbu };

// The Hardware is what a kind of ONU is made of.
struct Hardware {
    OnuType onu_type;
    uint8_t chip_revision;            // from 1 on
    std::array<uint8_t, 3> chip_date; // date of the chip's design, YYMMDD in BCD
    uint32_t memory;                  // KiB
    uint32_t flash;                   // KiB
};
// A scenario's own kind may have any chipset. The revision and date of a chip that is not built in follow from its
// name, and the rest follows from the ports of the kind.
Hardware hardware_of(const DeviceType &type);

// A ChipName is a chipset as CTC writes it, in a vendor's letters and a number: SX-1001 is number 1001 of SX.
struct ChipName {
    std::string_view vendor;
    uint16_t number; // 0 when the chipset does not end in a number, or in one that is too large
};
ChipName chip_name(std::string_view chipset);

// Returns the model with its user ports, at most 16 characters: H132-1GE3FE2POTS.
std::string extended_model(const DeviceType &type);
// Returns 12 characters: the vendor, and the last four bytes of the address.
std::string serial_number(std::string_view vendor, const Mac &mac);

// The Usage says how busy an ONU is. It changes every five seconds.
struct Usage {
    uint32_t memory_free; // KiB
    uint32_t flash_free;  // KiB
    uint32_t cpu_load;    // percent
};
Usage usage_of(const Olt &olt, const RemoteOnu &onu);

// Returns what the optical transceiver of an ONU on the fibre measures.
Readings onu_readings(const Olt &olt, const RemoteOnu &onu);

// Returns how many LLIDs an ONU has, or how many the OLT has configured.
uint32_t llids_of(const Olt &olt, const RemoteOnu &onu, Side side);

// An OnuUni is a UNI port as the ONU has it.
struct OnuUni {
    uint32_t line_rate; // Mbit/s
    bool enabled;
    bool autoneg;
    bool shut;                    // by loop detection
    std::optional<LinkMode> link; // none while the port is down
};
std::vector<OnuUni> unis_of(const Olt &olt, const RemoteOnu &onu);

} // namespace ponsim
