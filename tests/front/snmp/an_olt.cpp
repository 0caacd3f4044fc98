#include "an_olt.h"

namespace front::snmp
{

Oid below(Oid top, const Oid &rest)
{
    top.insert(top.end(), rest.begin(), rest.end());
    return top;
}

OltMaker::OltMaker()
{
    for (const TableKind &kind : table_kinds())
        snapshot->states[static_cast<size_t>(kind.table)].period = kind.period;
}

OltMaker &OltMaker::read(Table table)
{
    TableState &state = snapshot->states[static_cast<size_t>(table)];
    ++state.generation;
    state.read = time;
    state.took = 12;
    return *this;
}

OltMaker &OltMaker::facts(Facts facts)
{
    known = std::make_shared<const Facts>(std::move(facts));
    return *this;
}

OltMaker &OltMaker::at(UnixTime when)
{
    time = when;
    return *this;
}

Source OltMaker::source(uint32_t index, std::string name) const
{
    return {index, std::move(name), std::make_shared<const Snapshot>(*snapshot), known};
}

OltMaker an_olt()
{
    view::basic_info olt{};
    olt.model = "M16";
    olt.version = "1.2";
    olt.serial = "BSPS00000001";
    olt.mac = {2, 0, 0, 0, 1, 0};
    olt.pon_ports = 2;
    olt.ge_ports = 1;
    olt.uptime = 86400.5;

    view::port_info port{};
    port.pon_port = 1;
    port.mac = {2, 0, 0, 0, 1, 1};
    port.uplink = 1;
    port.laser = true;
    port.tx_power = 3.254;
    port.temperature = 41.5;
    port.bound = 4;
    port.online = 3;
    port.waiting = 1;
    port.up_load = 1500.4;
    view::port_info dark = port;
    dark.pon_port = 2;
    dark.laser = false;
    dark.tx_power = -40;

    view::onu_info onu{};
    onu.pon_port = 1;
    onu.onu_id = 5;
    onu.mac = {2, 0, 0, 0, 0, 5};
    onu.state = "online";
    onu.supported = true;
    onu.distance = 1200;
    onu.description = "shop";
    view::onu_info offline{};
    offline.pon_port = 2;
    offline.onu_id = 0;
    offline.mac = {2, 0, 0, 0, 0, 6};
    offline.state = "offline";
    offline.description = "";
    view::onu_info waiting{};
    waiting.pon_port = 2;
    waiting.mac = {2, 0, 0, 0, 0, 9};
    waiting.state = "waiting";

    view::onu_alarm alarm{};
    alarm.pon_port = 2;
    alarm.onu_id = 0;
    alarm.mac = offline.mac;
    alarm.alarm = 2;
    alarm.name = "dying_gasp";
    alarm.severity = "minor";
    alarm.state = "active";
    alarm.cause = "power";
    alarm.raised = 5'000;
    alarm.count = 1;

    view::loop_info loop{};
    loop.pon_port = 1;
    loop.onu_id = 5;
    loop.mac = onu.mac;
    loop.uni = 2;
    loop.state = "shut";
    loop.detected = 3;

    view::onu_stats_table stats{};
    stats.pon_port = 1;
    stats.onu_id = 5;
    stats.mac = onu.mac;
    stats.up_load = 12.5;
    stats.counted = 100.0;
    stats.up_frames = 5'000'000'000;
    view::onu_stats_table silent{};
    silent.pon_port = 2;
    silent.mac = offline.mac;

    PortCounters pon{}, uplink{};
    pon.pon = true;
    pon.port = 1;
    pon.in_octets = 7'000'000'000;
    uplink.port = 1;
    uplink.out_discards = 3;

    view::uni_attributes uni{};
    uni.pon_port = 1;
    uni.onu_id = 5;
    uni.uni = 1;
    uni.admin = true;
    uni.link = "1000FD";
    uni.ingress = 2048;
    view::uni_attributes dead_uni = uni;
    dead_uni.uni = 2;
    dead_uni.link = "down";
    dead_uni.ingress.reset();

    view::upgrade_base_info upgrade{};
    upgrade.pon_port = 1;
    upgrade.onu_id = 5;
    upgrade.vendor = "ACME";
    upgrade.model = "A1";
    upgrade.software = "V2";
    upgrade.run = "failed";
    upgrade.reason = "offline";

    view::onu_optics_table light{};
    light.pon_port = 1;
    light.onu_id = 5;
    light.rx_power = -21.504;
    light.olt_rx_power = -24.1;
    light.voltage = 3.3;

    view::sfp_quantities temperature{};
    temperature.quantity = "temperature";
    temperature.value = 40.25;
    temperature.unit = "degC";
    temperature.high_alarm = 85;
    temperature.state = "normal";
    view::sfp_quantities received = temperature;
    received.quantity = "received power";
    received.value.reset();
    received.unit = "dBm";
    received.state.reset();

    view::onu_capabilities capabilities{};
    capabilities.pon_port = 1;
    capabilities.onu_id = 5;
    capabilities.chipset = "C9";
    capabilities.ge_ports = 4;
    capabilities.fec = true;

    PortMpcp mpcp{};
    mpcp.pon_port = 1;
    mpcp.sync_time = 64;
    mpcp.fec = true;

    OltMaker maker;
    maker.set(&Snapshot::olt, Table::olt, {olt})
        .set(&Snapshot::ports, Table::ports, {port, dark})
        .set(&Snapshot::onus, Table::onus, {onu, offline, waiting})
        .set(&Snapshot::alarms, Table::alarms, {alarm})
        .set(&Snapshot::loops, Table::loops, {loop})
        .set(&Snapshot::stats, Table::stats, {stats, silent})
        .set(&Snapshot::counters, Table::counters, {pon, uplink})
        .set(&Snapshot::unis, Table::unis, {uni, dead_uni})
        .set(&Snapshot::upgrades, Table::upgrades, {upgrade})
        .set(&Snapshot::optics, Table::optics, {light})
        .set(&Snapshot::modules, Table::modules,
             std::vector<ModuleQuantity>{{1, temperature}, {1, received}, {3, temperature}})
        .set(&Snapshot::capabilities, Table::capabilities, {capabilities})
        .set(&Snapshot::uplinks, Table::uplinks,
             std::vector<Uplink>{{.port = 1,
                                  .mac = {2, 0, 0, 0, 2, 1},
                                  .max_frame = 1518,
                                  .speed = 1000,
                                  .link = true,
                                  .enabled = true}})
        .set(&Snapshot::mpcp, Table::mpcp, {mpcp})
        .set(&Snapshot::stations, Table::stations,
             std::vector<Station>{{7, {2, 0, 0, 0, 7, 1}, true, 2}, {7, {2, 0, 0, 0, 7, 2}, false, 1}});
    Fact fact{.value = "offline", .onu_id = 0, .cause = "power", .place = "branch 3", .since = test_time - 60'000};
    maker.facts({{{FactKind::onu, 2, "02:00:00:00:00:06", {}}, fact}});
    return maker;
}

} // namespace front::snmp
