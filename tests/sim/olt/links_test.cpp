// These tests check what ONUs receive of their port, and how links fail and come back when light in either direction is
// missing, weak or too strong.
#include <cmath>

#include "field.h"
#include "model/base/chance.h"
#include "model/lifecycle/debug.h"
#include "model/plant/bit_errors.h"
#include "model/plant/fibre.h"
#include "rows.h"
#include "scenes.h"

namespace ponsim
{
namespace
{

constexpr int32_t reaches_least = -2700; // what an ONU of PX30 needs, in 0.01 dBm

TEST(Downstream, AnOnuReceivesWhatThePortLaunchesLessTheLoss)
{
    Field field;
    const Arrival &onu = field.onu(0);
    const int32_t launched = diagnostics(field, 1).get(layout::optics_diagnostics::launch_power), up = field.level(0);
    const int32_t loss = onu.loss + static_cast<int32_t>(onu.distance) * 25 / 1000;
    EXPECT_EQ(field.level(0, Direction::down), launched - loss);
    field.order("dim 1 3.5");
    EXPECT_EQ(field.level(0, Direction::down), launched - loss - 350);
    EXPECT_EQ(diagnostics(field, 1).get(layout::optics_diagnostics::launch_power), launched - 350);
    EXPECT_EQ(field.level(0), up);
    field.order("dim 1 off");
    EXPECT_EQ(field.level(0, Direction::down), launched - loss);
}

TEST(Downstream, AgeTakesLightToo)
{
    Field field;
    const int32_t before = field.level(0, Direction::down);
    field.order("age 1 20000");
    EXPECT_LT(field.level(0, Direction::down), before - 30);
}

TEST(Downstream, DamageTakesTheSameOfBothDirections)
{
    Field field;
    const int32_t up = field.level(0), down = field.level(0, Direction::down);
    field.order("bend 1 " + field.drop(0) + " 2.5");
    EXPECT_EQ(field.level(0), up - 250);
    EXPECT_EQ(field.level(0, Direction::down), down - 250);
}

TEST(Downstream, IsWhatTheOnuItselfMeasures)
{
    Field field;
    field.order("dim 1 2");
    bsp_onu_msg record = onu_record_of(BSP_CMD_ONU_OPTICS_GET, 1, 1);
    const Reply reply = field.simulator.handle(message_of(BSP_MSG_ONU_CFG, record));
    ASSERT_EQ(reply.status, BSP_OK);
    const auto power = layout::load(reply.answer->data(), layout::onu_optics::received_power);
    EXPECT_EQ(power, power_of(field.level(0, Direction::down)));
}

TEST(Downstream, WeakLightHasErrorsInItsDirectionAlone)
{
    Field field;
    field.dim(0, reaches_least);
    EXPECT_EQ(field.light(0, Direction::down), Light::good);
    field.dim(0, reaches_least - 100);
    EXPECT_EQ(field.light(0, Direction::down), Light::degraded);
    EXPECT_EQ(field.light(0), Light::good);
    EXPECT_GT(field.share(0, 1518, Direction::down), 0u);
    EXPECT_EQ(field.share(0, 1518), 0u);
    EXPECT_EQ(field.alarms(0, Alarm::onu_degraded), 1u);
    EXPECT_EQ(field.alarms(0, Alarm::degraded), 0u);
    EXPECT_TRUE(field.online(0));
}

TEST(Downstream, AnOltLaserThatFailsTakesAllOnusAfterTheGateTimeOut)
{
    Field field;
    field.order("dim 1 44");
    EXPECT_LT(diagnostics(field, 1).get(layout::optics_diagnostics::launch_power), -3700);
    EXPECT_EQ(field.light(0, Direction::down), Light::lost);
    EXPECT_EQ(field.light(0), Light::good);
    pass(field, gate_time_out - 1);
    EXPECT_EQ(field.online(), Field::onus);
    pass(field, 1);
    EXPECT_EQ(field.online(), 0u);
    EXPECT_EQ(field.alarms(0, Alarm::los), 1u);
    EXPECT_EQ(field.alarms(0, Alarm::onu_los), 1u);
    EXPECT_EQ(field.alarms_of(port_itself, Alarm::power_low), 1u);
    pass(field, hours);
    EXPECT_EQ(field.online(), 0u);
    field.order("dim 1 off");
    pass(field, registering);
    EXPECT_EQ(field.online(), Field::onus);
    EXPECT_EQ(field.alarms(0, Alarm::onu_los), 1u);
}

TEST(Downstream, ALaserThatFailsAgainIsAnotherAlarm)
{
    Field field;
    for (const char *loss : {"20", "off", "20", "25"})
        field.order(std::string("dim 1 ") + loss);
    EXPECT_EQ(field.alarms_of(port_itself, Alarm::power_low), 2u);
}

TEST(Downstream, ALaserThatIsOffIsNoLight)
{
    Field field;
    EXPECT_EQ(i2c_write(field, 1, 0xa2, 110, {0x40}), BSP_OK);
    pass(field, gate_time_out);
    EXPECT_EQ(field.online(), 0u);
    EXPECT_EQ(i2c_write(field, 1, 0xa2, 110, {0}), BSP_OK);
    pass(field, registering);
    EXPECT_EQ(field.online(), Field::onus);
}

TEST(Downstream, TheControlKnowsItsWords)
{
    Field field;
    for (const char *line : {"dim", "dim 1", "dim 17 1", "dim 1 0", "dim 1 60.01", "dim 1 x", "dim 1 1 2"})
        EXPECT_THROW(field.order(line), ControlError) << line;
}

TEST(Outage, OfTenMillisecondsIsSurvived)
{
    Field field;
    field.order("cut 1 feeder");
    EXPECT_EQ(field.share(0, 64), all_errored);
    EXPECT_EQ(field.share(0, 64, Direction::down), all_errored);
    pass(field, 10);
    field.order("mend 1 feeder");
    EXPECT_EQ(field.share(0, 64), 0u);
    EXPECT_EQ(field.online(), Field::onus);
    pass(field, hours);
    EXPECT_EQ(field.online(), Field::onus);
    EXPECT_TRUE(field.port(1).alarms.empty()) << "nobody has noticed";
}

TEST(Outage, OfTheGateTimeOutIsNot)
{
    Field field;
    field.order("cut 1 feeder");
    pass(field, gate_time_out - 1);
    EXPECT_EQ(field.online(), Field::onus);
    pass(field, 1);
    EXPECT_EQ(field.online(), 0u);
    EXPECT_EQ(field.alarms(0, Alarm::los), 1u);
    EXPECT_EQ(field.alarms(0, Alarm::onu_los), 0u) << "the port does not receive the ONU either";
    pass(field, ms_per_second);
    field.order("mend 1 feeder");
    EXPECT_EQ(field.online(), 0u);
    pass(field, registering);
    EXPECT_EQ(field.online(), Field::onus);
    EXPECT_EQ(field.alarms(0, Alarm::los), 1u);
}

TEST(Outage, OfTheUpstreamAloneTakesTheReportTimeOut)
{
    Field field;
    field.bring(0, -3302);
    pass(field, time_out - 1);
    EXPECT_TRUE(field.online(0));
    pass(field, 1);
    EXPECT_FALSE(field.online(0));
    EXPECT_EQ(field.online(), Field::onus - 1);
}

TEST(Outage, EndsWithTheTimeOutsThatAreSet)
{
    Field field;
    Mpcp mpcp;
    mpcp.report_timeout = 300;
    mpcp.gate_timeout = 500;
    field.simulator.change(set_mpcp(field.olt(), 1, MpcpSet::timeouts, mpcp).change);
    field.bring(0, -3302);
    pass(field, 200);
    field.order("dim 1 44");
    pass(field, 99);
    EXPECT_TRUE(field.online(0));
    pass(field, 1);
    EXPECT_FALSE(field.online(0));
    pass(field, 199);
    EXPECT_EQ(field.online(), Field::onus - 1);
    pass(field, 1);
    EXPECT_EQ(field.online(), 0u) << "without GATEs there are no REPORTs either";
}

TEST(Outage, GoesOnAfterARestartOfTheService)
{
    const Folder folder;
    const std::string file = folder.file("olt.db");
    {
        Field field(file);
        pass(field, 5000);
        field.order("cut 1 feeder");
        pass(field, 30);
        field.simulator.keep_time();
    }
    Field field(file);
    pass(field, 19);
    EXPECT_EQ(field.online(), Field::onus);
    pass(field, 1);
    EXPECT_EQ(field.online(), 0u);
}

TEST(Outage, OfAnOnuThatBootsIsNoneOfALink)
{
    Field field;
    field.order("power 1 " + field.mac(0) + " off");
    field.order("power 1 " + field.mac(0) + " on");
    field.order("cut 1 " + field.drop(0));
    pass(field, registering);
    EXPECT_EQ(field.record(0).phase, Phase::discovery) << "it waits for light";
    EXPECT_EQ(field.record(0).phase_ends, 0u);
    field.order("mend 1 " + field.drop(0));
    pass(field, registering);
    EXPECT_TRUE(field.online(0));
}

// Lets light be so weak upstream that the port still hears it, with any errors.
void hear_everything(Field &field)
{
    ASSERT_EQ(set_lol(field, 1, 1, -4000), BSP_OK);
}

TEST(Errors, InEveryFrameDeregisterAnOnuByTheReportTimeOut)
{
    Field field;
    hear_everything(field);
    field.bring(0, -3990);
    EXPECT_EQ(field.share(0, 64), all_errored);
    pass(field, time_out - 1);
    EXPECT_TRUE(field.online(0));
    pass(field, 1);
    EXPECT_FALSE(field.online(0));
    EXPECT_EQ(field.alarms(0, Alarm::deregistered), 1u);
    EXPECT_EQ(field.alarms(0, Alarm::los), 0u) << "there is light";
    pass(field, 24 * hours);
    EXPECT_FALSE(field.online(0));
    EXPECT_EQ(field.alarms(0, Alarm::deregistered), 1u);
    field.bring(0, -2900);
    pass(field, registering);
    EXPECT_TRUE(field.online(0));
}

TEST(Errors, InTheGatesDeregisterAnOnuByTheGateTimeOut)
{
    Field field;
    field.simulator.change(set_debug(field.olt(), DebugSwitch::onu, 1, true).change);
    field.dim(0, reaches_least - 450);
    // 96 percent of the GATEs are lost, and 50 in a row five times a second.
    EXPECT_NEAR(field.share(0, 64, Direction::down), 961e6, 1e6);
    pass(field, gate_time_out - 1);
    EXPECT_TRUE(field.online(0));
    pass(field, 5 * ms_per_second);
    EXPECT_FALSE(field.online(0));
    EXPECT_EQ(field.alarms(0, Alarm::deregistered), 1u);
    EXPECT_EQ(field.alarms(0, Alarm::los), 0u);
    const std::string line = "ONU: port 1 id 1 " + field.mac(0) + ": deregistered: it received no GATE for 50 ms";
    EXPECT_EQ(std::ranges::count(field.simulator.take_log(), line), 1);
}

// Returns how often the OAM link of the first ONU fails in a day.
uint32_t oam_losses(ModelTime step)
{
    Field field;
    field.bring(0, -3268);
    for (ModelTime time = 0; time < 24 * hours; time += step)
        pass(field, step);
    EXPECT_EQ(field.alarms(0, Alarm::deregistered), 0u) << "1000 REPORTs in a row are not lost";
    EXPECT_EQ(field.alarms(0, Alarm::los), 0u);
    return field.alarms(0, Alarm::oam_link_lost);
}

TEST(Errors, LetTheOamLinkFailWhereTheRegistrationStays)
{
    const uint32_t losses = oam_losses(24 * hours);
    // While it is warm, 20 percent of the OAMPDUs are lost, and five in a row about once an hour.
    EXPECT_GT(losses, 5u);
    EXPECT_LT(losses, 30u);
    EXPECT_EQ(oam_losses(hours / 4), losses) << "whatever the steps of the time are";
}

TEST(Errors, TheOamLinkComesUpAgain)
{
    Field field;
    field.bring(0, -3268);
    uint32_t seconds = 0;
    while (field.online(0) && ++seconds < 24 * 3600)
        field.simulator.advance(field.olt().light_watch().next_time_out().value());
    ASSERT_FALSE(field.online(0));
    EXPECT_EQ(field.record(0).phase, Phase::oam);
    pass(field, registering);
    EXPECT_TRUE(field.online(0));
}

TEST(Errors, AreDrawnFromTheSeed)
{
    const auto first_loss = [](uint64_t seed) {
        Field field({}, seed);
        field.bring(0, -3268);
        return field.olt().light_watch().next_time_out().value();
    };
    EXPECT_EQ(first_loss(1), first_loss(1));
    EXPECT_NE(first_loss(1), first_loss(2));
}

TEST(Errors, MakeARegistrationTakeLonger)
{
    const auto seconds_until_all_are_back = [](int32_t level) {
        Field field({}, 2); // with this seed no answers overlap in a window, so that only errors take time
        hear_everything(field);
        field.order("cut 1 feeder");
        pass(field, time_out);
        for (size_t index = 0; index < Field::onus; ++index)
            field.bring(index, level - cut_loss);
        field.order("mend 1 feeder");
        uint32_t seconds = 0;
        for (; seconds < 1000 && field.online() < Field::onus; ++seconds)
            pass(field, ms_per_second);
        return seconds;
    };
    EXPECT_LT(seconds_until_all_are_back(-2900), 5u);
    // A third of the frames is lost. Each registration needs six of the ONU to pass.
    EXPECT_GT(seconds_until_all_are_back(-3318), 5u);
    EXPECT_LT(seconds_until_all_are_back(-3318), 100u);
}

TEST(Errors, CostNothingWhileLightIsGood)
{
    const Olt olt({.seed = 1, .ports = 16, .arrivals = 128, .silent = 0});
    EXPECT_EQ(olt.light_watch().next_time_out(), std::nullopt);
    EXPECT_GT(olt.light_watch().next().value(), 365 * 24 * hours);
}

TEST(Errors, GoOnAfterARestartOfTheService)
{
    const Folder folder;
    const std::string file = folder.file("olt.db");
    std::optional<ModelTime> due;
    {
        Field field(file);
        pass(field, 5 * hours);
        field.bring(0, -3290);
        due = field.olt().light_watch().next_time_out();
        field.simulator.keep_time();
    }
    const Field field(file);
    EXPECT_NE(due, std::nullopt);
    EXPECT_EQ(field.olt().light_watch().next_time_out(), due);
}

std::string near_port(const std::string &optical_class)
{
    return "[service.home]\n[[olt]]\nports = 1\n[[olt.port]]\nnumber = 1\nclass = \"" + optical_class +
           "\"\n[[olt.port.branch]]\nname = \"main\"\n[[olt.port.onu]]\nname = \"near\"\nservice = \"home\"\ndrop = "
           "50\n";
}

uint32_t alarms(const Scene &scene, Alarm alarm)
{
    const auto found = scene.port(1).alarms.find({scene.onu(1, "near").mac, static_cast<uint32_t>(alarm)});
    return found == scene.port(1).alarms.end() ? 0 : found->second.count;
}

bool online(const Scene &scene)
{
    return scene.olt().online(scene.port(1), scene.onu(1, "near").mac);
}

void order(Scene &scene, const std::string &line)
{
    scene.simulator.change(plan_control(scene.olt(), line).change);
    scene.simulator.advance(scene.olt().now() + registering);
}

TEST(Overload, OfBothReceiversWithoutASplitterTakesTheLink)
{
    for (const char *optical_class : {"PX20+", "PX30"}) {
        Scene scene(near_port(optical_class));
        scene.simulator.advance(time_out);
        EXPECT_EQ(alarms(scene, Alarm::receive_overload), 1u) << optical_class;
        EXPECT_EQ(alarms(scene, Alarm::onu_overload), 1u) << optical_class;
        EXPECT_FALSE(online(scene)) << optical_class;
        EXPECT_EQ(scene.port(1).arrivals[0].loss, 100) << "two fibres, four connectors";
    }
}

TEST(Overload, EndsWithAnAttenuator)
{
    Scene scene(near_port("PX30"));
    scene.simulator.advance(time_out);
    order(scene, "bend 1 near 16");
    EXPECT_TRUE(online(scene));
    EXPECT_EQ(scene.port(1).record(scene.onu(1, "near").mac), OnuRecord{}) << "the light is good";
    EXPECT_EQ(alarms(scene, Alarm::receive_overload), 1u);
}

TEST(Overload, ByLessThanThreeDecibelsIsErrors)
{
    Scene scene(near_port("PX30"));
    const Arrival &onu = scene.onu(1, "near");
    const int32_t level = received_level(scene.olt(), scene.port(1), onu, Direction::up, 0);
    const int32_t too_much = level + 938 - 200;
    order(scene,
          "bend 1 near " + std::to_string(too_much / 100) + '.' + std::to_string(too_much % 100 + 100).substr(1));
    EXPECT_EQ(scene.port(1).record(onu.mac).up.light, Light::overloaded);
    EXPECT_EQ(scene.port(1).record(onu.mac).up.steps, 8u);
    EXPECT_GT(errored_share(scene.port(1).record(onu.mac).up, 1518), 0u);
    EXPECT_EQ(alarms(scene, Alarm::receive_overload), 1u) << "it is the same alarm";
}

TEST(Chance, OfManyFailuresInARowIsMetAsOftenAsItIs)
{
    const auto mean = [](Chance failure, uint64_t in_a_row) {
        Random random(1, in_a_row);
        double sum = 0;
        constexpr int draws = 20000;
        for (int draw = 0; draw < draws; ++draw)
            sum += static_cast<double>(trials_until_failures(random, failure, in_a_row));
        return sum / draws;
    };
    const auto formula = [](double q, double n) { return (1 - std::pow(q, n)) / (std::pow(q, n) * (1 - q)); };
    EXPECT_NEAR(mean(certain / 2, 5), formula(0.5, 5), 2);
    EXPECT_NEAR(mean(certain / 10, 3), formula(0.1, 3), 25);
    EXPECT_NEAR(mean(certain / 10 * 9, 50), formula(0.9, 50), 40);
    EXPECT_EQ(mean(certain, 50), 50);
    Random random(1, 1);
    EXPECT_EQ(trials_until_failures(random, 0, 5), never);
}

TEST(Chance, OfASuccessIsMetAsOftenAsItIs)
{
    Random random(1, 2);
    for (const double inverse : {2.0, 10.0, 100.0, 100000.0}) {
        double sum = 0;
        constexpr int draws = 20000;
        for (int draw = 0; draw < draws; ++draw)
            sum += static_cast<double>(
                failures_before_success(random, static_cast<Chance>(18446744073709551615.0 / inverse)));
        EXPECT_NEAR(sum / draws / (inverse - 1), 1, 0.03) << inverse;
    }
    EXPECT_EQ(failures_before_success(random, 0), never);
    EXPECT_EQ(failures_before_success(random, certain), 0u);
}

TEST(Chance, IsExactInItsProducts)
{
    EXPECT_EQ(both(certain, 12345), 12345u);
    EXPECT_EQ(every_time(certain, 1000), certain);
    EXPECT_EQ(every_time(Chance{1} << 63, 10), Chance{1} << 54);
    EXPECT_EQ(expected(chance_of(1000000000), 1000000), 1000u);
    EXPECT_EQ(expected(certain, 7), 7u);
    EXPECT_EQ(frame_error(0, 1518), 0u);
}

} // namespace
} // namespace ponsim
