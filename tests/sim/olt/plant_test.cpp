// These tests cut, bend and mend fibre, and check which ONUs are behind it.
#include "model/plant/fibre.h"

#include "control/sets.h"
#include "engine/processes.h"
#include "model/lifecycle/light_process.h"
#include "model/lifecycle/time_outs.h"
#include "model/olt/light.h"
#include "model/port/fibre.h"
#include "support.h"

namespace ponsim
{
namespace
{

// A feeder leads to a splitter. From there one branch leads to a splitter with two ONUs, and another to a single ONU.
std::shared_ptr<const Topology> tree()
{
    auto topology = std::make_shared<Topology>();
    PortPopulation port;
    port.branches = {{"feeder", {}, 1000, splitter_loss(2)},
                     {"west", 0, 2000, splitter_loss(2)},
                     {"west-1", 1, 100, connector_loss},
                     {"west-2", 1, 200, connector_loss},
                     {"east", 0, 3000, connector_loss}};
    const auto onu = [&](uint8_t number, uint32_t distance, uint32_t branch, const char *name) {
        Arrival arrival{stranger(number), distance, false, {}, {}};
        arrival.branch = branch;
        arrival.name = name;
        for (std::optional<uint32_t> at = branch; at; at = port.branches.at(*at).parent)
            arrival.loss += port.branches.at(*at).loss;
        port.arrivals.push_back(arrival);
    };
    onu(1, 3100, 2, "first");
    onu(2, 3200, 3, "second");
    onu(3, 4000, 4, "third");
    port.optics = find_optical_class("PX10"); // for so little loss
    topology->ports = {port};
    return topology;
}

struct Plant : OltFixture {
    Plant() : OltFixture({.seed = 1, .ports = 1, .arrivals = 0, .silent = 0, .topology = tree()})
    {
        bind(1, 1, stranger(1));
        bind(1, 2, stranger(2));
    }

    void pass(ModelTime time)
    {
        const ModelTime to = olt.now() + time;
        while (const auto due = first_due(processes(), olt, to)) {
            olt.advance(due->at);
            olt.apply(due->process->happen(olt));
        }
        olt.advance(to);
    }
    void damage(const std::string &branch, int32_t loss)
    {
        const auto &branches = port(1).branches;
        const auto found = std::ranges::find(branches, branch, &Branch::name) - branches.begin();
        done(set_damage(port(1), static_cast<uint32_t>(found), loss));
        pass(ms_per_second); // which the time-outs of MPCP take
    }
    int32_t loss(size_t index) const { return path_loss(port(1), arrival(1, index), Direction::up); }
    // Returns the names of the ONUs that are on the fibre.
    std::vector<std::string> heard() const
    {
        std::vector<std::string> names;
        for (const Arrival &arrival : port(1).arrivals)
            if (port(1).ranges(arrival)) names.push_back(arrival.name);
        return names;
    }
};

using Names = std::vector<std::string>;

TEST(Plant, LightLosesWhatSplittersConnectorsAndFibreTake)
{
    const Plant plant;
    EXPECT_EQ(plant.loss(0), 330 + 330 + 25 + 108) << "two halvings, a connector, 3.1 km";
    EXPECT_EQ(plant.loss(2), 330 + 25 + 140);
    EXPECT_EQ(path_loss(plant.port(1), plant.arrival(1, 0), Direction::down), 330 + 330 + 25 + 77);
}

TEST(Plant, DamagesOnTheWayAdd)
{
    Plant plant;
    const int32_t first = plant.loss(0), third = plant.loss(2);
    plant.damage("feeder", 100);
    plant.damage("west", 250);
    EXPECT_EQ(plant.loss(0), first + 350);
    EXPECT_EQ(plant.loss(2), third + 100);
    plant.damage("feeder", 0);
    EXPECT_EQ(plant.loss(0), first + 250);
    EXPECT_EQ(plant.loss(2), third);
}

TEST(Plant, ACutTakesExactlyTheOnusBehindIt)
{
    Plant plant;
    ASSERT_EQ(plant.heard(), (Names{"first", "second", "third"}));
    plant.damage("west", cut_loss);
    EXPECT_EQ(plant.heard(), (Names{"third"}));
    plant.damage("feeder", cut_loss);
    EXPECT_EQ(plant.heard(), Names{});
    plant.damage("feeder", 0);
    plant.pass(60 * ms_per_second);
    EXPECT_EQ(plant.heard(), (Names{"third"})) << "the other cut is still there";
    plant.damage("west", 0);
    plant.pass(60 * ms_per_second);
    EXPECT_EQ(plant.heard(), (Names{"first", "second", "third"}));
    EXPECT_TRUE(plant.online(1, 1));
}

TEST(Plant, ACutRaisesLosOnceForThoseBoundAndThoseThatWait)
{
    Plant plant;
    plant.damage("feeder", cut_loss);
    plant.damage("west", cut_loss);
    for (uint8_t number = 1; number <= 3; ++number)
        EXPECT_EQ(plant.alarms(1, stranger(number), Alarm::los), 1u) << int{number};
}

TEST(Plant, ACutTakesAllOnusInOneChange)
{
    Plant plant;
    plant.olt.apply(set_damage(plant.port(1), 0, cut_loss).change);
    const Change dark = light_process.happen(plant.olt);
    EXPECT_EQ(dark.of<OnuRecord>().size(), 3u);
    EXPECT_EQ(dark.of<AlarmRecord>().size(), 0u);
    plant.olt.apply(dark);
    plant.olt.advance(time_out_process.next(plant.olt).value());
    const Change change = time_out_process.happen(plant.olt);
    EXPECT_EQ(change.of<OnuRecord>().size(), 3u);
    EXPECT_EQ(change.of<AlarmRecord>().size(), 4u) << "of the port, and of each ONU";
}

TEST(Plant, OnusAreKnownToTheControlsByNameToo)
{
    const Plant plant;
    const auto onu = [&](const std::string &word) { return control_onus({&plant.port(1)}, word).at(0).mac; };
    EXPECT_EQ(onu("third"), stranger(3));
    EXPECT_EQ(onu(text::mac_text(stranger(9))), stranger(9)) << "any address will do";
    EXPECT_THROW(onu("fourth"), ControlError);
    const auto cut = std::ranges::find(controls(), "cut", &Control::name);
    const std::vector<std::string> words{"1", "third"};
    EXPECT_EQ(cut->plan(plant.olt, words).change.of<Damage>().at(0).key.branch, 4u) << "its own branch";
}

TEST(Plant, NoDamageIsWorseThanACut)
{
    Plant plant;
    plant.damage("east", cut_loss);
    plant.damage("east", damage_to(plant.port(1), 4) + 350);
    EXPECT_EQ(damage_to(plant.port(1), 4), cut_loss);
}

} // namespace
} // namespace ponsim
