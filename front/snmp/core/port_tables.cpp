// The OLT itself, its PON ports, and how these let ONUs register.
#include "snmp/core/items.h"
#include "snmp/core/pon_tables.h"

namespace front::snmp
{
namespace
{

// What is known of an OLT; null while it is not.
using OltRow = const view::basic_info *;
using PortRow = view::port_info;

// Adds up what all PON ports have of something.
Item sum(const Making &making, uint32_t PortRow::*count)
{
    if (!making.source.snapshot->ports) return std::nullopt;
    uint32_t all = 0;
    for (const PortRow &port : making.source.snapshot->ports->rows)
        all += port.*count;
    return all;
}

constexpr Column<OltRow> olt_columns[] = {
    {2, "bspOltName", Type::octets, [](const OltRow &, const Making &making) { return Item(making.source.name); }},
    {3, "bspOltAnswers", Type::integer,
     [](const OltRow &, const Making &making) {
         const TableState &state = making.source.snapshot->state(Table::onus);
         return truth(state.generation > 0 && !state.stale());
     }},
    {4, "bspOltModel", Type::octets,
     [](const OltRow &olt, const Making &) { return olt ? Item(olt->model) : std::nullopt; }},
    {5, "bspOltVersion", Type::octets,
     [](const OltRow &olt, const Making &) { return olt ? Item(olt->version) : std::nullopt; }},
    {6, "bspOltSerial", Type::octets,
     [](const OltRow &olt, const Making &) { return olt ? Item(olt->serial) : std::nullopt; }},
    {7, "bspOltMac", Type::octets,
     [](const OltRow &olt, const Making &) { return olt ? Item(olt->mac) : std::nullopt; }},
    {8, "bspOltPonPorts", Type::gauge32,
     [](const OltRow &olt, const Making &) { return olt ? Item(olt->pon_ports) : std::nullopt; }},
    {9, "bspOltUplinks", Type::gauge32,
     [](const OltRow &olt, const Making &) { return olt ? Item(olt->ge_ports) : std::nullopt; }},
    {10, "bspOltUpTime", Type::gauge32,
     [](const OltRow &olt, const Making &) { return olt ? gauge(olt->uptime) : std::nullopt; }},
    {11, "bspOltBound", Type::gauge32,
     [](const OltRow &, const Making &making) { return sum(making, &PortRow::bound); }},
    {12, "bspOltOnline", Type::gauge32,
     [](const OltRow &, const Making &making) { return sum(making, &PortRow::online); }},
    {13, "bspOltWaiting", Type::gauge32,
     [](const OltRow &, const Making &making) { return sum(making, &PortRow::waiting); }},
};

constexpr Column<PortRow> port_columns[] = {
    {2, "bspPortMac", Type::octets, [](const PortRow &port, const Making &) { return Item(port.mac); }},
    {3, "bspPortUplink", Type::gauge32, [](const PortRow &port, const Making &) { return Item(port.uplink); }},
    {4, "bspPortLaser", Type::integer, [](const PortRow &port, const Making &) { return truth(port.laser); }},
    {5, "bspPortTxPower", Type::integer,
     [](const PortRow &port, const Making &) { return scaled(port.tx_power, 100); }},
    {6, "bspPortTemperature", Type::integer,
     [](const PortRow &port, const Making &) { return scaled(port.temperature, 100); }},
    {7, "bspPortBound", Type::gauge32, [](const PortRow &port, const Making &) { return Item(port.bound); }},
    {8, "bspPortOnline", Type::gauge32, [](const PortRow &port, const Making &) { return Item(port.online); }},
    {9, "bspPortWaiting", Type::gauge32, [](const PortRow &port, const Making &) { return Item(port.waiting); }},
    {10, "bspPortUpLoad", Type::gauge32, [](const PortRow &port, const Making &) { return gauge(port.up_load); }},
    {11, "bspPortDownLoad", Type::gauge32, [](const PortRow &port, const Making &) { return gauge(port.down_load); }},
};

constexpr Column<PortMpcp> mpcp_columns[] = {
    {1, "bspMpcpDiscoveryInterval", Type::gauge32,
     [](const PortMpcp &port, const Making &) { return Item(port.discovery_interval); }},
    {2, "bspMpcpDiscoveryWindow", Type::gauge32,
     [](const PortMpcp &port, const Making &) { return Item(port.discovery_window); }},
    {3, "bspMpcpReportTimeout", Type::gauge32,
     [](const PortMpcp &port, const Making &) { return Item(port.report_timeout); }},
    {4, "bspMpcpGateTimeout", Type::gauge32,
     [](const PortMpcp &port, const Making &) { return Item(port.gate_timeout); }},
    {5, "bspMpcpGrantLength", Type::gauge32,
     [](const PortMpcp &port, const Making &) { return Item(port.grant_length); }},
    {6, "bspMpcpGrantCycle", Type::gauge32,
     [](const PortMpcp &port, const Making &) { return Item(port.grant_cycle); }},
    {7, "bspMpcpSyncTime", Type::gauge32, [](const PortMpcp &port, const Making &) { return Item(port.sync_time); }},
    {8, "bspMpcpLaserOnTime", Type::gauge32, [](const PortMpcp &port, const Making &) { return Item(port.laser_on); }},
    {9, "bspMpcpLaserOffTime", Type::gauge32,
     [](const PortMpcp &port, const Making &) { return Item(port.laser_off); }},
    {10, "bspMpcpFec", Type::integer, [](const PortMpcp &port, const Making &) { return truth(port.fec); }},
};

} // namespace

TableInfo olt_table()
{
    return {.entry = {1, 1, 1},
            .name = "bspOltEntry",
            .index = {{"bspOltIndex"}},
            .columns = kinds_of<OltRow>(olt_columns),
            .made_of = {Table::olt, Table::ports},
            .of_time = true, // whether it answers is no reading
            .make = [](Part &part, const Making &making) {
                const auto olt = rows_of(making.source.snapshot->olt);
                add<OltRow>(part, olt_columns, Oid{making.source.index}, olt.empty() ? nullptr : olt.data(), making);
            }};
}

TableInfo port_table()
{
    return {.entry = {1, 2, 1},
            .name = "bspPortEntry",
            .index = {{"bspOltIndex"}, {"bspPortNumber"}},
            .columns = kinds_of<PortRow>(port_columns),
            .made_of = {Table::ports},
            .make = [](Part &part, const Making &making) {
                for (const PortRow &port : rows_of(making.source.snapshot->ports))
                    add<PortRow>(part, port_columns, Oid{making.source.index, port.pon_port}, port, making);
            }};
}

TableInfo mpcp_table()
{
    return {.entry = {1, 3, 1},
            .name = "bspMpcpEntry",
            .index = {{"bspOltIndex"}, {"bspPortNumber"}},
            .columns = kinds_of<PortMpcp>(mpcp_columns),
            .made_of = {Table::mpcp},
            .make = [](Part &part, const Making &making) {
                for (const PortMpcp &port : rows_of(making.source.snapshot->mpcp))
                    add<PortMpcp>(part, mpcp_columns, Oid{making.source.index, port.pon_port}, port, making);
            }};
}

} // namespace front::snmp
