// These tests check the rules of releasing, rebooting, sorting and ranging.
#include "support.h"

namespace ponsim
{
namespace
{

TEST(Release, AnOnlineOnuWaitsAgain)
{
    Bench bench;
    bench.bind(1, 5, bench.arrived(1));
    EXPECT_EQ(bench.done(release_onu(bench.olt, 1, 5, {})), BSP_OK);
    EXPECT_TRUE(bench.waits(1, bench.arrived(1)));
    EXPECT_EQ(bench.bound(1, 5), Mac{});
}

TEST(Release, AReleasedOnuCanBeBoundElsewhere)
{
    Bench bench;
    bench.bind(1, 5, stranger(1));
    bench.done(release_onu(bench.olt, 1, 5, {}));
    EXPECT_EQ(bench.bind(2, 6, stranger(1)), BSP_OK);
}

TEST(Release, ByIdAlone)
{
    Bench bench;
    bench.bind(1, 0, stranger(1));
    bench.bind(1, 5, stranger(2));
    EXPECT_EQ(bench.done(release_onu(bench.olt, 1, 0, {})), BSP_OK);
    EXPECT_EQ(bench.bound(1, 0), Mac{});
    EXPECT_EQ(bench.bound(1, 5), stranger(2));
}

TEST(Release, ByMacAlone)
{
    Bench bench;
    bench.bind(1, 0, stranger(1));
    bench.bind(1, 5, stranger(2));
    EXPECT_EQ(bench.done(release_onu(bench.olt, 1, 0, stranger(2))), BSP_OK);
    EXPECT_EQ(bench.bound(1, 5), Mac{});
    EXPECT_EQ(bench.bound(1, 0), stranger(1));
}

TEST(Release, ByMacAloneReachesAnOnuOnId0)
{
    Bench bench;
    bench.bind(1, 0, stranger(1));
    EXPECT_EQ(bench.done(release_onu(bench.olt, 1, 0, stranger(1))), BSP_OK);
    EXPECT_EQ(bench.bound(1, 0), Mac{});
}

TEST(Release, ByIdAndMacThatAgree)
{
    Bench bench;
    bench.bind(1, 5, stranger(1));
    EXPECT_EQ(bench.done(release_onu(bench.olt, 1, 5, stranger(1))), BSP_OK);
    EXPECT_EQ(bench.bound(1, 5), Mac{});
}

TEST(Release, ByIdAndMacThatDisagreeReleasesNothing)
{
    Bench bench;
    bench.bind(1, 5, stranger(1));
    bench.bind(1, 6, stranger(2));
    EXPECT_EQ(bench.done(release_onu(bench.olt, 1, 5, stranger(2))), PON_ERR_MISMATCH);
    EXPECT_EQ(bench.done(release_onu(bench.olt, 1, 5, stranger(9))), PON_ERR_MISMATCH);
    EXPECT_EQ(bench.done(release_onu(bench.olt, 1, 7, stranger(2))), PON_ERR_MISMATCH);
    EXPECT_EQ(bench.bound(1, 5), stranger(1));
    EXPECT_EQ(bench.bound(1, 6), stranger(2));
}

TEST(Release, WhatIsNotBoundIsSaid)
{
    Bench bench;
    bench.bind(1, 5, stranger(1));
    EXPECT_EQ(bench.done(release_onu(bench.olt, 1, 6, {})), PON_ERR_NOT_BOUND);
    EXPECT_EQ(bench.done(release_onu(bench.olt, 1, 0, stranger(2))), PON_ERR_NOT_BOUND);
    EXPECT_EQ(bench.done(release_onu(bench.olt, 1, 6, stranger(2))), PON_ERR_NOT_BOUND);
}

TEST(Release, AnOnuOfAnotherPortIsNotReached)
{
    Bench bench;
    bench.bind(2, 5, stranger(1));
    EXPECT_EQ(bench.done(release_onu(bench.olt, 1, 0, stranger(1))), PON_ERR_NOT_BOUND);
    EXPECT_EQ(bench.done(release_onu(bench.olt, 1, 5, stranger(1))), PON_ERR_NOT_BOUND);
    EXPECT_EQ(bench.bound(2, 5), stranger(1));
}

TEST(Release, PortAndIdMustExist)
{
    Bench bench;
    EXPECT_EQ(bench.done(release_onu(bench.olt, 3, 5, {})), PON_ERR_NO_PORT);
    EXPECT_EQ(bench.done(release_onu(bench.olt, 1, 128, {})), PON_ERR_BAD_ONU_ID);
}

TEST(ReleaseBatch, ReleasesTheIdsOfTheSet)
{
    Bench bench;
    for (uint8_t index : {0, 31, 32, 127})
        bench.bind(1, index, stranger(index));
    EXPECT_EQ(bench.done(release_onus(bench.olt, 1, ids({0, 32, 127}))), BSP_OK);
    EXPECT_EQ(bench.bound(1, 0), Mac{});
    EXPECT_EQ(bench.bound(1, 31), stranger(31));
    EXPECT_EQ(bench.bound(1, 32), Mac{});
    EXPECT_EQ(bench.bound(1, 127), Mac{});
}

TEST(ReleaseBatch, ReleasesNothingWhereOneIdIsNotBound)
{
    Bench bench;
    bench.bind(1, 1, stranger(1));
    EXPECT_EQ(bench.done(release_onus(bench.olt, 1, ids({1, 2}))), PON_ERR_NOT_BOUND);
    EXPECT_EQ(bench.bound(1, 1), stranger(1));
}

TEST(ReleaseBatch, AnEmptySetIsAMistake)
{
    Bench bench;
    EXPECT_EQ(bench.done(release_onus(bench.olt, 1, ids({}))), PON_ERR_BAD_RECORD);
    EXPECT_EQ(bench.done(release_onus(bench.olt, 3, ids({1}))), PON_ERR_NO_PORT);
}

TEST(ReleaseAll, ReleasesOnePort)
{
    Bench bench;
    bench.bind(1, 0, stranger(1));
    bench.bind(1, 127, bench.arrived(1));
    bench.bind(2, 1, stranger(2));
    EXPECT_EQ(bench.done(release_all(bench.olt, 1)), BSP_OK);
    EXPECT_EQ(bench.bound(1, 0), Mac{});
    EXPECT_EQ(bench.bound(1, 127), Mac{});
    EXPECT_EQ(bench.bound(2, 1), stranger(2));
}

TEST(ReleaseAll, OfAnEmptyPortIsDoneAlready)
{
    Bench bench;
    EXPECT_EQ(bench.done(release_all(bench.olt, 1)), BSP_OK);
    EXPECT_EQ(bench.done(release_all(bench.olt, 3)), PON_ERR_NO_PORT);
}

TEST(ReleaseOffline, LeavesTheOnlineOnes)
{
    Bench bench;
    bench.bind(1, 1, bench.arrived(1));
    bench.bind(1, 2, stranger(2));
    bench.bind(2, 3, stranger(3));
    EXPECT_EQ(bench.done(release_offline(bench.olt, 1)), BSP_OK);
    EXPECT_EQ(bench.bound(1, 1), bench.arrived(1));
    EXPECT_EQ(bench.bound(1, 2), Mac{});
    EXPECT_EQ(bench.bound(2, 3), stranger(3));
}

TEST(Reboot, CountsAndTheOnuIsBackWhenItHasBooted)
{
    Bench bench;
    bench.bind(1, 1, bench.arrived(1, 0));
    bench.bind(1, 2, bench.arrived(1, 1));
    EXPECT_EQ(bench.done(reboot_onus(bench.olt, 1, ids({1}))), BSP_OK);
    EXPECT_FALSE(bench.online(1, 1));
    EXPECT_EQ(bench.done(reboot_onus(bench.olt, 1, ids({1}))), PON_ERR_OFFLINE);
    bench.settle();
    EXPECT_EQ(bench.done(reboot_onus(bench.olt, 1, ids({1, 2}))), BSP_OK);
    bench.settle();
    EXPECT_EQ(bench.port(1).record(bench.arrived(1, 0)).reboots, 2u);
    EXPECT_EQ(bench.port(1).record(bench.arrived(1, 1)).reboots, 1u);
    EXPECT_TRUE(bench.online(1, 1));
}

TEST(Reboot, RebootsNothingWhereOneIsOfflineOrNotBound)
{
    Bench bench;
    bench.bind(1, 1, bench.arrived(1));
    bench.bind(1, 2, stranger(2));
    EXPECT_EQ(bench.done(reboot_onus(bench.olt, 1, ids({1, 2}))), PON_ERR_OFFLINE);
    EXPECT_EQ(bench.done(reboot_onus(bench.olt, 1, ids({1, 3}))), PON_ERR_NOT_BOUND);
    EXPECT_EQ(bench.port(1).record(bench.arrived(1)).reboots, 0u);
}

TEST(Sort, MacAddressesAscendWithIds)
{
    Bench bench;
    bench.bind(1, 3, stranger(30));
    bench.bind(1, 7, stranger(20));
    bench.bind(1, 9, stranger(10));
    EXPECT_EQ(bench.done(sort_onus(bench.olt, 1, ids({3, 7, 9}))), BSP_OK);
    EXPECT_EQ(bench.bound(1, 3), stranger(10));
    EXPECT_EQ(bench.bound(1, 7), stranger(20));
    EXPECT_EQ(bench.bound(1, 9), stranger(30));
}

TEST(Sort, LeavesOtherIdsAside)
{
    Bench bench;
    bench.bind(1, 3, stranger(30));
    bench.bind(1, 7, stranger(20));
    bench.bind(1, 9, stranger(10));
    EXPECT_EQ(bench.done(sort_onus(bench.olt, 1, ids({3, 5, 9}))), BSP_OK);
    EXPECT_EQ(bench.bound(1, 3), stranger(10));
    EXPECT_EQ(bench.bound(1, 5), Mac{});
    EXPECT_EQ(bench.bound(1, 7), stranger(20));
    EXPECT_EQ(bench.bound(1, 9), stranger(30));
}

TEST(Sort, TheOnusAreFoundAtTheirNewIds)
{
    Bench bench;
    for (uint8_t index = 0; index < onus_per_port; ++index)
        bench.bind(1, index, stranger(127 - index));
    EXPECT_EQ(bench.done(sort_onus(bench.olt, 1, OnuIds{}.set())), BSP_OK);
    for (uint8_t index = 0; index < onus_per_port; ++index)
        EXPECT_EQ(bench.olt.find(stranger(index)), (Olt::Place{1, index}));
}

TEST(Sort, NeedsABoundOnu)
{
    Bench bench;
    EXPECT_EQ(bench.done(sort_onus(bench.olt, 1, ids({3}))), PON_ERR_NOT_BOUND);
    EXPECT_EQ(bench.done(sort_onus(bench.olt, 1, ids({}))), PON_ERR_BAD_RECORD);
    EXPECT_EQ(bench.done(sort_onus(bench.olt, 3, ids({3}))), PON_ERR_NO_PORT);
}

TEST(Ranging, AnOnuOutsideTheLimitsDoesNotWait)
{
    Bench bench;
    const uint32_t distance = bench.port(1).arrivals[0].distance;
    const Mac mac = bench.arrived(1);
    bench.range(1, distance + 1, max_distance);
    EXPECT_FALSE(bench.waits(1, mac));
    bench.range(1, distance, max_distance);
    EXPECT_TRUE(bench.waits(1, mac));
    bench.range(1, 0, distance);
    EXPECT_TRUE(bench.waits(1, mac));
    bench.range(1, 0, distance - 1);
    EXPECT_FALSE(bench.waits(1, mac));
}

TEST(Ranging, ABoundOnuOutsideTheLimitsGoesOffline)
{
    Bench bench;
    bench.bind(1, 5, bench.arrived(1));
    bench.bind(2, 5, bench.arrived(2));
    bench.range(1, 0, 0);
    EXPECT_FALSE(bench.online(1, 5));
    EXPECT_TRUE(bench.online(2, 5));
}

TEST(Ranging, LimitsAreInOrderAndAtMost20Km)
{
    Bench bench;
    EXPECT_EQ(bench.done(set_ranging_limits(bench.olt, 1, {2, 1})), PON_ERR_BAD_RECORD);
    EXPECT_EQ(bench.done(set_ranging_limits(bench.olt, 1, {0, 20001})), PON_ERR_BAD_RECORD);
    EXPECT_EQ(bench.done(set_ranging_limits(bench.olt, 3, {0, 1})), PON_ERR_NO_PORT);
    EXPECT_EQ(bench.done(set_ranging_limits(bench.olt, 1, {20000, 20000})), BSP_OK);
}

} // namespace
} // namespace ponsim
