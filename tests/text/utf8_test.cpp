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

TEST(Printable, IsWhatTellsATerminalNothing)
{
    EXPECT_EQ(text::printable("Tr\xc3\xa4ger 1 \xf0\x9f\x98\x80"), "Tr\xc3\xa4ger 1 \xf0\x9f\x98\x80");
    EXPECT_EQ(text::printable("a\033[2J\x7f\n"), "a\\x1b[2J\\x7f\\x0a");
    EXPECT_EQ(text::printable("a\0b"sv), "a\\x00b");
    EXPECT_EQ(text::printable("\xc2\x9b"
                              "2J"),
              "\\xc2\\x9b2J");
    EXPECT_EQ(text::printable("a\x9b"
                              "2J\xff"),
              "a\\x9b2J\\xff");
    EXPECT_EQ(text::printable("\xe2\x80\xae"
                              "cod.exe"),
              "\\xe2\\x80\\xaecod.exe");
    EXPECT_EQ(text::printable("a\tb\n\r", "\t\n"), "a\tb\n\\x0d");
    EXPECT_EQ(text::printable_ascii("\xc3\xa4 1"), "\\xc3\\xa4 1");
}

TEST(Printable, HasEveryCharacterThatDoesNoHarmAndNoOther)
{
    for (char32_t code = 0; code <= 0x2070; ++code) {
        std::string character;
        if (code < 0x80)
            character = static_cast<char>(code);
        else if (code < 0x800)
            character = {static_cast<char>(0xc0 | code >> 6), static_cast<char>(0x80 | (code & 0x3f))};
        else
            character = {static_cast<char>(0xe0 | code >> 12), static_cast<char>(0x80 | (code >> 6 & 0x3f)),
                         static_cast<char>(0x80 | (code & 0x3f))};
        const bool harmful = code < 0x20 || (code >= 0x7f && code <= 0x9f) || code == 0x61c || code == 0x200e ||
                             code == 0x200f || (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069);
        EXPECT_EQ(text::is_printable(character), !harmful) << static_cast<unsigned>(code);
        EXPECT_EQ(text::printable(character) == character, !harmful) << static_cast<unsigned>(code);
    }
}

} // namespace
