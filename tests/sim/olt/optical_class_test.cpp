// These tests check the optical classes, and that lasers, modules and receivers follow from them.
#include "model/plant/optical_class.h"

#include "model/olt/light.h"
#include "model/plant/module_memory.h"
#include "optics.h"
#include "scenes.h"

namespace ponsim
{
namespace
{

// The losses and penalties are those of IEEE 802.3, tables 60-1 and 60-10, and of YD/T 1688.3, in 0.01 dB.
struct Standard {
    const char *name;
    int32_t least_loss, greatest_loss_up, greatest_loss_down, penalties_up, penalties_down;
};
constexpr Standard standards[] = {{"PX10", 500, 2000, 1950, 300, 150},
                                  {"PX20", 1000, 2400, 2350, 200, 250},
                                  {"PX20+", 1000, 2800, 2800, 200, 150},
                                  {"PX30", 1500, 2900, 2900, 140, 100}};

std::string port_of(const std::string &optical_class, const std::string &onu = {})
{
    return "[kind.other]\nmodel = \"S100\"\nclass = \"PX20+\"\n[[olt]]\nports = 2\n[[olt.port]]\nnumber = 1\nclass = "
           "\"" +
           optical_class + "\"\n[[olt.port.onu]]\nname = \"home\"\ncount = 128\n" + onu;
}

TEST(OpticalClass, HasTheBudgetsOfTheStandard)
{
    for (const Standard &standard : standards) {
        const OpticalClass &optics = *find_optical_class(standard.name);
        EXPECT_EQ(optics.onu.least_launch - optics.olt.sensitivity, standard.greatest_loss_up + standard.penalties_up)
            << standard.name;
        EXPECT_EQ(optics.olt.least_launch - optics.onu.sensitivity,
                  standard.greatest_loss_down + standard.penalties_down)
            << standard.name;
        const LossRange up = losses_between(optics, optics, Direction::up);
        const LossRange down = losses_between(optics, optics, Direction::down);
        EXPECT_EQ(up.greatest, standard.greatest_loss_up) << standard.name;
        EXPECT_EQ(down.greatest, standard.greatest_loss_down) << standard.name;
        EXPECT_EQ(up.least, standard.least_loss) << standard.name;
        EXPECT_EQ(down.least, standard.least_loss) << standard.name;
    }
    EXPECT_EQ(optical_classes().size(), std::size(standards));
}

TEST(OpticalClass, OfBothEndsMayDiffer)
{
    const OpticalClass &px20 = *find_optical_class("PX20"), &px30 = *find_optical_class("PX30");
    EXPECT_EQ(losses_between(px30, px20, Direction::up).greatest, -100 + 2978 - 200);
    EXPECT_EQ(losses_between(px30, px20, Direction::down).greatest, 300 + 2400 - 100);
    EXPECT_EQ(losses_between(px30, px20, Direction::up).least, 400 + 938);
}

TEST(OpticalClass, OfAnOltThatNobodyDescribesIsPx30)
{
    const Olt olt({.seed = 1, .ports = 2, .arrivals = 1});
    EXPECT_EQ(olt.port(2)->optics->name, "PX30");
    EXPECT_EQ(olt.module(2)->type().part, "SX-OLT-PX30");
}

struct EachClass : testing::TestWithParam<Standard> {
    const OpticalClass &optics = *find_optical_class(GetParam().name);
};
INSTANTIATE_TEST_SUITE_P(OpticalClass, EachClass, testing::ValuesIn(standards), [](const auto &each) {
    std::string name(each.param.name);
    std::ranges::replace(name, '+', 'p');
    return name;
});

TEST_P(EachClass, HasOnusThatLaunchEnoughForTheirWholeLife)
{
    const Transceiver &levels = optics.onu;
    for (const uint64_t seed : {1, 2, 3}) {
        const Scene scene("seed = " + std::to_string(seed) + "\n" + port_of(GetParam().name));
        for (const Arrival &onu : scene.port(1).arrivals) {
            const OnuLaser laser = laser_of(scene.olt(), scene.port(1), onu.mac);
            EXPECT_LE(laser.power(0), levels.greatest_launch);
            constexpr uint64_t hour = 3600;
            EXPECT_GE(laser.power(100000 * hour + 12 * hour), levels.least_launch);
        }
    }
}

TEST_P(EachClass, HasModulesThatAreWithinTheirThresholdsWhenNew)
{
    const Transceiver &levels = optics.olt;
    for (uint64_t seed = 1; seed <= 50; ++seed) {
        const Module module(seed, 1, &optics);
        EXPECT_GE(module.launch_level(0), levels.least_launch);
        EXPECT_LE(module.launch_level(0), levels.greatest_launch);
        EXPECT_EQ(module.alarms(0), 0);
        EXPECT_EQ(module.warnings(0), 0);
        EXPECT_TRUE(module.next_alarm()) << "it ages";
    }
}

TEST_P(EachClass, IsToldByTheMemoryOfItsModules)
{
    const Module module(1, 1, &optics);
    const ModuleMemory identity = identity_memory(module);
    const std::string part(identity.begin() + 40, identity.begin() + 56);
    EXPECT_EQ(part.substr(0, part.find(' ')), "SX-OLT-" + std::string(optics.name));
    EXPECT_EQ(identity[14], optics.reach);
    const auto &thresholds = module.type().thresholds;
    EXPECT_EQ(centi_dbm(thresholds[launch_power].low_warning), optics.olt.least_launch);
    EXPECT_EQ(centi_dbm(thresholds[launch_power].high_warning), optics.olt.greatest_launch);
    EXPECT_NEAR(centi_dbm(thresholds[received_power].high_alarm), optics.olt.overload, 1);
    EXPECT_NEAR(centi_dbm(thresholds[received_power].low_warning), optics.olt.sensitivity, 25) << "to 0.1 uW";
}

TEST(OpticalClass, IsThatOfTheOltOrOfThePortInAScenario)
{
    const Scene scene("[[olt]]\nports = 3\nclass = \"PX20\"\n[[olt.port]]\nnumber = 2\nclass = \"PX10\"\n"
                      "[[olt.port]]\nnumber = 3\n");
    EXPECT_EQ(scene.port(1).optics->name, "PX20") << "a port that is not described";
    EXPECT_EQ(scene.port(2).optics->name, "PX10");
    EXPECT_EQ(scene.port(3).optics->name, "PX20");
    EXPECT_EQ(scene.olt().module(2)->type().part, "SX-OLT-PX10");
}

TEST(OpticalClass, OfAKindOfOnuGoesBeforeThatOfItsPort)
{
    const Scene scene(port_of("PX30", "kind = \"other\"\n"));
    const Arrival &onu = scene.onu(1, "home-1");
    EXPECT_EQ(scene.olt().optics_of(scene.port(1), onu.mac).name, "PX20+");
    EXPECT_EQ(scene.olt().device_of(onu.mac).type->model, "S100");
    EXPECT_EQ(sensitivity(scene.olt(), scene.port(1), onu, Direction::down), -2700);
    EXPECT_EQ(sensitivity(scene.olt(), scene.port(1), onu, Direction::up), -2978);
}

TEST(OpticalClass, ThatDoesNotExistIsRefused)
{
    EXPECT_THROW(read(port_of("PX40")), ScenarioError);
    EXPECT_EQ(find_optical_class("PX40"), nullptr);
}

} // namespace
} // namespace ponsim
