// These tests check what stands in the tables of SNMP.
#include <cmath>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "an_olt.h"

namespace front::snmp
{
namespace
{

using testing::SizeIs;

const Oid root = MibSettings().root;
const Oid if_entry{1, 3, 6, 1, 2, 1, 2, 2, 1}, if_x_entry{1, 3, 6, 1, 2, 1, 31, 1, 1, 1};
constexpr UnixTime started = test_time - 3'600'000; // an hour before

class SnmpTables : public testing::Test
{
protected:
    std::shared_ptr<const Objects> look()
    {
        const Source olts[] = {olt.source()};
        return mib.objects(olts, {.now = test_time, .started = started});
    }
    std::optional<Value> get(const Oid &oid) { return look()->get(oid); }
    uint64_t number(const Oid &oid)
    {
        const auto value = get(oid);
        EXPECT_TRUE(value.has_value());
        return value ? value->number : UINT64_MAX;
    }
    std::string octets(const Oid &oid)
    {
        const auto value = get(oid);
        return value ? value->octets : "nothing";
    }
    // Own tables, below the root.
    static Oid own(const Oid &rest) { return below(root, rest); }

    template <class Row>
    Row first(const std::shared_ptr<const Rows<Row>> Snapshot::*member)
    {
        return ((*olt.source().snapshot).*member)->rows.at(0);
    }

    OltMaker olt = an_olt();
    Mib mib{MibSettings()};
};

TEST_F(SnmpTables, InterfacesOfAllOltsAreCounted)
{
    const Oid if_number{1, 3, 6, 1, 2, 1, 2, 1, 0}, if_table_last_change{1, 3, 6, 1, 2, 1, 31, 1, 5, 0};
    Source olts[] = {olt.source(), olt.source()};
    olts[1].index = 2;
    const auto looked = [&](std::span<const Source> at, UnixTime now) {
        return mib.objects(at, {.now = now, .started = started});
    };
    const auto one = looked(std::span(olts).first(1), started + 1000), two = looked(olts, started + 5000);
    EXPECT_GT(one->get(if_number)->number, 0u);
    EXPECT_EQ(two->get(if_number)->number, 2 * one->get(if_number)->number);
    EXPECT_EQ(one->get(if_table_last_change)->number, 100u);
    EXPECT_EQ(two->get(if_table_last_change)->number, 500u);
    EXPECT_EQ(two->next(if_number, false)->name, below(if_entry, {1, 1001}));
    EXPECT_EQ(two->get(Oid{1, 3, 6, 1, 2, 1, 2, 1, 1}), std::nullopt);
    EXPECT_TRUE(two->has_object(if_number));

    olts[1].name = "renamed"; // no interface comes or goes
    EXPECT_EQ(looked(olts, started + 9000)->get(if_table_last_change)->number, 500u);
    EXPECT_EQ(Mib({.standard_tables = false}).objects(olts, {})->get(if_number), std::nullopt);
}

TEST_F(SnmpTables, HaveWhatAnOnuIs)
{
    EXPECT_EQ(octets(own({1, 4, 1, 2, 1, 1, 5})), std::string("\2\0\0\0\0\5", 6));
    EXPECT_EQ(octets(own({1, 4, 1, 3, 1, 1, 5})), "shop");
    EXPECT_EQ(number(own({1, 4, 1, 4, 1, 1, 5})), 1u);
    EXPECT_EQ(number(own({1, 4, 1, 16, 1, 1, 5})), 6u) << "its LLID";
    EXPECT_EQ(octets(own({1, 5, 1, 4, 1, 1, 5})), "V2");
    EXPECT_EQ(octets(own({1, 5, 1, 5, 1, 1, 5})), "C9");
    EXPECT_EQ(number(own({1, 5, 1, 12, 1, 1, 5})), 6u);
    EXPECT_EQ(octets(own({1, 5, 1, 14, 1, 1, 5})), "offline");
    EXPECT_EQ(number(own({1, 6, 1, 5, 1, 1, 5})), static_cast<uint32_t>(-2150)) << "hundredths of dBm";
    EXPECT_EQ(number(own({1, 6, 1, 2, 1, 1, 5})), 3300u);
    EXPECT_EQ(get(own({1, 6, 1, 1, 1, 1, 5})), std::nullopt) << "its temperature is not known";
    EXPECT_EQ(number(own({1, 7, 1, 5, 1, 1, 5})), 5'000'000'000u);
}

TEST_F(SnmpTables, SayWhyAnOnuIsOfflineAndSinceWhen)
{
    EXPECT_EQ(octets(own({1, 4, 1, 5, 1, 2, 0})), "power");
    EXPECT_EQ(octets(own({1, 4, 1, 6, 1, 2, 0})), "branch 3");
    EXPECT_EQ(octets(own({1, 4, 1, 7, 1, 2, 0})), std::string("\x07\xE7\x0B\x0E\x16\x0C\x14\0+\0\0", 11))
        << "a minute before";
    EXPECT_EQ(octets(own({1, 4, 1, 5, 1, 1, 5})), "nothing") << "nothing was found of it";
}

TEST_F(SnmpTables, DoNotTellTheReasonOfAStateThatHasPassed)
{
    view::onu_info onu = first(&Snapshot::onus);
    onu.pon_port = 2;
    onu.onu_id = 0;
    onu.mac = {2, 0, 0, 0, 0, 6};
    olt.set(&Snapshot::onus, Table::onus, {onu});
    EXPECT_EQ(octets(own({1, 4, 1, 5, 1, 2, 0})), "nothing");
}

TEST_F(SnmpTables, HaveWhatWaitsAndWhatLoops)
{
    EXPECT_EQ(number(own({1, 9, 1, 6, 1, 2, 2, 0, 0, 0, 0, 9})), static_cast<uint32_t>(-1));
    EXPECT_EQ(number(own({1, 10, 1, 3, 1, 1, 2, 0, 0, 0, 0, 5, 2})), 2u);
    EXPECT_EQ(get(own({1, 4, 1, 2, 1, 2, 9})), std::nullopt);
}

TEST_F(SnmpTables, HaveUniPorts)
{
    EXPECT_EQ(number(own({1, 8, 1, 2, 1, 1, 5, 1})), 1u);
    EXPECT_EQ(number(own({1, 8, 1, 3, 1, 1, 5, 1})), 1u);
    EXPECT_EQ(number(own({1, 8, 1, 4, 1, 1, 5, 1})), 1000u);
    EXPECT_EQ(number(own({1, 8, 1, 5, 1, 1, 5, 1})), 2u);
    EXPECT_EQ(number(own({1, 8, 1, 8, 1, 1, 5, 1})), 2048u);
    EXPECT_EQ(number(own({1, 8, 1, 3, 1, 1, 5, 2})), 2u);
    EXPECT_EQ(get(own({1, 8, 1, 4, 1, 1, 5, 2})), std::nullopt);
    EXPECT_EQ(get(own({1, 8, 1, 8, 1, 1, 5, 2})), std::nullopt);
}

TEST_F(SnmpTables, HaveModules)
{
    EXPECT_EQ(number(own({1, 12, 1, 3, 1, 3, 1})), 40250u) << "thousandths, of the uplink's module";
    EXPECT_EQ(number(own({1, 12, 1, 9, 1, 1, 1})), 1u);
    EXPECT_EQ(get(own({1, 12, 1, 3, 1, 1, 5})), std::nullopt) << "no power was received yet";
}

TEST_F(SnmpTables, GiveAnAlarmTheSameIndexAsLongAsItIsListed)
{
    view::onu_alarm one = first(&Snapshot::alarms);
    const Oid column = own({1, 11, 1, 4});
    const Oid name = look()->next(column, false)->name;
    EXPECT_THAT(name, SizeIs(column.size() + 4));
    EXPECT_EQ(octets(name), "dying_gasp");
    view::onu_alarm before = one, port = one;
    before.mac = {2, 0, 0, 0, 0, 1};
    before.name = "other";
    port.mac.reset();
    port.onu_id.reset();
    olt.set(&Snapshot::alarms, Table::alarms, {before, port, one, port});
    EXPECT_EQ(octets(name), "dying_gasp");
    size_t alarms = 0;
    for (auto next = look()->next(column, false); next && is_below(next->name, column);
         next = look()->next(next->name, false))
        ++alarms;
    EXPECT_EQ(alarms, 4u) << "also two that nothing tells apart";
}

TEST_F(SnmpTables, HaveInterfaces)
{
    EXPECT_EQ(octets(below(if_entry, {2, 1001})), "north, PON port 1");
    EXPECT_EQ(octets(below(if_x_entry, {1, 1501})), "north:ge1");
    EXPECT_EQ(number(below(if_entry, {8, 1001})), 1u);
    EXPECT_EQ(number(below(if_entry, {8, 1002})), 2u) << "its laser is off";
    EXPECT_EQ(number(below(if_entry, {4, 1501})), 1500u);
    EXPECT_EQ(get(below(if_entry, {4, 1001})), std::nullopt) << "nobody says how long frames of a PON port are";
    EXPECT_EQ(number(below(if_entry, {5, 1501})), 1'000'000'000u);
    EXPECT_EQ(number(below(if_x_entry, {15, 1001})), 1000u);
    EXPECT_EQ(number(below(if_x_entry, {6, 1001})), 7'000'000'000u);
    EXPECT_EQ(number(below(if_entry, {10, 1001})), 7'000'000'000u % (uint64_t{1} << 32));
    EXPECT_EQ(number(below(if_entry, {19, 1501})), 3u);
    EXPECT_EQ(get(below(if_entry, {10, 1002})), std::nullopt) << "its counters are not known";
}

TEST_F(SnmpTables, SayWhenTheStateOfAnInterfaceChanged)
{
    EXPECT_EQ(number(below(if_entry, {9, 1001})), 0u) << "it was so before";
    view::port_info port = first(&Snapshot::ports);
    port.laser = false;
    olt.at(test_time + 10'000).set(&Snapshot::ports, Table::ports, {port});
    EXPECT_EQ(number(below(if_entry, {9, 1001})), 361'000u) << "hundredths of a second since the master started";
    olt.at(test_time + 20'000).read(Table::ports);
    EXPECT_EQ(number(below(if_entry, {9, 1001})), 361'000u);
}

TEST_F(SnmpTables, TellThatCountersWentBack)
{
    const Oid since = below(if_x_entry, {19, 1001});
    EXPECT_EQ(number(since), 360'000u) << "what was before is not known";
    PortCounters counters = first(&Snapshot::counters);
    counters.in_octets += 5;
    olt.at(test_time + 10'000).set(&Snapshot::counters, Table::counters, {counters});
    EXPECT_EQ(number(since), 360'000u);
    counters.in_octets = 4;
    olt.at(test_time + 20'000).set(&Snapshot::counters, Table::counters, {counters});
    EXPECT_EQ(number(since), 362'000u);
    EXPECT_EQ(number(below(if_x_entry, {6, 1001})), 4u);
}

TEST_F(SnmpTables, TellWhenAnOnuBeganToCount)
{
    const Oid since = own({1, 7, 1, 11, 1, 1, 5});
    EXPECT_EQ(number(since), 350'000u);
    view::onu_stats_table stats = first(&Snapshot::stats);
    const auto read = [&](UnixTime later) {
        olt.at(test_time + later).set(&Snapshot::stats, Table::stats, {stats});
        look();
    };
    stats.counted = 161.3; // more than a second too much
    stats.up_frames = *stats.up_frames + 1;
    read(60'000);
    EXPECT_EQ(number(since), 350'000u) << "it goes on";

    stats.counted.reset();
    stats.up_frames.reset();
    read(120'000);
    EXPECT_EQ(number(since), 350'000u) << "it is offline";
    EXPECT_EQ(get(own({1, 7, 1, 5, 1, 1, 5})), std::nullopt);
    stats.counted = 280.0;
    stats.up_frames = 5'000'000'009;
    read(180'000);
    EXPECT_EQ(number(since), 350'000u) << "it went on meanwhile";

    stats.counted = 10.0;
    stats.up_frames = 3;
    read(240'000);
    EXPECT_EQ(number(since), 383'000u) << "it began again";
    stats.mac = {2, 0, 0, 0, 0, 7};
    stats.counted = 30.0;
    stats.up_frames = 4;
    read(250'000);
    EXPECT_EQ(number(since), 382'000u) << "it is another ONU";
}

TEST_F(SnmpTables, HaveThePhysicalEntitiesAndTheirSensors)
{
    const Oid entity{1, 3, 6, 1, 2, 1, 47, 1, 1, 1, 1}, sensor{1, 3, 6, 1, 2, 1, 99, 1, 1, 1};
    EXPECT_EQ(octets(below(entity, {11, 100'000})), "BSPS00000001");
    EXPECT_EQ(get(below(entity, {3, 100'000}))->oid, (Oid{0, 0}));
    EXPECT_EQ(number(below(entity, {6, 100'000})), static_cast<uint32_t>(-1));
    EXPECT_EQ(number(below(entity, {4, 100'030})), 100'000u);
    EXPECT_EQ(octets(below(entity, {2, 100'030})), "optical module of uplink 1");
    EXPECT_EQ(number(below(entity, {4, 100'011})), 100'010u);
    EXPECT_EQ(get(below(entity, {11, 100'010})), std::nullopt);
    EXPECT_EQ(number(below(sensor, {1, 100'011})), 8u);
    EXPECT_EQ(number(below(sensor, {4, 100'011})), 4025u);
    EXPECT_EQ(number(below(sensor, {5, 100'015})), 2u) << "unavailable";
    EXPECT_EQ(get(below(sensor, {4, 100'015})), std::nullopt);
    EXPECT_EQ(number(below(sensor, {7, 100'011})), 360'000u);
}

TEST_F(SnmpTables, HaveTheForwardingDatabaseAndFec)
{
    const Oid station{1, 3, 6, 1, 2, 1, 17, 7, 1, 2, 2, 1}, port{1, 3, 6, 1, 2, 1, 17, 1, 4, 1};
    EXPECT_EQ(number(below(station, {2, 4103, 2, 0, 0, 0, 7, 1})), 2u);
    EXPECT_EQ(number(below(station, {2, 4103, 2, 0, 0, 0, 7, 2})), 193u);
    EXPECT_EQ(number(below(port, {2, 2})), 1002u);
    EXPECT_EQ(number(below(port, {2, 193})), 1501u);
    EXPECT_EQ(number({1, 3, 6, 1, 2, 1, 17, 7, 1, 2, 1, 1, 2, 4103}), 2u);
    EXPECT_EQ(number({1, 3, 6, 1, 2, 1, 155, 1, 3, 1, 1, 3, 1001}), 3u);
    EXPECT_EQ(number(own({1, 3, 1, 7, 1, 1})), 64u);
}

TEST_F(SnmpTables, HaveTextsAsTheyAreUpToABound)
{
    const std::string hostile = std::string("a\0\xFF\n%n", 6) + std::string(300, 'x');
    view::onu_info onu = first(&Snapshot::onus);
    onu.description = hostile;
    olt.set(&Snapshot::onus, Table::onus, {onu});
    EXPECT_EQ(octets(own({1, 4, 1, 3, 1, 1, 5})), hostile.substr(0, 255));
}

TEST_F(SnmpTables, HoldNumbersThatNoOltCanMeanWithinTheirType)
{
    view::port_info port = first(&Snapshot::ports);
    port.tx_power = -1e300;
    port.temperature = std::numeric_limits<double>::quiet_NaN();
    port.up_load = 1e300;
    port.down_load = -5;
    olt.set(&Snapshot::ports, Table::ports, {port});
    EXPECT_EQ(static_cast<int32_t>(number(own({1, 2, 1, 5, 1, 1}))), -INT32_MAX);
    EXPECT_EQ(get(own({1, 2, 1, 6, 1, 1})), std::nullopt);
    EXPECT_EQ(number(own({1, 2, 1, 10, 1, 1})), UINT32_MAX);
    EXPECT_EQ(number(own({1, 2, 1, 11, 1, 1})), 0u);
}

TEST_F(SnmpTables, LeaveOutARowWhoseIndexIsThereAlready)
{
    view::onu_optics_table light = first(&Snapshot::optics), again = light;
    again.rx_power = -1;
    olt.set(&Snapshot::optics, Table::optics, {light, again});
    EXPECT_EQ(number(own({1, 6, 1, 5, 1, 1, 5})), static_cast<uint32_t>(-2150));
}

} // namespace
} // namespace front::snmp
