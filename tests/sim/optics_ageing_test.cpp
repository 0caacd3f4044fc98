// These tests let lasers age until their port raises an alarm.
#include "optics.h"
#include "rows.h"

namespace ponsim
{
namespace
{

constexpr uint16_t bias_high_flag = 1 << 11;
constexpr uint16_t launch_low_flag = 1 << 8;

uint32_t count(const Desk &desk, uint32_t pon_port, Alarm alarm)
{
    const auto &alarms = desk.port(pon_port).alarms;
    const auto found = alarms.find({port_itself, static_cast<uint32_t>(alarm)});
    return found == alarms.end() ? 0 : found->second;
}

uint16_t flags(Desk &desk, uint32_t pon_port)
{
    return diagnostics(desk, pon_port).get(layout::optics_diagnostics::alarms);
}

TEST(Ageing, RaisesTheAlarmsOfThePortInTheSecondInWhichTheFlagsComeUp)
{
    for (uint32_t pon_port = 1; pon_port <= 16; ++pon_port) {
        Desk desk;
        // No module has an alarm at this age, and each will have both.
        control_line(desk, "age " + std::to_string(pon_port) + " 60000");
        ASSERT_EQ(flags(desk, pon_port), 0);
        uint32_t seen = 0;
        for (int alarm = 0; alarm < 2 && seen != 3; ++alarm) {
            const std::optional<ModelTime> due = desk.simulator.olt().module(pon_port)->next_alarm();
            ASSERT_TRUE(due);
            desk.simulator.advance(*due - 1);
            const uint16_t before = flags(desk, pon_port);
            desk.simulator.advance(*due);
            const uint16_t after = flags(desk, pon_port);
            EXPECT_NE(after & ~before, 0) << "the flag comes up with the alarm";
            if (after & bias_high_flag) seen |= 1;
            if (after & launch_low_flag) seen |= 2;
            EXPECT_EQ(count(desk, pon_port, Alarm::bias_high), seen & 1);
            EXPECT_EQ(count(desk, pon_port, Alarm::power_low), seen >> 1);
        }
        EXPECT_EQ(seen, 3u) << pon_port;
    }
}

TEST(Ageing, NoFlagComesUpBeforeTheAlarm)
{
    const Desk desk;
    for (uint32_t pon_port = 1; pon_port <= 16; ++pon_port) {
        const Module &module = *desk.simulator.olt().module(pon_port);
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
    Desk desk;
    control_line(desk, "age 3 130000");
    desk.simulator.advance(desk.simulator.olt().now());
    EXPECT_EQ(count(desk, 3, Alarm::bias_high), 1u);
    EXPECT_EQ(count(desk, 3, Alarm::power_low), 1u);
    EXPECT_EQ(count(desk, 2, Alarm::bias_high), 0u);
    EXPECT_EQ(diagnostics(desk, 3).get(layout::optics_diagnostics::tx_fault), 1);
}

TEST(Ageing, AnAlarmIsRaisedOnceAndClearedAsAny)
{
    Desk desk;
    control_line(desk, "age 3 130000");
    pass(desk, 0);
    bsp_pon_msg clear = record_of(BSP_CMD_ONU_ALARM_CLEAR, 3);
    clear.arg_value = static_cast<uint32_t>(Alarm::bias_high);
    EXPECT_EQ(desk.send(clear), BSP_OK);
    pass(desk, 48 * hours);
    EXPECT_EQ(count(desk, 3, Alarm::bias_high), 0u);
    EXPECT_EQ(count(desk, 3, Alarm::power_low), 1u);
}

TEST(Ageing, ThePortsAlarmsHaveNoOnuInTheView)
{
    Desk desk;
    control_line(desk, "age 3 130000");
    pass(desk, 0);
    const auto rows = parse(desk.view(BSP_CMD_VIEW_ONU_ALARM, 3));
    ASSERT_EQ(rows.Size(), 2u);
    EXPECT_TRUE(rows[0]["onu_id"].IsNull());
    EXPECT_TRUE(rows[0]["mac"].IsNull());
    EXPECT_STREQ(rows[0]["name"].GetString(), "bias_high");
    EXPECT_STREQ(rows[1]["name"].GetString(), "power_low");
}

TEST(Ageing, ALaserThatIsOffRaisesNoAlarm)
{
    Desk desk;
    EXPECT_EQ(i2c_write(desk, 3, 0xa2, 110, {0x40}), BSP_OK);
    control_line(desk, "age 3 130000");
    pass(desk, 24 * hours);
    EXPECT_EQ(count(desk, 3, Alarm::bias_high), 0u);
    EXPECT_EQ(i2c_write(desk, 3, 0xa2, 110, {0}), BSP_OK);
    pass(desk, 0);
    EXPECT_EQ(count(desk, 3, Alarm::bias_high), 1u);
}

TEST(Ageing, AnUplinksLaserHasFlagsAndNoPortToRaiseAnAlarm)
{
    Desk desk;
    control_line(desk, "age " + std::to_string(uplink_cage) + " 900000");
    pass(desk, 24 * hours);
    EXPECT_NE(sfp_info(desk, uplink_cage).get(layout::sfp_info::alarms) & bias_high_flag, 0);
    for (const PonPort &port : desk.simulator.olt().ports())
        EXPECT_TRUE(port.alarms.empty());
}

TEST(Ageing, TheControlKnowsItsCages)
{
    Desk desk;
    for (const char *line : {"age", "age 1", "age 0 1", "age 21 1", "age 1 10000001", "age 1 x"})
        EXPECT_THROW(control_line(desk, line), ControlError) << line;
}

} // namespace
} // namespace ponsim
