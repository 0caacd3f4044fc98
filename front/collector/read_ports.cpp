#include "collector/read_ports.h"

#include <algorithm>
#include <tuple>

#include "bsp_pon.h"
#include "collector/asking.h"
#include "generated/service_words.h"

namespace front
{
namespace
{

// More addresses than these are not read: they come in pages of 100.
constexpr uint32_t most_stations = 32'768;
constexpr uint32_t page = 100;

// Where registers begin in the records that the catalogue describes.
constexpr uint32_t registers_begin = 124;

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

} // namespace

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

Rows<Station> read_stations(const Snapshot &)
{
    Rows<Station> table;
    for (const view::mac_table &row : read_pages<view::mac_table>(BSP_CMD_MAC_GET).rows)
        table.rows.push_back({row.vlan, row.mac, true, row.pon_port, row.onu_id, row.uni});
    for (const view::mac_table_nni &row : read_pages<view::mac_table_nni>(BSP_CMD_MAC_NNI_GET).rows)
        table.rows.push_back({row.vlan, row.mac, false, row.uplink, std::nullopt, std::nullopt});
    // An address that came or aged meanwhile has moved others from page to page, some of which are then there twice.
    const auto key = [](const Station &row) { return std::tie(row.vlan, row.mac); };
    std::ranges::stable_sort(table.rows, {}, key);
    const auto twice = std::ranges::unique(table.rows, {}, key);
    table.rows.erase(twice.begin(), twice.end());
    return table;
}

} // namespace front
