// These tests check what ONUs count at their UNI ports while their traffic changes: it never goes back, stops where no
// frames flow, and adds up to what the PON port counts.
#include <bit>
#include <functional>

#include "counting.h"
#include "model/base/random.h"
#include "model/olt/demand.h"
#include "model/port/performance.h"
#include "model/port/sla.h"
#include "model/traffic/bandwidth.h"

namespace ponsim
{
namespace
{

constexpr ModelTime second = ms_per_second;
constexpr ModelTime hour = 3600 * second;
// Returns the sum over the ONUs of a PON port.
template <class Value>
uint64_t sum_of(Value value)
{
    uint64_t sum = 0;
    for (uint32_t id = 1; id <= onus; ++id)
        sum += value(id);
    return sum;
}

// Returns the frames that came from the ONUs of a PON port, also those that the port did not receive well.
uint64_t arrived_at(const Counters &pon)
{
    return pon.in_frames() + pon.in_fcs_errors;
}

TEST(Ledger, KeepsWhatWasCountedWhenTheLoadChanges)
{
    Counting fixture;
    fixture.load(1, 1, "up", 50000);
    fixture.load(1, 1, "down", 50000);
    pass(fixture, 100 * second);
    const uint64_t sent = fixture.sent(1, 1);
    const uint64_t received = fixture.received(1, 1);
    fixture.load(1, 1, "up", 100);
    fixture.load(1, 1, "down", 100);
    EXPECT_EQ(fixture.sent(1, 1), sent);
    EXPECT_EQ(fixture.received(1, 1), received);
    EXPECT_GT(sent, 0u);
}

TEST(Ledger, ImpliesNoRateBeyondTheLineWhenTheLoadRises)
{
    Counting fixture;
    fixture.load(1, 1, "up", 100);
    pass(fixture, hour);
    const std::vector<UniCounters> before = fixture.unis(1, 1);
    fixture.load(1, 1, "up", 80000);
    pass(fixture, 2 * second);
    const std::vector<UniCounters> after = fixture.unis(1, 1);
    uint64_t octets = 0;
    for (size_t uni = 0; uni < after.size(); ++uni)
        octets += after[uni].octets.up - before[uni].octets.up;
    EXPECT_NEAR(static_cast<double>(octets), 80000 * 125 * 2, 80000);
}

TEST(Ledger, StandsStillWhileTheFibreIsCut)
{
    Counting fixture;
    pass(fixture, 100 * second);
    const uint64_t sent = fixture.sent(1, 1);
    const uint64_t received = fixture.received(1, 1);
    control_line(fixture, "cut 1 feeder");
    pass(fixture, hour);
    control_line(fixture, "mend 1 feeder");
    while (!fixture.onu(1, 1).online())
        pass(fixture, 100);
    EXPECT_LE(fixture.sent(1, 1), sent + 100);
    EXPECT_LE(fixture.received(1, 1), received + 100);
    EXPECT_GE(fixture.sent(1, 1), sent);
    EXPECT_GE(fixture.received(1, 1), received);
}

TEST(Ledger, StartsAnewAfterAnHourWithoutPower)
{
    Counting fixture;
    pass(fixture, 100 * second);
    fixture.say("power", 1, 1, "off");
    pass(fixture, hour);
    fixture.say("power", 1, 1, "on");
    while (!fixture.onu(1, 1).online())
        pass(fixture, 10);
    EXPECT_LE(fixture.sent(1, 1), 10u);
    EXPECT_LE(fixture.received(1, 1), 10u);
    EXPECT_LT(current_period(fixture.olt(), fixture.onu(1, 1)).value().to, 60 * second);
    EXPECT_FALSE(last_period(fixture.olt(), fixture.onu(1, 1)));
}

TEST(Ledger, AddsUpToWhatThePonPortSends)
{
    Counting fixture;
    pass(fixture, second - oam_delay);
    for (const uint32_t pon_port : {1u, 4u}) {
        const auto of_port = [&] { return sum_of([&](uint32_t id) { return fixture.received(pon_port, id); }); };
        const uint64_t received = of_port();
        const Counters before = fixture.pon(pon_port);
        pass(fixture, 10000 * second);
        EXPECT_EQ(of_port() - received, fixture.pon(pon_port).out_frames() - before.out_frames());
        EXPECT_GT(of_port(), received);
    }
}

TEST(Ledger, AddsUpToWhatThePonPortReceives)
{
    Counting fixture;
    pass(fixture, second - oam_delay);
    for (const uint32_t pon_port : {1u, 4u}) {
        const auto of_port = [&] { return sum_of([&](uint32_t id) { return fixture.sent(pon_port, id); }); };
        const uint64_t sent = of_port();
        const uint64_t before = arrived_at(fixture.pon(pon_port));
        pass(fixture, 10000 * second);
        EXPECT_EQ(of_port() - sent, arrived_at(fixture.pon(pon_port)) - before);
        EXPECT_GT(of_port(), sent);
    }
}

TEST(Ledger, OfThePeriodBeforeStaysWhenTheLoadChanges)
{
    Counting fixture;
    const auto history = [&] {
        const RemoteOnu onu = fixture.onu(1, 1);
        uint64_t frames = 0;
        for (uint32_t uni = 1; uni <= onu.device.unis.size(); ++uni)
            frames += uni_counters(fixture.olt(), onu, uni, last_period(fixture.olt(), onu).value()).frames.up;
        return frames;
    };
    pass(fixture, monitoring_period + second);
    const uint64_t first = history();
    fixture.load(1, 1, "up", 20000);
    EXPECT_EQ(history(), first);
    pass(fixture, monitoring_period);
    const uint64_t second_period = history();
    EXPECT_GT(second_period, first);
    fixture.load(1, 1, "up", 0);
    fixture.load(1, 2, "up", 0);
    EXPECT_EQ(history(), second_period);
    pass(fixture, monitoring_period);
    EXPECT_GT(history(), 0u);
    pass(fixture, monitoring_period);
    EXPECT_EQ(history(), 0u);
}

TEST(Ledger, SurvivesTheService)
{
    const Folder folder;
    const auto counted = [](const ServiceFixture &fixture) {
        const Olt &olt = fixture.simulator.olt();
        const RemoteOnu onu = find_onu(olt, 1, 1).onu;
        return std::pair{uni_counters(olt, onu, 1, current_period(olt, onu).value()),
                         uni_counters(olt, onu, 1, last_period(olt, onu).value())};
    };
    std::optional<std::pair<UniCounters, UniCounters>> before;
    {
        Counting fixture(folder.file("olt.db"));
        pass(fixture, monitoring_period);
        fixture.load(1, 1, "up", 20000);
        pass(fixture, 100 * second);
        fixture.load(1, 1, "up", 1000);
        pass(fixture, 100 * second);
        fixture.simulator.keep_time();
        before = counted(fixture);
    }
    const ServiceFixture fixture({}, folder.file("olt.db"));
    EXPECT_EQ(counted(fixture), before);
}

// A Session does things to an OLT at random, and compares what is counted before and after each.
class Session
{
public:
    explicit Session(uint64_t number) : random{number, 7} {}

    void run(int times)
    {
        for (; times > 0 && !testing::Test::HasFailure(); --times) {
            remember();
            const std::string command = act();
            expect_same();
            const ModelTime time = random.below(3) ? random.below(3000) : random.below(600) * second;
            pass(fixture, time);
            SCOPED_TRACE(command + ", then " + std::to_string(time) + " ms until " +
                         std::to_string(fixture.olt().now()));
            expect_all(time);
        }
    }

private:
    static constexpr std::array shared{1u, 5u}; // the ports

    // Does one thing at random and returns what it was.
    std::string act()
    {
        const uint32_t pon_port = shared[random.below(shared.size())];
        const uint32_t id = 1 + random.below(onus);
        const std::string of = " of " + std::to_string(pon_port) + '/' + std::to_string(id);
        const bool on = random.below(3) > 0;
        switch (random.below(10)) {
        case 0:
        case 1: {
            const uint32_t kbit = random.below(2) ? random.below(line_rate + 1) : random.below(2000);
            const std::string direction = random.below(2) ? "up" : "down";
            fixture.load(pon_port, id, direction, kbit);
            return "load " + direction + ' ' + std::to_string(kbit) + of;
        }
        case 2:
            fixture.say("power", pon_port, id, on ? "on" : "off");
            return "power" + of;
        case 3:
            fixture.say(on ? "mend" : "cut", pon_port, id);
            return "fibre" + of;
        case 4:
            control_line(fixture, (on ? "mend " : "cut ") + std::to_string(pon_port) + " feeder");
            return "feeder" + of;
        case 5: {
            const Sla sla{random.below(20000), random.below(100000), 120000 + random.below(800000), random.below(8),
                          1 + random.below(100)};
            if (const Plan plan = set_sla(fixture.olt(), pon_port, id, sla); plan.status == BSP_OK)
                fixture.simulator.change(plan.change);
            return "SLA" + of;
        }
        case 6: {
            const Plan plan = set_sla_down(fixture.olt(), pon_port, id, 1 + random.below(300000));
            if (plan.status == BSP_OK) fixture.simulator.change(plan.change);
            return "downstream SLA" + of;
        }
        case 7:
            fixture.say("loop", pon_port, id, on ? "1 on" : "1 off");
            return "loop" + of;
        case 8:
            fixture.say("flood", pon_port, id, std::to_string(on ? random.below(max_flood) : 0));
            return "flood" + of;
        default:
            fixture.send_setting(BSP_CMD_ONU_ADMIN_STATE_SET, pon_port, id, 1, on);
            return "admin state" + of;
        }
    }

    struct Seen {
        std::vector<UniCounters> unis;
        ModelTime since; // the ONU's last restart
        Sum frames;
    };
    Seen see(uint32_t pon_port, uint32_t id) const
    {
        const OnuAtPort onu{pon_port, fixture.mac(pon_port, id)};
        return {fixture.unis(pon_port, id), fixture.olt().ledger(onu)->since, counted_by(fixture, onu)};
    }
    // Returns what the port does not hear of its ONUs, and they do not receive well of it.
    Sum lost_on_fibre(uint32_t pon_port) const
    {
        const Streams passing = fixture.port(pon_port).traffic.offered(fixture.olt().now()).frames;
        return {.up = passing.up_unheard, .down = passing.down_errored};
    }
    static uint64_t frames_between(const PerFlow &before, const PerFlow &now)
    {
        uint64_t sum = 0;
        for (size_t flow = 0; flow < flows.size(); ++flow)
            sum += (now[flow] - before[flow]) / count_unit;
        return sum;
    }
    // Compares what the ONUs of the port and the port itself have counted since remember(), to the ten-thousandth of a
    // frame. An ONU that has restarted has forgotten a part of that.
    void expect_exact(uint32_t pon_port) const
    {
        const Sum now = offered_at(fixture, pon_port), before = streams.at(pon_port);
        Sum of_onus;
        bool restarted = false;
        for (uint32_t id = 1; id <= onus; ++id) {
            const Seen &was = seen.at({pon_port, id});
            const Seen is = see(pon_port, id);
            restarted = restarted || is.since != was.since;
            const Sum from = is.since == was.since ? was.frames : Sum{};
            for (size_t flow = 0; flow < flows.size(); ++flow) {
                of_onus.up.at(flow) += is.frames.up.at(flow) - from.up.at(flow);
                of_onus.down.at(flow) += is.frames.down.at(flow) - from.down.at(flow);
            }
        }
        for (size_t flow = 0; flow < flows.size(); ++flow) {
            const uint64_t up = now.up.at(flow) - before.up.at(flow), down = now.down.at(flow) - before.down.at(flow);
            EXPECT_LE(of_onus.up.at(flow), up) << pon_port;
            EXPECT_LE(of_onus.down.at(flow), down) << pon_port;
            if (restarted) continue;
            EXPECT_EQ(of_onus.up.at(flow), up) << pon_port;
            EXPECT_EQ(of_onus.down.at(flow), down) << pon_port;
        }
    }
    void remember()
    {
        for (const uint32_t pon_port : shared) {
            pons[pon_port] = fixture.pon(pon_port);
            streams[pon_port] = offered_at(fixture, pon_port);
            losses[pon_port] = lost_on_fibre(pon_port);
            for (uint32_t id = 1; id <= onus; ++id)
                seen[{pon_port, id}] = see(pon_port, id);
        }
    }
    // No time has passed. Whoever is still online has counted nothing more and nothing less.
    void expect_same() const
    {
        for (const auto &[at, before] : seen) {
            const Seen now = see(at.first, at.second);
            if (!now.unis.empty() && !before.unis.empty()) {
                EXPECT_EQ(now.unis, before.unis);
            }
        }
    }
    void expect_all(ModelTime time) const
    {
        for (const uint32_t pon_port : shared) {
            expect_port(pon_port, time);
            expect_exact(pon_port);
        }
    }
    void expect_port(uint32_t pon_port, ModelTime time) const
    {
        uint64_t up = 0, down = 0;
        bool all_seen = true;
        for (uint32_t id = 1; id <= onus; ++id) {
            const Seen &before = seen.at({pon_port, id});
            const Seen now = see(pon_port, id);
            const bool same = now.since == before.since;
            if (now.unis.empty() || (before.unis.empty() && same)) {
                all_seen = false;
                continue;
            }
            const std::vector<UniCounters> nothing(now.unis.size());
            expect_onu(fixture.onu(pon_port, id), same ? before.unis : nothing, now.unis, time);
            all_seen = all_seen && same;
            for (size_t uni = 0; uni < now.unis.size(); ++uni) {
                const UniCounters &from = same ? before.unis[uni] : nothing[uni];
                up += now.unis[uni].frames.up - from.frames.up;
                down +=
                    now.unis[uni].frames.down + now.unis[uni].discarded.down - from.frames.down - from.discarded.down;
            }
        }
        const Counters pon = fixture.pon(pon_port);
        const Sum lost = lost_on_fibre(pon_port), lost_before = losses.at(pon_port);
        const uint64_t arrived =
            arrived_at(pon) - arrived_at(pons.at(pon_port)) + frames_between(lost_before.up, lost.up);
        const uint64_t sent =
            pon.out_frames() - pons.at(pon_port).out_frames() - frames_between(lost_before.down, lost.down);
        // Each counter is rounded down for itself: those of the ONUs by kind of frame, those of the port by kind of
        // frame and by what became of it.
        constexpr uint64_t rounded = (onus * 2 * max_unis + 4) * flows.size();
        EXPECT_LE(up, arrived + rounded) << pon_port;
        EXPECT_LE(down, sent + rounded) << pon_port;
        if (all_seen) {
            EXPECT_GE(up + rounded, arrived) << pon_port;
            EXPECT_GE(down + rounded, sent) << pon_port;
        }
        EXPECT_LE(pon.in_octets - pons.at(pon_port).in_octets, octets_at(line_rate, time, rounded)) << pon_port;
        EXPECT_LE(pon.out_octets - pons.at(pon_port).out_octets, octets_at(line_rate, time, rounded)) << pon_port;
    }
    void expect_onu(const RemoteOnu &onu, const std::vector<UniCounters> &before, const std::vector<UniCounters> &now,
                    ModelTime time) const
    {
        for (size_t uni = 0; uni < now.size(); ++uni) {
            const UniCounters &from = before[uni], &to = now[uni];
            using Words = std::array<uint64_t, sizeof(UniCounters) / sizeof(uint64_t)>;
            const auto least = std::bit_cast<Words>(from), most = std::bit_cast<Words>(to);
            for (size_t word = 0; word < least.size(); ++word)
                EXPECT_LE(least[word], most[word]) << word << " of UNI port " << uni + 1;
            const uint64_t octets = octets_at(onu.device.unis[uni].line_rate * 1000, time, 3 * flows.size());
            EXPECT_LE(to.octets.up - from.octets.up, octets) << "UNI port " << uni + 1;
            EXPECT_LE(to.octets.down - from.octets.down, octets) << "UNI port " << uni + 1;
        }
    }
    // Returns how many octets pass a line in a time, and so many frames more.
    static uint64_t octets_at(uint64_t kbit, ModelTime time, uint64_t frames)
    {
        return kbit * time / 8 + frames * 1518;
    }

    Counting fixture;
    Random random;
    std::map<uint32_t, Counters> pons;                  // by PON port
    std::map<uint32_t, Sum> losses;                     // by PON port
    std::map<uint32_t, Sum> streams;                    // by PON port
    std::map<std::pair<uint32_t, uint32_t>, Seen> seen; // by PON port and ONU id
};

TEST(Ledger, NeitherGoesBackNorRunsAwayNorLosesAFrameWhateverHappens)
{
    for (uint64_t number = 1; number <= 20; ++number)
        Session(number).run(150);
}

} // namespace
} // namespace ponsim
