// These tests check how ONUs come back on the fibre: booting, the discovery window, MPCP, OAM and authentication, each
// with its time.
#include <set>

#include <gtest/gtest.h>

#include "model/olt/mpcp.h"
#include "model/olt/remote.h"
#include "support.h"

namespace ponsim
{
namespace
{

constexpr ModelTime second = ms_per_second;
constexpr ModelTime mpcp = 3;  // ms: a window of 0.26 ms and two grant cycles
constexpr ModelTime oam = 500; // ms: discovery, then the extended OAM
constexpr ModelTime in_full = mpcp + oam;

Phase phase_of(const OltFixture &fixture, const Mac &mac, uint32_t pon_port = 1)
{
    return fixture.port(pon_port).record(mac).phase;
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
    pass(fixture, boot_time - 1);
    EXPECT_EQ(phase_of(fixture, mac), Phase::booting);
    pass(fixture, 1);
    EXPECT_EQ(phase_of(fixture, mac), Phase::mpcp) << "its port holds a window in this very moment";
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
    restart(fixture, fixture.arrived(1));
    pass(fixture, 35 * second - 1);
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
    pass(fixture, boot_time + in_full);
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
    pass(fixture, boot_time + mpcp + oam - oam_delay);
    EXPECT_EQ(phase_of(fixture, fixture.arrived(1)), Phase::registered);
}

TEST(Registration, AnOnuThatIsNotHeardAtTheEndOfAPhaseBeginsAnewWhenItIs)
{
    OltFixture fixture;
    const Mac mac = fixture.arrived(1);
    fixture.bind(1, 5, mac);
    restart(fixture, mac);
    pass(fixture, boot_time + mpcp);
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
    pass(fixture, boot_time - second);
    fixture.done(set_ranging_limits(fixture.olt, 1, {0, max_distance}));
    EXPECT_EQ(phase_of(fixture, mac), Phase::booting);
    pass(fixture, second + in_full);
    EXPECT_TRUE(fixture.online(1, 5));
}

TEST(Registration, ABlackListedOnuIsTurnedAwayInItsWindow)
{
    OltFixture fixture;
    const Mac mac = fixture.arrived(1);
    fixture.reject(1, mac);
    restart(fixture, mac);
    pass(fixture, boot_time);
    EXPECT_EQ(phase_of(fixture, mac), Phase::registered);
    EXPECT_EQ(fixture.alarms(1, mac, Alarm::rejected), 2u);
}

// In this fixture all ONUs of a full port are switched on at once.
struct Crowd : OltFixture {
    explicit Crowd(uint64_t seed = 1) : OltFixture({.seed = seed, .ports = 1, .arrivals = 128, .silent = 0})
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
