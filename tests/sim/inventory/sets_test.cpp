// These tests check how commands name ports, ONUs, branches and UNI ports.
#include "control/sets.h"

#include <gmock/gmock.h>

#include "scenes.h"

namespace ponsim
{
namespace
{

using testing::ElementsAre;

constexpr char street[] = R"(
[service.home]

[service.later]
bound = false

[[olt]]
ports = 3

[[olt.port]]
numbers = "1-2"

[[olt.port.branch]]
name = "feeder"
split = 4

[[olt.port.branch]]
name = "north"
from = "feeder"
split = 8

[[olt.port.onu]]
name = "a"
count = 3
branch = "north"
service = "home"

[[olt.port.onu]]
name = "b"
branch = "feeder"
service = "home"

[[olt.port.onu]]
name = "1-3"
branch = "feeder"
service = "later"
)";

struct Street : Scene {
    Street() : Scene(street) {}

    Ports ports(const std::string &word) const { return control_ports(olt(), word); }
    // Returns the names of the ONUs, with their ports.
    std::vector<std::string> onus(const std::string &of, const std::string &word) const
    {
        std::vector<std::string> names;
        for (const auto &[pon_port, mac] : control_onus(ports(of), word))
            names.push_back(std::to_string(pon_port) + '/' + port(pon_port).arrived(mac)->name);
        return names;
    }
    std::vector<std::string> branches(const std::string &of, const std::string &word) const
    {
        std::vector<std::string> names;
        for (const auto &[pon_port, branch] : control_branches(ports(of), word))
            names.push_back(std::to_string(pon_port) + '/' + port(pon_port).branches.at(branch).name);
        return names;
    }
    // Returns what is wrong with a line.
    std::string wrong(const std::string &line) const
    {
        try {
            static_cast<void>(plan_control(olt(), line));
            return "nothing";
        } catch (const ControlError &error) {
            return error.what();
        }
    }
    std::string mac(uint32_t pon_port, const std::string &name) const
    {
        return text::mac_text(onu(pon_port, name).mac);
    }
};

TEST(Sets, OfPortsAreNumbersRangesOrAll)
{
    const Street scene;
    const auto numbers = [&](const std::string &word) { return control_numbers(word, 1, 3); };
    EXPECT_THAT(numbers("2"), ElementsAre(2));
    EXPECT_THAT(numbers("3,1-2,2"), ElementsAre(1, 2, 3));
    EXPECT_THAT(numbers("all"), ElementsAre(1, 2, 3));
    EXPECT_THAT(numbers("*"), ElementsAre(1, 2, 3));
    EXPECT_EQ(scene.ports("2-3").size(), 2u);
    EXPECT_EQ(scene.wrong("dim 4 1"), "4: expected a number from 1 to 3");
    EXPECT_EQ(scene.wrong("dim 2-4 1"), "4: expected a number from 1 to 3");
    EXPECT_EQ(scene.wrong("dim 3-1 1"), "3-1: expected a range, as 1-4");
    EXPECT_EQ(scene.wrong("dim x 1"), "x: expected a number from 1 to 3");
    EXPECT_EQ(scene.wrong("dim 1,,2 1"), "\"1,,2\": expected elements with a comma between each two, as 1,3-5");
}

TEST(Sets, OfOnusAreNamesPatternsBranchesIdsAndAddresses)
{
    const Street scene;
    EXPECT_THAT(scene.onus("1", "a-2"), ElementsAre("1/a-2"));
    EXPECT_THAT(scene.onus("1", "b,a-1,b"), ElementsAre("1/b", "1/a-1"));
    EXPECT_EQ(scene.onus("1", "all").size(), 5u);
    EXPECT_EQ(scene.onus("all", "*").size(), 10u);
    EXPECT_EQ(scene.onus("1", "a-*").size(), 3u);
    EXPECT_EQ(scene.onus("1", "*-*").size(), 4u);
    EXPECT_THAT(scene.onus("2", "*-2"), ElementsAre("2/a-2"));
    EXPECT_EQ(scene.onus("1-2", "@north").size(), 6u);
    EXPECT_THAT(scene.onus("1", "@a-3"), ElementsAre("1/a-3")) << "its own fibre";
    EXPECT_THAT(scene.onus("1", "2"), ElementsAre("1/a-2"));
    EXPECT_THAT(scene.onus("1", "2-9"), ElementsAre("1/a-2", "1/a-3", "1/b"));
    EXPECT_THAT(scene.onus("1", scene.mac(1, "b")), ElementsAre("1/b"));
    EXPECT_THAT(scene.onus("all", scene.mac(2, "b")), ElementsAre("2/b"));
}

TEST(Sets, MeanAnOnuByANameThatLooksLikeIds)
{
    const Street scene;
    EXPECT_THAT(scene.onus("1", "1-3"), ElementsAre("1/1-3"));
    EXPECT_THAT(scene.onus("1", "id:1-3"), ElementsAre("1/a-1", "1/a-2", "1/a-3"));
    EXPECT_THAT(scene.onus("1", "1-2"), ElementsAre("1/a-1", "1/a-2"));
}

TEST(Sets, OfBranchesAreNamesPatternsAndOnus)
{
    const Street scene;
    EXPECT_THAT(scene.branches("1", "north,feeder"), ElementsAre("1/north", "1/feeder"));
    EXPECT_EQ(scene.branches("1", "all").size(), 7u);
    EXPECT_THAT(scene.branches("2", "f*"), ElementsAre("2/feeder"));
    EXPECT_THAT(scene.branches("1", "3"), ElementsAre("1/a-3"));
    EXPECT_THAT(scene.branches("1-2", scene.mac(2, "b")), ElementsAre("2/b"));
}

TEST(Sets, SayWhatSelectsNothing)
{
    const Street scene;
    EXPECT_EQ(scene.wrong("power 1 c-* off"), "c-*: no ONU at PON port 1 has such a name");
    EXPECT_EQ(scene.wrong("power 1-2 a-1,c off"),
              "c: expected a MAC address, as 02:00:5e:10:00:01, or the name of an ONU at PON ports 1, 2");
    EXPECT_EQ(scene.wrong("power 3 all off"), "all: there are no ONUs at PON port 3");
    EXPECT_EQ(scene.wrong("power 1 @south off"), "@south: there is no branch south at PON port 1");
    EXPECT_EQ(scene.wrong("power 3 @feeder off"), "@feeder: there is no ONU beyond this branch");
    EXPECT_EQ(scene.wrong("power 1 9 off"), "9: no ONU is bound to such an id of PON port 1");
    EXPECT_EQ(scene.wrong("power 1 9-12 off"), "9-12: no ONU that has arrived is bound to such an id of PON port 1");
    EXPECT_EQ(scene.wrong("power 1 1-200 off"), "1-200: expected ONU ids from 0 to 127");
    EXPECT_EQ(scene.wrong("power 1-2 02:00:5e:10:00:01 off"),
              "02:00:5e:10:00:01: there is no such ONU at PON ports 1, 2");
    EXPECT_EQ(scene.wrong("cut 1-2 south"), "south: expected a branch of PON ports 1, 2, as feeder or drop-1, or the "
                                            "MAC address or name of an ONU that has arrived there");
    EXPECT_EQ(scene.wrong("outage 3 feeder"), "outage: there is no ONU beyond feeder");
}

TEST(Sets, AreTakenAsAWholeOrNotAtAll)
{
    const Street scene;
    EXPECT_EQ(scene.wrong("loop 1 a-*,1-3 1 on"), "UNI port 1 of 1-3 at PON port 1: " + scene.wrong("loop 1 1-3 1 on"));
    EXPECT_EQ(read_control(scene.olt(), "loop 1 a-*,1-3 1 on").change.of<LoopRecord>().size(), 0u);
}

TEST(Sets, AreWhatEveryCommandTakes)
{
    Street scene;
    const auto order = [&](const std::string &line) { scene.simulator.change(plan_control(scene.olt(), line).change); };
    const auto count = [&](auto holds) {
        size_t onus = 0;
        for (const PonPort &port : scene.olt().ports())
            for (const Arrival &arrival : port.arrivals)
                onus += holds(port.record(arrival.mac));
        return onus;
    };
    order("outage 1-2 north");
    EXPECT_EQ(count([](const OnuRecord &record) { return !record.powered; }), 6u);
    order("outage all north off");
    EXPECT_EQ(count([](const OnuRecord &record) { return !record.powered; }), 0u);
    order("power 1-2 all off");
    EXPECT_EQ(count([](const OnuRecord &record) { return !record.powered; }), 10u);
    order("rogue 1 a-1,a-2 on");
    EXPECT_EQ(count([](const OnuRecord &record) { return record.rogue; }), 2u);
    order("age-onu 2 1-2 100");
    EXPECT_EQ(count([](const OnuRecord &record) { return record.added_hours == 100; }), 2u);
    order("load all a-* up 500");
    EXPECT_EQ(count([](const OnuRecord &record) { return record.load_up == 500u; }), 6u);
    order("flood 1 @north 7");
    EXPECT_EQ(count([](const OnuRecord &record) { return record.flood == 7; }), 3u);
    order("upgrade-fault 2 all on");
    EXPECT_EQ(count([](const OnuRecord &record) { return record.bad_image; }), 5u);
    order("cut 1-2 north,b");
    EXPECT_EQ(scene.port(1).damage.size() + scene.port(2).damage.size(), 4u);
    order("mend all all");
    EXPECT_EQ(scene.port(1).damage.size() + scene.port(2).damage.size(), 0u);
    order("dim 1-3 2.5");
    order("age 1-7 24");
    for (uint32_t cage = 1; cage <= 7; ++cage)
        EXPECT_EQ(scene.olt().module(cage)->record().added_hours, 24u);
    EXPECT_EQ(scene.olt().module(3)->record().dimmed, 250);
    order("loop 1-2 a-* all on");
    for (const auto &[key, loop] : scene.olt().loops())
        EXPECT_TRUE(loop.looped);
    EXPECT_GE(scene.olt().loops().size(), 6u);
}

TEST(Sets, OfLoopsLeaveNoMoreThanThereIsRoomFor)
{
    constexpr char crowd[] =
        "[service.home]\n[kind.box]\nmodel = \"S040\"\n[[olt]]\nports = 1\n[[olt.port]]\nnumber = 1\n"
        "[[olt.port.onu]]\nname = \"a\"\ncount = 13\nkind = \"box\"\nservice = \"home\"\n";
    Scene scene{std::string(crowd)};
    EXPECT_THROW(plan_control(scene.olt(), "loop 1 all all on"), ControlError) << "52 loops";
    scene.simulator.change(plan_control(scene.olt(), "loop 1 1-12 all on").change);
    EXPECT_EQ(scene.olt().loops().size(), 48u);
}

} // namespace
} // namespace ponsim
