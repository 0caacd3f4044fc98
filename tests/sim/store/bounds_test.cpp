// These tests fill tables by requests up to their bounds and past them. Whatever is asked for, the service never keeps
// what it would refuse to load.
#include <gmock/gmock.h>

#include "control/control.h"
#include "model/lifecycle/upgrade.h"
#include "model/onu/profiles.h"
#include "model/port/loops.h"
#include "scenes.h"
#include "store/configuration.h"
#include "upgrade.h"

namespace ponsim
{
namespace
{

using testing::HasSubstr;

const Settings two_ports{.seed = 1, .ports = 2, .arrivals = 4, .silent = 0};
constexpr ModelTime some_time = 1000 * ms_per_second;

// Returns the address of an ONU that was there once.
Mac former(size_t number)
{
    return {0x00,
            0x1b,
            0x22,
            static_cast<uint8_t>(number >> 16),
            static_cast<uint8_t>(number >> 8),
            static_cast<uint8_t>(number)};
}

// In this fixture the first ONU of port 1 is online at id 5.
struct BoundsFixture : ServiceFixture {
    const Mac online = port(1).arrivals.at(0).mac;

    explicit BoundsFixture(Change before = {}) : ServiceFixture(two_ports, with_time(std::move(before)))
    {
        EXPECT_EQ(send(record_of(BSP_CMD_ONU_BIND, 1, 5, online)), BSP_OK);
    }

    static Change with_time(Change change)
    {
        change.put<ModelClock>({}, {some_time});
        return change;
    }

    const Olt &olt() const { return simulator.olt(); }
    uint32_t done(const Plan &plan)
    {
        if (plan.status == BSP_OK) simulator.change(plan.change);
        return plan.status;
    }
    void order(const std::string &line) { simulator.change(plan_control(olt(), line).change); }
    void pass(ModelTime time) { simulator.advance(olt().now() + time); }
    uint32_t send_onu(uint32_t channel, uint32_t command, uint32_t onu_id, auto at, uint32_t value)
    {
        bsp_onu_msg record = onu_record_of(command, 1, onu_id);
        put(record, at, value);
        Message message = message_of(channel, record);
        message.call = catalogue::Call::set;
        return simulator.handle(message).status;
    }

    size_t rows(std::string_view table)
    {
        simulator.keep_time();
        return static_cast<size_t>(std::ranges::count(store.rows(), table, &Row::table));
    }
    bool has_row_of(std::string_view table, const Mac &mac)
    {
        simulator.keep_time();
        const Cell cell = Blob{std::string(mac.begin(), mac.end())};
        return std::ranges::any_of(store.rows(), [&](const Row &row) {
            return row.table == table && std::ranges::find(row.cells, cell) != row.cells.end();
        });
    }
    // What the service keeps loads, as a state and as a configuration.
    void expect_loads()
    {
        simulator.keep_time();
        EXPECT_NO_THROW(store.load());
        const std::vector<Row> all = store.rows();
        EXPECT_NO_THROW(read_configuration(write_configuration(simulator.settings(), all), simulator.settings()));
        Kept::each_family([&]<class Record>() {
            EXPECT_LE(std::ranges::count(all, Family<Record>::table, &Row::table),
                      static_cast<std::ptrdiff_t>(Family<Record>::most));
        });
    }
};

// A Full family has as many records of a port's former ONUs as a port can have. What is done to other ONUs needs room.
struct Full {
    std::string table;
    size_t most;
    Change records;
    void (*act)(BoundsFixture &fixture);
};

template <class Record>
Full full(Change records, void (*act)(BoundsFixture &))
{
    return {std::string(Family<Record>::table), Family<Record>::most_of_port, std::move(records), act};
}

// Returns so many records. The one of number 17 is the oldest.
template <class Record>
Change records_of(size_t count, auto key_of, auto record_of_number)
{
    Change change;
    for (size_t number = 0; number < count; ++number)
        change.put<Record>(key_of(number), record_of_number(number));
    return change;
}

std::vector<Full> full_families()
{
    const auto onu = [](size_t number) { return OnuAtPort{1, former(number)}; };
    const auto since = [](size_t number) -> ModelTime { return number == 17 ? 1 : 2; };
    constexpr size_t onus = remembered_per_port;
    std::vector<Full> all;
    all.push_back(full<OnuRecord>(records_of<OnuRecord>(onus, onu,
                                                        [](size_t number) {
                                                            OnuRecord record{.reboots = 1};
                                                            record.supported = number == 17;
                                                            return record;
                                                        }),
                                  [](BoundsFixture &fixture) { fixture.order("arrive 1 count=3"); }));
    all.push_back(
        full<PluggedOnu>(records_of<PluggedOnu>(onus, onu, [](size_t) { return PluggedOnu{.state = Plugged::gone}; }),
                         [](BoundsFixture &fixture) { fixture.order("arrive 1 count=3"); }));
    all.push_back(full<UpgradeRun>(
        records_of<UpgradeRun>(onus, onu,
                               [&](size_t number) {
                                   return UpgradeRun{"home", "2.0", 100, UpgradeRun::State::done, since(number)};
                               }),
        [](BoundsFixture &fixture) {
            EXPECT_EQ(add_type(fixture, "new", *fixture.olt().device_of(fixture.online).type, "9.9", 100), BSP_OK);
            EXPECT_EQ(bind_to_port(fixture, 1, "new"), BSP_OK);
            EXPECT_EQ(upgrade_one(fixture, 1, 5), BSP_OK);
        }));
    const size_t alarms = Family<AlarmRecord>::most_of_port;
    all.push_back(full<AlarmRecord>(
        records_of<AlarmRecord>(
            alarms,
            [](size_t number) {
                return AlarmKey{1, former(number / 8), static_cast<uint32_t>(1 + number % 8)};
            },
            [&](size_t number) { return AlarmRecord{.count = 1, .raised = 0, .cleared = since(number)}; }),
        [](BoundsFixture &fixture) {
            for (const Alarm alarm : {Alarm::degraded, Alarm::receive_overload, Alarm::los})
                EXPECT_EQ(fixture.send_onu(BSP_MSG_ONU_INFO, BSP_CMD_ONU_ALARM_TEST, 5, layout::onu_alarm_test::alarm,
                                           static_cast<uint32_t>(alarm)),
                          BSP_OK);
        }));
    all.push_back(
        full<Ledger>(records_of<Ledger>(onus, onu, [](size_t) { return Ledger{}; }), [](BoundsFixture &fixture) {
            EXPECT_EQ(fixture.send_onu(BSP_MSG_ONU_INFO, BSP_CMD_ONU_PERF_MONITOR_SET, 5, layout::onu_switch::on, 1),
                      BSP_OK);
        }));
    all.push_back(full<PluggedDevice>(
        records_of<PluggedDevice>(
            onus * max_unis,
            [](size_t number) {
                return UniKey{1, former(number / max_unis), static_cast<uint32_t>(1 + number % max_unis)};
            },
            [](size_t) { return PluggedDevice{}; }),
        [](BoundsFixture &fixture) { fixture.order("plug 1 " + text::mac_text(fixture.online) + " 1 10HD"); }));
    return all;
}

TEST(Bounds, OfWhatAPortRemembersHoldWhateverBecomesOfItsOnus)
{
    for (const Full &family : full_families()) {
        SCOPED_TRACE(family.table);
        BoundsFixture fixture(family.records);
        family.act(fixture);
        fixture.pass(0);
        EXPECT_EQ(fixture.rows(family.table), family.most);
        fixture.expect_loads();
    }
}

TEST(Bounds, LetTheOldestMakeRoomAndKeepWhatSomebodyHasSet)
{
    const std::vector<Full> all = full_families();
    const auto after = [&](std::string_view table) {
        BoundsFixture fixture(std::ranges::find(all, table, &Full::table)->records);
        std::ranges::find(all, table, &Full::table)->act(fixture);
        fixture.pass(0);
        return std::pair{fixture.has_row_of(std::string(table), former(17)),
                         fixture.has_row_of(std::string(table), fixture.online)};
    };
    EXPECT_EQ(after("upgrade_run"), (std::pair{false, true}));
    EXPECT_EQ(after("ledger").second, true);
    BoundsFixture fixture(all[0].records);
    fixture.order("arrive 1 count=3");
    EXPECT_FALSE(fixture.has_row_of("onu", former(17))) << "all others are not supported, which somebody has set";
    EXPECT_TRUE(fixture.has_row_of("onu", former(4000)));
}

TEST(Bounds, OfWhatOperatorsFillAreAnsweredWithAStatus)
{
    BoundsFixture fixture;
    const Olt &olt = fixture.olt();
    const auto fill = [&](size_t room, uint32_t when_full, auto plan) {
        for (size_t number = 0; number < room; ++number)
            ASSERT_EQ(fixture.done(plan(number)), BSP_OK) << number;
        EXPECT_EQ(fixture.done(plan(room)), when_full);
    };
    fill(max_auth_records, PON_ERR_TABLE_FULL, [&](size_t number) {
        return set_authentication(olt, 1, {0, "loid-" + std::to_string(number), {}, false});
    });
    fill(max_onu_records, PON_ERR_TABLE_FULL,
         [&](size_t number) { return set_supported(olt, 2, former(1000 + number), false); });
    fill(onus_per_port, PON_ERR_PORT_FULL,
         [&](size_t number) { return bind_onu(olt, 2, {}, binding_of(former(number))); });
    fill(max_loops, PON_ERR_TABLE_FULL, [&](size_t number) { return set_loop(olt, {2, former(number), 1}, true); });
    fill(onus_per_port, PON_ERR_TABLE_FULL,
         [&](size_t number) { return add_to_blacklist(olt, 1, former(500 + number), {}); });
    const std::pair<ProfileKind, std::vector<int32_t>> kinds[] = {{ProfileKind::line, {0, 0, 0, 0, 0}},
                                                                  {ProfileKind::sla, {0, 0, 1, 0, 1}},
                                                                  {ProfileKind::alarm, {0, 1, 0, 1, 0, 1}}};
    for (const auto &[kind, values] : kinds)
        fill(max_profiles, PON_ERR_TABLE_FULL, [&, kind = kind, &values = values](size_t number) {
            return store_profile(olt, kind, 0, {"profile-" + std::to_string(number), values});
        });
    fill(max_upgrade_types, PON_ERR_TABLE_FULL, [&](size_t number) {
        return add_upgrade_types(olt, {{"type-" + std::to_string(number), {"SIMA", "E1", "2.0", 100, "f"}}});
    });
    fixture.expect_loads();
}

constexpr char one_service[] = R"(
[service.guest]
bound = false
auth = true

[[olt]]
name = "campus"
ports = 1

[[olt.port]]
number = 1

[[olt.port.branch]]
name = "yard"
length = 400
split = 8
)";

TEST(Bounds, OfLoidsHoldForAnOnuThatArrivesWithAService)
{
    Scene scene(one_service);
    const auto order = [&](const std::string &line) { scene.simulator.change(plan_control(scene.olt(), line).change); };
    for (size_t number = 0; number < max_auth_records - 1; ++number)
        scene.simulator.change(
            set_authentication(scene.olt(), 1, {0, "loid-" + std::to_string(number), {}, false}).change);
    EXPECT_THROW(order("arrive 1 count=2 service=guest"), ControlError);
    order("arrive 1 service=guest");
    EXPECT_THAT([&] { order("arrive 1 service=guest"); },
                testing::ThrowsMessage<ControlError>(HasSubstr("table for this has no room left")));
    order("arrive 1 service=guest loid=loid-5");
    EXPECT_EQ(scene.port(1).authentication.records.size(), max_auth_records);
    EXPECT_NO_THROW(scene.store.load());
}

TEST(Bounds, OfAPortAreThoseThatALoadedStateIsHeldTo)
{
    Change change = records_of<LoidPassword>(
        max_auth_records,
        [](size_t number) {
            return LoidKey{1, std::to_string(number)};
        },
        [](size_t) { return LoidPassword{}; });
    change.put<LoidPassword>({2, "other"}, {});
    EXPECT_NO_THROW(ServiceFixture(two_ports, change));
    change.put<LoidPassword>({1, "one more"}, {});
    EXPECT_THAT([&] { ServiceFixture(two_ports, change); },
                testing::ThrowsMessage<StoreError>(HasSubstr("there are more than 128 such rows of the port")));
}

TEST(Bounds, OfTheAlarmHistoryHoldWhereItsNumbersHaveGaps)
{
    Change change = records_of<AlarmEvent>(
        alarm_history, [](size_t number) -> uint64_t { return number == 0 ? 1 : 5000 + number; },
        [](size_t) {
            return AlarmEvent{.at = 1, .alarm = {1, former(1), 1}, .onu_id = {}, .active = true, .reason = {}};
        });
    BoundsFixture fixture(std::move(change));
    fixture.send_onu(BSP_MSG_ONU_INFO, BSP_CMD_ONU_ALARM_TEST, 5, layout::onu_alarm_test::alarm, 1);
    EXPECT_EQ(fixture.rows("alarm_event"), alarm_history);
    EXPECT_EQ(fixture.olt().kept<AlarmEvent>().begin()->first, 5001u);
    fixture.expect_loads();
}

TEST(Inventory, ForgetsAnOnuInWhicheverOrderItLeavesAndIsReleased)
{
    constexpr std::string_view own[] = {"plugged_onu", "plugged_device", "loop", "onu_setting", "ledger"};
    for (const bool leaves_first : {true, false}) {
        BoundsFixture fixture;
        const Mac mac{0x02, 0x00, 0x5e, 0x10, 0x00, 0x01};
        const std::string onu = "1 " + text::mac_text(mac);
        fixture.order("arrive 1 kind=H132 mac=" + text::mac_text(mac));
        fixture.pass(some_time);
        ASSERT_EQ(fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 7, mac)), BSP_OK);
        ASSERT_EQ(fixture.send_onu(BSP_MSG_ONU_INFO, BSP_CMD_ONU_PERF_MONITOR_SET, 7, layout::onu_switch::on, 1), 0u);
        fixture.order("plug " + onu + " 1 10HD");
        fixture.order("loop " + onu + " 2 on");
        for (const std::string_view table : own)
            ASSERT_TRUE(fixture.has_row_of(table, mac)) << table;
        const auto leave = [&] {
            fixture.order("leave " + onu);
            fixture.pass(some_time);
            ASSERT_EQ(fixture.port(1).arrived(mac), nullptr);
        };
        if (leaves_first) leave();
        EXPECT_TRUE(fixture.has_row_of("onu_setting", mac));
        ASSERT_EQ(fixture.send(record_of(BSP_CMD_ONU_RELEASE, 1, 7, mac)), BSP_OK);
        if (!leaves_first) leave();
        for (const std::string_view table : own)
            EXPECT_FALSE(fixture.has_row_of(table, mac)) << table;
        fixture.expect_loads();
    }
}

TEST(UpgradeTypes, ThatAreBoundButNotThereDoNothing)
{
    Change change;
    const Mac mac = Olt(two_ports).port(1)->arrivals.at(0).mac;
    OnuRecord record;
    record.upgrade_type = "lost";
    change.put<OnuRecord>({1, mac}, record);
    BoundsFixture fixture(std::move(change));
    EXPECT_EQ(upgrade_one(fixture, 1, 5), PON_ERR_NO_UPGRADE_TYPE);
}

} // namespace
} // namespace ponsim
