// These tests check how ONUs are plugged in and taken away while the OLT runs, and devices of users at UNI ports.
#include "model/inventory/inventory.h"

#include <gmock/gmock.h>

#include "control/control.h"
#include "model/olt/light.h"
#include "model/olt/uni_config.h"
#include "model/plant/plugging.h"
#include "scenes.h"

namespace ponsim
{
namespace
{

constexpr ModelTime second = ms_per_second;
constexpr ModelTime registering = 60 * second; // longer than a registration takes

constexpr char campus[] = R"(
[kind.desk]
model = "S040"

[service.office]
assured = 1000
maximum = 50000
description = "office"
load_up = 700

[service.guest]
bound = false
auth = true

[[olt]]
name = "campus"
ports = 3

[[olt.port]]
number = 1

[[olt.port.branch]]
name = "yard"
length = 400
split = 4

[[olt.port.branch]]
name = "house"
from = "yard"
length = 120
split = 8

[[olt.port.onu]]
name = "a"
count = 4
branch = "house"
service = "office"

[[olt.port]]
number = 2

[[olt.port.onu]]
name = "b"
count = 2
)";

struct Campus : Scene {
    Campus() : Scene(campus) {}

    void order(const std::string &line) { simulator.change(plan_control(olt(), line).change); }
    void pass(ModelTime time) { simulator.advance(olt().now() + time); }
    std::string wrong(const std::string &line) const
    {
        try {
            static_cast<void>(plan_control(olt(), line));
            return "nothing";
        } catch (const ControlError &error) {
            return error.what();
        }
    }
    bool online(uint32_t pon_port, const Mac &mac) const { return olt().online(port(pon_port), mac); }
    bool is_active(uint32_t pon_port, const Mac &mac, Alarm alarm) const
    {
        const AlarmRecord *record = olt().alarm({pon_port, mac, static_cast<uint32_t>(alarm)});
        return record && record->active();
    }
    uint32_t alarms(uint32_t pon_port, const Mac &mac, Alarm alarm) const
    {
        const auto found = port(pon_port).alarms.find({mac, static_cast<uint32_t>(alarm)});
        return found == port(pon_port).alarms.end() ? 0 : found->second.count;
    }
};

TEST(Inventory, AnOnuThatArrivesRegistersAndWaits)
{
    Campus scene;
    scene.order("arrive 1 name=new branch=house drop=80");
    const Mac mac = scene.onu(1, "new").mac;
    EXPECT_EQ(scene.onu(1, "new").distance, 600u);
    EXPECT_FALSE(scene.olt().waits(scene.port(1), scene.onu(1, "new"))) << "it boots";
    scene.pass(registering);
    EXPECT_TRUE(scene.olt().waits(scene.port(1), scene.onu(1, "new")));
    EXPECT_EQ(scene.port(1).branches.at(scene.onu(1, "new").branch).name, "new");
    EXPECT_FALSE(scene.olt().find(mac));
}

TEST(Inventory, AnOnuArrivesWithWhatIsSaidOfIt)
{
    Campus scene;
    scene.order("arrive 1 name=desk mac=02:00:5e:10:00:01 kind=desk service=office loid=me password=pw id=9");
    const Mac mac = scene.onu(1, "desk").mac;
    EXPECT_EQ(text::mac_text(mac), "02:00:5e:10:00:01");
    EXPECT_EQ(scene.olt().device_of(mac).type->model, "S040");
    EXPECT_EQ(scene.onu(1, "desk").loid, "me");
    EXPECT_EQ(scene.onu(1, "desk").load_up, 700u);
    EXPECT_EQ(scene.port(1).bindings[9].value().mac, mac);
    EXPECT_EQ(scene.port(1).bindings[9].value().description, "office");
    EXPECT_TRUE(scene.olt().device_of(mac).in_use);
    scene.pass(registering);
    EXPECT_TRUE(scene.online(1, mac));
    scene.order("arrive 1 name=guest service=guest loid=g password=h kind=B400");
    EXPECT_EQ(scene.port(1).authentication.records.at("g"), "h");
    EXPECT_EQ(scene.olt().device_of(scene.onu(1, "guest").mac).type->model, "B400");
}

TEST(Inventory, WhatIsLeftOpenFollowsFromTheSeed)
{
    Campus one, other;
    for (Campus *scene : {&one, &other})
        scene->order("arrive 1-2 count=2");
    EXPECT_EQ(one.port(1).arrivals, other.port(1).arrivals);
    EXPECT_EQ(one.port(2).arrivals.size(), 4u);
    EXPECT_EQ(one.onu(1, "onu-2").branch, other.onu(1, "onu-2").branch);
    EXPECT_EQ(end_of(one.port(1).branches, one.onu(1, "onu-1").branch).depth, 3u) << "behind the last splitter";
}

TEST(Inventory, WhatCannotBeIsRefused)
{
    Campus scene;
    const std::string mac = text::mac_text(scene.onu(1, "a-1").mac);
    EXPECT_EQ(scene.wrong("arrive 4"), "4: expected a number from 1 to 3");
    EXPECT_EQ(scene.wrong("arrive 1 branch=attic"), "there is no branch attic at PON port 1; it has yard, house");
    EXPECT_EQ(scene.wrong("arrive 2 mac=" + mac), mac + " is the address of a-1 at PON port 1 already");
    EXPECT_EQ(scene.wrong("arrive 1 mac=03:00:00:00:00:01"), "03:00:00:00:00:01: expected the address of one station");
    EXPECT_EQ(scene.wrong("arrive 1 name=a-2"), "there is a fibre a-2 at PON port 1 already");
    EXPECT_EQ(scene.wrong("arrive 1 drop=19900"),
              "out of reach: expected a distance from the OLT of at most 20000 m, found 20420");
    EXPECT_EQ(scene.wrong("arrive 1 kind=attic"), "attic is neither a kind of the scenario nor a built-in model");
    EXPECT_EQ(scene.wrong("arrive 1 service=attic"), "the scenario has no service attic");
    EXPECT_EQ(scene.wrong("arrive 1 service=office id=1"), "ONU id 1 of PON port 1 is taken already");
    EXPECT_EQ(scene.wrong("arrive 1 id=7"), "id: expected with a service that binds the ONU");
    EXPECT_EQ(
        scene.wrong("arrive 1 colour=red"),
        "arrive: colour=red: expected name=, count=, branch=, drop=, mac=, loid=, password=, kind=, service=, id=, "
        "silent= or in_use=");
    EXPECT_EQ(scene.wrong("arrive 1 count=5 branch=house"),
              "house of PON port 1 has a splitter, all 8 ends of which are taken");
    EXPECT_EQ(scene.wrong("arrive 1 count=8"), "no splitter of PON port 1 has an end that is free");
    EXPECT_EQ(scene.wrong("arrive 2 count=127"), "PON port 2 is full: it has 128 ONUs");
    EXPECT_EQ(scene.wrong("arrive 3 count=2 name=x mac=02:00:5e:10:00:01"),
              "arrive: expected mac= and loid= with one ONU only");
    EXPECT_EQ(scene.wrong("move 1 all 2 name=x"), "move: expected name= with one ONU only");
    EXPECT_EQ(scene.port(1).arrivals.size(), 4u);
}

TEST(Inventory, APortHasNoMoreOnusThanIds)
{
    constexpr char wide[] =
        "[[olt]]\nports = 1\n[[olt.port]]\nnumber = 1\n[[olt.port.branch]]\nname = \"f\"\nsplit = 2\n"
        "[[olt.port.branch]]\nname = \"g\"\nfrom = \"f\"\nsplit = 128\n";
    Scene scene{std::string(wide)};
    scene.simulator.change(plan_control(scene.olt(), "arrive 1 count=128").change);
    try {
        static_cast<void>(plan_control(scene.olt(), "arrive 1"));
        FAIL();
    } catch (const ControlError &error) {
        EXPECT_STREQ(error.what(), "PON port 1 is full: it has 128 ONUs");
    }
}

TEST(Inventory, AnOnuThatIsTakenAwayLosesItsLightAndThenItsLink)
{
    Campus scene;
    const Mac mac = scene.onu(1, "a-1").mac;
    scene.order("leave 1 a-1");
    EXPECT_TRUE(scene.online(1, mac));
    EXPECT_EQ(scene.wrong("power 1 a-1 off"),
              "a-1: expected a MAC address, as 02:00:5e:10:00:01, or the name of an ONU at PON port 1");
    scene.pass(0);
    EXPECT_EQ(scene.port(1).record(mac).up.light, Light::lost);
    EXPECT_TRUE(scene.online(1, mac)) << "its link has not failed yet";
    scene.pass(10 * second);
    EXPECT_FALSE(scene.online(1, mac));
    EXPECT_EQ(scene.alarms(1, mac, Alarm::los), 1u);
    EXPECT_EQ(scene.port(1).arrived(mac), nullptr);
    EXPECT_TRUE(scene.olt().leaving().empty());
    EXPECT_EQ(scene.port(1).bindings[1].value().mac, mac) << "it stays bound";
    scene.order("arrive 1 branch=house name=back mac=" + text::mac_text(mac));
    scene.pass(registering);
    EXPECT_TRUE(scene.online(1, mac));
}

TEST(Inventory, AnOnuThatIsNotBoundIsForgottenWhenItIsTakenAway)
{
    Campus scene;
    scene.order("arrive 1 name=new kind=B400");
    const Mac mac = scene.onu(1, "new").mac;
    scene.pass(registering);
    scene.order("rogue 1 new on");
    scene.order("leave 1 new");
    scene.pass(registering);
    EXPECT_TRUE(scene.olt().kept<PluggedOnu>().empty());
    EXPECT_FALSE(scene.port(1).onus.contains(mac));
    EXPECT_TRUE(scene.online(1, scene.onu(1, "a-1").mac)) << "the rogue is gone";
}

TEST(Inventory, AnOnuThatIsTakenAwayIsMissedWhileItIsBound)
{
    Campus scene;
    const Mac bound = scene.onu(1, "a-1").mac, waiting = scene.onu(2, "b-1").mac;
    ASSERT_TRUE(scene.olt().find(bound));
    ASSERT_FALSE(scene.olt().find(waiting));
    scene.order("leave 1 a-1");
    scene.order("leave 2 b-1");
    scene.pass(60 * ms_per_second);
    ASSERT_EQ(scene.port(1).arrived(bound), nullptr);
    EXPECT_TRUE(scene.is_active(1, bound, Alarm::los));
    EXPECT_FALSE(scene.is_active(2, waiting, Alarm::los));
    const bsp_pon_msg release = record_of(BSP_CMD_ONU_RELEASE, 1, scene.olt().find(bound)->onu_id);
    EXPECT_EQ(scene.simulator.handle({BSP_MSG_PON, &release, sizeof release, catalogue::Call::set}).status, BSP_OK);
    scene.pass(0);
    EXPECT_FALSE(scene.is_active(1, bound, Alarm::los));
}

TEST(Inventory, AnOnuWithoutPowerIsGoneAtOnce)
{
    Campus scene;
    const Mac mac = scene.onu(1, "a-1").mac;
    scene.order("power 1 a-1 off");
    scene.order("leave 1 a-1");
    scene.pass(0);
    EXPECT_EQ(scene.port(1).arrived(mac), nullptr);
}

TEST(Inventory, AnOnuThatMovesHasThereWhatItHadHere)
{
    Campus scene;
    const Mac mac = scene.onu(1, "a-2").mac;
    scene.order("age-onu 1 a-2 5000");
    scene.order("load 1 a-2 down 900");
    scene.order("move 1 a-2 2");
    EXPECT_EQ(scene.onu(2, "a-2").mac, mac);
    EXPECT_EQ(scene.port(2).record(mac).added_hours, 5000u);
    EXPECT_EQ(scene.port(2).record(mac).load_down, 900u);
    scene.pass(registering);
    EXPECT_EQ(scene.port(1).arrived(mac), nullptr);
    EXPECT_TRUE(scene.port(2).ranged(mac));
    EXPECT_EQ(scene.olt().find(mac).value().pon_port, 1u) << "it is still bound where it was";
    EXPECT_FALSE(scene.port(1).onus.contains(mac));
}

TEST(Inventory, AnOnuCanMoveWithinItsPort)
{
    Campus scene;
    const Mac mac = scene.onu(1, "a-2").mac;
    scene.order("bend 1 a-2 1");
    scene.order("move 1 a-2 1 branch=house drop=7");
    EXPECT_EQ(scene.onu(1, "a-2").distance, 527u);
    EXPECT_TRUE(scene.port(1).damage.empty());
    EXPECT_FALSE(scene.online(1, mac));
    EXPECT_EQ(scene.alarms(1, mac, Alarm::los), 1u);
    scene.pass(registering);
    EXPECT_TRUE(scene.online(1, mac));
    EXPECT_EQ(scene.wrong("arrive 1 branch=house count=5"),
              "house of PON port 1 has a splitter, all 8 ends of which are taken");
    EXPECT_EQ(scene.wrong("arrive 1 branch=house count=4"), "nothing");
}

TEST(Inventory, AnotherOnuTakesThePlaceOfOneThatIsSwapped)
{
    Campus scene;
    const Arrival before = scene.onu(1, "a-1");
    scene.order("bend 1 a-1 2");
    scene.order("swap 1 a-1 kind=desk loid=other mac=02:00:5e:10:00:02");
    const Arrival now = scene.onu(1, "a-1");
    EXPECT_EQ(text::mac_text(now.mac), "02:00:5e:10:00:02");
    EXPECT_EQ(now.branch, before.branch);
    EXPECT_EQ(now.loid, "other");
    scene.pass(registering);
    EXPECT_EQ(scene.port(1).arrived(before.mac), nullptr);
    EXPECT_TRUE(scene.olt().waits(scene.port(1), scene.onu(1, "a-1"))) << "the binding is that of the other one";
    EXPECT_EQ(scene.port(1).bindings[1].value().mac, before.mac);
    EXPECT_EQ(damage_to(scene.port(1), now.branch), 200) << "the fibre is the same";
    EXPECT_EQ(scene.olt().device_of(now.mac).type->model, "S040");
    scene.order("swap 1 a-1");
    scene.pass(registering);
    EXPECT_NE(scene.onu(1, "a-1").mac, now.mac);
}

TEST(Inventory, LinksOfUniPortsFollowWhatIsPluggedIn)
{
    Campus scene;
    const auto links = [&] { return uni_links(scene.olt(), find_onu(scene.olt(), 1, 1).onu); };
    const LinkMode before = links().at(0).value();
    scene.order("unplug 1 a-1 all");
    for (const auto &link : links())
        EXPECT_FALSE(link);
    scene.order("plug 1 a-1 1 10HD");
    EXPECT_EQ(links().at(0), (LinkMode{10, false}));
    scene.order("plug 1 a-1 all");
    EXPECT_EQ(links().at(0), before);
    EXPECT_TRUE(scene.olt().kept<PluggedDevice>().empty()) << "it is as it was found";
    EXPECT_EQ(scene.wrong("plug 1 a-1 1 1000HD"),
              "1000HD: expected the speed of a device, as 10, 100 or 1000, perhaps with FD or HD");
    EXPECT_EQ(scene.wrong("unplug 1 a-1 5"), "5: expected a number from 1 to 4");
}

TEST(Inventory, TrafficFollowsWhatIsPluggedIn)
{
    Campus scene;
    const auto up = [&] { return scene.port(1).traffic.streams().up[5] > 0; };
    scene.order("load 1 all up 20000");
    EXPECT_TRUE(up());
    scene.order("unplug 1 all all");
    EXPECT_FALSE(up());
}

TEST(Inventory, StationsBehindOnusThatStayAreStillKnownWhenOthersComeAndGo)
{
    Campus scene;
    scene.pass(100 * second);
    const auto known = [&](const std::string &name) {
        std::vector<Mac> stations;
        const uint32_t id = scene.olt().id_at(1, scene.onu(1, name).mac).value();
        for (const FdbEntry &entry : scene.olt().fdb().entries({.network = false, .port = 1}, scene.olt().now()))
            if (entry.onu_id == id) stations.push_back(entry.mac);
        return stations;
    };
    const std::vector<Mac> before = known("a-4");
    EXPECT_FALSE(before.empty());
    const uint32_t id = scene.olt().id_at(1, scene.onu(1, "a-1").mac).value();
    scene.order("arrive 1 mac=00:00:00:00:00:02 name=first");
    scene.order("leave 1 a-1");
    EXPECT_EQ(known("a-4"), before);
    scene.pass(20 * second);
    EXPECT_EQ(known("a-4"), before);
    for (const FdbEntry &entry : scene.olt().fdb().entries({.network = false, .port = 1}, scene.olt().now()))
        EXPECT_NE(entry.onu_id, id) << "the ONU is gone";
}

TEST(Inventory, ThatIsDamagedIsRefused)
{
    Campus scene;
    PluggedOnu onu{.branch = 99, .fibre = 9, .name = "x"};
    Olt olt(scene.simulator.settings());
    EXPECT_THROW(olt.apply(change_of<PluggedOnu>({1, stranger(1)}, onu)), std::out_of_range);
    onu.branch = onu.fibre;
    EXPECT_THROW(olt.apply(change_of<PluggedOnu>({1, stranger(1)}, onu)), std::out_of_range);
}

TEST(Inventory, EventsCanPlugOnusInAndNameThemLater)
{
    Scene scene(std::string(campus) + R"(
[[event]]
at = 10
do = "power 1 late off"

[[event]]
at = 5
do = "arrive 1 name=late"

[[event]]
at = 20
do = "leave 1 late"

[[event]]
at = 30
do = "arrive 1 name=late"
)");
    scene.log_until(15);
    EXPECT_FALSE(scene.port(1).record(scene.onu(1, "late").mac).powered);
    scene.log_until(25);
    EXPECT_THROW(scene.onu(1, "late"), std::out_of_range);
    scene.log_until(200);
    EXPECT_TRUE(scene.port(1).ranged(scene.onu(1, "late").mac));
    EXPECT_THROW(read(std::string(campus) + "[[event]]\nat = 1\ndo = \"power 1 late off\"\n"), ScenarioError);
    EXPECT_THROW(read(std::string(campus) + "[[event]]\nat = 1\ndo = \"leave 1 a-1\"\n"
                                            "[[event]]\nat = 2\ndo = \"power 1 a-1 on\"\n"),
                 ScenarioError);
}

} // namespace
} // namespace ponsim
