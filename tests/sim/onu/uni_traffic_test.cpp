// These tests check how UNI ports bound the traffic of their ONU: ports that are disabled, speeds of links, limits, and
// lines of half duplex.
#include "model/olt/demand.h"
#include "model/olt/uni_config.h"
#include "model/port/loops.h"
#include "model/port/performance.h"
#include "model/traffic/bandwidth.h"
#include "optics.h"
#include "scenes.h"

namespace ponsim
{
namespace
{

constexpr ModelTime second = ms_per_second;

// The ONU with id 1 of the only port has so many UNI ports, all of them in use. It monitors them.
struct InUse : Scene {
    InUse(uint32_t ge_ports, uint32_t fe_ports)
        : Scene("[kind.own]\nvendor = \"ACME\"\nmodel = \"A\"\nge_ports = " + std::to_string(ge_ports) +
                "\nfe_ports = " + std::to_string(fe_ports) +
                "\n[service.plain]\n[[olt]]\nports = 1\n[[olt.port]]\nnumber = 1\n"
                "[[olt.port.onu]]\nname = \"onu\"\nkind = \"own\"\nservice = \"plain\"\nid = 1\n")
    {
        plan(switch_on(olt(), onu(), true));
        pass(oam_delay);
    }

    RemoteOnu onu() const { return find_onu(olt(), 1, 1).onu; }
    const Traffic::Onu &traffic() const { return port(1).traffic.onu(1); }
    void plan(const Plan &planned)
    {
        EXPECT_EQ(planned.status, BSP_OK);
        simulator.change(planned.change);
    }
    void pass(ModelTime time) { simulator.advance(olt().now() + time); }
    void load(uint32_t up, uint32_t down)
    {
        plan(set_load(olt(), 1, onu().binding->mac, Direction::up, up));
        plan(set_load(olt(), 1, onu().binding->mac, Direction::down, down));
    }
    void flood(uint32_t frames) { plan(set_flood(olt(), 1, onu().binding->mac, frames)); }
    void send(uint32_t command, const OnuBlock &block, uint32_t uni)
    {
        plan(send_setting(olt(), onu(), onu().key(command, uni), block, default_block(olt(), onu(), uni, command)));
    }
    // Configures the UNI ports. The ONU has the setting when this returns.
    void configure(uint32_t command, const OnuBlock &block, std::initializer_list<uint32_t> unis)
    {
        for (const uint32_t uni : unis)
            send(command, block, uni);
        pass(oam_delay);
    }
    void enable(bool on, std::initializer_list<uint32_t> unis)
    {
        OnuBlock block(switch_size);
        block.put(layout::onu_admin_state::on, on);
        configure(BSP_CMD_ONU_ADMIN_STATE_GET, block, unis);
    }
    // Lets a port no longer negotiate. Then it has 100 Mbit/s in full or half duplex, as follows from the seed.
    void force(uint32_t uni)
    {
        OnuBlock block(switch_size);
        configure(BSP_CMD_ONU_AUTONEG_GET, block, {uni});
    }
    // Lets a port offer one mode only.
    void offer(uint32_t technology, uint32_t uni)
    {
        OnuBlock block(abilities_size);
        block.put(layout::onu_autoneg_adv::count, 1);
        block.put(layout::onu_autoneg_adv::ability[0], technology);
        configure(BSP_CMD_ONU_AUTONEG_ADV_GET, block, {uni});
    }
    // Limits a port, in kbit/s.
    void limit(uint32_t up, uint32_t down, uint32_t uni)
    {
        namespace at = layout::onu_rate_limit;
        OnuBlock block(rate_limit_size);
        block.put(at::up_on, 1);
        block.put(at::up_cir, up);
        block.put(at::up_cbs, 16384);
        block.put(at::down_on, 1);
        block.put(at::down_pir, down);
        configure(BSP_CMD_ONU_RATE_LIMIT_GET, block, {uni});
    }
    UniCounters counted(uint32_t uni) const
    {
        return uni_counters(olt(), onu(), uni, {0, olt().now() - *on_since(olt(), onu())});
    }
    // Returns what a UNI port counts in 100 seconds.
    struct Rate {
        uint64_t up;   // kbit/s
        uint64_t down; // kbit/s
        uint64_t discarded_up;
        uint64_t discarded_down;
        uint64_t frames_up;
    };
    Rate rate(uint32_t uni)
    {
        const UniCounters before = counted(uni);
        pass(100 * second);
        const UniCounters now = counted(uni);
        constexpr uint64_t octets = 100 * 125; // of a kbit/s
        return {(now.octets.up - before.octets.up) / octets, (now.octets.down - before.octets.down) / octets,
                now.discarded.up - before.discarded.up, now.discarded.down - before.discarded.down,
                now.frames.up - before.frames.up};
    }
};

TEST(UniTraffic, GoesThroughPortsThatAreEnabledOnly)
{
    InUse fixture(0, 2);
    fixture.load(4000, 6000);
    fixture.enable(false, {1});
    const InUse::Rate off = fixture.rate(1), on = fixture.rate(2);
    EXPECT_EQ(off.up + off.down + off.discarded_up + off.discarded_down, 0u);
    EXPECT_EQ(on.up, 3999u);
    EXPECT_EQ(on.down, 5999u);
}

TEST(UniTraffic, EndsWhenAllPortsAreDisabledAndComesBackWithThem)
{
    InUse fixture(1, 3);
    const Rates before = fixture.traffic().passed;
    EXPECT_GT(octets_of(before.up), 0u);
    fixture.enable(false, {1, 2, 3, 4});
    EXPECT_EQ(fixture.traffic().passed.up, PerFlow{});
    EXPECT_EQ(fixture.traffic().passed.down, PerFlow{});
    const uint64_t frames = pon_counters(fixture.olt(), fixture.port(1)).in_frames();
    fixture.pass(3600 * second);
    EXPECT_EQ(pon_counters(fixture.olt(), fixture.port(1)).in_frames(), frames);
    fixture.enable(true, {1, 2, 3, 4});
    EXPECT_EQ(fixture.traffic().passed.up, before.up);
    EXPECT_EQ(fixture.traffic().passed.down, before.down);
}

TEST(UniTraffic, IsBoundWhenTheOnuHasTheSettingAndNotBefore)
{
    InUse fixture(0, 1);
    const PerFlow before = fixture.traffic().passed.up;
    fixture.send(BSP_CMD_ONU_ADMIN_STATE_GET, OnuBlock(switch_size), 1);
    fixture.pass(oam_delay - 1);
    EXPECT_EQ(fixture.traffic().passed.up, before);
    fixture.pass(1);
    EXPECT_EQ(fixture.traffic().passed.up, PerFlow{});
}

TEST(UniTraffic, IsDividedByTheSpeedsOfTheLinks)
{
    InUse fixture(1, 1);
    fixture.load(11000, 22000);
    EXPECT_NEAR(static_cast<double>(fixture.rate(1).up), 10000, 2);
    EXPECT_NEAR(static_cast<double>(fixture.rate(2).up), 1000, 2);
    EXPECT_NEAR(static_cast<double>(fixture.rate(1).down), 20000, 2);
}

TEST(UniTraffic, Of64OctetsIsAtMost1488095FramesASecondOnAGigabit)
{
    InUse fixture(1, 0);
    fixture.load(0, 0);
    fixture.flood(max_flood);
    EXPECT_EQ(fixture.traffic().demand.wanted.up[7] / rate_unit, 1488095u);
    EXPECT_EQ(capacity_of({}, 0).up / (84 * rate_unit), 1488095u);
}

TEST(UniTraffic, Of64OctetsIsAtMost148809FramesASecondOn100Mbit)
{
    InUse fixture(0, 1);
    fixture.load(0, 0);
    fixture.flood(max_flood);
    EXPECT_EQ(fixture.rate(1).frames_up / 100, 148809u);
}

TEST(UniTraffic, IsAtMostWhatTheNegotiatedSpeedCarries)
{
    InUse fixture(0, 1);
    fixture.load(1000000, 1000000);
    const InUse::Rate fast = fixture.rate(1);
    fixture.offer(142, 1); // 10 Mbit/s, full duplex
    const InUse::Rate slow = fixture.rate(1);
    EXPECT_LT(fast.up, 100000u);
    EXPECT_GT(fast.up, 90000u);
    EXPECT_NEAR(static_cast<double>(slow.up), static_cast<double>(fast.up) / 10, 10);
    EXPECT_NEAR(static_cast<double>(slow.down), static_cast<double>(fast.down) / 10, 10);
    EXPECT_EQ(slow.discarded_up, 0u) << "more does not fit on the users' line";
    EXPECT_GT(slow.discarded_down, 0u);
}

TEST(UniTraffic, BeyondALimitIsDiscardedAndCounted)
{
    InUse fixture(1, 0);
    fixture.load(10000, 20000);
    const uint64_t frames = fixture.rate(1).frames_up;
    fixture.limit(2500, 5000, 1);
    const InUse::Rate limited = fixture.rate(1);
    EXPECT_EQ(limited.up, 2499u);
    EXPECT_EQ(limited.down, 4999u);
    EXPECT_NEAR(static_cast<double>(limited.frames_up + limited.discarded_up), static_cast<double>(frames), 10);
    EXPECT_GT(limited.discarded_down, 0u);
}

TEST(UniTraffic, OfBothDirectionsSharesALineOfHalfDuplex)
{
    InUse fixture(0, 1);
    fixture.load(60000, 180000);
    fixture.offer(25, 1); // 100 Mbit/s, half duplex
    const InUse::Rate rate = fixture.rate(1);
    EXPECT_LT(rate.up + rate.down, 100000u);
    EXPECT_GT(rate.up + rate.down, 90000u);
    EXPECT_NEAR(static_cast<double>(rate.down) / static_cast<double>(rate.up), 3, 0.3);
    EXPECT_GT(fixture.counted(1).fragments.up, 0u);
    EXPECT_EQ(fixture.counted(1).crc_errored.up, 0u);
}

TEST(UniTraffic, OfOneDirectionCollidesWithNothing)
{
    InUse fixture(0, 1);
    fixture.offer(25, 1);
    fixture.load(60000, 0);
    const uint64_t before = fixture.counted(1).fragments.up;
    EXPECT_NEAR(static_cast<double>(fixture.rate(1).up), 60000, 10);
    EXPECT_EQ(fixture.counted(1).fragments.up, before);
}

TEST(UniTraffic, OfFullDuplexHasNeitherCollisionsNorErrors)
{
    InUse fixture(0, 1);
    fixture.load(90000, 90000);
    fixture.pass(3600 * second);
    EXPECT_EQ(fixture.counted(1).errored.up, 0u);
}

// The device of the users, which negotiates, takes half duplex where nobody answers.
TEST(UniTraffic, OfAForcedFullDuplexHasErrors)
{
    InUse fixture(0, 4);
    fixture.load(40000, 40000);
    uint32_t forced = 0;
    for (uint32_t uni = 1; uni <= 4; ++uni) {
        fixture.force(uni);
        if (uni_links(fixture.olt(), fixture.onu())[uni - 1]->full_duplex) forced = uni;
    }
    ASSERT_NE(forced, 0u);
    fixture.pass(100 * second);
    EXPECT_GT(fixture.counted(forced).crc_errored.up, 0u);
    EXPECT_EQ(fixture.counted(forced).errored.up, fixture.counted(forced).crc_errored.up);
}

TEST(UniTraffic, OfAPortThatIsShutForItsLoopEnds)
{
    InUse fixture(0, 2);
    fixture.load(0, 0);
    fixture.simulator.change(change_of<LoopDetection>({}, {.on = true, .recovery_time = 300, .interval = 5}));
    const Mac mac = fixture.onu().binding->mac;
    fixture.plan(set_loop(fixture.olt(), {1, mac, 1}, true));
    fixture.pass(second);
    EXPECT_GT(octets_of(fixture.traffic().passed.up), kbits(70000));
    fixture.enable(false, {1});
    EXPECT_EQ(fixture.traffic().passed.up, PerFlow{}) << "a loop behind a port that is disabled does nothing";
}

TEST(UniTraffic, IsTheSameInOneLongStepAndInManyShortOnes)
{
    InUse one(1, 1), other(1, 1);
    for (InUse *fixture : {&one, &other})
        for (const uint32_t uni : {1u, 2u})
            fixture->send(BSP_CMD_ONU_ADMIN_STATE_GET, OnuBlock(switch_size), uni);
    one.pass(1000);
    for (int step = 0; step < 100; ++step)
        other.pass(10);
    EXPECT_EQ(one.port(1).traffic.offered(one.olt().now()), other.port(1).traffic.offered(other.olt().now()));
    EXPECT_EQ(one.counted(1), other.counted(1));
    EXPECT_GT(one.counted(1).frames.up, 0u);
}

} // namespace
} // namespace ponsim
