// What is known of each bound ONU.
#include <algorithm>
#include <cmath>
#include <map>

#include "snmp/core/items.h"
#include "snmp/core/pon_tables.h"
#include "text/hex.h"

namespace front::snmp
{
namespace
{

using Onu = view::onu_info;
using Light = view::onu_optics_table;
using Stats = view::onu_stats_table;

constexpr std::string_view onu_states[] = {"online", "offline", "unauthenticated"};
constexpr std::string_view upgrade_runs[] = {"queued", "downloading", "verifying", "rebooting", "done", "failed"};

struct OnuRow {
    const Onu &onu;
    const Fact *fact; // of its state, or null
};

// What the two tables that know of devices say.
struct Device {
    const view::upgrade_base_info *upgrade = nullptr;
    const view::onu_capabilities *capabilities = nullptr;
};

template <class Value>
Item of_fact(const OnuRow &row, Value value)
{
    return row.fact ? Item(value(*row.fact)) : std::nullopt;
}

constexpr Column<OnuRow> onu_columns[] = {
    {2, "bspOnuMac", Type::octets, [](const OnuRow &row, const Making &) { return Item(row.onu.mac); }},
    {3, "bspOnuName", Type::octets, [](const OnuRow &row, const Making &) { return Item(row.onu.description); }},
    {4, "bspOnuState", Type::integer,
     [](const OnuRow &row, const Making &) { return place_of(row.onu.state, onu_states); }, onu_states},
    {5, "bspOnuReason", Type::octets,
     [](const OnuRow &row, const Making &) { return of_fact(row, [](const Fact &fact) { return fact.cause; }); }},
    {6, "bspOnuPlace", Type::octets,
     [](const OnuRow &row, const Making &) { return of_fact(row, [](const Fact &fact) { return fact.place; }); }},
    {7, "bspOnuStateSince", Type::octets,
     [](const OnuRow &row, const Making &) {
         return row.fact && row.fact->since > 0 ? Item(date_and_time(row.fact->since)) : std::nullopt;
     }},
    {8, "bspOnuDistance", Type::gauge32, [](const OnuRow &row, const Making &) { return Item(row.onu.distance); }},
    {9, "bspOnuSupported", Type::integer, [](const OnuRow &row, const Making &) { return truth(row.onu.supported); }},
    {10, "bspOnuBindMode", Type::gauge32, [](const OnuRow &row, const Making &) { return Item(row.onu.mode); }},
    {11, "bspOnuTextA", Type::octets, [](const OnuRow &row, const Making &) { return Item(row.onu.text_a); }},
    {12, "bspOnuTextB", Type::octets, [](const OnuRow &row, const Making &) { return Item(row.onu.text_b); }},
    {13, "bspOnuTextC", Type::octets, [](const OnuRow &row, const Making &) { return Item(row.onu.text_c); }},
    {14, "bspOnuReboots", Type::gauge32, [](const OnuRow &row, const Making &) { return Item(row.onu.reboots); }},
    {15, "bspOnuLoid", Type::octets, [](const OnuRow &row, const Making &) { return Item(row.onu.loid); }},
    {16, "bspOnuLlid", Type::gauge32, [](const OnuRow &row, const Making &) { return Item(*row.onu.onu_id + 1); }},
    {17, "bspOnuAction", Type::integer, [](const OnuRow &, const Making &) { return Item(1); }},
};

// Returns what `value` makes of a part of a device, if there is that part.
template <class Part, class Value>
Item part_of(const Part *part, Value value)
{
    return part ? Item(value(*part)) : std::nullopt;
}

constexpr Column<Device> device_columns[] = {
    {1, "bspDeviceVendor", Type::octets,
     [](const Device &device, const Making &) {
         return part_of(device.upgrade, [](const auto &row) { return row.vendor; });
     }},
    {2, "bspDeviceModel", Type::octets,
     [](const Device &device, const Making &) {
         return part_of(device.upgrade, [](const auto &row) { return row.model; });
     }},
    {3, "bspDeviceHardware", Type::octets,
     [](const Device &device, const Making &) {
         return part_of(device.upgrade, [](const auto &row) { return row.hardware; });
     }},
    {4, "bspDeviceFirmware", Type::octets,
     [](const Device &device, const Making &) {
         return part_of(device.upgrade, [](const auto &row) { return row.software; });
     }},
    {5, "bspDeviceChipset", Type::octets,
     [](const Device &device, const Making &) {
         return part_of(device.capabilities, [](const auto &row) { return row.chipset; });
     }},
    {6, "bspDeviceGePorts", Type::gauge32,
     [](const Device &device, const Making &) {
         return part_of(device.capabilities, [](const auto &row) { return row.ge_ports; });
     }},
    {7, "bspDeviceFePorts", Type::gauge32,
     [](const Device &device, const Making &) {
         return part_of(device.capabilities, [](const auto &row) { return row.fe_ports; });
     }},
    {8, "bspDevicePotsPorts", Type::gauge32,
     [](const Device &device, const Making &) {
         return part_of(device.capabilities, [](const auto &row) { return row.pots_ports; });
     }},
    {9, "bspDeviceFec", Type::integer,
     [](const Device &device, const Making &) {
         return part_of(device.capabilities, [](const auto &row) { return truth(row.fec); });
     }},
    {10, "bspDeviceBattery", Type::integer,
     [](const Device &device, const Making &) {
         return part_of(device.capabilities, [](const auto &row) { return truth(row.battery); });
     }},
    {11, "bspDeviceUpgradeType", Type::octets,
     [](const Device &device, const Making &) {
         return part_of(device.upgrade, [](const auto &row) { return row.type; });
     }},
    {12, "bspDeviceUpgradeRun", Type::integer,
     [](const Device &device, const Making &) {
         return part_of(device.upgrade, [](const auto &row) { return place_of(row.run.value_or(""), upgrade_runs); });
     },
     upgrade_runs},
    {13, "bspDeviceUpgradeProgress", Type::gauge32,
     [](const Device &device, const Making &) {
         return part_of(device.upgrade, [](const auto &row) { return row.progress; });
     }},
    {14, "bspDeviceUpgradeReason", Type::octets,
     [](const Device &device, const Making &) {
         return part_of(device.upgrade, [](const auto &row) { return row.reason; });
     }},
};

constexpr Column<Light> light_columns[] = {
    {1, "bspOpticsTemperature", Type::integer,
     [](const Light &onu, const Making &) { return scaled(onu.temperature, 100); }},
    {2, "bspOpticsVoltage", Type::integer, [](const Light &onu, const Making &) { return scaled(onu.voltage, 1000); }},
    {3, "bspOpticsBias", Type::integer, [](const Light &onu, const Making &) { return scaled(onu.bias, 1000); }},
    {4, "bspOpticsTxPower", Type::integer, [](const Light &onu, const Making &) { return scaled(onu.tx_power, 100); }},
    {5, "bspOpticsRxPower", Type::integer, [](const Light &onu, const Making &) { return scaled(onu.rx_power, 100); }},
    {6, "bspOpticsOltRxPower", Type::integer,
     [](const Light &onu, const Making &) { return scaled(onu.olt_rx_power, 100); }},
};

// Returns what stood in a column of an ONU's counters before.
std::optional<Value> stood(const Making &making, const Stats &onu, size_t column, Type type)
{
    if (!making.before) return std::nullopt;
    return making.before->at(column, Oid{making.source.index, onu.pon_port, onu.onu_id}, type);
}

constexpr size_t counted_column = 3;

// Returns whether an ONU has gone on to count since it was read before, as far as this is known.
bool counts_on(const Making &making, const Stats &onu)
{
    const std::optional<uint64_t> counts[] = {onu.up_frames,   onu.up_octets,   onu.up_errors,
                                              onu.down_frames, onu.down_octets, onu.down_discarded};
    constexpr size_t first_column = 4;
    for (size_t i = 0; i < std::size(counts); ++i) {
        const auto before = stood(making, onu, first_column + i, Type::counter64);
        if (before && counts[i] && *counts[i] < before->number) return false;
    }
    const auto before = stood(making, onu, counted_column, Type::gauge32);
    return !before || !onu.counted || *onu.counted + 1 >= static_cast<double>(before->number);
}

// Counters count from when the ONU began to, and from 0 when it begins again. That time is found to a few seconds, and
// stays what it was found to be first. Of an ONU that is offline it stays as it is.
Item counting_since(const Stats &onu, const Making &making)
{
    constexpr size_t mac_column = 0, since_column = 10;
    constexpr uint64_t most_difference = 1000; // hundredths of a second
    std::optional<Value> before = stood(making, onu, since_column, Type::time_ticks);
    const auto mac = stood(making, onu, mac_column, Type::octets);
    if (!mac || mac->octets != Item(onu.mac).octets) before.reset();
    if (!onu.counted || std::isnan(*onu.counted)) return before ? Item(before->number) : std::nullopt;
    const auto counted = static_cast<UnixTime>(std::clamp(*onu.counted, 0.0, 1e9) * 1000);
    const uint64_t since = time_ticks(making.source.snapshot->state(Table::stats).read - counted, making.times);
    const bool was_counting = stood(making, onu, counted_column, Type::gauge32).has_value();
    const bool is_same =
        before && (was_counting ? counts_on(making, onu)
                                : std::max(since, before->number) - std::min(since, before->number) <= most_difference);
    return is_same ? before->number : since;
}

constexpr Column<Stats> stats_columns[] = {
    {1, "bspStatsMac", Type::octets, [](const Stats &onu, const Making &) { return Item(onu.mac); }},
    {2, "bspStatsUpLoad", Type::gauge32, [](const Stats &onu, const Making &) { return gauge(onu.up_load); }},
    {3, "bspStatsDownLoad", Type::gauge32, [](const Stats &onu, const Making &) { return gauge(onu.down_load); }},
    {4, "bspStatsCounted", Type::gauge32, [](const Stats &onu, const Making &) { return gauge(onu.counted); }},
    {5, "bspStatsUpFrames", Type::counter64, [](const Stats &onu, const Making &) { return Item(onu.up_frames); }},
    {6, "bspStatsUpOctets", Type::counter64, [](const Stats &onu, const Making &) { return Item(onu.up_octets); }},
    {7, "bspStatsUpErrors", Type::counter64, [](const Stats &onu, const Making &) { return Item(onu.up_errors); }},
    {8, "bspStatsDownFrames", Type::counter64, [](const Stats &onu, const Making &) { return Item(onu.down_frames); }},
    {9, "bspStatsDownOctets", Type::counter64, [](const Stats &onu, const Making &) { return Item(onu.down_octets); }},
    {10, "bspStatsDownDiscards", Type::counter64,
     [](const Stats &onu, const Making &) { return Item(onu.down_discarded); }},
    {11, "bspStatsDiscontinuity", Type::time_ticks, counting_since},
};

Oid onu_index(const Making &making, uint32_t port, uint32_t id)
{
    return {making.source.index, port, id};
}

} // namespace

TableInfo onu_table()
{
    return {.entry = {1, 4, 1},
            .name = "bspOnuEntry",
            .index = {{"bspOltIndex"}, {"bspPortNumber"}, {"bspOnuId"}},
            .columns = kinds_of<OnuRow>(onu_columns),
            .made_of = {Table::onus},
            .of_facts = true,
            .make = [](Part &part, const Making &making) {
                const Facts *facts = making.source.facts.get();
                for (const Onu &onu : rows_of(making.source.snapshot->onus)) {
                    if (!onu.onu_id) continue;
                    OnuRow row{onu, nullptr};
                    if (facts) {
                        const auto found = facts->find({FactKind::onu, onu.pon_port, text::mac_text(onu.mac), {}});
                        // What was found for another state is no reason for this one.
                        if (found != facts->end() && found->second.value == onu.state) row.fact = &found->second;
                    }
                    add<OnuRow>(part, onu_columns, onu_index(making, onu.pon_port, *onu.onu_id), row, making);
                }
            }};
}

TableInfo onu_device_table()
{
    return {.entry = {1, 5, 1},
            .name = "bspDeviceEntry",
            .index = {{"bspOltIndex"}, {"bspPortNumber"}, {"bspOnuId"}},
            .columns = kinds_of<Device>(device_columns),
            .made_of = {Table::upgrades, Table::capabilities},
            .make = [](Part &part, const Making &making) {
                std::map<std::pair<uint32_t, uint32_t>, Device> devices;
                for (const auto &row : rows_of(making.source.snapshot->upgrades))
                    devices[{row.pon_port, row.onu_id}].upgrade = &row;
                for (const auto &row : rows_of(making.source.snapshot->capabilities))
                    devices[{row.pon_port, row.onu_id}].capabilities = &row;
                for (const auto &[of, device] : devices)
                    add<Device>(part, device_columns, onu_index(making, of.first, of.second), device, making);
            }};
}

TableInfo onu_optics_table()
{
    return {.entry = {1, 6, 1},
            .name = "bspOpticsEntry",
            .index = {{"bspOltIndex"}, {"bspPortNumber"}, {"bspOnuId"}},
            .columns = kinds_of<Light>(light_columns),
            .made_of = {Table::optics},
            .make = [](Part &part, const Making &making) {
                for (const Light &onu : rows_of(making.source.snapshot->optics))
                    add<Light>(part, light_columns, onu_index(making, onu.pon_port, onu.onu_id), onu, making);
            }};
}

TableInfo onu_stats_table()
{
    return {.entry = {1, 7, 1},
            .name = "bspStatsEntry",
            .index = {{"bspOltIndex"}, {"bspPortNumber"}, {"bspOnuId"}},
            .columns = kinds_of<Stats>(stats_columns),
            .made_of = {Table::stats},
            .make = [](Part &part, const Making &making) {
                for (const Stats &onu : rows_of(making.source.snapshot->stats))
                    add<Stats>(part, stats_columns, onu_index(making, onu.pon_port, onu.onu_id), onu, making);
            }};
}

} // namespace front::snmp
