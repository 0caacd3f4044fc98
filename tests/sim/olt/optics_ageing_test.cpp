// These tests let lasers age until their port raises an alarm.
#include "optics.h"
#include "rows.h"

namespace ponsim
{
namespace
{

constexpr uint16_t bias_high_flag = 1 << 11;
constexpr uint16_t launch_low_flag = 1 << 8;

uint32_t count(const ServiceFixture &fixture, uint32_t pon_port, Alarm alarm)
{
    const auto &alarms = fixture.port(pon_port).alarms;
    const auto found = alarms.find({port_itself, static_cast<uint32_t>(alarm)});
    return found == alarms.end() ? 0 : found->second.count;
}

uint16_t flags(ServiceFixture &fixture, uint32_t pon_port)
{
    return diagnostics(fixture, pon_port).get(layout::optics_diagnostics::alarms);
}

TEST(Ageing, RaisesTheAlarmsOfThePortInTheSecondInWhichTheFlagsComeUp)
{
    for (uint32_t pon_port = 1; pon_port <= 16; ++pon_port) {
        ServiceFixture fixture;
        // No module has an alarm at this age, and each will have both.
        control_line(fixture, "age " + std::to_string(pon_port) + " 60000");
        ASSERT_EQ(flags(fixture, pon_port), 0);
        uint32_t seen = 0;
        for (int alarm = 0; alarm < 2 && seen != 3; ++alarm) {
            const std::optional<ModelTime> due = fixture.simulator.olt().module(pon_port)->next_alarm();
            ASSERT_TRUE(due);
            fixture.simulator.advance(*due - 1);
            const uint16_t before = flags(fixture, pon_port);
            fixture.simulator.advance(*due);
            const uint16_t after = flags(fixture, pon_port);
            EXPECT_NE(after & ~before, 0) << "the flag comes up with the alarm";
            if (after & bias_high_flag) seen |= 1;
            if (after & launch_low_flag) seen |= 2;
            EXPECT_EQ(count(fixture, pon_port, Alarm::bias_high), seen & 1);
            EXPECT_EQ(count(fixture, pon_port, Alarm::power_low), seen >> 1);
        }
        EXPECT_EQ(seen, 3u) << pon_port;
    }
}

TEST(Ageing, NoFlagComesUpBeforeTheAlarm)
{
    const ServiceFixture fixture;
    for (uint32_t pon_port = 1; pon_port <= 16; ++pon_port) {
        const Module &module = *fixture.simulator.olt().module(pon_port);
        const ModelTime due = module.next_alarm().value();
        ModelTime time = due - 48 * hours;
        while (time < due && module.due_alarms(time) == 0)
            time += ms_per_second;
        EXPECT_EQ(time, due) << pon_port;
        EXPECT_NE(module.due_alarms(due), 0u) << pon_port;
    }
}

TEST(Ageing, AnAlarmComesAtOnceWhenALaserIsMadeOld)
{
    ServiceFixture fixture;
    control_line(fixture, "age 3 130000");
    fixture.simulator.advance(fixture.simulator.olt().now());
    EXPECT_EQ(count(fixture, 3, Alarm::bias_high), 1u);
    EXPECT_EQ(count(fixture, 3, Alarm::power_low), 1u);
    EXPECT_EQ(count(fixture, 2, Alarm::bias_high), 0u);
    EXPECT_EQ(diagnostics(fixture, 3).get(layout::optics_diagnostics::tx_fault), 1);
}

TEST(Ageing, AnAlarmIsRaisedOnceAndComesBackWhenItIsCleared)
{
    ServiceFixture fixture;
    control_line(fixture, "age 3 130000");
    pass(fixture, 0);
    bsp_pon_msg clear = record_of(BSP_CMD_ONU_ALARM_CLEAR, 3);
    clear.arg_value = static_cast<uint32_t>(Alarm::bias_high);
    ASSERT_EQ(count(fixture, 3, Alarm::bias_high), 1u);
    EXPECT_EQ(fixture.send(clear), BSP_OK);
    pass(fixture, 48 * hours);
    EXPECT_EQ(count(fixture, 3, Alarm::bias_high), 1u) << "the laser is as old as before";
    EXPECT_EQ(count(fixture, 3, Alarm::power_low), 1u);
}

TEST(Ageing, ThePortsAlarmsHaveNoOnuInTheView)
{
    ServiceFixture fixture;
    control_line(fixture, "age 3 130000");
    pass(fixture, 0);
    const auto rows = parse(fixture.view(BSP_CMD_VIEW_ONU_ALARM, 3));
    ASSERT_EQ(std::ranges::count_if(rows.GetArray(), [](const auto &row) { return row["mac"].IsNull(); }), 2);
    EXPECT_TRUE(rows[0]["onu_id"].IsNull());
    EXPECT_TRUE(rows[0]["mac"].IsNull());
    EXPECT_STREQ(rows[0]["name"].GetString(), "bias_high");
    EXPECT_STREQ(rows[1]["name"].GetString(), "power_low");
}

TEST(Ageing, ALaserThatIsOffRaisesNoAlarm)
{
    ServiceFixture fixture;
    EXPECT_EQ(i2c_write(fixture, 3, 0xa2, 110, {0x40}), BSP_OK);
    control_line(fixture, "age 3 130000");
    pass(fixture, 24 * hours);
    EXPECT_EQ(count(fixture, 3, Alarm::bias_high), 0u);
    EXPECT_EQ(i2c_write(fixture, 3, 0xa2, 110, {0}), BSP_OK);
    pass(fixture, 0);
    EXPECT_EQ(count(fixture, 3, Alarm::bias_high), 1u);
}

TEST(Ageing, AnUplinksLaserHasFlagsAndNoPortToRaiseAnAlarm)
{
    ServiceFixture fixture;
    control_line(fixture, "age " + std::to_string(uplink_cage) + " 900000");
    pass(fixture, 24 * hours);
    EXPECT_NE(sfp_info(fixture, uplink_cage).get(layout::sfp_info::alarms) & bias_high_flag, 0);
    for (const PonPort &port : fixture.simulator.olt().ports())
        EXPECT_TRUE(port.alarms.empty());
}

TEST(Ageing, TheControlKnowsItsCages)
{
    ServiceFixture fixture;
    for (const char *line : {"age", "age 1", "age 0 1", "age 21 1", "age 1 10000001", "age 1 x"})
        EXPECT_THROW(control_line(fixture, line), ControlError) << line;
}

} // namespace
} // namespace ponsim
