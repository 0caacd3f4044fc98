// Bytes and MAC addresses as digits.
#include <gtest/gtest.h>

#include "text/hex.h"

namespace
{

TEST(Hex, IsTwoLowerCaseDigitsAByte)
{
    EXPECT_EQ(text::to_hex(std::vector<uint8_t>{0x00, 0xff, 0xa5}), "00ffa5");
    EXPECT_EQ(text::to_hex({}), "");
}

TEST(Hex, IsReadInBothCases)
{
    EXPECT_EQ(text::from_hex("00fFA5"), (std::vector<uint8_t>{0x00, 0xff, 0xa5}));
    EXPECT_EQ(text::from_hex(""), std::vector<uint8_t>{});
}

TEST(Hex, IsNothingElse)
{
    for (const char *digits : {"0", "001", "0g", "-1", "+1", " 1", "0x"})
        EXPECT_EQ(text::from_hex(digits), std::nullopt) << digits;
}

TEST(MacText, HasColonsAndIsReadInItsThreeForms)
{
    const text::Mac mac{0x00, 0x1a, 0xff, 0x33, 0x44, 0x55};
    EXPECT_EQ(text::mac_text(mac), "00:1a:ff:33:44:55");
    for (const char *form : {"00:1a:ff:33:44:55", "00-1A-FF-33-44-55", "001a.ff33.4455"})
        EXPECT_EQ(text::to_mac(form), mac) << form;
}

TEST(MacText, HasTheLengthSeparatorsAndDigitsOfOneForm)
{
    for (const char *form : {"", "001122334455", "00:11:22:33:44", "00:11:22:33:44:55:66", "00:11:22:33:44:5",
                             "00:11:22:33:44:5g", "00:11-22:33:44:55", "0011:2233:4455", "00:11:22:33:4:455"})
        EXPECT_EQ(text::to_mac(form), std::nullopt) << form;
}

} // namespace
