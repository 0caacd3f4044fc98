// These tests check the rules of binding an ONU.
#include "support.h"

namespace ponsim
{
namespace
{

TEST(Bind, AnArrivedOnuStopsWaitingAndIsOnline)
{
    Bench bench;
    const Mac mac = bench.arrived(1);
    ASSERT_TRUE(bench.waits(1, mac));
    EXPECT_EQ(bench.bind(1, 5, mac), BSP_OK);
    EXPECT_FALSE(bench.waits(1, mac));
    EXPECT_TRUE(bench.online(1, 5));
}

TEST(Bind, AnOnuThatHasNotArrivedIsOffline)
{
    Bench bench;
    EXPECT_EQ(bench.bind(1, 5, stranger(1)), BSP_OK);
    EXPECT_FALSE(bench.online(1, 5));
}

TEST(Bind, AnOnuThatArrivedAtAnotherPortIsOffline)
{
    Bench bench;
    const Mac mac = bench.arrived(2);
    EXPECT_EQ(bench.bind(1, 5, mac), BSP_OK);
    EXPECT_FALSE(bench.online(1, 5));
    EXPECT_TRUE(bench.waits(2, mac));
}

TEST(Bind, ASilentOnuWaitsButGoesOfflineWhenBound)
{
    Bench bench{{.seed = 1, .ports = 1, .arrivals = 1, .silent = 100}};
    ASSERT_TRUE(bench.waits(1, bench.arrived(1)));
    EXPECT_EQ(bench.bind(1, 5, bench.arrived(1)), BSP_OK);
    EXPECT_FALSE(bench.online(1, 5));
}

TEST(Bind, KeepsModeAndTexts)
{
    Bench bench;
    const Binding wanted{stranger(1), 7, "first", "second", "third"};
    EXPECT_EQ(bench.done(bind_onu(bench.olt, 1, 9, wanted)), BSP_OK);
    EXPECT_EQ(bench.port(1).bindings[9], wanted);
}

TEST(Bind, AutomaticIdsAreTheLowestFreeOnesFrom1On)
{
    Bench bench;
    bench.bind(1, 2, stranger(1));
    bench.bind(1, stranger(2));
    bench.bind(1, stranger(3));
    EXPECT_EQ(bench.bound(1, 1), stranger(2));
    EXPECT_EQ(bench.bound(1, 3), stranger(3));
}

TEST(Bind, AutomaticIdsUse0Last)
{
    Bench bench;
    for (uint8_t index = 1; index < onus_per_port; ++index)
        ASSERT_EQ(bench.bind(1, stranger(index)), BSP_OK);
    ASSERT_EQ(bench.bound(1, 0), Mac{});
    EXPECT_EQ(bench.bind(1, stranger(0)), BSP_OK);
    EXPECT_EQ(bench.bound(1, 0), stranger(0));
}

TEST(Bind, AFullPortTakesNoMore)
{
    Bench bench;
    for (uint8_t index = 0; index < onus_per_port; ++index)
        ASSERT_EQ(bench.bind(1, stranger(index)), BSP_OK);
    EXPECT_EQ(bench.bind(1, stranger(200)), PON_ERR_PORT_FULL);
    EXPECT_EQ(bench.bind(2, stranger(200)), BSP_OK);
}

TEST(Bind, AgainToTheSameIdReplacesModeAndTexts)
{
    Bench bench;
    bench.bind(1, 5, stranger(1));
    const Binding again{stranger(1), 3, "new", "", ""};
    EXPECT_EQ(bench.done(bind_onu(bench.olt, 1, 5, again)), BSP_OK);
    EXPECT_EQ(bench.port(1).bindings[5], again);
}

TEST(Bind, AgainAutomaticallyKeepsTheId)
{
    Bench bench;
    bench.bind(1, 5, stranger(1));
    const Binding again{stranger(1), 3, "new", "", ""};
    EXPECT_EQ(bench.done(bind_onu(bench.olt, 1, {}, again)), BSP_OK);
    EXPECT_EQ(bench.port(1).bindings[5], again);
    EXPECT_EQ(bench.bound(1, 1), Mac{});
}

TEST(Bind, AnOnuHasOneIdOnOnePort)
{
    Bench bench;
    bench.bind(1, 5, stranger(1));
    EXPECT_EQ(bench.bind(1, 6, stranger(1)), PON_ERR_ALREADY_BOUND);
    EXPECT_EQ(bench.bind(2, 5, stranger(1)), PON_ERR_ALREADY_BOUND);
    EXPECT_EQ(bench.bind(2, stranger(1)), PON_ERR_ALREADY_BOUND);
}

TEST(Bind, AnIdHasOneOnu)
{
    Bench bench;
    bench.bind(1, 5, stranger(1));
    EXPECT_EQ(bench.bind(1, 5, stranger(2)), PON_ERR_ID_IN_USE);
    EXPECT_EQ(bench.bind(2, 5, stranger(2)), BSP_OK);
}

TEST(Bind, PortsAreNumberedFrom1)
{
    Bench bench;
    EXPECT_EQ(bench.bind(0, 5, stranger(1)), PON_ERR_NO_PORT);
    EXPECT_EQ(bench.bind(3, 5, stranger(1)), PON_ERR_NO_PORT);
    EXPECT_EQ(bench.bind(2, 5, stranger(1)), BSP_OK);
}

TEST(Bind, IdsEndAt127)
{
    Bench bench;
    EXPECT_EQ(bench.bind(1, 128, stranger(1)), PON_ERR_BAD_ONU_ID);
    EXPECT_EQ(bench.bind(1, 127, stranger(1)), BSP_OK);
}

TEST(Bind, TheMacAddressIsThatOfOneStation)
{
    Bench bench;
    EXPECT_EQ(bench.bind(1, 5, Mac{}), PON_ERR_BAD_MAC);
    EXPECT_EQ(bench.bind(1, 5, Mac{0x01, 0, 0x5e, 0, 0, 1}), PON_ERR_BAD_MAC);
    EXPECT_EQ(bench.bind(1, 5, Mac{0x02, 0, 0, 0, 0, 0}), BSP_OK);
}

TEST(Support, AnUnsupportedOnuIsNotBoundOnThatPort)
{
    Bench bench;
    EXPECT_EQ(bench.done(set_supported(bench.olt, 1, stranger(1), false)), BSP_OK);
    EXPECT_EQ(bench.bind(1, 5, stranger(1)), PON_ERR_UNSUPPORTED);
    EXPECT_EQ(bench.bind(1, stranger(1)), PON_ERR_UNSUPPORTED);
    EXPECT_EQ(bench.bind(2, 5, stranger(1)), BSP_OK);
}

TEST(Support, CanBeGivenBack)
{
    Bench bench;
    bench.done(set_supported(bench.olt, 1, stranger(1), false));
    EXPECT_EQ(bench.done(set_supported(bench.olt, 1, stranger(1), true)), BSP_OK);
    EXPECT_EQ(bench.bind(1, 5, stranger(1)), BSP_OK);
}

TEST(Support, ABindingThatExistsStays)
{
    Bench bench;
    bench.bind(1, 5, bench.arrived(1));
    bench.done(set_supported(bench.olt, 1, bench.arrived(1), false));
    EXPECT_TRUE(bench.online(1, 5));
}

TEST(Support, NeedsAPortAndAStation)
{
    Bench bench;
    EXPECT_EQ(bench.done(set_supported(bench.olt, 3, stranger(1), false)), PON_ERR_NO_PORT);
    EXPECT_EQ(bench.done(set_supported(bench.olt, 1, Mac{}, false)), PON_ERR_BAD_MAC);
}

TEST(Support, TheTableIsBounded)
{
    Bench bench;
    for (size_t index = 0; index < max_onu_records; ++index) {
        const Mac mac = stranger(static_cast<uint8_t>(index), static_cast<uint8_t>(index >> 8));
        ASSERT_EQ(bench.done(set_supported(bench.olt, 1, mac, false)), BSP_OK);
    }
    EXPECT_EQ(bench.done(set_supported(bench.olt, 1, stranger(0, 255), false)), PON_ERR_TABLE_FULL);
    bench.done(set_supported(bench.olt, 1, stranger(0), true));
    EXPECT_EQ(bench.done(set_supported(bench.olt, 1, stranger(0, 255), false)), BSP_OK);
}

} // namespace
} // namespace ponsim
