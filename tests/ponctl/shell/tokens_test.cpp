// These tests check the words of a typed line.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "shell/tokens.h"
#include "usage_error.h"

namespace
{

using namespace ponctl;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(Tokens, HaveBlanksBetweenThem)
{
    EXPECT_THAT(split_line("  onu\tlist  1 \r"), ElementsAre("onu", "list", "1"));
    EXPECT_THAT(split_line(" \t"), IsEmpty());
}

TEST(Tokens, KeepEverythingInSingleQuotes)
{
    EXPECT_THAT(split_line(R"(a 'b "c" \d # e' f)"), ElementsAre("a", R"(b "c" \d # e)", "f"));
}

TEST(Tokens, KeepAllButQuotesAndBackslashesInDoubleQuotes)
{
    EXPECT_THAT(split_line(R"("it's \"so\" \\ \n")"), ElementsAre(R"(it's "so" \ \n)"));
}

TEST(Tokens, KeepWhatABackslashStandsBefore)
{
    EXPECT_THAT(split_line(R"(a\ b \# \'c \\)"), ElementsAre("a b", "#", "'c", "\\"));
}

TEST(Tokens, MayBeEmptyInQuotesAndGoOnBehindThem)
{
    EXPECT_THAT(split_line(R"('' a"b c"'d' "")"), ElementsAre("", "ab cd", ""));
}

TEST(Tokens, EndAtACommentWhichStartsAWord)
{
    EXPECT_THAT(split_line("a#b c # d 'e"), ElementsAre("a#b", "c"));
    EXPECT_THAT(split_line("# all of it"), IsEmpty());
}

TEST(Tokens, AreRefusedWhereSomethingStaysOpen)
{
    EXPECT_THAT(usage_error_of([] { split_line("a 'b"); }), HasSubstr("' is not closed"));
    EXPECT_THAT(usage_error_of([] { split_line("a \"b\\"); }), HasSubstr("\" is not closed"));
    EXPECT_THAT(usage_error_of([] { split_line("a \\"); }), HasSubstr("backslash"));
}

TEST(TypedLine, EndsInAWordOrBehindOne)
{
    const Typed in_word = split_typed("onu li");
    EXPECT_THAT(in_word.before, ElementsAre("onu"));
    EXPECT_EQ(in_word.word, "li");
    const Typed behind = split_typed("onu list ");
    EXPECT_THAT(behind.before, ElementsAre("onu", "list"));
    EXPECT_EQ(behind.word, "");
}

TEST(TypedLine, KnowsWhatIsOpen)
{
    EXPECT_EQ(split_typed("a 'b c").quote, '\'');
    EXPECT_EQ(split_typed("a 'b c").word, "b c");
    EXPECT_EQ(split_typed("a 'b' ").quote, 0);
    EXPECT_TRUE(split_typed("a # b").comment);
}

TEST(TypedText, IsReadAsTheSameWord)
{
    const std::string text = R"(it's "a" #1 \ of)";
    EXPECT_THAT(split_line(as_typed(text)), ElementsAre(text));
    for (const char quote : {'\'', '"'})
        EXPECT_THAT(split_line(quote + as_typed(text, quote) + quote), ElementsAre(text));
}

} // namespace
