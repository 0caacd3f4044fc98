// ifTable and ifXTable of IF-MIB: PON ports and uplinks.
#include <algorithm>
#include <map>

#include "snmp/core/items.h"
#include "snmp/core/standard_tables.h"

namespace front::snmp
{
namespace
{

// An Interface is a port, and what each table says of it, where it does.
struct Interface {
    uint32_t index = 0;
    bool pon = false;
    uint32_t number = 0;
    const view::port_info *port = nullptr;
    const Uplink *uplink = nullptr;
    const PortCounters *counters = nullptr;
};

constexpr int up = 1, down = 2;
constexpr uint32_t pon_speed = 1000;       // Mbit/s, of 1000BASE-PX
constexpr uint32_t ethernet_overhead = 18; // octets of a frame that are no payload

std::map<uint32_t, Interface> interfaces_of(const Source &source)
{
    std::map<uint32_t, Interface> found;
    const auto at = [&](bool pon, uint32_t number) -> Interface & {
        const uint32_t index = pon ? pon_if_index(source.index, number) : uplink_if_index(source.index, number);
        Interface &of = found[index];
        of.index = index;
        of.pon = pon;
        of.number = number;
        return of;
    };
    for (const view::port_info &port : rows_of(source.snapshot->ports))
        if (port.pon_port < uplink_if_index(0, 0)) at(true, port.pon_port).port = &port;
    for (const Uplink &uplink : rows_of(source.snapshot->uplinks))
        at(false, uplink.port).uplink = &uplink;
    for (const PortCounters &counters : rows_of(source.snapshot->counters))
        at(counters.pon, counters.port).counters = &counters;
    return found;
}

Item oper_status(const Interface &of)
{
    if (of.port) return of.port->laser ? up : down;
    return of.uplink ? Item(of.uplink->link ? up : down) : std::nullopt;
}

Item admin_status(const Interface &of)
{
    if (of.port) return of.port->laser ? up : down;
    return of.uplink ? Item(of.uplink->enabled ? up : down) : std::nullopt;
}

// Returns the speed in Mbit/s.
std::optional<uint32_t> speed_of(const Interface &of)
{
    if (of.pon) return pon_speed;
    return of.uplink ? std::optional(of.uplink->speed) : std::nullopt;
}

Item physical_address(const Interface &of)
{
    if (of.port) return of.port->mac;
    return of.uplink ? Item(of.uplink->mac) : std::nullopt;
}

template <uint64_t PortCounters::*count>
Item counter64(const Interface &of, const Making &)
{
    return of.counters ? Item(of.counters->*count) : std::nullopt;
}

template <uint64_t PortCounters::*count>
Item counter32(const Interface &of, const Making &)
{
    return of.counters ? Item(static_cast<uint32_t>(of.counters->*count)) : std::nullopt;
}

// When the state became what it is: 0 where it has been so since it was read first.
Item last_change(const Interface &of, const Making &making)
{
    constexpr size_t status_column = 7, this_column = 8;
    const Item status = oper_status(of);
    if (!status.present) return std::nullopt;
    const auto before = making.before ? making.before->at(status_column, Oid{of.index}, Type::integer) : std::nullopt;
    if (!before) return 0;
    if (before->number == status.number) return making.before->at(this_column, Oid{of.index}, Type::time_ticks)->number;
    return time_ticks(making.source.snapshot->state(of.pon ? Table::ports : Table::uplinks).read, making.times);
}

constexpr uint64_t PortCounters::*high_counters[] = {
    &PortCounters::in_octets,  &PortCounters::in_unicast,  &PortCounters::in_multicast,  &PortCounters::in_broadcast,
    &PortCounters::out_octets, &PortCounters::out_unicast, &PortCounters::out_multicast, &PortCounters::out_broadcast,
};
constexpr size_t first_high_counter = 5; // its column, from 0 on

// When counters were read first, or were found to have gone back.
Item discontinuity(const Interface &of, const Making &making)
{
    constexpr size_t this_column = 16;
    if (!of.counters) return std::nullopt;
    bool goes_on = making.before != nullptr;
    for (size_t i = 0; goes_on && i < std::size(high_counters); ++i) {
        const auto before = making.before->at(first_high_counter + i, Oid{of.index}, Type::counter64);
        goes_on = before && before->number <= of.counters->*high_counters[i];
    }
    if (goes_on) return making.before->at(this_column, Oid{of.index}, Type::time_ticks)->number;
    return time_ticks(making.source.snapshot->state(Table::counters).read, making.times);
}

constexpr Column<Interface> if_columns[] = {
    {1, "ifIndex", Type::integer, [](const Interface &of, const Making &) { return Item(of.index); }},
    {2, "ifDescr", Type::octets,
     [](const Interface &of, const Making &making) {
         return Item(making.source.name + (of.pon ? ", PON port " : ", uplink ") + std::to_string(of.number));
     }},
    {3, "ifType", Type::integer, [](const Interface &, const Making &) { return Item(6); }}, // ethernetCsmacd
    {4, "ifMtu", Type::integer,
     [](const Interface &of, const Making &) {
         return of.uplink && of.uplink->max_frame > ethernet_overhead ? Item(of.uplink->max_frame - ethernet_overhead)
                                                                      : std::nullopt;
     }},
    {5, "ifSpeed", Type::gauge32,
     [](const Interface &of, const Making &) {
         const auto speed = speed_of(of);
         return speed ? gauge(*speed * 1e6) : std::nullopt;
     }},
    {6, "ifPhysAddress", Type::octets, [](const Interface &of, const Making &) { return physical_address(of); }},
    {7, "ifAdminStatus", Type::integer, [](const Interface &of, const Making &) { return admin_status(of); }},
    {8, "ifOperStatus", Type::integer, [](const Interface &of, const Making &) { return oper_status(of); }},
    {9, "ifLastChange", Type::time_ticks, last_change},
    {10, "ifInOctets", Type::counter32, counter32<&PortCounters::in_octets>},
    {11, "ifInUcastPkts", Type::counter32, counter32<&PortCounters::in_unicast>},
    {13, "ifInDiscards", Type::counter32, counter32<&PortCounters::in_discards>},
    {14, "ifInErrors", Type::counter32, counter32<&PortCounters::in_errors>},
    {16, "ifOutOctets", Type::counter32, counter32<&PortCounters::out_octets>},
    {17, "ifOutUcastPkts", Type::counter32, counter32<&PortCounters::out_unicast>},
    {19, "ifOutDiscards", Type::counter32, counter32<&PortCounters::out_discards>},
};

constexpr Column<Interface> if_x_columns[] = {
    {1, "ifName", Type::octets,
     [](const Interface &of, const Making &making) {
         return Item(making.source.name + (of.pon ? ":pon" : ":ge") + std::to_string(of.number));
     }},
    {2, "ifInMulticastPkts", Type::counter32, counter32<&PortCounters::in_multicast>},
    {3, "ifInBroadcastPkts", Type::counter32, counter32<&PortCounters::in_broadcast>},
    {4, "ifOutMulticastPkts", Type::counter32, counter32<&PortCounters::out_multicast>},
    {5, "ifOutBroadcastPkts", Type::counter32, counter32<&PortCounters::out_broadcast>},
    {6, "ifHCInOctets", Type::counter64, counter64<&PortCounters::in_octets>},
    {7, "ifHCInUcastPkts", Type::counter64, counter64<&PortCounters::in_unicast>},
    {8, "ifHCInMulticastPkts", Type::counter64, counter64<&PortCounters::in_multicast>},
    {9, "ifHCInBroadcastPkts", Type::counter64, counter64<&PortCounters::in_broadcast>},
    {10, "ifHCOutOctets", Type::counter64, counter64<&PortCounters::out_octets>},
    {11, "ifHCOutUcastPkts", Type::counter64, counter64<&PortCounters::out_unicast>},
    {12, "ifHCOutMulticastPkts", Type::counter64, counter64<&PortCounters::out_multicast>},
    {13, "ifHCOutBroadcastPkts", Type::counter64, counter64<&PortCounters::out_broadcast>},
    {14, "ifLinkUpDownTrapEnable", Type::integer, [](const Interface &, const Making &) { return Item(1); }},
    {15, "ifHighSpeed", Type::gauge32, [](const Interface &of, const Making &) { return Item(speed_of(of)); }},
    {17, "ifConnectorPresent", Type::integer, [](const Interface &, const Making &) { return truth(true); }},
    {19, "ifCounterDiscontinuityTime", Type::time_ticks, discontinuity},
};

template <const auto &columns>
void make(Part &part, const Making &making)
{
    for (const auto &[index, of] : interfaces_of(making.source))
        add<Interface>(part, columns, Oid{index}, of, making);
}

} // namespace

uint32_t pon_if_index(uint32_t olt, uint32_t port)
{
    return olt * 1000 + port;
}

uint32_t uplink_if_index(uint32_t olt, uint32_t port)
{
    return olt * 1000 + 500 + port;
}

TableInfo if_table()
{
    return {.is_standard = true,
            .entry = {1, 3, 6, 1, 2, 1, 2, 2, 1},
            .name = "ifEntry",
            .index = {{"ifIndex"}},
            .columns = kinds_of<Interface>(if_columns),
            .made_of = {Table::ports, Table::uplinks, Table::counters},
            .make = make<if_columns>};
}

TableInfo if_x_table()
{
    return {.is_standard = true,
            .entry = {1, 3, 6, 1, 2, 1, 31, 1, 1, 1},
            .name = "ifXEntry",
            .index = {{"ifIndex"}},
            .columns = kinds_of<Interface>(if_x_columns),
            .made_of = {Table::ports, Table::uplinks, Table::counters},
            .make = make<if_x_columns>};
}

} // namespace front::snmp
