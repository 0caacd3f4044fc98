// These tests check when the light of ONUs is good, degraded or lost, and what that causes.
#include "model/olt/light.h"

#include <cmath>

#include "model/lifecycle/process.h"
#include "model/olt/mpcp.h"
#include "model/port/fibre.h"
#include "optics.h"

namespace ponsim
{
namespace
{

// Port 1 of this OLT has eight ONUs, bound to ids 1 to 8.
struct Field : ServiceFixture {
    explicit Field(const std::string &file = {}) : ServiceFixture(lively(), file)
    {
        if (port(1).bindings[1]) return;
        for (uint32_t index = 0; index < onus; ++index)
            bind_arrival(*this, index + 1, index);
    }

    static constexpr uint32_t onus = 8;

    const Olt &olt() const { return simulator.olt(); }
    const Arrival &onu(size_t index) const { return port(1).arrivals.at(index); }
    const std::string &drop(size_t index) const { return port(1).branches.at(onu(index).branch).name; }
    OnuRecord record(size_t index) const { return port(1).record(onu(index).mac); }
    Light light(size_t index) const { return record(index).light; }
    int32_t level(size_t index) const { return received_level(olt(), port(1), onu(index), olt().now()); }
    bool online(size_t index) const { return olt().online(port(1), onu(index).mac); }
    uint32_t online() const
    {
        uint32_t count = 0;
        for (uint32_t index = 0; index < onus; ++index)
            count += online(index);
        return count;
    }
    uint32_t alarms_of(const Mac &mac, Alarm alarm) const
    {
        const auto found = port(1).alarms.find({mac, static_cast<uint32_t>(alarm)});
        return found == port(1).alarms.end() ? 0 : found->second;
    }
    uint32_t alarms(size_t index, Alarm alarm) const { return alarms_of(onu(index).mac, alarm); }
    uint32_t share(size_t index, uint32_t length) const
    {
        return errored_share(olt(), port(1), onu(index), {length, Cast::unicast});
    }

    void order(const std::string &line)
    {
        control_line(*this, line);
        pass(*this, 0);
    }
    // Damages the ONU's own fibre until the port receives this power from it, in 0.01 dBm.
    void bring(size_t index, int32_t wanted)
    {
        const int32_t damage = damage_to(port(1), onu(index).branch) + level(index) - wanted;
        ASSERT_GE(damage, 0) << "the ONU has no more light than that";
        simulator.change(set_damage(port(1), onu(index).branch, damage).change);
        pass(*this, 0);
        ASSERT_EQ(level(index), wanted);
    }
    // Returns the first second in which less than this power is received from the ONU.
    ModelTime first_below(size_t index, int32_t power) const
    {
        ModelTime time = olt().now() / ms_per_second * ms_per_second;
        while (received_level(olt(), port(1), onu(index), time) >= power)
            time += ms_per_second;
        return time;
    }
    void set_fec(uint32_t on)
    {
        Mpcp mpcp;
        mpcp.fec = on;
        simulator.change(set_mpcp(olt(), 1, MpcpSet::grants, mpcp).change);
        pass(*this, 0);
    }
};

constexpr ModelTime registering = 60 * ms_per_second; // longer than a registration takes

TEST(Light, OfTheOnusThatAreFoundIsGoodAtEveryHour)
{
    const Olt olt({.seed = 1, .ports = 16, .arrivals = 128, .silent = 0});
    int32_t least = 0;
    for (const PonPort &port : olt.ports())
        for (const Arrival &arrival : port.arrivals)
            for (const ModelTime hour : {0, 6, 12, 18})
                least = std::min(least, received_level(olt, port, arrival, hour * hours));
    EXPECT_GE(least, -3000);
    EXPECT_LT(least, -2800) << "the farthest are not far from the edge";
    EXPECT_GT(olt.light_watch().next().value(), 365 * 24 * hours) << "for a year nothing happens";
}

TEST(Light, BendsDegradeAnOnuThenLoseIt)
{
    Field field;
    field.bring(0, -3000);
    EXPECT_EQ(field.light(0), Light::good);
    field.bring(0, -3001);
    EXPECT_EQ(field.light(0), Light::degraded);
    EXPECT_TRUE(field.online(0));
    EXPECT_EQ(field.alarms(0, Alarm::degraded), 1u);
    EXPECT_EQ(field.alarms(0, Alarm::los), 0u);
    field.bring(0, -3301);
    EXPECT_EQ(field.light(0), Light::degraded);
    field.bring(0, -3302);
    EXPECT_EQ(field.light(0), Light::lost);
    EXPECT_FALSE(field.online(0));
    EXPECT_EQ(field.alarms(0, Alarm::degraded), 1u);
    EXPECT_EQ(field.alarms(0, Alarm::los), 1u);
    EXPECT_EQ(field.online(), 7u) << "no other ONU is concerned";
}

TEST(Light, AnOnuRegistersWhenItIsBack)
{
    Field field;
    field.order("cut 1 " + field.drop(0));
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
    field.bring(0, -2985);
    const ModelTime due = field.first_below(0, -3000);
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
    field.bring(0, -2968);
    const ModelTime due = field.first_below(0, -3000);
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
    field.bring(with, -3240);
    field.bring(without, -3240);
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
        field.bring(0, -3000 - 25 * step);
        const double q = 7.03 * std::pow(10, -0.025 * step);
        const double ratio = std::erfc(q / std::sqrt(2)) / 2;
        for (const uint32_t length : {64u, 1518u}) {
            const double expected = std::min(1e6, 8 * length * ratio * 1e6);
            EXPECT_NEAR(field.share(0, length), expected, 1 + expected * 1e-4) << step << ", " << length;
        }
    }
    EXPECT_EQ(field.share(0, 64), 1000000u) << "none gets through";
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

TEST(BitErrors, EndWithTheLight)
{
    Field field;
    field.bring(0, -3150);
    ASSERT_GT(field.share(0, 1518), 0u);
    field.order("cut 1 " + field.drop(0));
    EXPECT_EQ(field.share(0, 1518), 0u);
}

TEST(Rogue, BlindsThePortUntilItWorksAsItShould)
{
    Field field;
    const std::string mac = text::mac_text(field.onu(3).mac);
    field.order("rogue 1 " + mac + " on");
    EXPECT_EQ(field.online(), 0u);
    EXPECT_EQ(field.alarms_of(port_itself, Alarm::rogue), 1u);
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
    pass(field, 0);
    EXPECT_EQ(field.online(), Field::onus - 1);
    booting.phase = Phase::registered;
    field.simulator.change(change_of<OnuRecord>({1, field.onu(3).mac}, booting));
    pass(field, 0);
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
    EXPECT_EQ(field.online(), 0u);
}

TEST(Rogue, ComesAndGoesWithTheWarmthOfTheDayAtTheEdge)
{
    Field field;
    field.order("rogue 1 " + text::mac_text(field.onu(3).mac) + " on");
    field.bring(3, -3290);
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
    std::map<Mac, OnuRecord> onus;
    uint32_t share = 0;
    {
        Field field(file);
        field.simulator.advance(5 * hours);
        field.bring(0, -3120);
        field.bring(1, -3400);
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
