#include "collector/read_table.h"

#include <algorithm>
#include <tuple>

#include "bsp_pon.h"
#include "collector/asking.h"
#include "collector/read_ports.h"

namespace front
{
namespace
{

constexpr TableKind kinds[] = {
    {Table::olt, "olt", 600, "the OLT"},
    {Table::ports, "ports", 10, "PON ports"},
    {Table::onus, "onus", 5, "ONUs and their states"},
    {Table::alarms, "alarms", 5, "alarms"},
    {Table::loops, "loops", 30, "UNI ports with loops"},
    {Table::stats, "stats", 60, "counters of ONUs"},
    {Table::counters, "counters", 60, "counters of PON ports and uplinks"},
    {Table::unis, "unis", 60, "UNI ports"},
    {Table::upgrades, "upgrades", 30, "firmware and its upgrades"},
    {Table::optics, "optics", 300, "light of ONUs"},
    {Table::modules, "modules", 300, "optical modules of the OLT"},
    {Table::capabilities, "capabilities", 600, "what ONUs can do"},
    {Table::uplinks, "uplinks", 10, "uplinks and their links"},
    {Table::mpcp, "mpcp", 600, "how PON ports let ONUs register and send"},
    {Table::stations, "stations", 600, "addresses of the forwarding database"},
};

// An OLT that says it has more ports than this is not believed.
constexpr uint32_t most_ports = 256;

// Rows come in the order of their keys, and no two have the same.
template <class Row, class Key>
void check_order(const Rows<Row> &table, Key key)
{
    for (size_t i = 1; i < table.rows.size(); ++i)
        if (!(key(table.rows[i - 1]) < key(table.rows[i])))
            throw Fault("row " + std::to_string(i + 1) + ": not behind the row before it");
}

template <class Row>
auto onu_key(const Row &row)
{
    return std::tie(row.pon_port, row.onu_id);
}

// Asks for a table of each PON port, with an operation that takes a record.
template <class Row, class Operation>
void ask_each_port(Rows<Row> &table, const Snapshot &snapshot, Operation operation)
{
    const uint32_t ports = olt_of(snapshot).pon_ports;
    for (uint32_t port = 1; port <= ports; ++port) {
        ask(table, [&](db_handle **out) {
            bsp_pon_msg record{};
            record.pon_port = port;
            return operation(out, &record);
        });
    }
}

Rows<view::basic_info> read_olt(const Snapshot &)
{
    Rows<view::basic_info> table;
    ask(table, bsp_pon_get_basic_info);
    if (table.rows.size() != 1) throw Fault("not one row");
    if (table.rows[0].pon_ports > most_ports || table.rows[0].ge_ports > most_ports)
        throw Fault("row 1: more than " + std::to_string(most_ports) + " ports");
    return table;
}

Rows<view::port_info> read_ports(const Snapshot &)
{
    Rows<view::port_info> table;
    ask(table, bsp_pon_get_port_info);
    check_order(table, [](const view::port_info &row) { return row.pon_port; });
    return table;
}

// The texts of ONUs are left out where the table of all of them would be too long.
bool lacks_texts(const Rows<view::onu_info> &table)
{
    return std::ranges::any_of(table.rows, [](const view::onu_info &row) { return row.onu_id && !row.description; });
}

Rows<view::onu_info> read_onus(const Snapshot &snapshot)
{
    Rows<view::onu_info> table;
    ask(table, bsp_pon_get_onu_info_snmp);
    if (lacks_texts(table)) {
        table = {};
        ask_each_port(table, snapshot, bsp_pon_get_onu_info_web);
        std::ranges::stable_partition(table.rows, [](const view::onu_info &row) { return row.onu_id.has_value(); });
    }
    check_order(table, [](const view::onu_info &row) {
        return std::make_tuple(!row.onu_id, row.pon_port, row.onu_id.value_or(0), row.onu_id ? view::Mac{} : row.mac);
    });
    return table;
}

Rows<view::onu_alarm> read_alarms(const Snapshot &snapshot)
{
    Rows<view::onu_alarm> table;
    try {
        ask(table, [](db_handle **out) {
            bsp_pon_msg record{};
            return bsp_pon_get_onu_alarm(out, &record);
        });
    } catch (const TooLarge &) {
        ask_each_port(table, snapshot, bsp_pon_get_onu_alarm);
    }
    return table;
}

Rows<view::loop_info> read_loops(const Snapshot &)
{
    Rows<view::loop_info> table;
    ask(table, bsp_pon_get_loop_detect_info);
    return table;
}

Rows<view::onu_stats_table> read_stats(const Snapshot &)
{
    Rows<view::onu_stats_table> table;
    ask(table, bsp_pon_get_onu_perf_stat_data_all);
    check_order(table, onu_key<view::onu_stats_table>);
    return table;
}

Rows<view::uni_attributes> read_unis(const Snapshot &)
{
    Rows<view::uni_attributes> table;
    ask(table, bsp_pon_get_uni_attribute_snmp);
    check_order(table, [](const view::uni_attributes &row) { return std::tie(row.pon_port, row.onu_id, row.uni); });
    return table;
}

Rows<view::upgrade_base_info> read_upgrades(const Snapshot &snapshot)
{
    Rows<view::upgrade_base_info> table;
    ask_each_port(table, snapshot, bsp_pon_get_upgrade_base_info_web);
    check_order(table, onu_key<view::upgrade_base_info>);
    return table;
}

Rows<view::onu_optics_table> read_optics(const Snapshot &)
{
    Rows<view::onu_optics_table> table;
    ask(table, bsp_pon_get_onu_optical_diag_data_all);
    check_order(table, onu_key<view::onu_optics_table>);
    return table;
}

Rows<view::onu_capabilities> read_capabilities(const Snapshot &)
{
    Rows<view::onu_capabilities> table;
    ask(table, bsp_pon_get_onu_cap_snmp);
    check_order(table, onu_key<view::onu_capabilities>);
    return table;
}

template <class Row>
void replace(std::shared_ptr<const Rows<Row>> &table, Rows<Row> (*read)(const Snapshot &), const Snapshot &snapshot)
{
    table = std::make_shared<const Rows<Row>>(read(snapshot));
}

} // namespace

std::span<const TableKind, table_count> table_kinds()
{
    return kinds;
}

void read_table(Table table, Snapshot &snapshot)
{
    switch (table) {
    case Table::olt:
        return replace(snapshot.olt, read_olt, snapshot);
    case Table::ports:
        return replace(snapshot.ports, read_ports, snapshot);
    case Table::onus:
        return replace(snapshot.onus, read_onus, snapshot);
    case Table::alarms:
        return replace(snapshot.alarms, read_alarms, snapshot);
    case Table::loops:
        return replace(snapshot.loops, read_loops, snapshot);
    case Table::stats:
        return replace(snapshot.stats, read_stats, snapshot);
    case Table::counters:
        return replace(snapshot.counters, read_counters, snapshot);
    case Table::unis:
        return replace(snapshot.unis, read_unis, snapshot);
    case Table::upgrades:
        return replace(snapshot.upgrades, read_upgrades, snapshot);
    case Table::optics:
        return replace(snapshot.optics, read_optics, snapshot);
    case Table::modules:
        return replace(snapshot.modules, read_modules, snapshot);
    case Table::capabilities:
        return replace(snapshot.capabilities, read_capabilities, snapshot);
    case Table::uplinks:
        return replace(snapshot.uplinks, read_uplinks, snapshot);
    case Table::mpcp:
        return replace(snapshot.mpcp, read_mpcp, snapshot);
    case Table::stations:
        return replace(snapshot.stations, read_stations, snapshot);
    }
}

} // namespace front
