// These tests read and write IPv4 addresses.
#include "text/ipv4.h"

#include <gtest/gtest.h>

namespace
{

using text::Ipv4;

TEST(Ipv4Text, IsFourNumbersWithDotsBetweenThem)
{
    EXPECT_EQ(text::ipv4_text(Ipv4{10, 0, 200, 255}), "10.0.200.255");
    EXPECT_EQ(text::to_ipv4("10.0.200.255"), (Ipv4{10, 0, 200, 255}));
}

TEST(Ipv4Text, IsReadOnlyWhole)
{
    for (const char *wrong :
         {"", "10", "10.0.0", "10.0.0.256", "10.0.0.-1", "10.0.0.1.2", "10.0..1", " 10.0.0.1", "0xa.0.0.1"})
        EXPECT_FALSE(text::to_ipv4(wrong)) << wrong;
}

TEST(Ipv4Mask, HasItsBitsFromTheLeft)
{
    EXPECT_EQ(text::ipv4_mask(0), (Ipv4{0, 0, 0, 0}));
    EXPECT_EQ(text::ipv4_mask(20), (Ipv4{255, 255, 240, 0}));
    EXPECT_EQ(text::ipv4_mask(32), (Ipv4{255, 255, 255, 255}));
}

} // namespace
