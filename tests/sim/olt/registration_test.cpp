// These tests check how ONUs come back on the fibre: booting, the discovery window, MPCP, OAM and authentication, each
// with its time.
#include <algorithm>
#include <map>
#include <set>
#include <vector>

#include <gtest/gtest.h>

#include "model/lifecycle/deregistration.h"
#include "model/olt/mpcp.h"
#include "model/olt/remote.h"
#include "model/plant/fibre.h"
#include "model/port/fibre.h"
#include "scenes.h"
#include "support.h"

namespace ponsim
{
namespace
{

constexpr ModelTime second = ms_per_second;
constexpr ModelTime mpcp = 3;  // ms: a window of 0.26 ms and two grant cycles
constexpr ModelTime oam = 500; // ms: discovery, then the extended OAM
constexpr ModelTime in_full = mpcp + oam;

// Returns the time that the ONU takes to boot.
ModelTime boot_of(const OltFixture &fixture, const Mac &mac)
{
    return boot_time(fixture.olt.seed(), mac, *fixture.olt.device_of(mac).type);
}

Phase phase_of(const OltFixture &fixture, const Mac &mac, uint32_t pon_port = 1)
{
    return fixture.port(pon_port).record(mac).phase;
}

// Returns the time until the next discovery window, which a port holds once a second.
ModelTime until_window(const OltFixture &fixture)
{
    return second - fixture.olt.now() % second;
}

// Lets time pass, in which ONUs register.
void pass(OltFixture &fixture, ModelTime time)
{
    const ModelTime to = fixture.olt.now() + time;
    while (!fixture.olt.registrations().empty() && fixture.olt.registrations().begin()->at <= to) {
        fixture.olt.advance(fixture.olt.registrations().begin()->at);
        fixture.olt.apply(registration_process.happen(fixture.olt));
    }
    fixture.olt.advance(to);
}

void restart(OltFixture &fixture, const Mac &mac, uint32_t pon_port = 1)
{
    fixture.done(set_power(fixture.olt, pon_port, mac, false));
    fixture.done(set_power(fixture.olt, pon_port, mac, true));
}

TEST(Registration, TakesEveryPhaseInTurn)
{
    OltFixture fixture;
    const Mac mac = fixture.arrived(1);
    fixture.bind(1, 5, mac);
    restart(fixture, mac);
    EXPECT_EQ(phase_of(fixture, mac), Phase::booting);
    pass(fixture, boot_of(fixture, mac) - 1);
    EXPECT_EQ(phase_of(fixture, mac), Phase::booting);
    pass(fixture, 1);
    EXPECT_EQ(phase_of(fixture, mac), Phase::discovery);
    pass(fixture, until_window(fixture));
    EXPECT_EQ(phase_of(fixture, mac), Phase::mpcp);
    pass(fixture, mpcp);
    EXPECT_EQ(phase_of(fixture, mac), Phase::oam);
    EXPECT_FALSE(fixture.online(1, 5));
    pass(fixture, oam);
    EXPECT_EQ(phase_of(fixture, mac), Phase::registered);
    EXPECT_TRUE(fixture.online(1, 5));
}

TEST(Registration, WaitsForTheNextDiscoveryWindowOfThePort)
{
    OltFixture fixture;
    Mpcp slow;
    slow.discovery_interval = 7000;
    fixture.done(set_mpcp(fixture.olt, 1, MpcpSet::discovery, slow));
    fixture.bind(1, 5, fixture.arrived(1));
    const ModelTime boot = boot_of(fixture, fixture.arrived(1));
    const ModelTime window = (boot + slow.discovery_interval - 1) / slow.discovery_interval * slow.discovery_interval;
    ASSERT_GT(window, boot + second) << "there is something to wait for";
    restart(fixture, fixture.arrived(1));
    pass(fixture, window - 1);
    EXPECT_EQ(phase_of(fixture, fixture.arrived(1)), Phase::discovery);
    pass(fixture, 1);
    EXPECT_EQ(phase_of(fixture, fixture.arrived(1)), Phase::mpcp);
}

TEST(Registration, AsksForTheLoidWhereThePortWantsIt)
{
    OltFixture fixture;
    const Arrival &onu = fixture.arrival(1);
    fixture.set_mode(1, AuthMode::loid);
    fixture.done(set_power(fixture.olt, 1, onu.mac, false));
    fixture.accept(1, onu.loid);
    EXPECT_EQ(fixture.olt.find(onu.mac), std::nullopt);
    fixture.done(set_power(fixture.olt, 1, onu.mac, true));
    pass(fixture, boot_of(fixture, onu.mac));
    pass(fixture, until_window(fixture) + in_full);
    EXPECT_EQ(phase_of(fixture, onu.mac), Phase::authentication);
    EXPECT_EQ(fixture.olt.find(onu.mac), std::nullopt);
    pass(fixture, oam_delay);
    EXPECT_NE(fixture.olt.find(onu.mac), std::nullopt);
}

TEST(Registration, IsShorterWhereTheOltDoesNotKnowTheExtendedOam)
{
    OltFixture fixture;
    fixture.done(set_oui(fixture.olt, {1, 2, 3}));
    restart(fixture, fixture.arrived(1));
    pass(fixture, boot_of(fixture, fixture.arrived(1)));
    pass(fixture, until_window(fixture) + mpcp + oam - oam_delay);
    EXPECT_EQ(phase_of(fixture, fixture.arrived(1)), Phase::registered);
}

TEST(Registration, AnOnuThatIsNotHeardAtTheEndOfAPhaseBeginsAnewWhenItIs)
{
    OltFixture fixture;
    const Mac mac = fixture.arrived(1);
    fixture.bind(1, 5, mac);
    restart(fixture, mac);
    pass(fixture, boot_of(fixture, mac));
    pass(fixture, until_window(fixture) + mpcp);
    fixture.done(set_ranging_limits(fixture.olt, 1, {0, 0}));
    pass(fixture, oam);
    EXPECT_FALSE(fixture.online(1, 5));
    pass(fixture, 60 * second);
    fixture.done(set_ranging_limits(fixture.olt, 1, {0, max_distance}));
    EXPECT_EQ(phase_of(fixture, mac), Phase::discovery) << "it has been running all the time";
    pass(fixture, second + in_full);
    EXPECT_TRUE(fixture.online(1, 5));
}

TEST(Registration, BootingGoesOnInTheDark)
{
    OltFixture fixture;
    const Mac mac = fixture.arrived(1);
    fixture.bind(1, 5, mac);
    restart(fixture, mac);
    fixture.done(set_ranging_limits(fixture.olt, 1, {0, 0}));
    pass(fixture, boot_of(fixture, mac) - second);
    fixture.done(set_ranging_limits(fixture.olt, 1, {0, max_distance}));
    EXPECT_EQ(phase_of(fixture, mac), Phase::booting);
    pass(fixture, second);
    pass(fixture, until_window(fixture) + in_full);
    EXPECT_TRUE(fixture.online(1, 5));
}

TEST(Registration, ABlackListedOnuIsTurnedAwayInItsWindow)
{
    OltFixture fixture;
    const Mac mac = fixture.arrived(1);
    fixture.reject(1, mac);
    restart(fixture, mac);
    pass(fixture, boot_of(fixture, mac));
    pass(fixture, until_window(fixture));
    EXPECT_EQ(phase_of(fixture, mac), Phase::registered);
    EXPECT_EQ(fixture.alarms(1, mac, Alarm::rejected), 2u);
}

// In this fixture all ONUs of a full port were deregistered at once, and answer in the same window a moment later.
struct Crowd : OltFixture {
    explicit Crowd(uint64_t seed = 1) : OltFixture({.seed = seed, .ports = 1, .arrivals = 128, .silent = 0})
    {
        done(deregister_all(olt, 1));
        pass(*this, shortest_absence - 1);
    }
    size_t in_phase(Phase phase) const
    {
        return static_cast<size_t>(std::ranges::count_if(
            port(1).arrivals, [&](const Arrival &arrival) { return phase_of(*this, arrival.mac) == phase; }));
    }
};

TEST(Discovery, AnswersThatOverlapAreLostAndComeAgainInALaterWindow)
{
    Crowd crowd;
    pass(crowd, 1);
    const size_t first = crowd.in_phase(Phase::mpcp);
    EXPECT_GT(first, 0u);
    EXPECT_LT(first, 64u) << "128 answers of 170 time quanta do not all find room in 16384";
    EXPECT_EQ(first + crowd.in_phase(Phase::discovery), 128u);
    pass(crowd, second);
    EXPECT_LT(crowd.in_phase(Phase::discovery), 128 - first);
}

TEST(Discovery, AllAreThereInTheEnd)
{
    Crowd crowd;
    crowd.settle();
    EXPECT_EQ(crowd.in_phase(Phase::registered), 128u);
    EXPECT_LT(crowd.olt.now(), shortest_absence + 60 * second);
}

TEST(Discovery, ALongerWindowHoldsMoreAnswers)
{
    Crowd narrow;
    Crowd wide;
    Mpcp mpcp_of_wide;
    mpcp_of_wide.discovery_window = 65535;
    wide.done(set_mpcp(wide.olt, 1, MpcpSet::discovery, mpcp_of_wide));
    pass(narrow, 1);
    pass(wide, 1);
    EXPECT_GT(wide.in_phase(Phase::mpcp), 2 * narrow.in_phase(Phase::mpcp));
}

TEST(Discovery, WhoIsHeardFollowsFromTheSeed)
{
    const auto heard = [](uint64_t seed) {
        Crowd crowd(seed);
        pass(crowd, 1);
        std::set<size_t> indices;
        for (size_t index = 0; index < 128; ++index)
            if (phase_of(crowd, crowd.port(1).arrivals[index].mac) == Phase::mpcp) indices.insert(index);
        return indices;
    };
    EXPECT_EQ(heard(1), heard(1));
    EXPECT_NE(heard(1), heard(2));
}

// Returns when the ONUs of a full port are registered after `trouble` has begun and ended, in the order of addresses.
template <class Begin, class End>
std::vector<ModelTime> returns(uint64_t seed, Begin begin, End end)
{
    ServiceFixture fixture({.seed = seed, .ports = 1, .arrivals = 128, .silent = 0});
    Simulator &simulator = fixture.simulator;
    begin(simulator);
    simulator.advance(simulator.olt().now() + 10 * second);
    end(simulator);
    const ModelTime ended = simulator.olt().now();
    std::vector<ModelTime> times(128);
    for (ModelTime now = ended; now < ended + 120 * second && std::ranges::count(times, 0u) > 0; now += 10) {
        simulator.advance(now);
        for (size_t index = 0; index < times.size(); ++index)
            if (times[index] == 0 && fixture.port(1).ranged(fixture.port(1).arrivals[index].mac))
                times[index] = now - ended + 1;
    }
    EXPECT_EQ(std::ranges::count(times, 0u), 0) << "each is back within two minutes";
    return times;
}

void set_power_of_all(Simulator &simulator, bool on)
{
    for (const Arrival &arrival : simulator.olt().port(1)->arrivals)
        simulator.change(set_power(simulator.olt(), 1, arrival.mac, on).change);
}

std::vector<ModelTime> returns_after_outage(uint64_t seed)
{
    return returns(
        seed, [](Simulator &simulator) { set_power_of_all(simulator, false); },
        [](Simulator &simulator) { set_power_of_all(simulator, true); });
}

std::vector<ModelTime> returns_after_cut(uint64_t seed)
{
    const auto damage = [](int32_t loss) {
        return [loss](Simulator &simulator) {
            simulator.change(set_damage(*simulator.olt().port(1), 0, loss).change);
            simulator.advance(simulator.olt().now());
        };
    };
    return returns(seed, damage(cut_loss), damage(0));
}

// Returns how many come back in the busiest second.
size_t most_in_a_second(const std::vector<ModelTime> &times)
{
    std::map<ModelTime, size_t> seconds;
    for (const ModelTime time : times)
        ++seconds[time / second];
    return std::ranges::max_element(seconds, {}, [](const auto &each) { return each.second; })->second;
}

TEST(MassReturn, AfterAnOutageIsSpreadByTheTimesThatOnusBoot)
{
    const std::vector<ModelTime> times = returns_after_outage(1);
    const auto [first, last] = std::ranges::minmax(times);
    EXPECT_GE(first, 8 * second);
    EXPECT_LE(first, 12 * second);
    EXPECT_GE(last, 30 * second);
    EXPECT_LE(last, 60 * second);
    EXPECT_LE(most_in_a_second(times), 32u);
    EXPECT_GE(std::set<ModelTime>(times.begin(), times.end()).size(), 15u) << "not all at the same moment";
}

TEST(MassReturn, AfterACutIsSpreadByTheWindowsInWhichAnswersDoNotOverlap)
{
    const std::vector<ModelTime> times = returns_after_cut(1);
    const auto [first, last] = std::ranges::minmax(times);
    EXPECT_LE(first, 2 * second) << "nobody has to boot";
    EXPECT_GE(last, 5 * second);
    EXPECT_LE(last, 30 * second);
    EXPECT_LE(most_in_a_second(times), 32u);
}

TEST(MassReturn, FollowsFromTheSeed)
{
    EXPECT_EQ(returns_after_outage(1), returns_after_outage(1));
    EXPECT_NE(returns_after_outage(1), returns_after_outage(2));
    EXPECT_EQ(returns_after_cut(1), returns_after_cut(1));
    EXPECT_NE(returns_after_cut(1), returns_after_cut(2));
}

TEST(BootTime, IsThatOfTheKindAndSpreadByTheSeed)
{
    for (const DeviceType &type : device_types()) {
        std::set<ModelTime> times;
        for (uint8_t last = 1; last < 40; ++last) {
            const ModelTime time = boot_time(1, stranger(last), type);
            EXPECT_GE(time, type.boot - type.boot_spread);
            EXPECT_LE(time, type.boot + type.boot_spread);
            EXPECT_GE(time, 8 * second);
            EXPECT_LE(time, 40 * second);
            times.insert(time);
        }
        EXPECT_GT(times.size(), 20u) << type.model;
    }
}

TEST(BootTime, OfAKindCanBeStatedByAScenario)
{
    const auto boots = [](const std::string &kind) {
        const Scene scene("[kind.box]\nmodel = \"S100\"\n" + kind +
                          "[[olt]]\n[[olt.port]]\nnumber = 1\n[[olt.port.onu]]\nname = \"a\"\nkind = \"box\"\n");
        const Mac &mac = scene.onu(1, "a").mac;
        return boot_time(scene.olt().seed(), mac, *scene.olt().device_of(mac).type);
    };
    EXPECT_EQ(boots("boot = 12\n"), 12 * second);
    EXPECT_EQ(boots("boot = \"1min 30s\"\n"), 90 * second);
    EXPECT_NE(boots("boot = 60\nboot_spread = 20\n"), 60 * second);
    EXPECT_THROW(boots("boot = 601\n"), ScenarioError);
    EXPECT_THROW(boots("boot = 5\nboot_spread = 6\n"), ScenarioError);
}

TEST(Registration, GoesOnAfterARestartOfTheService)
{
    const Folder folder;
    const WantedSettings wanted{.seed = 1, .ports = 1, .arrivals = 1, .silent = 0};
    ModelTime ends = 0;
    {
        ServiceFixture fixture(wanted, folder.file("olt.db"));
        const Mac mac = fixture.port(1).arrivals[0].mac;
        fixture.simulator.change(set_power(fixture.simulator.olt(), 1, mac, false).change);
        fixture.simulator.change(set_power(fixture.simulator.olt(), 1, mac, true).change);
        ends = fixture.port(1).record(mac).phase_ends;
    }
    ServiceFixture fixture(wanted, folder.file("olt.db"));
    const Mac mac = fixture.port(1).arrivals[0].mac;
    EXPECT_EQ(fixture.port(1).record(mac).phase, Phase::booting);
    EXPECT_EQ(fixture.port(1).record(mac).phase_ends, ends);
    fixture.settle();
    EXPECT_EQ(fixture.port(1).record(mac).phase, Phase::registered);
}

} // namespace
} // namespace ponsim
