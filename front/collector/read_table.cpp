#include "collector/read_table.h"

#include <algorithm>
#include <tuple>

#include "bsp_pon.h"
#include "generated/service_words.h"

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
// More addresses than these are not read: they come in pages of 100.
constexpr uint32_t most_stations = 32'768;
constexpr uint32_t page = 100;

// Where registers begin in the records that the catalogue describes.
constexpr uint32_t registers_begin = 124;

// Thrown where less of a table may be asked for.
struct TooLarge : Fault {
    using Fault::Fault;
};

void check(uint32_t status)
{
    if (status == BSP_OK) return;
    // Some operations return the value of a failed exchange, which is negative.
    if (status == BSP_ERR_IPC || static_cast<int32_t>(status) < 0) throw NoAnswer();
    if (status == PON_ERR_TOO_LARGE) throw TooLarge("the table is too large");
    throw Fault("the OLT answers with status " + std::to_string(status));
}

// Asks for a table, with an operation that hands out a database through the pointer, and adds its rows.
template <class Row, class Ask>
void ask(Rows<Row> &table, Ask operation)
{
    db_handle *handle = nullptr;
    const uint32_t status = operation(&handle);
    Database database(handle, db_free);
    check(status);
    if (!handle) throw Fault("the OLT leaves no table");
    add_rows(table, std::move(database));
}

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

// Returns the OLT, whose ports are asked for one by one.
const view::basic_info &olt_of(const Snapshot &snapshot)
{
    const auto olt = rows_of(snapshot.olt);
    if (olt.empty()) throw Fault("it is not known how many ports the OLT has");
    return olt[0];
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

PortCounters read_counters(bool pon, uint32_t port)
{
    namespace at = layout::port_stats;
    constexpr uint32_t start = at::in_octets.offset;
    char block[160] = {};
    check(pon ? bsp_debug_8022_pon_stats(port, block) : bsp_debug_8022_ge_stats(port, block));
    const auto count = [&](layout::At<uint64_t> field) {
        return layout::load(block, layout::At<uint64_t>{field.offset - start});
    };
    return {.pon = pon,
            .port = port,
            .in_octets = count(at::in_octets),
            .in_unicast = count(at::in_unicast),
            .in_multicast = count(at::in_multicast),
            .in_broadcast = count(at::in_broadcast),
            .in_errors = count(at::in_fcs_errors) + count(at::in_code_errors),
            .in_discards = count(at::in_discards),
            .out_octets = count(at::out_octets),
            .out_unicast = count(at::out_unicast),
            .out_multicast = count(at::out_multicast),
            .out_broadcast = count(at::out_broadcast),
            .out_discards = count(at::out_discards)};
}

Rows<PortCounters> read_counters(const Snapshot &snapshot)
{
    const view::basic_info &olt = olt_of(snapshot);
    Rows<PortCounters> table;
    for (uint32_t port = 1; port <= olt.pon_ports; ++port)
        table.rows.push_back(read_counters(true, port));
    for (uint32_t port = 1; port <= olt.ge_ports; ++port)
        table.rows.push_back(read_counters(false, port));
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

Rows<ModuleQuantity> read_modules(const Snapshot &snapshot)
{
    const view::basic_info &olt = olt_of(snapshot);
    Rows<ModuleQuantity> table;
    for (uint32_t cage = 1; cage <= olt.pon_ports + olt.ge_ports; ++cage) {
        Rows<view::sfp_quantities> quantities;
        ask(quantities, [cage](db_handle **out) { return bsp_sfp_diag_info_get_json(cage, out); });
        for (const view::sfp_quantities &quantity : quantities.rows)
            table.rows.push_back({cage, quantity});
        table.databases.insert(table.databases.end(), quantities.databases.begin(), quantities.databases.end());
    }
    return table;
}

Rows<view::onu_capabilities> read_capabilities(const Snapshot &)
{
    Rows<view::onu_capabilities> table;
    ask(table, bsp_pon_get_onu_cap_snmp);
    check_order(table, onu_key<view::onu_capabilities>);
    return table;
}

Rows<Uplink> read_uplinks(const Snapshot &snapshot)
{
    namespace at = layout::ge_mac;
    Rows<Uplink> table;
    const uint32_t uplinks = olt_of(snapshot).ge_ports;
    for (uint32_t port = 1; port <= uplinks; ++port) {
        char registers[registers_begin + 22] = {};
        check(bsp_debug_plat_ge_mac_get(port, registers + registers_begin));
        table.rows.push_back(
            {.port = port,
             .mac = layout::load(registers, at::mac),
             .max_frame = layout::load(registers, at::max_frame),
             .speed = layout::load(registers, at::speed),
             .link = layout::load(registers, at::link) != 0,
             .enabled = layout::load(registers, at::tx_enabled) != 0 && layout::load(registers, at::rx_enabled) != 0});
    }
    return table;
}

Rows<PortMpcp> read_mpcp(const Snapshot &snapshot)
{
    namespace at = layout::pon_mac;
    Rows<PortMpcp> table;
    const uint32_t ports = olt_of(snapshot).pon_ports;
    for (uint32_t port = 1; port <= ports; ++port) {
        char registers[registers_begin + 36] = {};
        check(bsp_debug_plat_pon_mac_get(port, registers + registers_begin));
        table.rows.push_back({.pon_port = port,
                              .discovery_interval = layout::load(registers, at::discovery_interval),
                              .discovery_window = layout::load(registers, at::discovery_window),
                              .report_timeout = layout::load(registers, at::report_timeout),
                              .gate_timeout = layout::load(registers, at::gate_timeout),
                              .grant_length = layout::load(registers, at::grant_length),
                              .grant_cycle = layout::load(registers, at::grant_cycle),
                              .sync_time = layout::load(registers, at::sync_time),
                              .laser_on = layout::load(registers, at::laser_on),
                              .laser_off = layout::load(registers, at::laser_off),
                              .fec = layout::load(registers, at::fec) != 0});
    }
    return table;
}

// Reads the pages of one side of the forwarding database, until one is not full.
template <class Row>
Rows<Row> read_pages(uint32_t command)
{
    Rows<Row> table;
    for (size_t before = 0;; before = table.rows.size()) {
        ask(table, [&](db_handle **out) {
            bsp_plat_msg record{};
            record.plat_cmd = command;
            layout::store(reinterpret_cast<char *>(&record), layout::mac_query::from, static_cast<uint32_t>(before));
            layout::store(reinterpret_cast<char *>(&record), layout::mac_query::count, page);
            return bsp_pon_platform_by_db(out, &record);
        });
        if (table.rows.size() < before + page) return table;
        if (table.rows.size() > most_stations) throw Fault("more than " + std::to_string(most_stations) + " addresses");
    }
}

Rows<Station> read_stations(const Snapshot &)
{
    Rows<Station> table;
    for (const view::mac_table &row : read_pages<view::mac_table>(BSP_CMD_MAC_GET).rows)
        table.rows.push_back({row.vlan, row.mac, true, row.pon_port});
    for (const view::mac_table_nni &row : read_pages<view::mac_table_nni>(BSP_CMD_MAC_NNI_GET).rows)
        table.rows.push_back({row.vlan, row.mac, false, row.uplink});
    // An address that came or aged meanwhile has moved others from page to page, some of which are then there twice.
    const auto key = [](const Station &row) { return std::tie(row.vlan, row.mac); };
    std::ranges::stable_sort(table.rows, {}, key);
    const auto twice = std::ranges::unique(table.rows, {}, key);
    table.rows.erase(twice.begin(), twice.end());
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
