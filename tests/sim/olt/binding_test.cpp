// These tests check the rules of binding an ONU.
#include "support.h"

namespace ponsim
{
namespace
{

TEST(Bind, AnArrivedOnuStopsWaitingAndIsOnline)
{
    OltFixture fixture;
    const Mac mac = fixture.arrived(1);
    ASSERT_TRUE(fixture.waits(1, mac));
    EXPECT_EQ(fixture.bind(1, 5, mac), BSP_OK);
    EXPECT_FALSE(fixture.waits(1, mac));
    EXPECT_TRUE(fixture.online(1, 5));
}

TEST(Bind, AnOnuThatHasNotArrivedIsOffline)
{
    OltFixture fixture;
    EXPECT_EQ(fixture.bind(1, 5, stranger(1)), BSP_OK);
    EXPECT_FALSE(fixture.online(1, 5));
}

TEST(Bind, AnOnuThatArrivedAtAnotherPortIsOffline)
{
    OltFixture fixture;
    const Mac mac = fixture.arrived(2);
    EXPECT_EQ(fixture.bind(1, 5, mac), BSP_OK);
    EXPECT_FALSE(fixture.online(1, 5));
    EXPECT_TRUE(fixture.waits(2, mac));
}

TEST(Bind, ASilentOnuWaitsButGoesOfflineWhenBound)
{
    OltFixture fixture{{.seed = 1, .ports = 1, .arrivals = 1, .silent = 100}};
    ASSERT_TRUE(fixture.waits(1, fixture.arrived(1)));
    EXPECT_EQ(fixture.bind(1, 5, fixture.arrived(1)), BSP_OK);
    EXPECT_FALSE(fixture.online(1, 5));
}

TEST(Bind, KeepsModeAndTexts)
{
    OltFixture fixture;
    const Binding wanted{stranger(1), 7, "first", "second", "third"};
    EXPECT_EQ(fixture.done(bind_onu(fixture.olt, 1, 9, wanted)), BSP_OK);
    EXPECT_EQ(fixture.port(1).bindings[9], wanted);
}

TEST(Bind, AutomaticIdsAreTheLowestFreeOnesFrom1On)
{
    OltFixture fixture;
    fixture.bind(1, 2, stranger(1));
    fixture.bind(1, stranger(2));
    fixture.bind(1, stranger(3));
    EXPECT_EQ(fixture.bound(1, 1), stranger(2));
    EXPECT_EQ(fixture.bound(1, 3), stranger(3));
}

TEST(Bind, AutomaticIdsUse0Last)
{
    OltFixture fixture;
    for (uint8_t index = 1; index < onus_per_port; ++index)
        ASSERT_EQ(fixture.bind(1, stranger(index)), BSP_OK);
    ASSERT_EQ(fixture.bound(1, 0), Mac{});
    EXPECT_EQ(fixture.bind(1, stranger(0)), BSP_OK);
    EXPECT_EQ(fixture.bound(1, 0), stranger(0));
}

TEST(Bind, AFullPortTakesNoMore)
{
    OltFixture fixture;
    for (uint8_t index = 0; index < onus_per_port; ++index)
        ASSERT_EQ(fixture.bind(1, stranger(index)), BSP_OK);
    EXPECT_EQ(fixture.bind(1, stranger(200)), PON_ERR_PORT_FULL);
    EXPECT_EQ(fixture.bind(2, stranger(200)), BSP_OK);
}

TEST(Bind, AgainToTheSameIdReplacesModeAndTexts)
{
    OltFixture fixture;
    fixture.bind(1, 5, stranger(1));
    const Binding again{stranger(1), 3, "new", "", ""};
    EXPECT_EQ(fixture.done(bind_onu(fixture.olt, 1, 5, again)), BSP_OK);
    EXPECT_EQ(fixture.port(1).bindings[5], again);
}

TEST(Bind, AgainAutomaticallyKeepsTheId)
{
    OltFixture fixture;
    fixture.bind(1, 5, stranger(1));
    const Binding again{stranger(1), 3, "new", "", ""};
    EXPECT_EQ(fixture.done(bind_onu(fixture.olt, 1, {}, again)), BSP_OK);
    EXPECT_EQ(fixture.port(1).bindings[5], again);
    EXPECT_EQ(fixture.bound(1, 1), Mac{});
}

TEST(Bind, AnOnuHasOneIdOnOnePort)
{
    OltFixture fixture;
    fixture.bind(1, 5, stranger(1));
    EXPECT_EQ(fixture.bind(1, 6, stranger(1)), PON_ERR_ALREADY_BOUND);
    EXPECT_EQ(fixture.bind(2, 5, stranger(1)), PON_ERR_ALREADY_BOUND);
    EXPECT_EQ(fixture.bind(2, stranger(1)), PON_ERR_ALREADY_BOUND);
}

TEST(Bind, AnIdHasOneOnu)
{
    OltFixture fixture;
    fixture.bind(1, 5, stranger(1));
    EXPECT_EQ(fixture.bind(1, 5, stranger(2)), PON_ERR_ID_IN_USE);
    EXPECT_EQ(fixture.bind(2, 5, stranger(2)), BSP_OK);
}

TEST(Bind, PortsAreNumberedFrom1)
{
    OltFixture fixture;
    EXPECT_EQ(fixture.bind(0, 5, stranger(1)), PON_ERR_NO_PORT);
    EXPECT_EQ(fixture.bind(3, 5, stranger(1)), PON_ERR_NO_PORT);
    EXPECT_EQ(fixture.bind(2, 5, stranger(1)), BSP_OK);
}

TEST(Bind, IdsEndAt127)
{
    OltFixture fixture;
    EXPECT_EQ(fixture.bind(1, 128, stranger(1)), PON_ERR_BAD_ONU_ID);
    EXPECT_EQ(fixture.bind(1, 127, stranger(1)), BSP_OK);
}

TEST(Bind, TheMacAddressIsThatOfOneStation)
{
    OltFixture fixture;
    EXPECT_EQ(fixture.bind(1, 5, Mac{}), PON_ERR_BAD_MAC);
    EXPECT_EQ(fixture.bind(1, 5, Mac{0x01, 0, 0x5e, 0, 0, 1}), PON_ERR_BAD_MAC);
    EXPECT_EQ(fixture.bind(1, 5, Mac{0x02, 0, 0, 0, 0, 0}), BSP_OK);
}

TEST(Support, AnUnsupportedOnuIsNotBoundOnThatPort)
{
    OltFixture fixture;
    EXPECT_EQ(fixture.done(set_supported(fixture.olt, 1, stranger(1), false)), BSP_OK);
    EXPECT_EQ(fixture.bind(1, 5, stranger(1)), PON_ERR_UNSUPPORTED);
    EXPECT_EQ(fixture.bind(1, stranger(1)), PON_ERR_UNSUPPORTED);
    EXPECT_EQ(fixture.bind(2, 5, stranger(1)), BSP_OK);
}

TEST(Support, CanBeGivenBack)
{
    OltFixture fixture;
    fixture.done(set_supported(fixture.olt, 1, stranger(1), false));
    EXPECT_EQ(fixture.done(set_supported(fixture.olt, 1, stranger(1), true)), BSP_OK);
    EXPECT_EQ(fixture.bind(1, 5, stranger(1)), BSP_OK);
}

TEST(Support, ABindingThatExistsStays)
{
    OltFixture fixture;
    fixture.bind(1, 5, fixture.arrived(1));
    fixture.done(set_supported(fixture.olt, 1, fixture.arrived(1), false));
    EXPECT_TRUE(fixture.online(1, 5));
}

TEST(Support, NeedsAPortAndAStation)
{
    OltFixture fixture;
    EXPECT_EQ(fixture.done(set_supported(fixture.olt, 3, stranger(1), false)), PON_ERR_NO_PORT);
    EXPECT_EQ(fixture.done(set_supported(fixture.olt, 1, Mac{}, false)), PON_ERR_BAD_MAC);
}

TEST(Support, TheTableIsBounded)
{
    OltFixture fixture;
    for (size_t index = 0; index < max_onu_records; ++index) {
        const Mac mac = stranger(static_cast<uint8_t>(index), static_cast<uint8_t>(index >> 8));
        ASSERT_EQ(fixture.done(set_supported(fixture.olt, 1, mac, false)), BSP_OK);
    }
    EXPECT_EQ(fixture.done(set_supported(fixture.olt, 1, stranger(0, 255), false)), PON_ERR_TABLE_FULL);
    fixture.done(set_supported(fixture.olt, 1, stranger(0), true));
    EXPECT_EQ(fixture.done(set_supported(fixture.olt, 1, stranger(0, 255), false)), BSP_OK);
}

} // namespace
} // namespace ponsim
