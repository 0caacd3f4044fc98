// These tests check the ONUs that are found at an OLT.
#include <set>

#include "support.h"

namespace ponsim
{
namespace
{

const Settings full{.seed = 7, .ports = 16, .arrivals = 128, .silent = 50};

TEST(Population, TheSameSeedGivesTheSameOnus)
{
    EXPECT_EQ(population_at(full, 3).arrivals, population_at(full, 3).arrivals);
    Settings other = full;
    other.seed = 8;
    EXPECT_NE(population_at(full, 3).arrivals, population_at(other, 3).arrivals);
}

TEST(Population, AddressesAreInTheOrderOfTheirBytes)
{
    const MacOrder before;
    const Mac least{0x02, 0x7f, 0x80, 0x01, 0xfe, 0x10};
    EXPECT_FALSE(before(least, least));
    for (size_t byte = 0; byte < least.size(); ++byte) {
        Mac greater = least;
        ++greater[byte];
        if (byte + 1 < least.size()) greater[byte + 1] = 0;
        EXPECT_TRUE(before(least, greater)) << byte;
        EXPECT_FALSE(before(greater, least)) << byte;
    }
}

TEST(Population, IsWhatItWasInEarlierVersions)
{
    // The population must never change, because stored states name its ONUs.
    const std::vector<Arrival> arrivals =
        population_at({.seed = 1, .ports = 1, .arrivals = 1, .silent = 0}, 1).arrivals;
    ASSERT_EQ(arrivals.size(), 1u);
    EXPECT_EQ(text::mac_text(arrivals[0].mac), "02:1e:61:97:01:00");
    EXPECT_EQ(arrivals[0].distance, 1940u);
    EXPECT_EQ(arrivals[0].loid, "loid10471001000");
    EXPECT_EQ(arrivals[0].password, "pw104710");
}

TEST(Population, EveryOnuHasALoidOfItsOwnAndItsPasswordFollows)
{
    std::set<std::string> loids;
    for (uint32_t pon_port = 1; pon_port <= full.ports; ++pon_port)
        for (const Arrival &arrival : population_at(full, pon_port).arrivals) {
            EXPECT_LE(arrival.loid.size(), max_loid);
            EXPECT_EQ(arrival.password, "pw" + arrival.loid.substr(4, 6));
            loids.insert(arrival.loid);
        }
    EXPECT_EQ(loids.size(), 2048u);
}

TEST(Population, AnOnuStaysWhenMoreArrive)
{
    Settings fewer = full;
    fewer.arrivals = 5;
    const std::vector<Arrival> all = population_at(full, 3).arrivals;
    for (const Arrival &arrival : population_at(fewer, 3).arrivals)
        EXPECT_NE(std::ranges::find(all, arrival), all.end());
}

TEST(Population, EveryOnuHasAnAddressOfItsOwn)
{
    std::set<Mac> macs;
    for (uint32_t pon_port = 1; pon_port <= full.ports; ++pon_port)
        for (const Arrival &arrival : population_at(full, pon_port).arrivals) {
            EXPECT_TRUE(is_station(arrival.mac));
            EXPECT_EQ(arrival.mac[0] & 2, 2) << "not locally administered";
            macs.insert(arrival.mac);
        }
    EXPECT_EQ(macs.size(), 2048u);
}

TEST(Population, DistancesAreFrom200To19500)
{
    for (const Arrival &arrival : population_at(full, 1).arrivals) {
        EXPECT_GE(arrival.distance, 200u);
        EXPECT_LE(arrival.distance, 19500u);
    }
}

TEST(Population, TheShareOfSilentOnusIsAsAsked)
{
    const auto silent_of_2048 = [](uint32_t percent) {
        Settings settings = full;
        settings.silent = percent;
        int64_t silent = 0;
        for (uint32_t pon_port = 1; pon_port <= settings.ports; ++pon_port)
            silent += std::ranges::count_if(population_at(settings, pon_port).arrivals, &Arrival::silent);
        return silent;
    };
    EXPECT_EQ(silent_of_2048(0), 0);
    EXPECT_EQ(silent_of_2048(100), 2048);
    EXPECT_NEAR(silent_of_2048(50), 1024, 100);
}

} // namespace
} // namespace ponsim
