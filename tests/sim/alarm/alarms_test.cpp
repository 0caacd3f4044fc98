// These tests check what raises alarms, and who sees and clears them.
#include "rows.h"
#include "support.h"

namespace ponsim
{
namespace
{

bsp_pon_msg clear_record(uint32_t pon_port, uint32_t onu_id, const Mac &mac, uint32_t alarm)
{
    bsp_pon_msg record = record_of(BSP_CMD_ONU_ALARM_CLEAR, pon_port, onu_id, mac);
    record.arg_value = alarm;
    return record;
}

TEST(Los, ComesWhenAnOnlineOnuIsOutOfReach)
{
    OltFixture fixture;
    fixture.bind(1, 5, fixture.arrived(1, 0));
    fixture.range(1, 0, 0);
    EXPECT_EQ(fixture.alarms(1, fixture.arrived(1, 0), Alarm::los), 1u);
    EXPECT_EQ(fixture.alarms(1, fixture.arrived(1, 1), Alarm::los), 0u) << "it was not online";
}

TEST(Los, IsCountedAndStays)
{
    OltFixture fixture;
    fixture.bind(1, 5, fixture.arrived(1));
    for (int time = 0; time < 2; ++time) {
        fixture.range(1, 0, 0);
        fixture.range(1, 0, 0);
        fixture.range(1, 0, max_distance);
    }
    EXPECT_EQ(fixture.alarms(1, fixture.arrived(1), Alarm::los), 2u);
}

TEST(Los, IsOfThePortWhoseLimitsChange)
{
    OltFixture fixture;
    fixture.bind(2, 5, fixture.arrived(1));
    fixture.range(1, 0, 0);
    EXPECT_TRUE(fixture.port(1).alarms.empty());
}

TEST(Los, DoesNotComeForASilentOrUnauthenticatedOnu)
{
    OltFixture silent{{.seed = 1, .ports = 1, .arrivals = 1, .silent = 100}};
    silent.bind(1, 5, silent.arrived(1));
    silent.range(1, 0, 0);
    EXPECT_EQ(silent.alarms(1, silent.arrived(1), Alarm::los), 0u);
    OltFixture fixture;
    fixture.bind(1, 5, fixture.arrived(1));
    fixture.set_mode(1, AuthMode::loid);
    fixture.range(1, 0, 0);
    EXPECT_EQ(fixture.alarms(1, fixture.arrived(1), Alarm::los), 0u);
}

TEST(DyingGasp, ComesWithAReboot)
{
    OltFixture fixture;
    fixture.bind(1, 5, fixture.arrived(1, 0));
    fixture.bind(1, 6, fixture.arrived(1, 1));
    fixture.done(reboot_onus(fixture.olt, 1, ids({5, 6})));
    fixture.settle();
    fixture.done(reboot_onus(fixture.olt, 1, ids({6})));
    EXPECT_EQ(fixture.alarms(1, fixture.arrived(1, 0), Alarm::dying_gasp), 1u);
    EXPECT_EQ(fixture.alarms(1, fixture.arrived(1, 1), Alarm::dying_gasp), 2u);
}

TEST(Rejected, ComesForABlackListedOnuOnTheFibre)
{
    OltFixture fixture;
    fixture.reject(1, fixture.arrived(1));
    fixture.reject(1, stranger(1));
    fixture.reject(1, fixture.arrived(2));
    EXPECT_EQ(fixture.alarms(1, fixture.arrived(1), Alarm::rejected), 1u);
    EXPECT_EQ(fixture.port(1).alarms.size(), 1u);
}

TEST(Rejected, DoesNotComeAgainWithANewText)
{
    OltFixture fixture;
    fixture.reject(1, fixture.arrived(1));
    fixture.reject(1, fixture.arrived(1));
    EXPECT_EQ(fixture.alarms(1, fixture.arrived(1), Alarm::rejected), 1u);
}

TEST(Rejected, ComesWhenABlackListedOnuComesIntoReach)
{
    OltFixture fixture;
    fixture.range(1, 0, 0);
    fixture.reject(1, fixture.arrived(1));
    EXPECT_EQ(fixture.alarms(1, fixture.arrived(1), Alarm::rejected), 0u);
    fixture.range(1, 0, max_distance);
    EXPECT_EQ(fixture.alarms(1, fixture.arrived(1), Alarm::rejected), 1u);
}

TEST(AuthFailed, ComesForBoundAndWaitingOnusThatALoidModeTurnsAway)
{
    OltFixture fixture;
    fixture.bind(1, 5, fixture.arrived(1, 0));
    fixture.accept(1, fixture.arrival(1, 2).loid);
    fixture.set_mode(1, AuthMode::loid);
    EXPECT_EQ(fixture.alarms(1, fixture.arrived(1, 0), Alarm::auth_failed), 1u);
    EXPECT_EQ(fixture.alarms(1, fixture.arrived(1, 1), Alarm::auth_failed), 1u);
    EXPECT_EQ(fixture.alarms(1, fixture.arrived(1, 2), Alarm::auth_failed), 0u);
}

TEST(AuthFailed, DoesNotComeWhereTheMacAddressWillDo)
{
    OltFixture fixture;
    fixture.set_mode(1, AuthMode::mac_or_loid);
    EXPECT_TRUE(fixture.port(1).alarms.empty());
}

TEST(AuthFailed, ComesOnceUntilTheOnuIsLetInAndTurnedAwayAgain)
{
    OltFixture fixture;
    const Arrival onu = fixture.arrival(1);
    fixture.set_mode(1, AuthMode::loid);
    fixture.set_mode(1, AuthMode::loid_and_password);
    fixture.accept(1, "another");
    EXPECT_EQ(fixture.alarms(1, onu.mac, Alarm::auth_failed), 1u);
    fixture.accept(1, onu.loid, onu.password);
    fixture.accept(1, onu.loid, "changed");
    EXPECT_EQ(fixture.alarms(1, onu.mac, Alarm::auth_failed), 2u);
}

TEST(AuthFailed, DoesNotComeForOnusThatAreExemptOrSilentOrOutOfReachOrBlackListed)
{
    OltFixture silent{{.seed = 1, .ports = 1, .arrivals = 1, .silent = 100}};
    silent.bind(1, 5, silent.arrived(1));
    silent.set_mode(1, AuthMode::loid);
    EXPECT_TRUE(silent.port(1).alarms.empty());

    OltFixture fixture{{.seed = 1, .ports = 1, .arrivals = 3, .silent = 0}};
    fixture.confirm(1, 0, fixture.arrived(1, 0));
    fixture.reject(1, fixture.arrived(1, 1));
    fixture.range(1, fixture.arrival(1, 0).distance, fixture.arrival(1, 0).distance);
    fixture.set_mode(1, AuthMode::loid);
    for (size_t index : {0, 1, 2})
        EXPECT_EQ(fixture.alarms(1, fixture.arrived(1, index), Alarm::auth_failed), 0u);
}

TEST(AuthFailed, ComesWhenAnOnuComesIntoReachOrOffTheBlackList)
{
    OltFixture fixture;
    fixture.reject(1, fixture.arrived(1, 0));
    fixture.range(1, 0, 0);
    fixture.set_mode(1, AuthMode::loid);
    fixture.range(1, 0, max_distance);
    EXPECT_EQ(fixture.alarms(1, fixture.arrived(1, 0), Alarm::auth_failed), 0u);
    EXPECT_EQ(fixture.alarms(1, fixture.arrived(1, 1), Alarm::auth_failed), 1u);
    fixture.done(remove_from_blacklist(fixture.olt, 1, fixture.arrived(1, 0)));
    EXPECT_EQ(fixture.alarms(1, fixture.arrived(1, 0), Alarm::auth_failed), 1u);
}

// These are the alarms of ONUs without that of a deregistration, which follows below.
constexpr uint32_t onu_alarms[] = {1, 2, 3, 4};
constexpr uint32_t port_alarms[] = {5, 6};
constexpr uint32_t deregistered = 10;

// Returns a fixture with two ONUs at each of two ports. The first is bound to id 5 and has alarms 1 and 2, the second
// waits and has alarms 3 and 4.
ServiceFixture alarmed()
{
    const Settings settings{.seed = 1, .ports = 2, .arrivals = 2, .silent = 0};
    const Olt olt(settings);
    Change kept;
    for (const PonPort &port : olt.ports()) {
        kept.put<Binding>({port.number, 5}, binding_of(port.arrivals[0].mac));
        for (uint32_t alarm : onu_alarms)
            kept.put<AlarmRecord>({port.number, port.arrivals[alarm > 2].mac, alarm}, {alarm * 10});
    }
    return ServiceFixture(settings, kept);
}

TEST(AlarmView, ShowsAlarmsInOrder)
{
    ServiceFixture fixture = alarmed();
    const std::string bound = text::mac_text(fixture.port(1).arrivals[0].mac),
                      waiting = text::mac_text(fixture.port(1).arrivals[1].mac);
    const auto row = [](const std::string &id, const std::string &mac, const std::string &rest) {
        return R"({"pon_port":1,"onu_id":)" + id + R"(,"mac":")" + mac + R"(",)" + rest +
               R"(,"state":"active","raised":null,"cleared":null,"cause":"unknown","place":null})";
    };
    EXPECT_EQ(fixture.view(BSP_CMD_VIEW_ONU_ALARM, 1),
              "[" + row("5", bound, R"("alarm":1,"name":"los","severity":"critical","count":10)") + "," +
                  row("5", bound, R"("alarm":2,"name":"dying_gasp","severity":"major","count":20)") + "," +
                  row("null", waiting, R"("alarm":3,"name":"rejected","severity":"minor","count":30)") + "," +
                  row("null", waiting, R"("alarm":4,"name":"auth_failed","severity":"major","count":40)") + "]");
}

TEST(AlarmView, IsOfAllPortsOneOrOneOnu)
{
    ServiceFixture fixture = alarmed();
    const auto rows = [&](uint32_t pon_port, uint32_t onu_id, const Mac &mac) {
        const Reply reply = fixture.ask(record_of(BSP_CMD_VIEW_ONU_ALARM, pon_port, onu_id, mac));
        EXPECT_EQ(reply.status, BSP_OK);
        return parse(reply.result.value()).Size();
    };
    EXPECT_EQ(rows(0, 0, {}), 8u);
    EXPECT_EQ(rows(2, 0, {}), 4u);
    EXPECT_EQ(rows(2, 5, {}), 2u);
    EXPECT_EQ(rows(0, 0, fixture.port(2).arrivals[1].mac), 2u);
    EXPECT_EQ(rows(1, 0, fixture.port(2).arrivals[1].mac), 0u);
}

TEST(AlarmView, AnIdThatIsNotBoundIsSaid)
{
    ServiceFixture fixture = alarmed();
    for (const bsp_pon_msg &record : {record_of(BSP_CMD_VIEW_ONU_ALARM, 1, 6),
                                      record_of(BSP_CMD_VIEW_ONU_ALARM, 1, 5, fixture.port(1).arrivals[1].mac)}) {
        const Reply reply = fixture.ask(record);
        EXPECT_EQ(reply.status, PON_ERR_NOT_BOUND);
        EXPECT_EQ(reply.result, "[]");
    }
    EXPECT_EQ(fixture.ask(record_of(BSP_CMD_VIEW_ONU_ALARM, 3)).status, PON_ERR_NO_PORT);
    EXPECT_EQ(fixture.ask(record_of(BSP_CMD_VIEW_ONU_ALARM, 1, 128)).status, PON_ERR_BAD_ONU_ID);
}

TEST(AlarmClear, ClearsWhatItSelects)
{
    const auto left_after = [](const bsp_pon_msg &record) {
        ServiceFixture fixture = alarmed();
        EXPECT_EQ(fixture.send(record), BSP_OK);
        return parse(fixture.view(BSP_CMD_VIEW_ONU_ALARM)).Size();
    };
    const Mac waiting = alarmed().port(2).arrivals[1].mac;
    EXPECT_EQ(left_after(clear_record(0, 0, {}, 0)), 0u);
    EXPECT_EQ(left_after(clear_record(0, 0, {}, 4)), 6u);
    EXPECT_EQ(left_after(clear_record(2, 0, {}, 0)), 4u);
    EXPECT_EQ(left_after(clear_record(2, 5, {}, 0)), 6u);
    EXPECT_EQ(left_after(clear_record(2, 5, {}, 1)), 7u);
    EXPECT_EQ(left_after(clear_record(0, 0, waiting, 0)), 6u);
    EXPECT_EQ(left_after(clear_record(2, 5, {}, 3)), 8u);
}

TEST(AlarmClear, RefusesWhatDoesNotExist)
{
    ServiceFixture fixture = alarmed();
    const std::string before = fixture.view(BSP_CMD_VIEW_ONU_ALARM);
    EXPECT_EQ(fixture.send(clear_record(0, 0, {}, max_alarm + 1)), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.send(clear_record(3, 0, {}, 0)), PON_ERR_NO_PORT);
    EXPECT_EQ(fixture.send(clear_record(1, 6, {}, 0)), PON_ERR_NOT_BOUND);
    EXPECT_EQ(fixture.send(clear_record(1, 128, {}, 0)), PON_ERR_BAD_ONU_ID);
    EXPECT_EQ(fixture.view(BSP_CMD_VIEW_ONU_ALARM), before);
}

TEST(AlarmClear, ACountStartsAgain)
{
    ServiceFixture fixture = alarmed();
    bsp_pon_msg reboot = record_of(BSP_CMD_ONU_REBOOT_BATCH, 1);
    put(reboot, layout::onu_batch::onu_set, words_of(ids({5})));
    fixture.send(clear_record(1, 5, {}, 2));
    fixture.send(reboot);
    EXPECT_EQ(parse(fixture.view(BSP_CMD_VIEW_ONU_ALARM, 1))[1]["count"].GetUint(), 1u);
}

// Returns a fixture with these alarms of every ONU of a whole OLT, and with those of its ports.
ServiceFixture alarmed_everywhere(std::initializer_list<uint32_t> alarms)
{
    const Settings settings{.seed = 1, .ports = 16, .arrivals = 128, .silent = 0};
    const Olt olt(settings);
    Change kept;
    for (const PonPort &port : olt.ports()) {
        for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id) {
            const Mac &mac = port.arrivals[onu_id].mac;
            kept.put<Binding>({port.number, onu_id}, binding_of(mac));
            for (uint32_t alarm : alarms)
                kept.put<AlarmRecord>({port.number, mac, alarm}, {0xffffffff});
        }
        for (uint32_t alarm : port_alarms)
            kept.put<AlarmRecord>({port.number, port_itself, alarm}, {0xffffffff});
    }
    return ServiceFixture(settings, kept);
}

// An ONU without power has two alarms. No cause gives an ONU more of them.
TEST(AlarmView, OfAllOnusWithoutPowerAndOfAllPortsFits)
{
    ServiceFixture fixture = alarmed_everywhere({1, 2});
    const std::string text = fixture.view(BSP_CMD_VIEW_ONU_ALARM);
    EXPECT_LE(text.size(), max_result);
    EXPECT_EQ(parse(text).Size(), 4096u + 32);
}

TEST(AlarmView, ThatWouldNotFitIsRefusedAndOnePortsFits)
{
    ServiceFixture fixture = alarmed_everywhere({1, 2, 3, 4, deregistered});
    const Reply reply = fixture.ask(record_of(BSP_CMD_VIEW_ONU_ALARM));
    EXPECT_EQ(reply.status, PON_ERR_TOO_LARGE);
    EXPECT_EQ(reply.result, std::nullopt);
    const std::string text = fixture.view(BSP_CMD_VIEW_ONU_ALARM, 16);
    EXPECT_EQ(parse(text).Size(), 128u * 5 + 2);
}

} // namespace
} // namespace ponsim
