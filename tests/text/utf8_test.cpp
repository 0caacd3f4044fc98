// What characters a text has.
#include <gtest/gtest.h>

#include "text/utf8.h"

namespace
{

using namespace std::string_view_literals;

TEST(Utf8, IsWhatEncodesCharacters)
{
    for (const std::string_view good : {""sv, "plain"sv, "Träger"sv, "\0"sv, "\xf0\x9f\x98\x80"sv})
        EXPECT_TRUE(text::is_utf8(good)) << good;
    for (const std::string_view bad : {"\xff"sv, "a\xc3"sv, "\x80"sv, "\xed\xa0\x80"sv, "\xc0\xaf"sv})
        EXPECT_FALSE(text::is_utf8(bad)) << testing::PrintToString(bad);
}

TEST(ControlCharacters, AreFoundUnlessTheyAreAllowed)
{
    EXPECT_FALSE(text::has_control_characters("a b~ä"));
    for (const std::string_view bad : {"\n"sv, "a\tb"sv, "\x7f"sv, "a\0"sv})
        EXPECT_TRUE(text::has_control_characters(bad)) << testing::PrintToString(bad);
    EXPECT_FALSE(text::has_control_characters("a\tb\n", "\t\n"));
    EXPECT_TRUE(text::has_control_characters("a\r\n", "\t\n"));
}

} // namespace
