// What is known of an OLT at one time. Nobody changes a snapshot: a table that is read makes a new one, which shares
// the other tables with the one before it.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "collector/rows.h"

namespace front
{

// Times that people see are milliseconds since 1970.
using UnixTime = int64_t;

enum class Table : uint8_t {
    olt,
    ports,
    onus,
    alarms,
    loops,
    stats,
    counters,
    unis,
    upgrades,
    optics,
    modules,
    capabilities,
    uplinks,
    mpcp,
    stations,
};
inline constexpr size_t table_count = 15;

struct TableKind {
    Table table;
    const char *name;
    uint32_t period; // seconds, where the configuration says nothing else
    const char *brief;
};
// Returns all kinds, in the order of their numbers.
std::span<const TableKind, table_count> table_kinds();

// A TableState says how good what is known of a table is.
struct TableState {
    uint32_t period = 0;     // seconds
    uint64_t generation = 0; // how often the table was read
    UnixTime read = 0;       // when it was read last; it counts when the generation is not 0
    uint32_t took = 0;       // milliseconds that reading it took
    uint64_t failures = 0;   // how often reading it failed
    uint32_t failed = 0;     // how often since it was read last
    std::string error;       // of the last failure since then

    // The last reading failed: what is known is older than it should be.
    bool stale() const { return failed > 0; }
    // What is known may be no longer so, or nothing is known.
    bool outdated(UnixTime now) const { return generation == 0 || now - read > 3000 * UnixTime{period}; }
};

// A ModuleQuantity is what the module in an SFP cage measures. Cages of PON ports come first, and then those of
// uplinks.
struct ModuleQuantity {
    uint32_t cage;
    view::sfp_quantities of;

    bool operator==(const ModuleQuantity &) const = default;
};

// These are the counters of a port since the OLT was switched on.
struct PortCounters {
    bool pon; // a PON port, or an uplink
    uint32_t port;
    uint64_t in_octets, in_unicast, in_multicast, in_broadcast, in_errors, in_discards;
    uint64_t out_octets, out_unicast, out_multicast, out_broadcast, out_discards;

    bool operator==(const PortCounters &) const = default;
};

// What the MAC of an uplink is.
struct Uplink {
    uint32_t port;
    view::Mac mac;
    uint32_t max_frame; // octets
    uint32_t speed;     // Mbit/s; 0 while the link is down
    bool link;
    bool enabled; // it may send and receive

    bool operator==(const Uplink &) const = default;
};

// How a PON port lets ONUs register and send: lengths are time quanta of 16 ns, times milliseconds.
struct PortMpcp {
    uint32_t pon_port;
    uint32_t discovery_interval, discovery_window;
    uint32_t report_timeout, gate_timeout;
    uint32_t grant_length, grant_cycle; // the cycle in microseconds
    uint32_t sync_time, laser_on, laser_off;
    bool fec;

    bool operator==(const PortMpcp &) const = default;
};

// A Station is an address of the forwarding database, behind an ONU or an uplink.
struct Station {
    uint32_t vlan;
    view::Mac mac;
    bool pon; // it is behind an ONU
    uint32_t port;
    std::optional<uint32_t> onu_id = {}, uni = {}; // that it is behind; none behind an uplink

    bool operator==(const Station &) const = default;
};

struct Snapshot {
    std::array<TableState, table_count> states;

    // A table is null until it was read for the first time.
    std::shared_ptr<const Rows<view::basic_info>> olt;
    std::shared_ptr<const Rows<view::port_info>> ports;
    std::shared_ptr<const Rows<view::onu_info>> onus;
    std::shared_ptr<const Rows<view::onu_alarm>> alarms;
    std::shared_ptr<const Rows<view::loop_info>> loops;
    std::shared_ptr<const Rows<view::onu_stats_table>> stats;
    std::shared_ptr<const Rows<PortCounters>> counters;
    std::shared_ptr<const Rows<view::uni_attributes>> unis;
    std::shared_ptr<const Rows<view::upgrade_base_info>> upgrades;
    std::shared_ptr<const Rows<view::onu_optics_table>> optics;
    std::shared_ptr<const Rows<ModuleQuantity>> modules;
    std::shared_ptr<const Rows<view::onu_capabilities>> capabilities;
    std::shared_ptr<const Rows<Uplink>> uplinks;
    std::shared_ptr<const Rows<PortMpcp>> mpcp;
    std::shared_ptr<const Rows<Station>> stations; // in the order of VLANs and addresses

    const TableState &state(Table table) const { return states[static_cast<size_t>(table)]; }
};

// Returns the rows of a table, or none while it is not known.
template <class Row>
std::span<const Row> rows_of(const std::shared_ptr<const Rows<Row>> &table)
{
    return table ? std::span<const Row>(table->rows) : std::span<const Row>();
}

} // namespace front
