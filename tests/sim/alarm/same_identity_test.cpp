// These tests have ONUs with the same LOID or the same address, and ONUs at another port than that where they are
// bound.
#include "control/control.h"
#include "model/alarm/alarms.h"
#include "rows.h"
#include "scenes.h"

namespace ponsim
{
namespace
{

constexpr ModelTime minute = 60 * ms_per_second;

void pass(Scene &scene, ModelTime time)
{
    scene.simulator.advance(scene.olt().now() + time);
}

void order(Scene &scene, const std::string &line)
{
    scene.simulator.change(plan_control(scene.olt(), line).change);
    pass(scene, 0);
}

const AlarmRecord *alarm(const Scene &scene, uint32_t port, const Mac &mac, Alarm which)
{
    return scene.olt().alarm(alarm_key(scene.port(port), mac, which));
}

bool active(const Scene &scene, uint32_t port, const Mac &mac, Alarm which)
{
    const AlarmRecord *record = alarm(scene, port, mac, which);
    return record && record->active();
}

std::string place(const Scene &scene, uint32_t port, const Mac &mac, Alarm which)
{
    const AlarmRecord *record = alarm(scene, port, mac, which);
    return record ? place_of(scene.olt(), alarm_key(scene.port(port), mac, which), record->reason) : "no alarm";
}

// Two ONUs have one LOID. The first in the order of their addresses is let in when the OLT is switched on.
struct SameLoid : Scene {
    SameLoid()
        : Scene(R"(seed = 1
[[olt]]
[[olt.port]]
number = 1
[[olt.port.onu]]
name = "one"
mac = "02:00:00:00:00:01"
loid = "shared"
[[olt.port.onu]]
name = "two"
mac = "02:00:00:00:00:02"
loid = "shared"
)")
    {
        simulator.change(set_authentication(olt(), 1, {1, "shared", {}, false}).change);
        pass(*this, 0);
    }

    const Mac one = onu(1, "one").mac;
    const Mac two = onu(1, "two").mac;
};

TEST(SameLoid, TheSecondIsKeptOutAndItsAlarmNamesTheFirst)
{
    const SameLoid scene;
    EXPECT_TRUE(scene.olt().online(scene.port(1), scene.one));
    EXPECT_EQ(scene.olt().find(scene.two), std::nullopt);
    EXPECT_FALSE(active(scene, 1, scene.one, Alarm::same_loid));
    EXPECT_TRUE(active(scene, 1, scene.two, Alarm::same_loid));
    EXPECT_EQ(place(scene, 1, scene.two, Alarm::same_loid), "ONU 02:00:00:00:00:01 at port 1");
}

TEST(SameLoid, TheSecondAsksAgainWithoutAnotherAlarm)
{
    SameLoid scene;
    pass(scene, 10 * minute);
    EXPECT_TRUE(active(scene, 1, scene.two, Alarm::same_loid));
    EXPECT_EQ(alarm(scene, 1, scene.two, Alarm::same_loid)->count, 1u);
    EXPECT_EQ(scene.olt().find(scene.two), std::nullopt);
}

TEST(SameLoid, WhoIsThereFirstStaysWhateverItsAddress)
{
    SameLoid scene;
    order(scene, "power 1 one off");
    pass(scene, minute);
    EXPECT_TRUE(scene.olt().online(scene.port(1), scene.two)) << "nobody else has the LOID any more";
    EXPECT_FALSE(active(scene, 1, scene.two, Alarm::same_loid));
    order(scene, "power 1 one on");
    pass(scene, 2 * minute);
    EXPECT_TRUE(scene.olt().online(scene.port(1), scene.two));
    EXPECT_FALSE(scene.olt().online(scene.port(1), scene.one));
    EXPECT_EQ(place(scene, 1, scene.one, Alarm::same_loid), "ONU 02:00:00:00:00:02 at port 1");
}

TEST(SameLoid, TheAlarmComesBackWhenItIsClearedAndEndsWhenTheOnuLeaves)
{
    SameLoid scene;
    const bsp_pon_msg clear = record_of(BSP_CMD_ONU_ALARM_CLEAR, 1);
    EXPECT_EQ(scene.simulator.handle(message_of(clear)).status, BSP_OK);
    EXPECT_TRUE(active(scene, 1, scene.two, Alarm::same_loid));
    order(scene, "power 1 two off");
    EXPECT_FALSE(active(scene, 1, scene.two, Alarm::same_loid));
}

TEST(SameLoid, IsNoConcernWhereTheAddressCounts)
{
    SameLoid scene;
    scene.simulator.change(set_authentication(scene.olt(), 1, {0, {}, {}, false}).change);
    scene.simulator.change(bind_onu(scene.olt(), 1, 9, binding_of(scene.two)).change);
    pass(scene, 2 * minute);
    EXPECT_TRUE(scene.olt().online(scene.port(1), scene.one));
    EXPECT_TRUE(scene.olt().online(scene.port(1), scene.two));
    EXPECT_FALSE(active(scene, 1, scene.two, Alarm::same_loid));
}

// The same address is at two ports. At port 1 it is bound.
struct SameMac : Scene {
    SameMac()
        : Scene(R"(seed = 1
[service.home]
[[olt]]
[[olt.port]]
number = 1
[[olt.port.onu]]
name = "real"
mac = "02:00:00:00:00:01"
service = "home"
id = 5
[[olt.port]]
number = 2
[[olt.port.onu]]
name = "copy"
mac = "02:00:00:00:00:01"
in_use = true
)")
    {
        pass(*this, 0);
    }

    const Mac mac = onu(1, "real").mac;
};

TEST(SameMac, IsAnAlarmAtBothPortsAndTheBindingStays)
{
    SameMac scene;
    EXPECT_TRUE(active(scene, 1, scene.mac, Alarm::same_mac));
    EXPECT_TRUE(active(scene, 2, scene.mac, Alarm::same_mac));
    EXPECT_EQ(place(scene, 1, scene.mac, Alarm::same_mac), "also at port 2");
    EXPECT_EQ(place(scene, 2, scene.mac, Alarm::same_mac), "also at port 1");
    EXPECT_FALSE(active(scene, 2, scene.mac, Alarm::wrong_port)) << "the one that is expected is there";
    EXPECT_TRUE(scene.olt().online(scene.port(1), scene.mac));
    pass(scene, minute);
    EXPECT_EQ(scene.olt().find(scene.mac), (OnuKey{1, 5}));
    EXPECT_TRUE(scene.olt().waits(scene.port(2), scene.onu(2, "copy")));
}

TEST(SameMac, EndsAtBothPortsWhenOneOfThemLeaves)
{
    SameMac scene;
    order(scene, "power 2 copy off");
    EXPECT_FALSE(active(scene, 1, scene.mac, Alarm::same_mac));
    EXPECT_FALSE(active(scene, 2, scene.mac, Alarm::same_mac));
    order(scene, "power 2 copy on");
    pass(scene, minute);
    EXPECT_TRUE(active(scene, 1, scene.mac, Alarm::same_mac));
    EXPECT_TRUE(active(scene, 2, scene.mac, Alarm::same_mac));
}

TEST(WrongPort, AnOnuThatWasPluggedInElsewhereSaysWhereItIsExpected)
{
    SameMac scene;
    order(scene, "power 2 copy off");
    order(scene, "cut 1 real");
    pass(scene, minute);
    order(scene, "power 2 copy on"); // somebody moved it
    pass(scene, minute);
    EXPECT_TRUE(active(scene, 2, scene.mac, Alarm::wrong_port));
    EXPECT_FALSE(active(scene, 2, scene.mac, Alarm::same_mac));
    EXPECT_EQ(place(scene, 2, scene.mac, Alarm::wrong_port), "expected at port 1 id 5");
    order(scene, "power 2 copy off");
    EXPECT_FALSE(active(scene, 2, scene.mac, Alarm::wrong_port));
}

TEST(WrongPort, EndsWhenTheOnuIsBoundWhereItIs)
{
    OltScenario scenario = read("seed = 1\n[[olt]]\n[[olt.port]]\nnumber = 1\n[[olt.port.onu]]\nname = \"a\"\n"
                                "[[olt.port]]\nnumber = 2\n[[olt.port.onu]]\nname = \"b\"\n")
                               .at(0);
    Scene scene(scenario);
    const Mac mac = scene.onu(2, "b").mac;
    scene.simulator.change(bind_onu(scene.olt(), 1, 7, binding_of(mac)).change);
    pass(scene, 0);
    EXPECT_TRUE(active(scene, 2, mac, Alarm::wrong_port));
    EXPECT_EQ(place(scene, 2, mac, Alarm::wrong_port), "expected at port 1 id 7");
    scene.simulator.change(release_onu(scene.olt(), 1, 7, {}).change);
    pass(scene, 0);
    EXPECT_FALSE(active(scene, 2, mac, Alarm::wrong_port));
    scene.simulator.change(bind_onu(scene.olt(), 2, 7, binding_of(mac)).change);
    EXPECT_TRUE(scene.olt().online(scene.port(2), mac));
    EXPECT_FALSE(active(scene, 2, mac, Alarm::wrong_port));
}

TEST(SameMac, OfOnePortAndOfTwoKindsIsRefused)
{
    const auto refusal = [](const std::string &port_of_second, const std::string &more) {
        try {
            read("[kind.a]\nmodel = \"S100\"\n[service.home]\n[[olt]]\n[[olt.port]]\nnumber = 1\n[[olt.port.onu]]\n"
                 "name = \"real\"\nmac = \"02:00:00:00:00:01\"\nservice = \"home\"\n" +
                 port_of_second + "[[olt.port.onu]]\nname = \"copy\"\nmac = \"02:00:00:00:00:01\"\n" + more);
        } catch (const ScenarioError &error) {
            return std::string(error.what());
        }
        return std::string("not refused");
    };
    const std::string other = "[[olt.port]]\nnumber = 2\n";
    EXPECT_EQ(refusal("", ""), "test.toml:13: mac: 02:00:00:00:00:01 is the address of real at port 1 already");
    EXPECT_EQ(refusal(other, "kind = \"a\"\nin_use = true\n"),
              "test.toml:16: kind: expected that of real at port 1, which has its address");
    EXPECT_EQ(refusal(other, ""), "test.toml:13: in_use: expected that of real at port 1, which has its address");
    EXPECT_EQ(refusal(other, "service = \"home\"\n"),
              "test.toml:16: service: expected one that does not bind the ONU: real at port 1 has its address, and is "
              "bound");
    EXPECT_EQ(refusal(other, "in_use = true\n"), "not refused");
}

} // namespace
} // namespace ponsim
