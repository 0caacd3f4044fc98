// These tests check when the light of ONUs is good, degraded or lost, and what that causes.
#include <cmath>

#include "field.h"
#include "model/port/counters.h"

namespace ponsim
{
namespace
{

TEST(Light, OfTheOnusThatAreFoundIsGoodAtEveryHour)
{
    const Olt olt({.seed = 1, .ports = 16, .arrivals = 128, .silent = 0});
    int32_t least = 0;
    for (const PonPort &port : olt.ports())
        for (const Arrival &arrival : port.arrivals)
            for (const ModelTime hour : {0, 6, 12, 18})
                least = std::min(least, received_level(olt, port, arrival, Direction::up, hour * hours));
    EXPECT_GE(least, -2978);
    EXPECT_LT(least, -2800) << "the farthest are not far from the edge";
    EXPECT_GT(olt.light_watch().next().value(), 365 * 24 * hours) << "for a year nothing happens";
}

TEST(Light, AsItFadesIsDegradedThenLost)
{
    Field field;
    field.bring(0, -2978);
    EXPECT_EQ(field.light(0), Light::good);
    field.bring(0, -2979);
    EXPECT_EQ(field.light(0), Light::degraded);
    EXPECT_TRUE(field.online(0));
    EXPECT_EQ(field.alarms(0, Alarm::degraded), 1u);
    EXPECT_EQ(field.alarms(0, Alarm::los), 0u);
    field.bring(0, -3301);
    EXPECT_EQ(field.light(0), Light::degraded);
    field.bring(0, -3302);
    EXPECT_EQ(field.light(0), Light::lost);
    pass(field, time_out);
    EXPECT_FALSE(field.online(0));
    EXPECT_EQ(field.alarms(0, Alarm::degraded), 1u);
    EXPECT_EQ(field.alarms(0, Alarm::los), 1u);
    EXPECT_EQ(field.online(), 7u) << "no other ONU is concerned";
}

TEST(Light, AnOnuRegistersWhenItIsBack)
{
    Field field;
    field.order("cut 1 " + field.drop(0));
    pass(field, time_out);
    ASSERT_FALSE(field.online(0));
    field.order("mend 1 " + field.drop(0));
    EXPECT_FALSE(field.online(0)) << "a discovery window comes first";
    pass(field, registering);
    EXPECT_TRUE(field.online(0));
    EXPECT_EQ(field.light(0), Light::good);
    EXPECT_EQ(field.alarms(0, Alarm::los), 1u);
    EXPECT_EQ(field.alarms(0, Alarm::degraded), 0u);
}

TEST(Light, AnOnuAtTheEdgeDoesNotFlap)
{
    Field field;
    field.bring(0, -3302);
    field.bring(0, -3252);
    pass(field, registering);
    EXPECT_EQ(field.light(0), Light::lost) << "less than 0.5 dB above the loss level";
    field.bring(1, -3100);
    EXPECT_EQ(field.light(0), Light::lost) << "when another ONU is looked at, too";
    field.bring(0, -3251);
    pass(field, registering);
    EXPECT_EQ(field.light(0), Light::degraded);
    EXPECT_TRUE(field.online(0));
}

TEST(Light, AnOnuWithoutPowerDoesNotRegisterWhenItsFibreIsMended)
{
    Field field;
    field.order("cut 1 " + field.drop(0));
    field.order("power 1 " + text::mac_text(field.onu(0).mac) + " off");
    field.order("mend 1 " + field.drop(0));
    EXPECT_EQ(field.light(0), Light::good);
    EXPECT_EQ(field.record(0).phase_ends, 0u) << "nothing is under way";
    field.order("power 1 " + text::mac_text(field.onu(0).mac) + " on");
    pass(field, registering);
    EXPECT_TRUE(field.online(0));
}

TEST(Light, AnOnuThatBootsGoesOnWithThatWhenItsFibreIsMended)
{
    Field field;
    OnuRecord booting = field.record(0);
    booting.phase = Phase::booting;
    field.simulator.change(change_of<OnuRecord>({1, field.onu(0).mac}, booting));
    field.order("cut 1 " + field.drop(0));
    ASSERT_EQ(field.light(0), Light::lost);
    field.order("mend 1 " + field.drop(0));
    EXPECT_EQ(field.record(0).phase, Phase::booting);
}

TEST(Light, DegradesInTheHeatOfNoonAndRecovers)
{
    Field field;
    field.bring(0, -2963);
    const ModelTime due = field.first_below(0, -2978);
    EXPECT_LT(due, 12 * hours);
    field.simulator.advance(due - 1);
    EXPECT_EQ(field.light(0), Light::good);
    field.simulator.advance(due);
    EXPECT_EQ(field.light(0), Light::degraded);
    field.simulator.advance(24 * hours);
    EXPECT_EQ(field.light(0), Light::good);
    EXPECT_EQ(field.alarms(0, Alarm::degraded), 1u);
    field.simulator.advance(36 * hours);
    EXPECT_EQ(field.light(0), Light::degraded);
    EXPECT_EQ(field.alarms(0, Alarm::degraded), 2u);
}

TEST(Light, FadesAsTheLaserAges)
{
    Field field;
    field.bring(0, -2946);
    const ModelTime due = field.first_below(0, -2978);
    EXPECT_GT(due, 100 * 24 * hours) << "0.03 dB take 3000 hours";
    field.simulator.advance(due - 1);
    EXPECT_EQ(field.alarms(0, Alarm::degraded), 0u);
    field.simulator.advance(due);
    EXPECT_EQ(field.alarms(0, Alarm::degraded), 1u);
}

TEST(Light, FadesAtOnceWhenTheLaserIsMadeOld)
{
    Field field;
    const int32_t before = field.level(0);
    namespace at = layout::optics_rssi;
    const auto launched = [&] { return rssi(field, 1, 1).get(at::onu_launch_power); };
    const int32_t launched_before = launched();
    field.order("age-onu 1 " + text::mac_text(field.onu(0).mac) + " 100000");
    EXPECT_EQ(field.level(0), before - 100);
    EXPECT_EQ(launched(), launched_before - 100);
    field.order("age-onu 1 " + text::mac_text(field.onu(0).mac) + " 1900000");
    EXPECT_EQ(field.light(0), Light::lost);
}

TEST(Light, LolModeDecidesWhatIsLost)
{
    Field field;
    const int32_t level = field.level(0);
    ASSERT_EQ(set_lol(field, 1, 1, level + 1), BSP_OK);
    pass(field, 0);
    EXPECT_EQ(field.light(0), Light::lost);
    pass(field, time_out);
    EXPECT_EQ(field.alarms(0, Alarm::los), 1u);
    EXPECT_EQ(rssi(field, 1, 1).status(), PON_ERR_OFFLINE);
    ASSERT_EQ(set_lol(field, 1, 0), BSP_OK);
    pass(field, registering);
    EXPECT_TRUE(field.online(0));
}

TEST(Light, FecMakesMoreOfLittleLight)
{
    Field field;
    const auto can = [&](size_t index) { return field.olt().device_of(field.onu(index).mac).type->fec; };
    size_t with = 0, without = 0;
    while (with < Field::onus && !can(with))
        ++with;
    while (without < Field::onus && can(without))
        ++without;
    ASSERT_LT(with, Field::onus);
    ASSERT_LT(without, Field::onus);
    field.bring(with, -3220);
    field.bring(without, -3220);
    ASSERT_EQ(field.light(with), Light::degraded);
    field.set_fec(1);
    EXPECT_EQ(field.light(with), Light::good);
    EXPECT_EQ(field.share(with, 1518), 0u);
    EXPECT_EQ(field.light(without), Light::degraded) << "an ONU that cannot";
    field.set_fec(0);
    EXPECT_EQ(field.light(with), Light::degraded);
    EXPECT_EQ(field.alarms(with, Alarm::degraded), 2u);
}

TEST(BitErrors, FollowFromTheQFactor)
{
    Field field;
    ASSERT_EQ(set_lol(field, 1, 1, -4000), BSP_OK);
    for (int step = 1; step <= 39; ++step) {
        field.bring(0, -2978 - 25 * step);
        const double q = 7.03 * std::pow(10, -0.025 * step);
        const double ratio = std::erfc(q / std::sqrt(2)) / 2;
        for (const uint32_t length : {64u, 1518u}) {
            const double expected = -std::expm1(8 * length * std::log1p(-ratio)) * 1e9;
            const double rounding = 8 * length * 0.5e-12 * 1e9; // of the ratio, to 10^-12
            EXPECT_NEAR(field.share(0, length), expected, 1 + rounding + expected * 1e-4) << step << ", " << length;
        }
    }
    EXPECT_EQ(field.share(0, 64), all_errored) << "none gets through";
    EXPECT_EQ(field.share(1, 1518), 0u) << "an ONU with light enough";
}

TEST(BitErrors, RiseAndFallWithTheWarmthOfTheDay)
{
    Field field;
    field.bring(0, -3120);
    const uint32_t morning = field.share(0, 1518);
    field.simulator.advance(12 * hours);
    EXPECT_EQ(field.level(0), -3150);
    EXPECT_GT(field.share(0, 1518), 2 * morning);
    EXPECT_EQ(field.alarms(0, Alarm::degraded), 1u) << "it was degraded all the time";
    field.simulator.advance(24 * hours);
    EXPECT_EQ(field.share(0, 1518), morning);
}

TEST(BitErrors, SpoilEveryFrameWithoutLight)
{
    Field field;
    field.bring(0, -3150);
    ASSERT_GT(field.share(0, 1518), 0u);
    field.order("cut 1 " + field.drop(0));
    EXPECT_EQ(field.share(0, 1518), all_errored);
    field.order("mend 1 " + field.drop(0));
    EXPECT_LT(field.share(0, 1518), all_errored);
}

TEST(Light, WithFewErrorsHasThemCountedInTheEnd)
{
    Field field;
    field.bring(0, -2990);
    ASSERT_EQ(field.record(0).up.steps, 1u);
    const auto errored = [&] { return pon_counters(field.olt(), field.port(1)).in_fcs_errors; };
    field.simulator.advance(hours);
    EXPECT_EQ(errored(), 0u) << "there are a few each day";
    field.simulator.advance(10 * 24 * hours);
    EXPECT_GT(errored(), 5u);
    EXPECT_LT(errored(), 5000u);
}

TEST(Rogue, BlindsThePortUntilItWorksAsItShould)
{
    Field field;
    const std::string mac = text::mac_text(field.onu(3).mac);
    field.order("rogue 1 " + mac + " on");
    EXPECT_EQ(field.alarms_of(port_itself, Alarm::rogue), 1u);
    pass(field, time_out);
    EXPECT_EQ(field.online(), 0u);
    for (uint32_t index = 0; index < Field::onus; ++index)
        EXPECT_EQ(field.alarms(index, Alarm::los), 1u) << index;
    pass(field, 24 * hours);
    EXPECT_EQ(field.online(), 0u);
    EXPECT_EQ(field.alarms_of(port_itself, Alarm::rogue), 1u) << "it is reported once";
    field.order("rogue 1 " + mac + " off");
    pass(field, registering);
    EXPECT_EQ(field.online(), Field::onus);
}

TEST(Rogue, EndsWithItsPower)
{
    Field field;
    const std::string mac = text::mac_text(field.onu(3).mac);
    field.order("rogue 1 " + mac + " on");
    field.order("power 1 " + mac + " off");
    pass(field, registering);
    EXPECT_EQ(field.online(), Field::onus - 1);
    field.order("power 1 " + mac + " on");
    pass(field, registering);
    EXPECT_EQ(field.online(), 0u);
    EXPECT_EQ(field.alarms_of(port_itself, Alarm::rogue), 2u);
}

TEST(Rogue, BlindsNothingWhileItBoots)
{
    Field field;
    OnuRecord booting = field.record(3);
    booting.phase = Phase::booting;
    booting.rogue = true;
    field.simulator.change(change_of<OnuRecord>({1, field.onu(3).mac}, booting));
    pass(field, time_out);
    EXPECT_EQ(field.online(), Field::onus - 1);
    booting.phase = Phase::registered;
    field.simulator.change(change_of<OnuRecord>({1, field.onu(3).mac}, booting));
    pass(field, time_out);
    EXPECT_EQ(field.online(), 0u);
}

TEST(Rogue, EndsWhereItsLightNoLongerReachesThePort)
{
    Field field;
    field.order("rogue 1 " + text::mac_text(field.onu(3).mac) + " on");
    field.order("cut 1 " + field.drop(3));
    pass(field, registering);
    EXPECT_EQ(field.online(), Field::onus - 1);
    field.order("mend 1 " + field.drop(3));
    pass(field, time_out);
    EXPECT_EQ(field.online(), 0u);
}

TEST(Rogue, ComesAndGoesWithTheWarmthOfTheDayAtTheEdge)
{
    Field field;
    field.order("rogue 1 " + text::mac_text(field.onu(3).mac) + " on");
    field.bring(3, -3290);
    pass(field, time_out);
    ASSERT_EQ(field.online(), 0u);
    const ModelTime gone = field.first_below(3, -3301);
    field.simulator.advance(gone + registering);
    EXPECT_EQ(field.online(), Field::onus - 1);
    field.simulator.advance(24 * hours);
    EXPECT_EQ(field.online(), 0u) << "in the cool of the night it blinds the port again";
    EXPECT_EQ(field.alarms_of(port_itself, Alarm::rogue), 2u);
}

TEST(Rogue, IsSeenAnewWhenTheFeederIsMended)
{
    Field field;
    field.order("rogue 1 " + text::mac_text(field.onu(3).mac) + " on");
    field.order("cut 1 feeder");
    field.order("mend 1 feeder");
    pass(field, registering);
    EXPECT_EQ(field.online(), 0u);
    EXPECT_EQ(field.alarms_of(port_itself, Alarm::rogue), 2u);
}

TEST(Rogue, TwoOfThemBlindThePortUntilBothAreGone)
{
    Field field;
    field.order("rogue 1 " + text::mac_text(field.onu(3).mac) + " on");
    field.order("rogue 1 " + text::mac_text(field.onu(4).mac) + " on");
    field.bring(3, -3290);
    pass(field, 12 * hours);
    ASSERT_LT(field.level(3), -3301);
    EXPECT_EQ(field.online(), 0u) << "the other one";
    field.order("rogue 1 " + text::mac_text(field.onu(4).mac) + " off");
    pass(field, registering);
    EXPECT_EQ(field.online(), Field::onus - 1);
    EXPECT_EQ(field.alarms_of(port_itself, Alarm::rogue), 1u);
}

TEST(Rogue, AnOnuThatWorksAsItShouldEndsNothing)
{
    Field field;
    field.order("rogue 1 " + text::mac_text(field.onu(3).mac) + " off");
    EXPECT_EQ(field.online(), Field::onus);
    EXPECT_TRUE(field.port(1).alarms.empty());
}

TEST(LightOfAStore, StaysAsItWas)
{
    const Folder folder;
    const std::string file = folder.file("olt.db");
    ByMac<OnuRecord> onus;
    uint32_t share = 0;
    {
        Field field(file);
        field.simulator.advance(5 * hours);
        field.bring(0, -3120);
        field.bring(1, -3400);
        pass(field, time_out);
        onus = field.port(1).onus;
        share = field.share(0, 1518);
    }
    Field field(file);
    pass(field, 0);
    EXPECT_EQ(field.port(1).onus, onus);
    EXPECT_EQ(field.share(0, 1518), share);
    EXPECT_EQ(field.alarms(0, Alarm::degraded), 1u);
    EXPECT_EQ(field.alarms(1, Alarm::los), 1u);
    EXPECT_EQ(field.online(), Field::onus - 1);
}

TEST(LightOfAStore, ARogueOnuIsStillThere)
{
    const Folder folder;
    const std::string file = folder.file("olt.db");
    {
        Field field(file);
        field.order("rogue 1 " + text::mac_text(field.onu(3).mac) + " on");
    }
    Field field(file);
    pass(field, registering);
    EXPECT_EQ(field.online(), 0u);
    EXPECT_EQ(field.alarms_of(port_itself, Alarm::rogue), 1u);
    field.order("rogue 1 " + text::mac_text(field.onu(3).mac) + " off");
    pass(field, registering);
    EXPECT_EQ(field.online(), Field::onus);
}

TEST(LightOverTime, OneLongStepAndManyShortOnesGiveTheSame)
{
    Field once, stepped;
    for (Field *field : {&once, &stepped}) {
        field->bring(0, -2990);
        field->bring(1, -3120);
        field->bring(2, -3290);
        field->bring(3, -3295);
        field->order("rogue 1 " + text::mac_text(field->onu(3).mac) + " on");
    }
    ASSERT_EQ(once.store.rows(), stepped.store.rows());
    const auto before = once.store.rows();
    once.simulator.advance(30 * hours);
    while (stepped.olt().now() < 30 * hours)
        pass(stepped, ms_per_second);
    for (Field *field : {&once, &stepped})
        field->simulator.keep_time();
    EXPECT_NE(once.store.rows(), before);
    EXPECT_EQ(once.store.rows(), stepped.store.rows());
    EXPECT_EQ(once.share(1, 1518), stepped.share(1, 1518));
}

TEST(LightControls, KnowBranchesAndOnus)
{
    Field field;
    const std::string mac = text::mac_text(field.onu(0).mac);
    field.order("bend 1 " + mac + " 3.5");
    EXPECT_EQ(damage_to(field.port(1), field.onu(0).branch), 350);
    field.order("bend 1 " + field.drop(0) + " 0.25");
    EXPECT_EQ(damage_to(field.port(1), field.onu(0).branch), 375);
    field.order("mend 1 " + mac);
    EXPECT_TRUE(field.port(1).damage.empty());
    const std::string unknown = text::mac_text(stranger(1));
    for (const std::string &line :
         {std::string("cut"), std::string("cut 1"), std::string("cut 17 feeder"), std::string("cut 1 drop-9"),
          "cut 1 " + unknown, std::string("bend 1 feeder"), std::string("bend 1 feeder 0"),
          std::string("bend 1 feeder 1.234"), std::string("bend 1 feeder 100.01"), std::string("bend 1 feeder -1"),
          std::string("bend 1 feeder 1."), std::string("bend 1 feeder .5"), std::string("mend 1 feeder 1"),
          "age-onu 1 " + mac, "age-onu 1 " + mac + " x", "age-onu 1 " + unknown + " 1", "rogue 1 " + mac + " yes",
          "rogue 1 " + unknown + " on"})
        EXPECT_THROW(control_line(field, line), ControlError) << line;
}

} // namespace
} // namespace ponsim
