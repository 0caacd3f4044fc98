// The forwarding database in BRIDGE-MIB and Q-BRIDGE-MIB, and what DOT3-EPON-MIB has of PON ports.
#include <map>

#include "snmp/core/items.h"
#include "snmp/core/standard_tables.h"

namespace front::snmp
{
namespace
{

constexpr uint32_t vlans = 4096;

// A number of a bridge port is at most 65535, so the ports of an OLT have 256 numbers: uplinks those from 193 on.
// Returns 0 of a port that has none.
uint32_t bridge_port(const Source &source, bool pon, uint32_t port)
{
    constexpr uint32_t ports_of_olt = 256, pon_ports = 192;
    if (port == 0 || port > (pon ? pon_ports : ports_of_olt - pon_ports - 1)) return 0;
    return (source.index - 1) * ports_of_olt + (pon ? port : pon_ports + port);
}

struct BridgePort {
    uint32_t number;
    uint32_t if_index;
};

constexpr Column<BridgePort> port_columns[] = {
    {1, "dot1dBasePort", Type::integer, [](const BridgePort &port, const Making &) { return Item(port.number); }},
    {2, "dot1dBasePortIfIndex", Type::integer,
     [](const BridgePort &port, const Making &) { return Item(port.if_index); }},
    {3, "dot1dBasePortCircuit", Type::oid, [](const BridgePort &, const Making &) { return Item(0); }},
};

constexpr Column<uint32_t> fdb_columns[] = {
    {2, "dot1qFdbDynamicCount", Type::counter32, [](const uint32_t &count, const Making &) { return Item(count); }},
};

constexpr Column<Station> station_columns[] = {
    {2, "dot1qTpFdbPort", Type::integer,
     [](const Station &station, const Making &making) {
         return Item(bridge_port(making.source, station.pon, station.port));
     }},
    {3, "dot1qTpFdbStatus", Type::integer, [](const Station &, const Making &) { return Item(3); }}, // learned
};

constexpr Column<PortMpcp> mpcp_columns[] = {
    {3, "dot3MpcpMode", Type::integer, [](const PortMpcp &, const Making &) { return Item(1); }}, // of an OLT
    {4, "dot3MpcpSyncTime", Type::gauge32, [](const PortMpcp &port, const Making &) { return Item(port.sync_time); }},
};

constexpr Column<PortMpcp> fec_columns[] = {
    {2, "dot3EponFecAbility", Type::integer, [](const PortMpcp &, const Making &) { return Item(2); }}, // supported
    {3, "dot3EponFecMode", Type::integer, [](const PortMpcp &port, const Making &) { return Item(port.fec ? 3 : 2); }},
};

template <const auto &columns>
void make_of_ports(Part &part, const Making &making)
{
    for (const PortMpcp &port : rows_of(making.source.snapshot->mpcp))
        add<PortMpcp>(part, columns, Oid{pon_if_index(making.source.index, port.pon_port)}, port, making);
}

} // namespace

TableInfo bridge_port_table()
{
    return {.is_standard = true,
            .entry = {1, 3, 6, 1, 2, 1, 17, 1, 4, 1},
            .name = "dot1dBasePortEntry",
            .index = {{"dot1dBasePort"}},
            .columns = kinds_of<BridgePort>(port_columns),
            .made_of = {Table::olt},
            .make = [](Part &part, const Making &making) {
                const Source &source = making.source;
                const auto olt = rows_of(source.snapshot->olt);
                if (olt.empty()) return;
                const auto add_port = [&](bool pon, uint32_t port, uint32_t if_index) {
                    const uint32_t number = bridge_port(source, pon, port);
                    if (number > 0) add<BridgePort>(part, port_columns, Oid{number}, {number, if_index}, making);
                };
                for (uint32_t port = 1; port <= olt[0].pon_ports; ++port)
                    add_port(true, port, pon_if_index(source.index, port));
                for (uint32_t port = 1; port <= olt[0].ge_ports; ++port)
                    add_port(false, port, uplink_if_index(source.index, port));
            }};
}

TableInfo fdb_table()
{
    return {.is_standard = true,
            .entry = {1, 3, 6, 1, 2, 1, 17, 7, 1, 2, 1, 1},
            .name = "dot1qFdbEntry",
            .index = {{"dot1qFdbId"}},
            .columns = kinds_of<uint32_t>(fdb_columns),
            .made_of = {Table::stations},
            .make = [](Part &part, const Making &making) {
                std::map<uint32_t, uint32_t> counts; // by VLAN
                for (const Station &station : rows_of(making.source.snapshot->stations))
                    if (station.vlan < vlans) ++counts[station.vlan];
                for (const auto &[vlan, count] : counts)
                    add<uint32_t>(part, fdb_columns, Oid{making.source.index * vlans + vlan}, count, making);
            }};
}

TableInfo station_table()
{
    return {.is_standard = true,
            .entry = {1, 3, 6, 1, 2, 1, 17, 7, 1, 2, 2, 1},
            .name = "dot1qTpFdbEntry",
            .index = {{"dot1qFdbId"}, {"dot1qTpFdbAddress", 6}},
            .columns = kinds_of<Station>(station_columns),
            .made_of = {Table::stations},
            .make = [](Part &part, const Making &making) {
                for (const Station &station : rows_of(making.source.snapshot->stations))
                    if (station.vlan < vlans)
                        add<Station>(part, station_columns,
                                     index_with({making.source.index * vlans + station.vlan}, station.mac), station,
                                     making);
            }};
}

TableInfo epon_mpcp_table()
{
    return {.is_standard = true,
            .entry = {1, 3, 6, 1, 2, 1, 155, 1, 1, 1, 1},
            .name = "dot3MpcpControlEntry",
            .index = {{"ifIndex"}},
            .columns = kinds_of<PortMpcp>(mpcp_columns),
            .made_of = {Table::mpcp},
            .make = make_of_ports<mpcp_columns>};
}

TableInfo epon_fec_table()
{
    return {.is_standard = true,
            .entry = {1, 3, 6, 1, 2, 1, 155, 1, 3, 1, 1},
            .name = "dot3EponFecEntry",
            .index = {{"ifIndex"}},
            .columns = kinds_of<PortMpcp>(fec_columns),
            .made_of = {Table::mpcp},
            .make = make_of_ports<fec_columns>};
}

} // namespace front::snmp
