// These tests check how ONUs come back on the fibre: booting, the discovery window, MPCP, OAM and authentication, each
// with its time.
#include <set>

#include <gtest/gtest.h>

#include "model/olt/mpcp.h"
#include "model/onu/remote.h"
#include "support.h"

namespace ponsim
{
namespace
{

constexpr ModelTime second = ms_per_second;
constexpr ModelTime mpcp = 3;  // ms: a window of 0.26 ms and two grant cycles
constexpr ModelTime oam = 500; // ms: discovery, then the extended OAM
constexpr ModelTime in_full = mpcp + oam;

Phase phase_of(const Bench &bench, const Mac &mac, uint32_t pon_port = 1)
{
    return bench.port(pon_port).record(mac).phase;
}

// Lets time pass, in which ONUs register.
void pass(Bench &bench, ModelTime time)
{
    const ModelTime to = bench.olt.now() + time;
    while (!bench.olt.registrations().empty() && bench.olt.registrations().begin()->at <= to) {
        bench.olt.advance(bench.olt.registrations().begin()->at);
        bench.olt.apply(registration_process.happen(bench.olt));
    }
    bench.olt.advance(to);
}

void restart(Bench &bench, const Mac &mac, uint32_t pon_port = 1)
{
    bench.done(set_power(bench.olt, pon_port, mac, false));
    bench.done(set_power(bench.olt, pon_port, mac, true));
}

TEST(Registration, TakesEveryPhaseInTurn)
{
    Bench bench;
    const Mac mac = bench.arrived(1);
    bench.bind(1, 5, mac);
    restart(bench, mac);
    EXPECT_EQ(phase_of(bench, mac), Phase::booting);
    pass(bench, boot_time - 1);
    EXPECT_EQ(phase_of(bench, mac), Phase::booting);
    pass(bench, 1);
    EXPECT_EQ(phase_of(bench, mac), Phase::mpcp) << "its port holds a window in this very moment";
    pass(bench, mpcp);
    EXPECT_EQ(phase_of(bench, mac), Phase::oam);
    EXPECT_FALSE(bench.online(1, 5));
    pass(bench, oam);
    EXPECT_EQ(phase_of(bench, mac), Phase::registered);
    EXPECT_TRUE(bench.online(1, 5));
}

TEST(Registration, WaitsForTheNextDiscoveryWindowOfThePort)
{
    Bench bench;
    Mpcp slow;
    slow.discovery_interval = 7000;
    bench.done(set_mpcp(bench.olt, 1, MpcpSet::discovery, slow));
    bench.bind(1, 5, bench.arrived(1));
    restart(bench, bench.arrived(1));
    pass(bench, 35 * second - 1);
    EXPECT_EQ(phase_of(bench, bench.arrived(1)), Phase::discovery);
    pass(bench, 1);
    EXPECT_EQ(phase_of(bench, bench.arrived(1)), Phase::mpcp);
}

TEST(Registration, AsksForTheLoidWhereThePortWantsIt)
{
    Bench bench;
    const Arrival &onu = bench.arrival(1);
    bench.set_mode(1, AuthMode::loid);
    bench.done(set_power(bench.olt, 1, onu.mac, false));
    bench.accept(1, onu.loid);
    EXPECT_EQ(bench.olt.find(onu.mac), std::nullopt);
    bench.done(set_power(bench.olt, 1, onu.mac, true));
    pass(bench, boot_time + in_full);
    EXPECT_EQ(phase_of(bench, onu.mac), Phase::authentication);
    EXPECT_EQ(bench.olt.find(onu.mac), std::nullopt);
    pass(bench, oam_delay);
    EXPECT_NE(bench.olt.find(onu.mac), std::nullopt);
}

TEST(Registration, IsShorterWhereTheOltDoesNotKnowTheExtendedOam)
{
    Bench bench;
    bench.done(set_oui(bench.olt, {1, 2, 3}));
    restart(bench, bench.arrived(1));
    pass(bench, boot_time + mpcp + oam - oam_delay);
    EXPECT_EQ(phase_of(bench, bench.arrived(1)), Phase::registered);
}

TEST(Registration, AnOnuThatIsNotHeardAtTheEndOfAPhaseBeginsAnewWhenItIs)
{
    Bench bench;
    const Mac mac = bench.arrived(1);
    bench.bind(1, 5, mac);
    restart(bench, mac);
    pass(bench, boot_time + mpcp);
    bench.done(set_ranging_limits(bench.olt, 1, {0, 0}));
    pass(bench, oam);
    EXPECT_FALSE(bench.online(1, 5));
    pass(bench, 60 * second);
    bench.done(set_ranging_limits(bench.olt, 1, {0, max_distance}));
    EXPECT_EQ(phase_of(bench, mac), Phase::discovery) << "it has been running all the time";
    pass(bench, second + in_full);
    EXPECT_TRUE(bench.online(1, 5));
}

TEST(Registration, BootingGoesOnInTheDark)
{
    Bench bench;
    const Mac mac = bench.arrived(1);
    bench.bind(1, 5, mac);
    restart(bench, mac);
    bench.done(set_ranging_limits(bench.olt, 1, {0, 0}));
    pass(bench, boot_time - second);
    bench.done(set_ranging_limits(bench.olt, 1, {0, max_distance}));
    EXPECT_EQ(phase_of(bench, mac), Phase::booting);
    pass(bench, second + in_full);
    EXPECT_TRUE(bench.online(1, 5));
}

TEST(Registration, ABlackListedOnuIsTurnedAwayInItsWindow)
{
    Bench bench;
    const Mac mac = bench.arrived(1);
    bench.reject(1, mac);
    restart(bench, mac);
    pass(bench, boot_time);
    EXPECT_EQ(phase_of(bench, mac), Phase::registered);
    EXPECT_EQ(bench.alarms(1, mac, Alarm::rejected), 2u);
}

// In this fixture all ONUs of a full port are switched on at once.
struct Crowd : Bench {
    explicit Crowd(uint64_t seed = 1) : Bench({.seed = seed, .ports = 1, .arrivals = 128, .silent = 0})
    {
        for (const Arrival &arrival : port(1).arrivals)
            restart(*this, arrival.mac);
        pass(*this, boot_time - 1);
    }
    size_t in_phase(Phase phase) const
    {
        return static_cast<size_t>(std::ranges::count_if(
            port(1).arrivals, [&](const Arrival &arrival) { return phase_of(*this, arrival.mac) == phase; }));
    }
};

TEST(Discovery, AnswersThatOverlapAreLostAndComeAgainInTheNextWindow)
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
    EXPECT_LT(crowd.olt.now(), boot_time + 60 * second);
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

TEST(Registration, GoesOnAfterARestartOfTheService)
{
    const Folder folder;
    const WantedSettings wanted{.seed = 1, .ports = 1, .arrivals = 1, .silent = 0};
    ModelTime ends = 0;
    {
        Desk desk(wanted, folder.file("olt.db"));
        const Mac mac = desk.port(1).arrivals[0].mac;
        desk.simulator.change(set_power(desk.simulator.olt(), 1, mac, false).change);
        desk.simulator.change(set_power(desk.simulator.olt(), 1, mac, true).change);
        ends = desk.port(1).record(mac).phase_ends;
    }
    Desk desk(wanted, folder.file("olt.db"));
    const Mac mac = desk.port(1).arrivals[0].mac;
    EXPECT_EQ(desk.port(1).record(mac).phase, Phase::booting);
    EXPECT_EQ(desk.port(1).record(mac).phase_ends, ends);
    desk.settle();
    EXPECT_EQ(desk.port(1).record(mac).phase, Phase::registered);
}

} // namespace
} // namespace ponsim
