// These tests check the rules of releasing, rebooting, sorting and ranging.
#include "support.h"

namespace ponsim
{
namespace
{

TEST(Release, AnOnlineOnuWaitsAgain)
{
    OltFixture fixture;
    fixture.bind(1, 5, fixture.arrived(1));
    EXPECT_EQ(fixture.done(release_onu(fixture.olt, 1, 5, {})), BSP_OK);
    EXPECT_TRUE(fixture.waits(1, fixture.arrived(1)));
    EXPECT_EQ(fixture.bound(1, 5), Mac{});
}

TEST(Release, AReleasedOnuCanBeBoundElsewhere)
{
    OltFixture fixture;
    fixture.bind(1, 5, stranger(1));
    fixture.done(release_onu(fixture.olt, 1, 5, {}));
    EXPECT_EQ(fixture.bind(2, 6, stranger(1)), BSP_OK);
}

TEST(Release, ByIdAlone)
{
    OltFixture fixture;
    fixture.bind(1, 0, stranger(1));
    fixture.bind(1, 5, stranger(2));
    EXPECT_EQ(fixture.done(release_onu(fixture.olt, 1, 0, {})), BSP_OK);
    EXPECT_EQ(fixture.bound(1, 0), Mac{});
    EXPECT_EQ(fixture.bound(1, 5), stranger(2));
}

TEST(Release, ByMacAlone)
{
    OltFixture fixture;
    fixture.bind(1, 0, stranger(1));
    fixture.bind(1, 5, stranger(2));
    EXPECT_EQ(fixture.done(release_onu(fixture.olt, 1, 0, stranger(2))), BSP_OK);
    EXPECT_EQ(fixture.bound(1, 5), Mac{});
    EXPECT_EQ(fixture.bound(1, 0), stranger(1));
}

TEST(Release, ByMacAloneReachesAnOnuOnId0)
{
    OltFixture fixture;
    fixture.bind(1, 0, stranger(1));
    EXPECT_EQ(fixture.done(release_onu(fixture.olt, 1, 0, stranger(1))), BSP_OK);
    EXPECT_EQ(fixture.bound(1, 0), Mac{});
}

TEST(Release, ByIdAndMacThatAgree)
{
    OltFixture fixture;
    fixture.bind(1, 5, stranger(1));
    EXPECT_EQ(fixture.done(release_onu(fixture.olt, 1, 5, stranger(1))), BSP_OK);
    EXPECT_EQ(fixture.bound(1, 5), Mac{});
}

TEST(Release, ByIdAndMacThatDisagreeReleasesNothing)
{
    OltFixture fixture;
    fixture.bind(1, 5, stranger(1));
    fixture.bind(1, 6, stranger(2));
    EXPECT_EQ(fixture.done(release_onu(fixture.olt, 1, 5, stranger(2))), PON_ERR_MISMATCH);
    EXPECT_EQ(fixture.done(release_onu(fixture.olt, 1, 5, stranger(9))), PON_ERR_MISMATCH);
    EXPECT_EQ(fixture.done(release_onu(fixture.olt, 1, 7, stranger(2))), PON_ERR_MISMATCH);
    EXPECT_EQ(fixture.bound(1, 5), stranger(1));
    EXPECT_EQ(fixture.bound(1, 6), stranger(2));
}

TEST(Release, WhatIsNotBoundIsSaid)
{
    OltFixture fixture;
    fixture.bind(1, 5, stranger(1));
    EXPECT_EQ(fixture.done(release_onu(fixture.olt, 1, 6, {})), PON_ERR_NOT_BOUND);
    EXPECT_EQ(fixture.done(release_onu(fixture.olt, 1, 0, stranger(2))), PON_ERR_NOT_BOUND);
    EXPECT_EQ(fixture.done(release_onu(fixture.olt, 1, 6, stranger(2))), PON_ERR_NOT_BOUND);
}

TEST(Release, AnOnuOfAnotherPortIsNotReached)
{
    OltFixture fixture;
    fixture.bind(2, 5, stranger(1));
    EXPECT_EQ(fixture.done(release_onu(fixture.olt, 1, 0, stranger(1))), PON_ERR_NOT_BOUND);
    EXPECT_EQ(fixture.done(release_onu(fixture.olt, 1, 5, stranger(1))), PON_ERR_NOT_BOUND);
    EXPECT_EQ(fixture.bound(2, 5), stranger(1));
}

TEST(Release, PortAndIdMustExist)
{
    OltFixture fixture;
    EXPECT_EQ(fixture.done(release_onu(fixture.olt, 3, 5, {})), PON_ERR_NO_PORT);
    EXPECT_EQ(fixture.done(release_onu(fixture.olt, 1, 128, {})), PON_ERR_BAD_ONU_ID);
}

TEST(ReleaseBatch, ReleasesTheIdsOfTheSet)
{
    OltFixture fixture;
    for (uint8_t index : {0, 31, 32, 127})
        fixture.bind(1, index, stranger(index));
    EXPECT_EQ(fixture.done(release_onus(fixture.olt, 1, ids({0, 32, 127}))), BSP_OK);
    EXPECT_EQ(fixture.bound(1, 0), Mac{});
    EXPECT_EQ(fixture.bound(1, 31), stranger(31));
    EXPECT_EQ(fixture.bound(1, 32), Mac{});
    EXPECT_EQ(fixture.bound(1, 127), Mac{});
}

TEST(ReleaseBatch, ReleasesNothingWhereOneIdIsNotBound)
{
    OltFixture fixture;
    fixture.bind(1, 1, stranger(1));
    EXPECT_EQ(fixture.done(release_onus(fixture.olt, 1, ids({1, 2}))), PON_ERR_NOT_BOUND);
    EXPECT_EQ(fixture.bound(1, 1), stranger(1));
}

TEST(ReleaseBatch, AnEmptySetIsAMistake)
{
    OltFixture fixture;
    EXPECT_EQ(fixture.done(release_onus(fixture.olt, 1, ids({}))), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.done(release_onus(fixture.olt, 3, ids({1}))), PON_ERR_NO_PORT);
}

TEST(ReleaseAll, ReleasesOnePort)
{
    OltFixture fixture;
    fixture.bind(1, 0, stranger(1));
    fixture.bind(1, 127, fixture.arrived(1));
    fixture.bind(2, 1, stranger(2));
    EXPECT_EQ(fixture.done(release_all(fixture.olt, 1)), BSP_OK);
    EXPECT_EQ(fixture.bound(1, 0), Mac{});
    EXPECT_EQ(fixture.bound(1, 127), Mac{});
    EXPECT_EQ(fixture.bound(2, 1), stranger(2));
}

TEST(ReleaseAll, OfAnEmptyPortIsDoneAlready)
{
    OltFixture fixture;
    EXPECT_EQ(fixture.done(release_all(fixture.olt, 1)), BSP_OK);
    EXPECT_EQ(fixture.done(release_all(fixture.olt, 3)), PON_ERR_NO_PORT);
}

TEST(ReleaseOffline, LeavesTheOnlineOnes)
{
    OltFixture fixture;
    fixture.bind(1, 1, fixture.arrived(1));
    fixture.bind(1, 2, stranger(2));
    fixture.bind(2, 3, stranger(3));
    EXPECT_EQ(fixture.done(release_offline(fixture.olt, 1)), BSP_OK);
    EXPECT_EQ(fixture.bound(1, 1), fixture.arrived(1));
    EXPECT_EQ(fixture.bound(1, 2), Mac{});
    EXPECT_EQ(fixture.bound(2, 3), stranger(3));
}

TEST(Reboot, CountsAndTheOnuIsBackWhenItHasBooted)
{
    OltFixture fixture;
    fixture.bind(1, 1, fixture.arrived(1, 0));
    fixture.bind(1, 2, fixture.arrived(1, 1));
    EXPECT_EQ(fixture.done(reboot_onus(fixture.olt, 1, ids({1}))), BSP_OK);
    EXPECT_FALSE(fixture.online(1, 1));
    EXPECT_EQ(fixture.done(reboot_onus(fixture.olt, 1, ids({1}))), PON_ERR_OFFLINE);
    fixture.settle();
    EXPECT_EQ(fixture.done(reboot_onus(fixture.olt, 1, ids({1, 2}))), BSP_OK);
    fixture.settle();
    EXPECT_EQ(fixture.port(1).record(fixture.arrived(1, 0)).reboots, 2u);
    EXPECT_EQ(fixture.port(1).record(fixture.arrived(1, 1)).reboots, 1u);
    EXPECT_TRUE(fixture.online(1, 1));
}

TEST(Reboot, RebootsNothingWhereOneIsOfflineOrNotBound)
{
    OltFixture fixture;
    fixture.bind(1, 1, fixture.arrived(1));
    fixture.bind(1, 2, stranger(2));
    EXPECT_EQ(fixture.done(reboot_onus(fixture.olt, 1, ids({1, 2}))), PON_ERR_OFFLINE);
    EXPECT_EQ(fixture.done(reboot_onus(fixture.olt, 1, ids({1, 3}))), PON_ERR_NOT_BOUND);
    EXPECT_EQ(fixture.port(1).record(fixture.arrived(1)).reboots, 0u);
}

TEST(Sort, MacAddressesAscendWithIds)
{
    OltFixture fixture;
    fixture.bind(1, 3, stranger(30));
    fixture.bind(1, 7, stranger(20));
    fixture.bind(1, 9, stranger(10));
    EXPECT_EQ(fixture.done(sort_onus(fixture.olt, 1, ids({3, 7, 9}))), BSP_OK);
    EXPECT_EQ(fixture.bound(1, 3), stranger(10));
    EXPECT_EQ(fixture.bound(1, 7), stranger(20));
    EXPECT_EQ(fixture.bound(1, 9), stranger(30));
}

TEST(Sort, LeavesOtherIdsAside)
{
    OltFixture fixture;
    fixture.bind(1, 3, stranger(30));
    fixture.bind(1, 7, stranger(20));
    fixture.bind(1, 9, stranger(10));
    EXPECT_EQ(fixture.done(sort_onus(fixture.olt, 1, ids({3, 5, 9}))), BSP_OK);
    EXPECT_EQ(fixture.bound(1, 3), stranger(10));
    EXPECT_EQ(fixture.bound(1, 5), Mac{});
    EXPECT_EQ(fixture.bound(1, 7), stranger(20));
    EXPECT_EQ(fixture.bound(1, 9), stranger(30));
}

TEST(Sort, TheOnusAreFoundAtTheirNewIds)
{
    OltFixture fixture;
    for (uint8_t index = 0; index < onus_per_port; ++index)
        fixture.bind(1, index, stranger(127 - index));
    EXPECT_EQ(fixture.done(sort_onus(fixture.olt, 1, OnuIds{}.set())), BSP_OK);
    for (uint8_t index = 0; index < onus_per_port; ++index)
        EXPECT_EQ(fixture.olt.find(stranger(index)), (OnuKey{1, index}));
}

TEST(Sort, NeedsABoundOnu)
{
    OltFixture fixture;
    EXPECT_EQ(fixture.done(sort_onus(fixture.olt, 1, ids({3}))), PON_ERR_NOT_BOUND);
    EXPECT_EQ(fixture.done(sort_onus(fixture.olt, 1, ids({}))), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.done(sort_onus(fixture.olt, 3, ids({3}))), PON_ERR_NO_PORT);
}

TEST(Ranging, AnOnuOutsideTheLimitsDoesNotWait)
{
    OltFixture fixture;
    const uint32_t distance = fixture.port(1).arrivals[0].distance;
    const Mac mac = fixture.arrived(1);
    fixture.range(1, distance + 1, max_distance);
    EXPECT_FALSE(fixture.waits(1, mac));
    fixture.range(1, distance, max_distance);
    EXPECT_TRUE(fixture.waits(1, mac));
    fixture.range(1, 0, distance);
    EXPECT_TRUE(fixture.waits(1, mac));
    fixture.range(1, 0, distance - 1);
    EXPECT_FALSE(fixture.waits(1, mac));
}

TEST(Ranging, ABoundOnuOutsideTheLimitsGoesOffline)
{
    OltFixture fixture;
    fixture.bind(1, 5, fixture.arrived(1));
    fixture.bind(2, 5, fixture.arrived(2));
    fixture.range(1, 0, 0);
    EXPECT_FALSE(fixture.online(1, 5));
    EXPECT_TRUE(fixture.online(2, 5));
}

TEST(Ranging, LimitsAreInOrderAndAtMost20Km)
{
    OltFixture fixture;
    EXPECT_EQ(fixture.done(set_ranging_limits(fixture.olt, 1, {2, 1})), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.done(set_ranging_limits(fixture.olt, 1, {0, 20001})), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.done(set_ranging_limits(fixture.olt, 3, {0, 1})), PON_ERR_NO_PORT);
    EXPECT_EQ(fixture.done(set_ranging_limits(fixture.olt, 1, {20000, 20000})), BSP_OK);
}

} // namespace
} // namespace ponsim
