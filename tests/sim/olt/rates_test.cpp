// These tests check how much of the ONUs' traffic passes: loads, SLAs, the room of ports and uplinks, loops and floods.
#include "control/sets.h"
#include "model/base/random.h"
#include "model/olt/demand.h"
#include "model/olt/llid.h"
#include "model/olt/mpcp.h"
#include "model/port/counters.h"
#include "model/port/performance.h"
#include "model/port/sla.h"
#include "model/traffic/bandwidth.h"
#include "optics.h"
#include "scenes.h"

namespace ponsim
{
namespace
{

constexpr ModelTime second = ms_per_second;

// Returns what is granted of the room, both in kbit/s.
std::vector<uint64_t> granted(const std::vector<std::pair<uint64_t, Sla>> &wanted, uint64_t room = 1000)
{
    std::vector<Want> wants;
    for (const auto &[number, sla] : wanted)
        wants.push_back(
            {kbits(number), kbits(sla.fixed), kbits(sla.assured), kbits(sla.maximum), sla.priority, sla.weight});
    std::vector<uint64_t> numbers;
    for (const Bandwidth bandwidth : grants(kbits(room), wants))
        numbers.push_back(bandwidth / kbits(1));
    return numbers;
}

using Numbers = std::vector<uint64_t>;
constexpr Sla plain = default_sla;

TEST(Grants, AreWhatIsWantedWhereThereIsRoom)
{
    EXPECT_EQ(granted({{300, plain}, {700, plain}}), (Numbers{300, 700}));
}

TEST(Grants, TakeFixedBandwidthFromTheRoomEvenWhereItIsNotUsed)
{
    EXPECT_EQ(granted({{100, {600, 0, 1000, 0, 1}}, {1000, plain}}), (Numbers{100, 400}));
}

TEST(Grants, LeaveAssuredBandwidthThatIsNotUsedToOthers)
{
    EXPECT_EQ(granted({{100, {0, 600, 1000, 0, 1}}, {1000, plain}}), (Numbers{100, 900}));
}

TEST(Grants, AreNeverBelowWhatIsAssured)
{
    EXPECT_EQ(granted({{1000, {100, 200, 1000, 0, 1}}, {1000, {0, 0, 1000, 7, 1}}}), (Numbers{300, 700}));
}

TEST(Grants, AreNeverAboveTheMaximum)
{
    EXPECT_EQ(granted({{900, {0, 0, 250, 7, 1}}, {300, plain}}), (Numbers{250, 300}));
}

TEST(Grants, GoToTheHighestPriorityFirst)
{
    EXPECT_EQ(granted({{600, {0, 0, 1000, 2, 100}}, {700, {0, 0, 1000, 7, 1}}, {500, {0, 0, 1000, 1, 100}}}),
              (Numbers{300, 700, 0}));
}

TEST(Grants, AreSharedByWeightWithinAPriority)
{
    EXPECT_EQ(granted({{900, {0, 0, 900, 3, 10}}, {900, {0, 0, 900, 3, 30}}}), (Numbers{250, 750}));
}

TEST(Grants, OfWhoeverWantsLessThanItsShareGoToTheOthers)
{
    EXPECT_EQ(
        granted(
            {{100, {0, 0, 900, 3, 6}}, {250, {0, 0, 900, 3, 2}}, {900, {0, 0, 900, 3, 1}}, {900, {0, 0, 900, 3, 1}}}),
        (Numbers{100, 250, 325, 325}));
}

TEST(Grants, AreCutInProportionWhereThereIsNotEvenRoomForWhatIsAssured)
{
    EXPECT_EQ(granted({{900, {0, 300, 900, 0, 1}}, {900, {0, 100, 900, 0, 1}}, {900, plain}}, 200),
              (Numbers{150, 50, 0}));
}

TEST(Room, IsTheLineRateLessTheGrantsOfEachOnuAndErrorCorrection)
{
    EXPECT_EQ(capacity_of({}, 0).up, kbits(1000000));
    // A cycle has 62500 quanta, and room for 29 grants of 2048 with 64 for the lasers. Each grant takes 64 quanta to
    // synchronise. A REPORT and a GATE of each ONU take 84 octets of the line, which are 42 quanta.
    EXPECT_EQ(capacity_of({}, 4).up, kbits(1000000) * (62500 - 29 * 128 - 4 * 42) / 62500);
    EXPECT_EQ(capacity_of({}, 4).down, kbits(1000000) * (62500 - 4 * 42) / 62500);
    EXPECT_EQ(capacity_of({}, 64).up, kbits(1000000) * (62500 - 64 * (128 + 42)) / 62500);
    EXPECT_EQ(capacity_of({.grant_length = 62436}, 1).up, kbits(1000000) * (62500 - 128 - 42) / 62500);
    EXPECT_EQ(capacity_of({.fec = 1}, 0).down, kbits(1000000) * 239 / 255);
    EXPECT_EQ(capacity_of({.grant_cycle = 250, .sync_time = 2000}, 128).up, 0u);
}

// The users of these ONUs fill four GE ports each.
std::shared_ptr<const OltScenario> large_onus()
{
    return std::make_shared<const OltScenario>(read(R"(
        seed = 1
        [kind.large]
        model = "B400"
        [[olt]]
        ports = 5
        [[olt.port]]
        numbers = "1-5"
        [[olt.port.onu]]
        name = "onu"
        count = 4
        kind = "large"
        in_use = true
    )")
                                                   .at(0));
}

// This OLT has four ONUs at ids 1 to 4 of each of its ports. Ports 1 and 5 share an uplink.
struct Loaded : ServiceFixture {
    static constexpr uint32_t ports = 5;

    explicit Loaded(const std::string &file = {}) : ServiceFixture({}, file, false, large_onus())
    {
        for (uint32_t pon_port = 1; pon_port <= ports; ++pon_port)
            for (uint32_t id = 1; id <= 4; ++id)
                send(record_of(BSP_CMD_ONU_BIND, pon_port, id, mac(pon_port, id)));
    }

    const Olt &olt() const { return simulator.olt(); }
    Mac mac(uint32_t pon_port, uint32_t id) const { return port(pon_port).arrivals.at(id - 1).mac; }
    void say(const std::string &command, uint32_t pon_port, uint32_t id, const std::string &words)
    {
        control_line(*this,
                     command + ' ' + std::to_string(pon_port) + ' ' + text::mac_text(mac(pon_port, id)) + ' ' + words);
    }
    void load(uint32_t pon_port, uint32_t id, const std::string &direction, uint32_t kbit)
    {
        say("load", pon_port, id, direction + ' ' + std::to_string(kbit));
    }
    void load_all(uint32_t pon_port, const std::string &direction, uint32_t kbit)
    {
        for (uint32_t id = 1; id <= 4; ++id)
            load(pon_port, id, direction, kbit);
    }
    void plan(const Plan &planned)
    {
        EXPECT_EQ(planned.status, BSP_OK);
        simulator.change(planned.change);
    }
    void sla(uint32_t pon_port, uint32_t id, const Sla &wanted) { plan(set_sla(olt(), pon_port, id, wanted)); }

    const Traffic::Onu &onu(uint32_t pon_port, uint32_t id) const { return port(pon_port).traffic.onu(id); }
    // These return kbit/s.
    uint64_t sent(uint32_t pon_port, uint32_t id) const { return kbit(onu(pon_port, id).passed.up); }
    uint64_t received(uint32_t pon_port, uint32_t id) const { return kbit(onu(pon_port, id).passed.down); }
    static uint64_t kbit(const PerFlow &rates) { return (octets_of(rates) + kbits(1) / 2) / kbits(1); }
    // Returns the kbit/s of the most broadcast frames that a PON port has room for.
    static uint64_t most_broadcasts() { return capacity_of({}, 4).up * 64 / 84 / kbits(1); }
    // These return how much of the line an ONU, or all ONUs of a port, take.
    Bandwidth on_line(uint32_t pon_port, uint32_t id) const
    {
        return octets_of(onu(pon_port, id).passed.up, Measure::line);
    }
    Bandwidth on_line(uint32_t pon_port) const
    {
        Bandwidth sum = 0;
        for (uint32_t id = 1; id <= 4; ++id)
            sum += on_line(pon_port, id);
        return sum;
    }

    Counters pon(uint32_t pon_port) const { return pon_counters(olt(), port(pon_port)); }
    Counters ge(uint32_t uplink) const { return uplink_counters(olt(), uplink); }
};

// Compares to a thousandth.
void expect_close(uint64_t value, uint64_t expected)
{
    EXPECT_NEAR(static_cast<double>(value), static_cast<double>(expected), static_cast<double>(expected) / 1000);
}

TEST(Load, IsAsFoundAtFirst)
{
    const Loaded fixture;
    const Rates found = rates_of(fixture.olt().seed(), fixture.mac(1, 2));
    EXPECT_EQ(fixture.onu(1, 2).passed.up, found.up);
    EXPECT_EQ(fixture.onu(1, 2).passed.down, found.down);
}

TEST(Load, IsToldPreciselyAndForgottenAgain)
{
    Loaded fixture;
    const Traffic::Onu before = fixture.onu(1, 1);
    for (const uint32_t kbit : {100u, 777u, 12345u, 850000u}) {
        fixture.load(1, 1, "up", kbit);
        fixture.load(1, 1, "down", kbit);
        expect_close(octets_of(fixture.onu(1, 1).passed.up), kbits(kbit));
        expect_close(octets_of(fixture.onu(1, 1).passed.down), kbits(kbit));
    }
    fixture.say("load", 1, 1, "up default");
    fixture.say("load", 1, 1, "down default");
    EXPECT_EQ(fixture.onu(1, 1).passed.up, before.passed.up);
    EXPECT_EQ(fixture.onu(1, 1).passed.down, before.passed.down);
}

TEST(Load, IsOfFramesInTheSameProportions)
{
    Loaded fixture;
    const PerFlow found = fixture.onu(1, 1).passed.up;
    fixture.load(1, 1, "up", 500000);
    const PerFlow &loaded = fixture.onu(1, 1).passed.up;
    for (size_t flow = 1; flow < flows.size(); ++flow)
        expect_close(loaded[flow] * found[0], found[flow] * loaded[0]);
}

TEST(Load, OfNoneIsNoTraffic)
{
    Loaded fixture;
    fixture.load_all(1, "up", 0);
    const uint64_t before = fixture.pon(1).in_frames();
    pass(fixture, 60 * second);
    EXPECT_EQ(fixture.pon(1).in_frames(), before);
}

TEST(Load, SurvivesTheService)
{
    const Folder folder;
    Streams before;
    Streams rates;
    {
        Loaded fixture(folder.file("olt.db"));
        fixture.load_all(1, "up", 400000);
        fixture.say("flood", 1, 2, "1000");
        pass(fixture, 10 * second);
        fixture.simulator.keep_time();
        before = fixture.port(1).traffic.offered(fixture.olt().now()).frames;
        rates = fixture.port(1).traffic.streams();
    }
    ServiceFixture fixture({}, folder.file("olt.db"));
    EXPECT_EQ(fixture.port(1).traffic.offered(fixture.simulator.olt().now()).frames, before);
    EXPECT_EQ(fixture.port(1).traffic.streams(), rates);
}

TEST(Load, IsOfAnOnuByAddressOrByName)
{
    auto topology = std::make_shared<Topology>();
    topology->ports.push_back(population_at({.ports = 1, .arrivals = 2}, 1));
    topology->ports[0].arrivals[1].name = "attic";
    topology->ports[0].arrivals[1].load_up = 5000;
    const Olt olt({.ports = 1, .topology = topology});
    const Mac mac = olt.port(1)->arrivals[1].mac;
    const auto onu = [&](const std::string &word) { return control_onus({olt.port(1)}, word).at(0).mac; };
    EXPECT_EQ(onu("attic"), mac);
    EXPECT_EQ(onu(text::mac_text(mac)), mac);
    EXPECT_THROW(onu("cellar"), ControlError);
}

TEST(Load, OfAScenarioHoldsUntilAnotherIsTold)
{
    auto topology = std::make_shared<Topology>();
    topology->ports.push_back(population_at({.ports = 1, .arrivals = 1, .silent = 0}, 1));
    topology->ports[0].arrivals[0].load_up = 5000;
    OltFixture fixture({.ports = 1, .topology = topology});
    const Mac mac = fixture.arrived(1);
    ASSERT_EQ(fixture.bind(1, 1, mac), BSP_OK);
    expect_close(octets_of(fixture.port(1).traffic.onu(1).passed.up), kbits(5000));
    fixture.done(set_load(fixture.olt, 1, mac, Direction::up, 300));
    expect_close(octets_of(fixture.port(1).traffic.onu(1).passed.up), kbits(300));
    fixture.done(set_load(fixture.olt, 1, mac, Direction::up, std::nullopt));
    expect_close(octets_of(fixture.port(1).traffic.onu(1).passed.up), kbits(5000));
}

TEST(Load, OfAnOnuThatIsNotThereIsRefused)
{
    Loaded fixture;
    EXPECT_THROW(control_line(fixture, "load 1 02:00:00:00:00:99 up 100"), ControlError);
    EXPECT_THROW(fixture.say("load", 1, 1, "sideways 100"), ControlError);
    EXPECT_THROW(fixture.say("load", 1, 1, "up 1000001"), ControlError);
    EXPECT_THROW(fixture.say("flood", 1, 1, "-1"), ControlError);
}

TEST(SlaTraffic, UpstreamIsAtMostTheMaximumAndTheRestNeverReachesThePort)
{
    Loaded fixture;
    fixture.load_all(1, "up", 0);
    fixture.load(1, 1, "up", 5000);
    fixture.sla(1, 1, {0, 0, 2000, 0, 1});
    EXPECT_EQ(fixture.sent(1, 1), 2000u);
    EXPECT_EQ(Loaded::kbit(fixture.onu(1, 1).dropped), 3000u);
    const uint64_t before = fixture.pon(1).in_octets;
    pass(fixture, 80 * second);
    expect_close(fixture.pon(1).in_octets - before, 2000 * 125 * 80);
}

TEST(SlaTraffic, DownstreamIsAtMostTheMaximumAndTheRestIsDiscardedAtThePort)
{
    Loaded fixture;
    fixture.load_all(1, "down", 0);
    fixture.load(1, 1, "down", 5000);
    fixture.plan(set_sla_down(fixture.olt(), 1, 1, 2000));
    EXPECT_EQ(fixture.received(1, 1), 2000u);
    const Counters before = fixture.pon(1);
    pass(fixture, 80 * second);
    expect_close(fixture.pon(1).out_octets - before.out_octets, 2000 * 125 * 80);
    expect_close(fixture.pon(1).out_discard_octets - before.out_discard_octets, 3000 * 125 * 80);
}

TEST(SlaTraffic, OfAnOverloadedPortIsSharedByPriorityAndWeight)
{
    Loaded fixture;
    fixture.load_all(1, "up", 600000);
    fixture.sla(1, 1, {0, 100000, 1000000, 0, 1});
    fixture.sla(1, 2, {0, 0, 1000000, 5, 1});
    fixture.sla(1, 3, {0, 0, 1000000, 3, 1});
    fixture.sla(1, 4, {0, 0, 1000000, 3, 3});
    // 100000 kbit/s are assured, and ONU 2 has all that it wants. The others share the rest of the line by weight.
    EXPECT_EQ(fixture.sent(1, 1), 100000u);
    EXPECT_EQ(fixture.sent(1, 2), 600000u);
    expect_close(fixture.on_line(1, 4), 3 * fixture.on_line(1, 3));
    expect_close(fixture.on_line(1), kbits(1000000) * (62500 - 29 * 128 - 4 * 42) / 62500);
}

TEST(SlaTraffic, GoesBackToOthersWhenAnOnuGoesOffline)
{
    Loaded fixture;
    fixture.load_all(1, "up", 400000);
    EXPECT_LT(fixture.sent(1, 1), 300000u);
    fixture.say("power", 1, 3, "off");
    fixture.say("power", 1, 4, "off");
    EXPECT_EQ(fixture.sent(1, 1), 400000u);
}

TEST(PortTraffic, DownstreamIsCutInProportionToTheLoads)
{
    Loaded fixture;
    fixture.load_all(1, "down", 0);
    fixture.load_all(5, "down", 0);
    fixture.load(1, 1, "down", 380000);
    fixture.load(1, 2, "down", 570000);
    EXPECT_EQ(fixture.received(1, 2), 570000u);
    Mpcp mpcp;
    mpcp.fec = 1;
    fixture.plan(set_mpcp(fixture.olt(), 1, MpcpSet::grants, mpcp));
    // Forward error correction leaves 239 of 255 octets of the line, and GATEs 62332 of 62500 quanta.
    PerFlow all = fixture.onu(1, 1).passed.down;
    add(all, fixture.onu(1, 2).passed.down);
    expect_close(octets_of(all, Measure::line), kbits(1000000) * 239 / 255 * 62332 / 62500);
    expect_close(fixture.received(1, 1) * 3, fixture.received(1, 2) * 2);
}

TEST(UplinkTraffic, BeyondItsRateIsDiscardedThere)
{
    Loaded fixture;
    fixture.load_all(1, "up", 175000);
    fixture.load_all(5, "up", 175000);
    EXPECT_EQ(fixture.sent(5, 1), 175000u);
    const Counters before = fixture.ge(1);
    pass(fixture, 8 * second);
    const Counters after = fixture.ge(1);
    const uint64_t sent = after.out_octets - before.out_octets;
    const uint64_t frames = after.out_frames() - before.out_frames();
    expect_close(sent + preamble_and_gap * frames, 1000000 * 125 * 8);
    expect_close(sent + after.out_discard_octets - before.out_discard_octets, 1400000 * 125 * 8);
}

TEST(UplinkTraffic, FromTheNetworkIsAtMostItsRate)
{
    Loaded fixture;
    fixture.load_all(1, "down", 175000);
    fixture.load_all(5, "down", 175000);
    PerFlow all = fixture.port(1).traffic.streams().down;
    add(all, fixture.port(5).traffic.streams().down);
    expect_close(octets_of(all, Measure::line), kbits(1000000));
    fixture.load_all(5, "down", 0);
    EXPECT_EQ(fixture.received(1, 1), 175000u);
    EXPECT_EQ(fixture.port(1).traffic.streams().down_lost, PerFlow{});
}

TEST(UplinkTraffic, ThatIsDownTakesNothingEitherWay)
{
    Loaded fixture;
    PhyControl phy;
    phy.bits |= PhyControl::power_down;
    fixture.simulator.change(change_of(
        block_at({BSP_MSG_DEBUG, BSP_CMD_DEBUG_GE_PHY_SET, 1, 0}, std::string(1, static_cast<char>(phy.bits)))));
    EXPECT_EQ(fixture.port(1).traffic.streams().up, PerFlow{});
    EXPECT_GT(octets_of(fixture.port(5).traffic.streams().up_lost), 0u);
    EXPECT_EQ(fixture.received(5, 1), 0u);
}

// Returns how many broadcast frames an ONU sends in a second.
uint64_t broadcasts(const Loaded &fixture, uint32_t pon_port, uint32_t id)
{
    uint64_t sum = 0;
    for (size_t flow = 0; flow < flows.size(); ++flow)
        if (flows[flow].cast == Cast::broadcast) sum += fixture.onu(pon_port, id).passed.up[flow];
    return sum / rate_unit;
}

TEST(Flood, IsSentBeyondTheLoadUntilItEnds)
{
    Loaded fixture;
    const uint64_t before = broadcasts(fixture, 1, 1);
    fixture.say("flood", 1, 1, "1000");
    EXPECT_EQ(broadcasts(fixture, 1, 1), before + 1000);
    fixture.say("flood", 1, 1, "0");
    EXPECT_EQ(broadcasts(fixture, 1, 1), before);
}

TEST(Flood, IsLetInAsFarAsTheBehaviorOfTheLlidDoes)
{
    Loaded fixture;
    fixture.load_all(1, "up", 0);
    fixture.say("flood", 1, 1, "10000");
    fixture.plan(set_llid_behavior(fixture.olt(), 1, to_llid(1), {.broadcast_rate = 512}));
    const Counters before = fixture.pon(1);
    const Counters ge_before = fixture.ge(1);
    pass(fixture, 10 * second);
    expect_close(fixture.pon(1).in_broadcast - before.in_broadcast, 100000);
    expect_close(fixture.pon(1).in_discards - before.in_discards, 90000);
    EXPECT_GT(fixture.ge(1).out_broadcast, ge_before.out_broadcast + 9000);
    fixture.plan(set_llid_behavior(fixture.olt(), 1, to_llid(1), {.frames = Frames::dropped}));
    EXPECT_EQ(fixture.port(1).traffic.streams().up, PerFlow{});
}

TEST(Storm, FillsTheUniPortAndIsBoundByTheSla)
{
    Loaded fixture;
    fixture.load_all(1, "up", 0);
    fixture.say("loop", 1, 1, "1 on");
    const uint64_t of_port = fixture.olt().device_of(fixture.mac(1, 1)).unis[0].line_rate * uint64_t{1000};
    EXPECT_EQ(of_port, 1000000u);
    expect_close(fixture.sent(1, 1), fixture.most_broadcasts());
    fixture.sla(1, 1, {0, 0, 20000, 0, 1});
    EXPECT_EQ(fixture.sent(1, 1), 20000u);
}

TEST(Storm, LeavesToOthersWhatTheyAreAssured)
{
    Loaded fixture;
    fixture.load_all(1, "up", 900000);
    for (uint32_t id = 1; id <= 4; ++id)
        fixture.say("flood", 1, id, std::to_string(max_flood));
    fixture.sla(1, 2, {100000, 150000, 1000000, 0, 1});
    fixture.sla(1, 3, {0, 0, 1000000, 7, 1});
    EXPECT_EQ(fixture.sent(1, 2), 250000u);
    EXPECT_EQ(fixture.sent(1, 1), 0u);
    EXPECT_EQ(fixture.sent(1, 4), 0u);
    expect_close(fixture.on_line(1), capacity_of({}, 4).up);
}

TEST(Storm, OfAFloodComesThroughTheUniPorts)
{
    Loaded fixture;
    fixture.load_all(1, "up", 0);
    for (uint32_t id = 1; id <= 4; ++id) {
        fixture.say("flood", 1, id, std::to_string(max_flood));
        expect_close(fixture.sent(1, id), fixture.most_broadcasts());
        fixture.say("flood", 1, id, "0");
    }
}

TEST(Storm, EndsWhenDetectionShutsThePortAndComesBackWithIt)
{
    Loaded fixture;
    const PerFlow before = fixture.onu(1, 1).passed.up;
    fixture.simulator.change(change_of<LoopDetection>({}, {.on = true, .recovery_time = 300, .interval = 5}));
    fixture.say("loop", 1, 1, "1 on");
    pass(fixture, 5 * second - 1);
    EXPECT_GT(fixture.sent(1, 1), 50000u);
    pass(fixture, 1);
    EXPECT_EQ(fixture.onu(1, 1).passed.up, before);
    pass(fixture, 300 * second);
    EXPECT_GT(fixture.sent(1, 1), 50000u);
    fixture.say("loop", 1, 1, "1 off");
    EXPECT_EQ(fixture.onu(1, 1).passed.up, before);
}

TEST(BitErrors, BreakFramesBetweenTheOnuAndItsPort)
{
    Demand demand{.wanted = {.up = {}, .down = {}}, .sla = default_sla};
    demand.wanted.up[0] = 5000 * rate_unit;
    demand.wanted.up[5] = 7 * rate_unit;
    demand.errors.up[0] = all_errored / 1000;
    demand.errors.up[5] = all_errored / 10;
    Traffic traffic;
    traffic.set_capacity(capacity_of({}, 1));
    traffic.set(1, demand);
    Traffic *const port = &traffic;
    Traffic::share({&port, 1}, true);
    // These are 5 frames a second of the short ones, and 0.7 of the long ones.
    EXPECT_EQ(traffic.streams().up_errored[0], 50u);
    EXPECT_EQ(traffic.streams().up_errored[5], 7u);
    EXPECT_EQ(traffic.streams().up[0], 49950u);
    EXPECT_EQ(traffic.onu(1).passed.up, demand.wanted.up);
}

// Frames of 1518 octets are sent both ways to and from one ONU.
struct SlowErrorsFixture {
    static constexpr size_t flow = longest_flow;
    Traffic traffic;

    SlowErrorsFixture(uint64_t frames_a_second, uint64_t errored_up, uint64_t errored_down)
    {
        Demand demand{.wanted = {.up = {}, .down = {}}, .sla = default_sla, .most_down = kbits(line_rate)};
        demand.wanted.up[flow] = frames_a_second * rate_unit;
        demand.wanted.down[flow] = frames_a_second * rate_unit;
        demand.errors.up[flow] = errored_up;
        demand.errors.down[flow] = errored_down;
        traffic.set_capacity(capacity_of({}, 1));
        traffic.set(1, demand);
        Traffic *const port = &traffic;
        Traffic::share({&port, 1}, true);
    }
};

TEST(BitErrors, ThatBreakAFrameInAThousandSecondsAreCounted)
{
    constexpr ModelTime time = 100000 * ms_per_second;
    const SlowErrorsFixture fixture(1000, all_errored / 1000000, 3 * (all_errored / 1000000));
    const Streams frames = fixture.traffic.offered(time).frames;
    EXPECT_NEAR(static_cast<double>(frames.up_errored[fixture.flow]), 100 * count_unit, 1);
    EXPECT_NEAR(static_cast<double>(frames.down_errored[fixture.flow]), 300 * count_unit, 1);
    EXPECT_EQ(frames.up[fixture.flow] + frames.up_errored[fixture.flow], 1000 * rate_unit * time);
    EXPECT_EQ(frames.down[fixture.flow], 1000 * rate_unit * time);
}

TEST(BitErrors, AreTheSameHoweverOftenTheyAreCounted)
{
    SlowErrorsFixture often(1, 77777777, 12345678);
    const SlowErrorsFixture once(1, 77777777, 12345678);
    Offered before;
    for (ModelTime time = 0; time < 20000; time += 1 + time % 7) {
        often.traffic.settle(time);
        const Offered now = often.traffic.offered(time);
        EXPECT_EQ(now, once.traffic.offered(time));
        for (PerFlow Streams::*stream : {&Streams::up, &Streams::up_errored, &Streams::down_errored})
            EXPECT_GE((now.frames.*stream)[often.flow], (before.frames.*stream)[often.flow]) << time;
        before = now;
    }
    EXPECT_GT(before.frames.up_errored[often.flow], count_unit);
}

uint64_t frames_of(const PerFlow &counts)
{
    uint64_t sum = 0;
    for (const uint64_t count : counts)
        sum += count / count_unit;
    return sum;
}

// Changes the OLT at random.
void shuffle(Loaded &fixture, Random &random)
{
    constexpr std::array<uint32_t, 6> loads{0, 100, 20000, 150000, 400000, 1000000};
    const uint32_t pon_port = random.below(2) ? 5 : 1;
    const uint32_t id = 1 + random.below(4);
    switch (random.below(7)) {
    case 0:
        return fixture.load(pon_port, id, "up", loads[random.below(loads.size())]);
    case 1:
        return fixture.load(pon_port, id, "down", loads[random.below(loads.size())]);
    case 2:
        return fixture.sla(pon_port, id,
                           {random.below(20000), random.below(200000), 220000 + random.below(700000), random.below(8),
                            1 + random.below(100)});
    case 3:
        return fixture.plan(set_sla_down(fixture.olt(), pon_port, id, 1 + random.below(500000)));
    case 4:
        return fixture.say("flood", pon_port, id, std::to_string(random.below(max_flood)));
    case 5:
        return fixture.plan(
            set_llid_behavior(fixture.olt(), pon_port, to_llid(id), {.broadcast_rate = random.below(5000)}));
    default:
        return fixture.say("loop", pon_port, id, random.below(2) ? "1 on" : "1 off");
    }
}

TEST(Rates, AddUpWhateverTheLoadsAndSlas)
{
    Loaded fixture;
    Random random{20, 11};
    Counters before = fixture.ge(1);
    for (int times = 0; times < 300; ++times) {
        shuffle(fixture, random);
        pass(fixture, random.below(20000));
        uint64_t let_in = 0;
        uint64_t to_onus = 0;
        for (const uint32_t pon_port : {1u, 5u}) {
            const Counters pon = fixture.pon(pon_port);
            const Streams offered = fixture.port(pon_port).traffic.offered(fixture.olt().now()).frames;
            EXPECT_EQ(pon.in_frames() + pon.in_fcs_errors, frames_of(offered.up) + frames_of(offered.up_errored) +
                                                               frames_of(offered.up_policed) +
                                                               frames_of(offered.up_lost));
            let_in += pon.in_frames() - pon.in_discards;
            to_onus += pon.out_frames() + pon.out_discards;

            Bandwidth sent = 0;
            Bandwidth received = 0;
            for (uint32_t id = 1; id <= 4; ++id) {
                sent += octets_of(fixture.onu(pon_port, id).passed.up);
                received += octets_of(fixture.onu(pon_port, id).passed.down);
            }
            const Load load = pon_load(fixture.port(pon_port));
            EXPECT_NEAR(static_cast<double>(load.out), static_cast<double>(sent * 8 / rate_unit), 3);
            EXPECT_NEAR(static_cast<double>(load.in), static_cast<double>(received * 8 / rate_unit), 3);
            EXPECT_LE(sent, capacity_of({}, 4).up);
        }
        const Counters ge = fixture.ge(1);
        EXPECT_EQ(ge.out_frames() + ge.out_discards, let_in);
        EXPECT_EQ(ge.in_frames() - ge.in_discards, to_onus);
        EXPECT_GE(ge.out_octets, before.out_octets);
        EXPECT_GE(ge.out_discards, before.out_discards);
        EXPECT_GE(ge.in_octets, before.in_octets);
        before = ge;
    }
    EXPECT_GT(before.out_discards, 0u);
}

TEST(Rates, AreTheSameInOneLongStepAndInManyShortOnes)
{
    Loaded one;
    Loaded other;
    for (Loaded *fixture : {&one, &other}) {
        fixture->simulator.change(change_of<LoopDetection>({}, {.on = true, .recovery_time = 60, .interval = 5}));
        fixture->load_all(1, "up", 300000);
        fixture->load_all(5, "up", 123457);
        fixture->say("loop", 5, 1, "1 on");
    }
    pass(one, 1000 * second);
    for (int step = 0; step < 1000; ++step)
        pass(other, second);
    for (const uint32_t pon_port : {1u, 5u})
        EXPECT_EQ(one.port(pon_port).traffic.offered(one.olt().now()),
                  other.port(pon_port).traffic.offered(other.olt().now()));
}

TEST(Rates, OfUniPortsAreThoseThatAreGrantedAndTheRestIsDiscarded)
{
    Loaded fixture;
    fixture.load_all(1, "up", 400000);
    fixture.plan(switch_on(fixture.olt(), find_onu(fixture.olt(), 1, 1).onu, true));
    pass(fixture, oam_delay + 80 * second);
    const RemoteOnu onu = find_onu(fixture.olt(), 1, 1).onu;
    uint64_t octets = 0;
    uint64_t frames = 0;
    for (uint32_t uni = 1; uni <= onu.device.unis.size(); ++uni) {
        const UniCounters counters = uni_counters(fixture.olt(), onu, uni, {0, 80 * second});
        octets += counters.octets.up;
        frames += counters.frames.up + counters.discarded.up;
    }
    expect_close(octets, fixture.sent(1, 1) * 125 * 80);
    uint64_t wanted = 0;
    for (const uint64_t rate : fixture.onu(1, 1).demand.wanted.up)
        wanted += rate;
    expect_close(frames, wanted * 80 / rate_unit);
}

} // namespace
} // namespace ponsim
