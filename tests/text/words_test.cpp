// These tests check functions for words in texts.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "text/filled.h"
#include "text/words.h"

namespace
{

using testing::ElementsAre;

TEST(Words, AreSplitAtEverySeparator)
{
    EXPECT_THAT(text::split("a|b||c", '|'), ElementsAre("a", "b", "", "c"));
    EXPECT_THAT(text::split("", '|'), ElementsAre(""));
}

TEST(Words, AreJoinedWithASeparatorBetweenThem)
{
    EXPECT_EQ(text::join(std::vector<std::string>{"a", "b"}), "a, b");
    EXPECT_EQ(text::join(std::vector<std::string>{}), "");
}

TEST(Text, IsReplacedWhereverItOccurs)
{
    EXPECT_EQ(text::replaced("it's 'so'", "'", "''"), "it''s ''so''");
    EXPECT_EQ(text::replaced("One. Two. ", ". ", ".\n"), "One.\nTwo.\n");
    EXPECT_EQ(text::replaced("", "a", "b"), "");
}

TEST(Suggestion, IsTheNearestName)
{
    const std::vector<std::string_view> names{"release", "reject", "list"};
    EXPECT_EQ(text::suggestion("relese", names), "; did you mean release?");
    EXPECT_EQ(text::suggestion("xyzzy", names), "");
}

TEST(Filled, BreaksLinesAtTheWidthOfThePage)
{
    const std::string line(60, 'a');
    EXPECT_EQ(text::filled(line + " " + std::string(30, 'b'), 2), "  " + line + "\n  " + std::string(30, 'b') + "\n");
}

} // namespace
