#include "views/bulk.h"

#include "views/table.h"

namespace ponsim
{
namespace
{

double real(Quantity quantity, int32_t reading)
{
    const QuantityFormat &format = format_of(quantity);
    return static_cast<double>(format.convert(reading)) / format.per_unit;
}

double real(const Readings &readings, Quantity quantity)
{
    return real(quantity, readings[quantity]);
}

double seconds(ModelTime time)
{
    return static_cast<double>(time) / ms_per_second;
}

double kilobits(uint64_t bits)
{
    return static_cast<double>(bits) / 1000;
}

// Returns a part of a value, or none when there is no value.
template <class Value, class Part>
auto part_of(const std::optional<Value> &value, Part part) -> std::optional<decltype(part(*value))>
{
    return value ? std::optional(part(*value)) : std::nullopt;
}

} // namespace

std::string ports_table(std::span<const PortRow> ports)
{
    Table<view::port_info> table;
    for (const PortRow &port : ports)
        table.add({.pon_port = port.pon_port,
                   .mac = port.mac,
                   .uplink = port.uplink,
                   .laser = port.laser_on,
                   .tx_power = real(port.module, launch_power),
                   .temperature = real(port.module, temperature),
                   .bound = port.onus.bound,
                   .online = port.onus.online,
                   .waiting = port.onus.waiting,
                   .up_load = kilobits(port.load.out),
                   .down_load = kilobits(port.load.in)});
    return table.text();
}

std::string olt_table(const OltRow &olt)
{
    Table<view::basic_info> table;
    table.add({.model = olt.model,
               .version = olt.version,
               .serial = olt.serial,
               .mac = olt.mac,
               .pon_ports = olt.pon_ports,
               .ge_ports = ge_uplinks,
               .uptime = seconds(olt.uptime),
               .bound = olt.onus.bound,
               .online = olt.onus.online,
               .waiting = olt.onus.waiting});
    return table.text();
}

std::string onu_optics_table(std::span<const OnuOptics> onus)
{
    using Measured = OnuOptics::Measured;
    Table<view::onu_optics_table> table;
    for (const OnuOptics &onu : onus) {
        const auto own = [&onu](Quantity quantity) {
            return part_of(onu.measured, [quantity](const Measured &all) { return real(all.at_onu, quantity); });
        };
        table.add({.pon_port = onu.pon_port,
                   .onu_id = onu.onu_id,
                   .mac = onu.mac,
                   .temperature = own(temperature),
                   .voltage = own(voltage),
                   .bias = own(bias),
                   .tx_power = own(launch_power),
                   .rx_power = own(received_power),
                   .olt_rx_power =
                       part_of(onu.measured, [](const Measured &all) { return real(received_power, all.at_olt); })});
    }
    return table.text();
}

std::string onu_stats_table(std::span<const OnuStats> onus)
{
    using Counts = OnuStats::Counts;
    Table<view::onu_stats_table> table;
    for (const OnuStats &onu : onus) {
        const auto count = [&onu](uint64_t Counts::*which) {
            return part_of(onu.counts, [which](const Counts &all) { return all.*which; });
        };
        table.add({.pon_port = onu.pon_port,
                   .onu_id = onu.onu_id,
                   .mac = onu.mac,
                   .up_load = part_of(onu.load, [](const Load &load) { return kilobits(load.out); }),
                   .down_load = part_of(onu.load, [](const Load &load) { return kilobits(load.in); }),
                   .counted = part_of(onu.counts, [](const Counts &all) { return seconds(all.time); }),
                   .up_frames = count(&Counts::up_frames),
                   .up_octets = count(&Counts::up_octets),
                   .up_errors = count(&Counts::up_errors),
                   .down_frames = count(&Counts::down_frames),
                   .down_octets = count(&Counts::down_octets),
                   .down_discarded = count(&Counts::down_discarded)});
    }
    return table.text();
}

} // namespace ponsim
