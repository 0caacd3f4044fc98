// These tests check that a running OLT can be written as a scenario, and that the scenario makes the same OLT.
#include "exporting/export.h"

#include <gmock/gmock.h>

#include "control/control.h"
#include "inventory_steps.h"
#include "scenario/summary.h"
#include "scenes.h"
#include "text/words.h"

namespace ponsim
{
namespace
{

using testing::HasSubstr;
using testing::Not;

std::string text_of(const Simulator &simulator)
{
    return export_scenario(simulator.olt(), simulator.upcoming(), simulator.scenario_of_olt());
}

void order(Simulator &simulator, const std::string &line)
{
    simulator.change(plan_control(simulator.olt(), line).change);
}

// Returns what a client sees of the ONUs of a port.
std::string view_of(Simulator &simulator, uint32_t command, uint32_t pon_port)
{
    const bsp_pon_msg record = record_of(command, pon_port);
    Message message = message_of(record);
    message.call = catalogue::Call::get;
    return simulator.handle(message).result.value_or("no result");
}

// Returns the text without what it says of what it leaves out.
std::string without_comments(const std::string &text)
{
    std::string rest;
    for (const std::string &each : text::split(text, '\n'))
        if (!each.starts_with('#')) rest += each + '\n';
    return rest;
}

// Returns the ONUs of the port with the loads that they have now.
std::vector<Arrival> as_loaded_now(const PonPort &port)
{
    std::vector<Arrival> onus = port.arrivals;
    for (Arrival &onu : onus) {
        const OnuRecord record = port.record(onu.mac);
        if (record.load_up) onu.load_up = record.load_up;
        if (record.load_down) onu.load_down = record.load_down;
    }
    return onus;
}

class ShippedExport : public testing::TestWithParam<std::filesystem::path>
{
};

TEST_P(ShippedExport, MakesTheSameOltAndTheSameText)
{
    for (OltScenario &olt : read_scenario_file(GetParam().string()).olts) {
        Scene first(std::move(olt));
        first.simulator.advance(0);
        const std::string text = text_of(first.simulator);
        std::vector<OltScenario> read_again = read(text);
        ASSERT_EQ(read_again.size(), 1u);
        Scene second(std::move(read_again[0]));
        second.simulator.advance(0);
        EXPECT_EQ(without_comments(text_of(second.simulator)), without_comments(text));
        for (const PonPort &port : first.olt().ports()) {
            EXPECT_EQ(second.port(port.number).branches, port.branches);
            EXPECT_EQ(second.port(port.number).arrivals, as_loaded_now(port));
            EXPECT_EQ(second.port(port.number).bindings, port.bindings);
            for (const uint32_t command : {BSP_CMD_VIEW_ONU_INFO_WEB, BSP_CMD_VIEW_BASE_INFO_WEB})
                EXPECT_EQ(view_of(second.simulator, command, port.number),
                          view_of(first.simulator, command, port.number));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, ShippedExport, testing::ValuesIn(scenarios_in(SCENARIOS)), scenario_name);

TEST(Export, OfAnOltWithoutAScenarioMakesTheSameOnus)
{
    ServiceFixture fixture({.seed = 5, .ports = 3, .arrivals = 6, .silent = 30});
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_BIND, 2, 7, fixture.port(2).arrivals[1].mac)), BSP_OK);
    const std::string text = text_of(fixture.simulator);
    Scene scene(text);
    EXPECT_EQ(text_of(scene.simulator), text);
    for (uint32_t number = 1; number <= 3; ++number) {
        EXPECT_EQ(scene.port(number).branches, fixture.port(number).branches);
        ASSERT_EQ(scene.port(number).arrivals.size(), 6u);
        for (size_t index = 0; index < 6; ++index) {
            const Arrival &now = scene.port(number).arrivals[index], &before = fixture.port(number).arrivals[index];
            EXPECT_EQ(now.mac, before.mac);
            EXPECT_EQ(now.silent, before.silent);
            EXPECT_EQ(now.loid, before.loid);
            EXPECT_EQ(now.distance, before.distance);
            EXPECT_EQ(scene.olt().device_of(now.mac), fixture.simulator.olt().device_of(now.mac));
        }
    }
    EXPECT_EQ(scene.port(2).bindings[7].value().mac, fixture.port(2).arrivals[1].mac);
}

constexpr char town[] = R"(
[kind.box]
vendor = "ACME"
model = "X4"
fe_ports = 2
class = "PX20"

[service.home]
assured = 1000
maximum = 50000
description = "a \"home\""

[[olt]]
ports = 2

[[olt.port]]
number = 1
auth = "mac-or-loid"

[[olt.port.onu]]
name = "a"
count = 4
kind = "box"
service = "home"

[[event]]
at = 100
do = "power 1 a-1 off"

[[event]]
at = 200
do = "age 1 24"
every = 60
times = 5

[[event]]
at = 260
do = "age 2 24"
)";

// Lets the text be served, and returns the text of that.
std::string again(const std::string &text)
{
    Scene scene(text);
    scene.simulator.advance(0);
    return text_of(scene.simulator);
}

TEST(Export, SaysWhatWasPluggedInAndWhatIsDamaged)
{
    Scene scene{std::string(town)};
    order(scene.simulator, "arrive 2 count=2 name=new kind=B400 service=home");
    order(scene.simulator, "arrive 1 name=odd");
    scene.simulator.advance(70 * ms_per_second);
    for (const char *line : {"leave 1 a-2", "swap 1 a-3 loid=swapped", "move 1 a-4 2 drop=60", "unplug 2 new-1 1"})
        order(scene.simulator, line);
    scene.simulator.advance(150 * ms_per_second);
    for (const char *line :
         {"bend 1 feeder 0.5", "rogue 2 new-2 off", "load 1 odd up 55", "flood 1 odd 3", "dim 2 1.25",
          "age-onu 1 odd 30", "upgrade-fault 1 odd on", "loop 2 new-1 1 on", "plug 2 new-2 2 10HD"})
        order(scene.simulator, line);
    const std::string text = text_of(scene.simulator);
    EXPECT_EQ(again(text), again(again(text)));
    Scene served(text);
    served.simulator.advance(0);
    for (const PonPort &port : scene.olt().ports()) {
        ASSERT_EQ(served.port(port.number).arrivals.size(), port.arrivals.size());
        for (size_t index = 0; index < port.arrivals.size(); ++index) {
            const Arrival &now = served.port(port.number).arrivals[index], &before = port.arrivals[index];
            EXPECT_EQ(now.name, before.name);
            EXPECT_EQ(now.mac, before.mac);
            EXPECT_EQ(now.loid, before.loid);
            EXPECT_EQ(now.distance, before.distance);
            EXPECT_EQ(now.loss, before.loss);
            const Device device = device_at(served.olt(), served.port(port.number), now.mac);
            EXPECT_EQ(device.type->model, device_at(scene.olt(), port, before.mac).type->model);
            EXPECT_EQ(device.software, device_at(scene.olt(), port, before.mac).software);
            EXPECT_EQ(device.unis, device_at(scene.olt(), port, before.mac).unis);
            EXPECT_EQ(served.port(port.number).record(now.mac).powered, port.record(now.mac).powered);
        }
        EXPECT_EQ(served.port(port.number).damage.size(), port.damage.size());
        EXPECT_EQ(served.port(port.number).authentication.mode, port.authentication.mode);
    }
    EXPECT_THAT(text, HasSubstr("# - bindings of ONUs that are not there: 3\n"));
    EXPECT_THAT(text, HasSubstr("at = \"50s\"\ndo = \"age 1 24\"\n")) << "events come as long from now as they did";
    EXPECT_FALSE(summary_of(read_scenario(text, "exported")).empty());
}

TEST(Export, IsTheSameTextAgainWhateverHappens)
{
    for (uint64_t number = 1; number <= 8; ++number) {
        Scene scene{std::string(town)};
        Random random{number, 9};
        std::string lines;
        for (int round = 0; round < 40; ++round) {
            const std::string line = step(scene, random, 2);
            if (try_line(scene, line)) lines += line + '\n';
            bind_or_release(scene, random, 2);
            scene.simulator.advance(scene.olt().now() + random.below(20000));
        }
        SCOPED_TRACE(lines);
        const std::string text = again(text_of(scene.simulator));
        EXPECT_EQ(again(text), text);
        const Scene served(text_of(scene.simulator));
        for (const PonPort &port : scene.olt().ports())
            for (const Arrival &arrival : port.arrivals)
                EXPECT_EQ(served.port(port.number).arrived(arrival.mac) != nullptr, !arrival.unplugged);
    }
}

TEST(Export, KeepsRepetitionsOfEvents)
{
    Scene scene{std::string(town)};
    const std::string text = text_of(scene.simulator);
    EXPECT_THAT(text, HasSubstr("at = \"1min 40s\"\ndo = \"power 1 a-1 off\"\n"));
    std::vector<OltScenario> olts = read(text);
    EXPECT_EQ(olts.at(0).events, read(town).at(0).events);
}

TEST(Export, SaysWhatItLeavesOut)
{
    Scene scene{std::string(town)};
    EXPECT_THAT(text_of(scene.simulator), Not(HasSubstr("# -")));
    bsp_pon_msg limits = record_of(BSP_CMD_OPT_RANGE_SET, 1);
    put(limits, layout::opt_range::min_distance, 0);
    put(limits, layout::opt_range::max_distance, 18000);
    EXPECT_EQ(scene.simulator.handle(message_of(limits)).status, BSP_OK);
    EXPECT_EQ(scene.simulator.handle(message_of(record_of(BSP_CMD_BLACKLIST_ADD_AUTO, 1, 0, stranger(1)))).status,
              BSP_OK);
    const std::string text = text_of(scene.simulator);
    EXPECT_THAT(text, HasSubstr("# It does not say:\n# - limits of the distance of ONUs: 1\n"
                                "# - entries of blacklists: 1\n"));
}

} // namespace
} // namespace ponsim
