#include "metrics/metrics.h"

#include <algorithm>
#include <map>

#include "text/hex.h"

namespace front
{
namespace
{

constexpr double bytes_of_kilobit = 125;

// A Writer goes through the OLTs once for each family, for the samples of a family stand together.
class Writer
{
public:
    Writer(std::span<const OltSnapshot> all, Format format, UnixTime time) : olts(all), text(format), now(time) {}

    void write_olts();
    void write_ports();
    void write_port_counters(bool pon);
    void write_modules();
    void write_alarms();
    void write_onus();
    void write_onu_light();
    void write_onu_counters();
    void write_tables();

    Exposition &exposition() { return text; }

private:
    // Calls `each` with the name and the rows of a table of each OLT that has it.
    template <class Row, class Each>
    void of_each(Table table, std::shared_ptr<const Rows<Row>> Snapshot::*member, Each each)
    {
        for (const OltSnapshot &olt : olts) {
            if (olt.snapshot->state(table).outdated(now)) continue;
            for (const Row &row : rows_of((*olt.snapshot).*member))
                each(std::string_view(olt.name), row);
        }
    }
    template <class Value>
    void port_family(std::string_view name, std::string_view help, Value value)
    {
        text.family(name, MetricType::gauge, help);
        of_each(Table::ports, &Snapshot::ports, [&](std::string_view olt, const view::port_info &row) {
            text.sample({{"olt", olt}, {"port", std::to_string(row.pon_port)}}, value(row));
        });
    }
    // Writes a family with a sample of each ONU for which `value` returns one.
    template <class Row, class Value>
    void onu_family(Table table, std::shared_ptr<const Rows<Row>> Snapshot::*member, std::string_view name,
                    MetricType type, std::string_view help, Value value)
    {
        text.family(name, type, help);
        of_each(table, member, [&](std::string_view olt, const Row &row) {
            if (const auto number = value(row))
                text.sample({{"olt", olt},
                             {"port", std::to_string(row.pon_port)},
                             {"onu", std::to_string(std::optional<uint32_t>(row.onu_id).value_or(0))}},
                            *number);
        });
    }
    template <class Value>
    void table_family(std::string_view name, MetricType type, std::string_view help, Value value)
    {
        text.family(name, type, help);
        for (const OltSnapshot &olt : olts)
            for (const TableKind &kind : table_kinds())
                if (const auto number = value(olt.snapshot->state(kind.table)))
                    text.sample({{"olt", olt.name}, {"table", kind.name}}, *number);
    }

    const std::span<const OltSnapshot> olts;
    Exposition text;
    const UnixTime now;
};

void Writer::write_olts()
{
    text.family("pon_olt_up", MetricType::gauge, "Whether the OLT answered when it was asked last.");
    for (const OltSnapshot &olt : olts) {
        const TableState &state = olt.snapshot->state(Table::onus);
        text.sample({{"olt", olt.name}}, uint64_t{state.generation > 0 && !state.stale()});
    }
    text.family("pon_olt", MetricType::info, "What the OLT is.");
    of_each(Table::olt, &Snapshot::olt, [&](std::string_view olt, const view::basic_info &row) {
        text.sample({{"olt", olt},
                     {"model", row.model},
                     {"version", row.version},
                     {"serial", row.serial},
                     {"mac", text::mac_text(row.mac)}},
                    uint64_t{1});
    });
}

void Writer::write_ports()
{
    port_family("pon_port_laser_on", "Whether the laser of the PON port is on.",
                [](const auto &row) { return uint64_t{row.laser}; });
    port_family("pon_port_transmit_power_dbm", "Power that the PON port launches; -40 without light.",
                [](const auto &row) { return row.tx_power; });
    port_family("pon_port_temperature_celsius", "Temperature of the PON port's optical module.",
                [](const auto &row) { return row.temperature; });
    port_family("pon_port_upstream_load_bytes_per_second", "Load that the ONUs offer the PON port.",
                [](const auto &row) { return row.up_load * bytes_of_kilobit; });
    port_family("pon_port_downstream_load_bytes_per_second", "Load that the network offers the ONUs of the PON port.",
                [](const auto &row) { return row.down_load * bytes_of_kilobit; });

    text.family("pon_port_onus", MetricType::gauge, "ONUs of the PON port by their state.");
    of_each(Table::ports, &Snapshot::ports, [&](std::string_view olt, const view::port_info &row) {
        const std::string port = std::to_string(row.pon_port);
        text.sample({{"olt", olt}, {"port", port}, {"state", "online"}}, uint64_t{row.online});
        text.sample({{"olt", olt}, {"port", port}, {"state", "offline"}},
                    uint64_t{row.bound - std::min(row.bound, row.online)});
        text.sample({{"olt", olt}, {"port", port}, {"state", "waiting"}}, uint64_t{row.waiting});
    });
}

void Writer::write_port_counters(bool pon)
{
    struct Family {
        const char *name, *help;
        uint64_t PortCounters::*count;
    };
    static constexpr Family families[] = {
        {"_receive_octets", "Octets received from the fibre, of frames without errors.", &PortCounters::in_octets},
        {"_receive_unicast_frames", "Frames to one station received from the fibre.", &PortCounters::in_unicast},
        {"_receive_multicast_frames", "Frames to groups received from the fibre.", &PortCounters::in_multicast},
        {"_receive_broadcast_frames", "Frames to all received from the fibre.", &PortCounters::in_broadcast},
        {"_receive_error_frames", "Frames received from the fibre and dropped for an error.", &PortCounters::in_errors},
        {"_receive_discarded_frames", "Frames received from the fibre and dropped by policing.",
         &PortCounters::in_discards},
        {"_transmit_octets", "Octets sent into the fibre.", &PortCounters::out_octets},
        {"_transmit_unicast_frames", "Frames to one station sent into the fibre.", &PortCounters::out_unicast},
        {"_transmit_multicast_frames", "Frames to groups sent into the fibre.", &PortCounters::out_multicast},
        {"_transmit_broadcast_frames", "Frames to all sent into the fibre.", &PortCounters::out_broadcast},
        {"_transmit_discarded_frames", "Frames not sent for want of room or of a link.", &PortCounters::out_discards},
    };
    for (const Family &family : families) {
        text.family((pon ? "pon_port" : "pon_uplink") + std::string(family.name), MetricType::counter, family.help);
        of_each(Table::counters, &Snapshot::counters, [&](std::string_view olt, const PortCounters &row) {
            if (row.pon == pon) text.sample({{"olt", olt}, {"port", std::to_string(row.port)}}, row.*family.count);
        });
    }
}

void Writer::write_modules()
{
    text.family(
        "pon_module_state", MetricType::gauge,
        "What an optical module measures: 0 normal, 1 beyond a warning threshold, 2 beyond an alarm threshold.");
    of_each(Table::modules, &Snapshot::modules, [&](std::string_view olt, const ModuleQuantity &row) {
        if (!row.of.state) return;
        const uint64_t state = row.of.state->ends_with("alarm") ? 2 : row.of.state->ends_with("warning") ? 1 : 0;
        text.sample({{"olt", olt}, {"cage", std::to_string(row.cage)}, {"quantity", row.of.quantity}}, state);
    });
}

void Writer::write_alarms()
{
    text.family("pon_alarms", MetricType::gauge, "Active alarms of the PON port and its ONUs; of uplinks, at port 0.");
    for (const OltSnapshot &olt : olts) {
        if (olt.snapshot->state(Table::alarms).outdated(now)) continue;
        struct Count {
            std::string_view severity;
            uint64_t number = 0;
        };
        std::map<std::pair<uint32_t, std::string_view>, Count> counts;
        for (const view::onu_alarm &alarm : rows_of(olt.snapshot->alarms)) {
            Count &count = counts[{alarm.pon_port, alarm.name}];
            count.severity = alarm.severity;
            count.number += alarm.state == "active";
        }
        for (const auto &[of, count] : counts)
            text.sample({{"olt", olt.name},
                         {"port", std::to_string(of.first)},
                         {"alarm", of.second},
                         {"severity", count.severity}},
                        count.number);
    }
}

void Writer::write_onus()
{
    using Onu = view::onu_info;
    onu_family(
        Table::onus, &Snapshot::onus, "pon_onu_up", MetricType::gauge, "Whether the bound ONU is online.",
        [](const Onu &row) { return row.onu_id ? std::optional<uint64_t>(row.state == "online") : std::nullopt; });
    onu_family(Table::onus, &Snapshot::onus, "pon_onu_distance_meters", MetricType::gauge,
               "Distance that ranging found.", [](const Onu &row) {
                   return row.onu_id && row.distance ? std::optional<uint64_t>(*row.distance) : std::nullopt;
               });
    onu_family(Table::onus, &Snapshot::onus, "pon_onu_reboots", MetricType::counter,
               "Reboots by command, or after an upgrade.",
               [](const Onu &row) { return row.onu_id ? std::optional<uint64_t>(row.reboots) : std::nullopt; });

    text.family("pon_onu", MetricType::info, "What the bound ONU is.");
    for (const OltSnapshot &olt : olts) {
        if (olt.snapshot->state(Table::onus).outdated(now)) continue;
        std::map<std::pair<uint32_t, uint32_t>, const view::upgrade_base_info *> devices;
        for (const view::upgrade_base_info &device : rows_of(olt.snapshot->upgrades))
            devices.emplace(std::pair(device.pon_port, device.onu_id), &device);
        for (const Onu &row : rows_of(olt.snapshot->onus)) {
            if (!row.onu_id) continue;
            const auto found = devices.find({row.pon_port, *row.onu_id});
            const view::upgrade_base_info *device = found == devices.end() ? nullptr : found->second;
            text.sample({{"olt", olt.name},
                         {"port", std::to_string(row.pon_port)},
                         {"onu", std::to_string(*row.onu_id)},
                         {"mac", text::mac_text(row.mac)},
                         {"description", row.description.value_or("")},
                         {"vendor", device ? device->vendor : ""},
                         {"model", device ? device->model : ""},
                         {"firmware", device ? device->software : ""}},
                        uint64_t{1});
        }
    }
}

void Writer::write_onu_light()
{
    using Light = view::onu_optics_table;
    struct Family {
        const char *name, *help;
        std::optional<double> Light::*value;
        double scale = 1;
    };
    static constexpr Family families[] = {
        {"pon_onu_receive_power_dbm", "Power that the ONU receives from the OLT.", &Light::rx_power},
        {"pon_olt_receive_power_dbm", "Power that the OLT receives from the ONU.", &Light::olt_rx_power},
        {"pon_onu_transmit_power_dbm", "Power that the ONU launches.", &Light::tx_power},
        {"pon_onu_temperature_celsius", "Temperature of the ONU's transceiver.", &Light::temperature},
        {"pon_onu_supply_volts", "Supply voltage of the ONU's transceiver.", &Light::voltage},
        {"pon_onu_bias_amperes", "Bias of the ONU's laser.", &Light::bias, 0.001},
    };
    for (const Family &family : families)
        onu_family(Table::optics, &Snapshot::optics, family.name, MetricType::gauge, family.help,
                   [&](const Light &row) {
                       const std::optional<double> &value = row.*family.value;
                       return value ? std::optional(*value * family.scale) : std::nullopt;
                   });
}

void Writer::write_onu_counters()
{
    using Stats = view::onu_stats_table;
    struct Family {
        const char *name, *help;
        std::optional<uint64_t> Stats::*value;
    };
    static constexpr Family families[] = {
        {"pon_onu_upstream_frames", "Upstream frames that passed the ONU well, since it monitors.", &Stats::up_frames},
        {"pon_onu_upstream_octets", "Octets of these frames.", &Stats::up_octets},
        {"pon_onu_upstream_error_frames", "Upstream frames with a wrong check sequence, and fragments.",
         &Stats::up_errors},
        {"pon_onu_downstream_frames", "Downstream frames that passed the ONU well, since it monitors.",
         &Stats::down_frames},
        {"pon_onu_downstream_octets", "Octets of these frames.", &Stats::down_octets},
        {"pon_onu_downstream_discarded_frames", "Downstream frames that were not sent for want of room.",
         &Stats::down_discarded},
    };
    for (const Family &family : families)
        onu_family(Table::stats, &Snapshot::stats, family.name, MetricType::counter, family.help,
                   [&](const Stats &row) { return row.*family.value; });
}

void Writer::write_tables()
{
    table_family("pon_table_age_seconds", MetricType::gauge, "Time since the table of the OLT was read last.",
                 [this](const TableState &state) {
                     return state.generation > 0 ? std::optional(static_cast<double>(now - state.read) / 1000)
                                                 : std::nullopt;
                 });
    table_family("pon_table_reads", MetricType::counter, "How often the table of the OLT was read.",
                 [](const TableState &state) { return std::optional(state.generation); });
    table_family("pon_table_failures", MetricType::counter, "How often reading the table failed.",
                 [](const TableState &state) { return std::optional(state.failures); });
    table_family("pon_table_read_seconds", MetricType::gauge, "Time that reading the table took last.",
                 [](const TableState &state) {
                     return state.generation > 0 ? std::optional(state.took / 1000.0) : std::nullopt;
                 });
}

} // namespace

std::span<const std::string_view> onu_details()
{
    static constexpr std::string_view words[] = {"none", "state", "optics", "all"};
    return words;
}

std::optional<OnuDetail> onu_detail(std::string_view word)
{
    const auto words = onu_details();
    const auto found = std::ranges::find(words, word);
    if (found == words.end()) return std::nullopt;
    return static_cast<OnuDetail>(found - words.begin());
}

std::string metrics_text(std::span<const OltSnapshot> olts, OnuDetail detail, Format format, UnixTime now)
{
    Writer writer(olts, format, now);
    writer.write_olts();
    writer.write_ports();
    writer.write_port_counters(true);
    writer.write_port_counters(false);
    writer.write_modules();
    writer.write_alarms();
    if (detail >= OnuDetail::state) writer.write_onus();
    if (detail >= OnuDetail::optics) writer.write_onu_light();
    if (detail >= OnuDetail::all) writer.write_onu_counters();
    writer.write_tables();
    return writer.exposition().text();
}

} // namespace front
