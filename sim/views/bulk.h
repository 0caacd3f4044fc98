// These are the tables of all ONUs, and of the OLT and its PON ports.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "model/plant/module.h"
#include "model/port/counters.h"

namespace ponsim
{

// OnuNumbers counts the ONUs of a port, or of several ports.
struct OnuNumbers {
    uint32_t bound = 0;
    uint32_t online = 0; // how many of the bound ones
    uint32_t waiting = 0;
};

struct PortRow {
    uint32_t pon_port;
    Mac mac;
    uint32_t uplink;
    bool laser_on;
    Readings module;
    OnuNumbers onus;
    Load load;
};
std::string ports_table(std::span<const PortRow> ports);

struct OltRow {
    std::string_view model;
    std::string_view version;
    std::string serial;
    Mac mac;
    uint32_t pon_ports;
    ModelTime uptime;
    OnuNumbers onus;
};
std::string olt_table(const OltRow &olt);

struct OnuOptics {
    // This is measured only while the ONU is online.
    struct Measured {
        Readings at_onu;
        int32_t at_olt; // 0.1 uW, the power that the OLT receives from the ONU
    };

    uint32_t pon_port;
    uint32_t onu_id;
    Mac mac;
    std::optional<Measured> measured;
};
std::string onu_optics_table(std::span<const OnuOptics> onus);

struct OnuStats {
    struct Counts {
        ModelTime time;
        uint64_t up_frames;
        uint64_t up_octets;
        uint64_t up_errors;
        uint64_t down_frames;
        uint64_t down_octets;
        uint64_t down_discarded;
    };

    uint32_t pon_port;
    uint32_t onu_id;
    Mac mac;
    std::optional<Load> load;     // while the ONU is online
    std::optional<Counts> counts; // while it is online and monitors
};
std::string onu_stats_table(std::span<const OnuStats> onus);

} // namespace ponsim
