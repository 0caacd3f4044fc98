#include "views/bulk.h"

#include "bsp_pon.h"
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

// A cell of what there is only while there is a value that has it.
template <class Value, class Part>
void cell_of(Table &table, std::string_view name, const std::optional<Value> &value, Part part)
{
    value ? table.cell(name, part(*value)) : table.cell(name, std::nullopt);
}

template <class Onu>
void place_cells(Table &table, const Onu &onu)
{
    table.cell("pon_port", onu.pon_port);
    table.cell("onu_id", onu.onu_id);
    table.cell("mac", onu.mac);
}

void number_cells(Table &table, const OnuNumbers &onus)
{
    table.cell("bound", onus.bound);
    table.cell("online", onus.online);
    table.cell("waiting", onus.waiting);
}

} // namespace

std::string ports_table(std::span<const PortRow> ports)
{
    Table table(BSP_MSG_PON, BSP_CMD_VIEW_PORT_INFO);
    for (const PortRow &port : ports) {
        table.cell("pon_port", port.pon_port);
        table.cell("mac", port.mac);
        table.cell("uplink", port.uplink);
        table.cell("laser", port.laser_on);
        table.cell("tx_power", real(port.module, launch_power));
        table.cell("temperature", real(port.module, temperature));
        number_cells(table, port.onus);
        table.cell("up_load", kilobits(port.load.out));
        table.cell("down_load", kilobits(port.load.in));
    }
    return std::string(table.text());
}

std::string olt_table(const OltRow &olt)
{
    Table table(BSP_MSG_PON, BSP_CMD_VIEW_BASIC_INFO);
    table.cell("model", olt.model);
    table.cell("version", olt.version);
    table.cell("serial", std::string_view(olt.serial));
    table.cell("mac", olt.mac);
    table.cell("pon_ports", olt.pon_ports);
    table.cell("ge_ports", ge_uplinks);
    table.cell("uptime", seconds(olt.uptime));
    number_cells(table, olt.onus);
    return std::string(table.text());
}

std::string onu_optics_table(std::span<const OnuOptics> onus)
{
    using Measured = OnuOptics::Measured;
    Table table(BSP_MSG_PON, BSP_CMD_VIEW_ONU_OPTICS_ALL);
    for (const OnuOptics &onu : onus) {
        const auto own = [&](std::string_view name, Quantity quantity) {
            cell_of(table, name, onu.measured, [&](const Measured &all) { return real(all.at_onu, quantity); });
        };
        place_cells(table, onu);
        own("temperature", temperature);
        own("voltage", voltage);
        own("bias", bias);
        own("tx_power", launch_power);
        own("rx_power", received_power);
        cell_of(table, "olt_rx_power", onu.measured,
                [](const Measured &all) { return real(received_power, all.at_olt); });
    }
    return std::string(table.text());
}

std::string onu_stats_table(std::span<const OnuStats> onus)
{
    using Counts = OnuStats::Counts;
    Table table(BSP_MSG_PON, BSP_CMD_VIEW_ONU_STATS_ALL);
    for (const OnuStats &onu : onus) {
        const auto count = [&](std::string_view name, uint64_t Counts::*which) {
            cell_of(table, name, onu.counts, [&](const Counts &all) { return all.*which; });
        };
        place_cells(table, onu);
        cell_of(table, "up_load", onu.load, [](const Load &load) { return kilobits(load.out); });
        cell_of(table, "down_load", onu.load, [](const Load &load) { return kilobits(load.in); });
        cell_of(table, "counted", onu.counts, [](const Counts &all) { return seconds(all.time); });
        count("up_frames", &Counts::up_frames);
        count("up_octets", &Counts::up_octets);
        count("up_errors", &Counts::up_errors);
        count("down_frames", &Counts::down_frames);
        count("down_octets", &Counts::down_octets);
        count("down_discarded", &Counts::down_discarded);
    }
    return std::string(table.text());
}

} // namespace ponsim
