// Numbers that are written as texts.
#include <cstdint>

#include <gtest/gtest.h>

#include "text/number.h"

namespace
{

TEST(Number, IsTheWholeText)
{
    EXPECT_EQ(text::to_number<uint32_t>("4294967295"), 4294967295u);
    EXPECT_EQ(text::to_number<int32_t>("-7"), -7);
    for (const char *other : {"", "4294967296", "-1", "+1", " 1", "1 ", "1.5", "0x1"})
        EXPECT_EQ(text::to_number<uint32_t>(other), std::nullopt) << other;
}

TEST(Number, IsHexadecimalBehind0x)
{
    EXPECT_EQ(text::to_number_of_either_base<int32_t>("0xfF"), 255);
    EXPECT_EQ(text::to_number_of_either_base<int32_t>("0X10"), 16);
    EXPECT_EQ(text::to_number_of_either_base<int32_t>("-10"), -10);
    for (const char *other : {"0x", "0x-1", "ff", "0x100000000"})
        EXPECT_EQ(text::to_number_of_either_base<int32_t>(other), std::nullopt) << other;
}

TEST(RealNumber, HasNoExponent)
{
    EXPECT_EQ(text::to_real("-27.5"), -27.5);
    EXPECT_EQ(text::to_real("3"), 3.0);
    for (const char *other : {"", "1e3", "1.5dBm", " 1"})
        EXPECT_EQ(text::to_real(other), std::nullopt) << other;
}

} // namespace
