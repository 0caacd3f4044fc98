// These tests tell how alarms come and go with their causes, and what the history says of that.
#include "field.h"
#include "model/alarm/alarms.h"
#include "model/base/block.h"
#include "model/olt/interfaces.h"
#include "rows.h"

namespace ponsim
{
namespace
{

constexpr ModelTime minute = 60 * ms_per_second;

const AlarmRecord *alarm(const Field &field, const Mac &mac, Alarm which)
{
    return field.olt().alarm(alarm_key(field.port(1), mac, which));
}
const AlarmRecord *alarm(const Field &field, size_t index, Alarm which)
{
    return alarm(field, field.onu(index).mac, which);
}

bool active(const AlarmRecord *record)
{
    return record && record->active();
}

// Clears all alarms of the port by command.
void clear(Field &field)
{
    EXPECT_EQ(field.send(record_of(BSP_CMD_ONU_ALARM_CLEAR, 1)), BSP_OK);
}

// Returns the events from this number on, as a text with a line for each: time, ONU (its index, or - for the port),
// alarm, state and cause.
std::string told(const Field &field, uint64_t from = 1)
{
    std::string text;
    const auto &history = field.olt().kept<AlarmEvent>();
    for (auto at = history.lower_bound(from); at != history.end(); ++at) {
        const AlarmEvent &event = at->second;
        const auto &onus = field.port(1).arrivals;
        const auto onu = std::ranges::find(onus, event.alarm.mac, &Arrival::mac);
        text += std::to_string(event.at) + ' ' + (onu == onus.end() ? "-" : std::to_string(onu - onus.begin())) + ' ' +
                std::string(name_of(Alarm{event.alarm.alarm})) + ' ' + std::string(state_of(event.active)) + ' ' +
                std::string(name_of(event.reason.cause)) + '\n';
    }
    return text;
}

TEST(PortLos, ACutFeederIsOneAlarmOfThePortAndItsConsequences)
{
    Field field;
    field.order("cut 1 feeder");
    EXPECT_EQ(alarm(field, port_itself, Alarm::port_los), nullptr) << "nobody has noticed";
    pass(field, time_out);
    const AlarmRecord *port = alarm(field, port_itself, Alarm::port_los);
    ASSERT_TRUE(active(port));
    EXPECT_EQ(port->reason.cause, AlarmCause::fibre);
    EXPECT_EQ(place_of(field.olt(), alarm_key(field.port(1), port_itself, Alarm::port_los), port->reason), "feeder");
    EXPECT_GT(port->raised.value(), 0u);
    for (size_t index = 0; index < Field::onus; ++index) {
        ASSERT_TRUE(active(alarm(field, index, Alarm::los))) << index;
        EXPECT_EQ(alarm(field, index, Alarm::los)->reason.cause, AlarmCause::port_los) << index;
    }
    EXPECT_EQ(field.olt().kept<AlarmEvent>().at(1).alarm.mac, port_itself) << "the cause comes first";
}

TEST(PortLos, IsClearedWithItsTimeWhenTheFeederIsSpliced)
{
    Field field;
    field.order("cut 1 feeder");
    pass(field, minute);
    field.order("mend 1 feeder");
    const AlarmRecord *port = alarm(field, port_itself, Alarm::port_los);
    ASSERT_NE(port, nullptr);
    EXPECT_EQ(port->cleared, minute) << "light is back";
    EXPECT_TRUE(active(alarm(field, 0, Alarm::los))) << "it has still to register";
    pass(field, registering);
    for (size_t index = 0; index < Field::onus; ++index) {
        const AlarmRecord *lost = alarm(field, index, Alarm::los);
        ASSERT_TRUE(lost && lost->cleared) << index;
        EXPECT_GT(*lost->cleared, minute) << index;
        EXPECT_EQ(lost->count, 1u) << index;
    }
}

TEST(PortLos, IsNotRaisedForOneOnuOfMany)
{
    Field field;
    field.order("cut 1 " + field.drop(2));
    pass(field, time_out);
    EXPECT_EQ(alarm(field, port_itself, Alarm::port_los), nullptr);
    ASSERT_TRUE(active(alarm(field, 2, Alarm::los)));
    const AlarmRecord &lost = *alarm(field, 2, Alarm::los);
    EXPECT_EQ(lost.reason.cause, AlarmCause::fibre);
    EXPECT_EQ(place_of(field.olt(), alarm_key(field.port(1), field.onu(2).mac, Alarm::los), lost.reason),
              field.drop(2));
}

TEST(PortLos, IsNotRaisedWhenEachOnuIsLostForACauseOfItsOwn)
{
    Field field;
    for (size_t index = 0; index < Field::onus; ++index)
        field.order("cut 1 " + field.drop(index));
    pass(field, time_out);
    EXPECT_EQ(alarm(field, port_itself, Alarm::port_los), nullptr);
    for (size_t index = 0; index < Field::onus; ++index)
        EXPECT_EQ(alarm(field, index, Alarm::los)->reason.cause, AlarmCause::fibre) << index;
}

TEST(PortLos, LeavesTheOnusThatAreStillLostACauseOfTheirOwn)
{
    Field field;
    field.order("cut 1 feeder");
    pass(field, time_out);
    field.order("cut 1 " + field.drop(3));
    field.order("mend 1 feeder");
    EXPECT_FALSE(active(alarm(field, port_itself, Alarm::port_los)));
    EXPECT_EQ(alarm(field, 3, Alarm::los)->reason.cause, AlarmCause::fibre);
    pass(field, registering);
    EXPECT_TRUE(active(alarm(field, 3, Alarm::los)));
    EXPECT_FALSE(active(alarm(field, 4, Alarm::los)));
}

TEST(PortLos, OfALaserThatIsOffSaysSo)
{
    Field field;
    EXPECT_EQ(i2c_write(field, 1, 0xa2, 110, {0x40}), BSP_OK);
    pass(field, time_out);
    EXPECT_TRUE(active(alarm(field, port_itself, Alarm::transmitter_off)));
    ASSERT_TRUE(active(alarm(field, port_itself, Alarm::port_los)));
    EXPECT_EQ(alarm(field, port_itself, Alarm::port_los)->reason.cause, AlarmCause::transmitter);
    EXPECT_EQ(i2c_write(field, 1, 0xa2, 110, {0}), BSP_OK);
    pass(field, registering);
    EXPECT_FALSE(active(alarm(field, port_itself, Alarm::transmitter_off)));
    EXPECT_FALSE(active(alarm(field, port_itself, Alarm::port_los)));
}

TEST(PortLos, IsNotRaisedWhereARogueOnuBlindsThePort)
{
    Field field;
    field.order("rogue 1 " + field.mac(3) + " on");
    pass(field, time_out);
    EXPECT_EQ(alarm(field, port_itself, Alarm::port_los), nullptr);
    ASSERT_TRUE(active(alarm(field, port_itself, Alarm::rogue)));
    EXPECT_EQ(alarm(field, port_itself, Alarm::rogue)->reason.other, field.onu(3).mac);
    EXPECT_EQ(alarm(field, 0, Alarm::los)->reason.cause, AlarmCause::rogue);
    field.order("rogue 1 " + field.mac(3) + " off");
    EXPECT_FALSE(active(alarm(field, port_itself, Alarm::rogue)));
}

TEST(AlarmLife, DyingGaspAndLosEndWhenTheOnuIsBack)
{
    Field field;
    pass(field, 5 * ms_per_second);
    field.order("power 1 " + field.mac(0) + " off");
    pass(field, minute);
    field.order("power 1 " + field.mac(0) + " on");
    pass(field, registering);
    EXPECT_TRUE(field.online(0));
    const std::string back = std::to_string(alarm(field, 0, Alarm::los)->cleared.value());
    EXPECT_EQ(told(field), "5000 0 dying_gasp active power\n"
                           "5000 0 los active power\n" +
                               back + " 0 los cleared power\n" + back + " 0 dying_gasp cleared power\n");
}

TEST(AlarmLife, DegradedLightEndsWithTheLightAndWithTheOnu)
{
    Field field;
    const int32_t good = sensitivity(field.olt(), field.port(1), field.onu(0), Direction::up);
    field.bring(0, good - 20);
    ASSERT_TRUE(active(alarm(field, 0, Alarm::degraded)));
    field.order("power 1 " + field.mac(0) + " off");
    EXPECT_FALSE(active(alarm(field, 0, Alarm::degraded))) << "nobody measures its light";
    field.order("power 1 " + field.mac(0) + " on");
    pass(field, registering);
    EXPECT_TRUE(active(alarm(field, 0, Alarm::degraded)));
    EXPECT_EQ(alarm(field, 0, Alarm::degraded)->count, 2u);
    field.bring(0, good + 20);
    EXPECT_FALSE(active(alarm(field, 0, Alarm::degraded)));
}

TEST(AlarmLife, RejectedEndsWhenTheOnuIsTakenOffTheListOrLeaves)
{
    Field field;
    EXPECT_EQ(field.send(record_of(BSP_CMD_BLACKLIST_ADD_AUTO, 1, 0, field.onu(0).mac)), BSP_OK);
    EXPECT_EQ(field.send(record_of(BSP_CMD_BLACKLIST_ADD_AUTO, 1, 0, field.onu(1).mac)), BSP_OK);
    pass(field, 0);
    ASSERT_TRUE(active(alarm(field, 0, Alarm::rejected)));
    field.simulator.change(remove_from_blacklist(field.olt(), 1, field.onu(0).mac).change);
    field.order("power 1 " + field.mac(1) + " off");
    EXPECT_FALSE(active(alarm(field, 0, Alarm::rejected)));
    EXPECT_FALSE(active(alarm(field, 1, Alarm::rejected)));
}

TEST(AlarmLife, AuthFailedEndsWhenTheOnuIsLetIn)
{
    Field field;
    field.simulator.change(set_authentication(field.olt(), 1, {1, {}, {}, false}).change);
    ASSERT_TRUE(active(alarm(field, 0, Alarm::auth_failed)));
    EXPECT_EQ(alarm(field, 0, Alarm::auth_failed)->reason.cause, AlarmCause::loid);
    field.simulator.change(set_authentication(field.olt(), 1, {1, field.onu(0).loid, {}, false}).change);
    pass(field, 0);
    EXPECT_FALSE(active(alarm(field, 0, Alarm::auth_failed)));
    EXPECT_TRUE(active(alarm(field, 1, Alarm::auth_failed)));
}

TEST(AlarmLife, AnUplinkThatIsDownBelongsToNoPort)
{
    Field field;
    const BlockKey phy{BSP_MSG_DEBUG, BSP_CMD_DEBUG_GE_PHY_SET, 2, 0};
    field.simulator.change(change_of<Block>(phy, {to_block(PhyControl::power_down)}));
    pass(field, 0);
    const auto rows = parse(field.view(BSP_CMD_VIEW_ONU_ALARM));
    ASSERT_EQ(rows.Size(), 1u);
    EXPECT_EQ(rows[0]["pon_port"].GetUint(), 0u);
    EXPECT_STREQ(rows[0]["name"].GetString(), "uplink_down");
    EXPECT_STREQ(rows[0]["place"].GetString(), "uplink 2");
    EXPECT_STREQ(rows[0]["severity"].GetString(), "critical");
    EXPECT_EQ(field.view(BSP_CMD_VIEW_ONU_ALARM, 1), "[]");
    field.simulator.change(removal_of<Block>(phy));
    pass(field, 0);
    EXPECT_STREQ(parse(field.view(BSP_CMD_VIEW_ONU_ALARM))[0]["state"].GetString(), "cleared");
}

TEST(AlarmLife, ALoopNamesItsUniPort)
{
    Field field;
    bsp_pon_msg_ext on{};
    on.cmd = BSP_CMD_LOOP_STATE_SET;
    on.ext_arg = 1;
    EXPECT_EQ(field.simulator.handle({BSP_MSG_LOOP_DETECT, &on, sizeof on}).status, BSP_OK);
    field.order("loop 1 " + field.mac(0) + " 1 on");
    pass(field, minute);
    const auto rows = parse(field.view(BSP_CMD_VIEW_ONU_ALARM, 1));
    ASSERT_EQ(rows.Size(), 1u);
    EXPECT_STREQ(rows[0]["name"].GetString(), "uni_loop");
    EXPECT_STREQ(rows[0]["place"].GetString(), "UNI 1");
    field.order("loop 1 " + field.mac(0) + " 1 off");
    pass(field, 60 * minute);
    EXPECT_STREQ(parse(field.view(BSP_CMD_VIEW_ONU_ALARM, 1))[0]["state"].GetString(), "cleared");
}

TEST(ClearedByCommand, AnAlarmWhoseCausePersistsComesBackAtOnce)
{
    Field field;
    field.order("cut 1 " + field.drop(0));
    pass(field, minute);
    const ModelTime raised = alarm(field, 0, Alarm::los)->raised.value();
    clear(field);
    ASSERT_TRUE(active(alarm(field, 0, Alarm::los)));
    EXPECT_EQ(alarm(field, 0, Alarm::los)->raised, minute);
    EXPECT_EQ(alarm(field, 0, Alarm::los)->count, 1u);
    EXPECT_EQ(told(field), std::to_string(raised) + " 0 los active fibre\n" +
                               "60000 0 los cleared command\n"
                               "60000 0 los active fibre\n");
}

TEST(ClearedByCommand, AnAlarmWhoseCauseHasEndedIsForgotten)
{
    Field field;
    field.order("cut 1 " + field.drop(0));
    pass(field, time_out);
    field.order("mend 1 " + field.drop(0));
    pass(field, registering);
    ASSERT_NE(alarm(field, 0, Alarm::los), nullptr);
    clear(field);
    EXPECT_EQ(field.view(BSP_CMD_VIEW_ONU_ALARM), "[]");
    EXPECT_EQ(field.olt().kept<AlarmEvent>().size(), 2u) << "nothing happened to an alarm that had ended";
}

TEST(ClearedByCommand, AnEventAndTheLossOfAnOnuThatIsReleasedStayAway)
{
    Field field;
    field.order("power 1 " + field.mac(0) + " off");
    pass(field, minute);
    clear(field);
    EXPECT_EQ(alarm(field, 0, Alarm::dying_gasp), nullptr) << "its power failed once";
    EXPECT_TRUE(active(alarm(field, 0, Alarm::los)));
    field.simulator.change(release_onu(field.olt(), 1, 1, {}).change);
    clear(field);
    EXPECT_EQ(field.view(BSP_CMD_VIEW_ONU_ALARM), "[]");
}

// Switches an ONU off and on, which makes four events each time.
void flicker(Field &field, uint32_t times)
{
    for (uint32_t time = 0; time < times; ++time) {
        field.order("power 1 " + field.mac(0) + " off");
        field.order("power 1 " + field.mac(0) + " on");
        pass(field, registering);
    }
}

TEST(AlarmHistory, HasTheLastEventsOnly)
{
    Field field;
    flicker(field, 300);
    const auto &history = field.olt().kept<AlarmEvent>();
    EXPECT_EQ(history.size(), alarm_history);
    EXPECT_EQ(history.begin()->first, 1200u - 1024 + 1);
    EXPECT_EQ(history.rbegin()->first, 1200u);
}

TEST(AlarmHistory, AndAlarmsSurviveARestart)
{
    const Folder folder;
    std::string events, view;
    {
        Field field(folder.file("olt.db"));
        flicker(field, 2);
        field.order("cut 1 feeder");
        pass(field, time_out);
        events = told(field);
        view = field.view(BSP_CMD_VIEW_ONU_ALARM);
    }
    Field field(folder.file("olt.db"));
    EXPECT_EQ(told(field), events);
    EXPECT_EQ(field.view(BSP_CMD_VIEW_ONU_ALARM), view);
    field.order("mend 1 feeder");
    EXPECT_EQ(told(field, 8 + 9 + 1), std::to_string(field.olt().now()) + " - port_los cleared fibre\n");
}

TEST(AlarmHistory, IsTheSameForTheSameSeed)
{
    const auto story = [](uint64_t seed) {
        Field field({}, seed);
        field.order("cut 1 feeder");
        pass(field, minute);
        field.order("mend 1 feeder");
        pass(field, registering);
        flicker(field, 2);
        return told(field);
    };
    EXPECT_EQ(story(1), story(1));
    EXPECT_NE(story(1), "");
}

TEST(AlarmsOfBefore, EndAtOnceWhereTheirCauseHasEnded)
{
    const Settings settings{.seed = 1, .ports = 1, .arrivals = 1, .silent = 0};
    const Mac mac = Olt(settings).ports()[0].arrivals[0].mac;
    Change kept;
    kept.put<AlarmRecord>({1, mac, static_cast<uint32_t>(Alarm::los)}, {3});
    ServiceFixture fixture(settings, kept);
    pass(fixture, 0);
    const AlarmRecord &record = fixture.port(1).alarms.begin()->second;
    EXPECT_EQ(record.raised, std::nullopt);
    EXPECT_EQ(record.cleared, 0u);
    EXPECT_EQ(record.count, 3u);
}

} // namespace
} // namespace ponsim
