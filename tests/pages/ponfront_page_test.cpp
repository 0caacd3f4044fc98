// These tests check that the pages of ponfront, which are written by hand, have everything that the program has, and
// nothing else.
#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "collector/snapshot.h"
#include "shell.h"

namespace
{

std::string text_of(const char *file)
{
    std::ifstream in(file);
    return {std::istreambuf_iterator<char>(in), {}};
}

TEST(PonfrontPages, AreGoodMdoc)
{
    EXPECT_EQ(complaints_about(PAGE), "");
    EXPECT_EQ(complaints_about(CONFIGURATION_PAGE), "");
}

TEST(PonfrontPages, DescribeTheOptionsThatThereAre)
{
    const Names options = found(output_of(PONFRONT " --help"), "--([a-z]+)(?=[ ,]|\\n)");
    EXPECT_EQ(found(text_of(PAGE), "\n\\.It (?:Fl h , )?Fl -([a-z]+)"), options);
}

TEST(PonfrontPages, DescribeTheCommandsForUsers)
{
    const Names commands = found(output_of(PONFRONT " user --help"), "\n  ([a-z]+) ");
    EXPECT_THAT(commands, testing::SizeIs(6));
    for (const std::string &command : commands) {
        EXPECT_THAT(text_of(PAGE), testing::HasSubstr("\n.It Cm " + command));
        const std::string help = output_of(PONFRONT " user " + command + " --help");
        for (const std::string &option : found(help, "--([a-z]+)(?=[ ,]|\n)"))
            EXPECT_THAT(text_of(PAGE), testing::AnyOf(testing::HasSubstr("Fl -" + option),
                                                      testing::HasSubstr("Fl h , Fl -" + option)));
    }
}

TEST(PonfrontPages, HaveThePeriodOfEachTable)
{
    const std::string page = text_of(CONFIGURATION_PAGE);
    for (const front::TableKind &kind : front::table_kinds()) {
        const std::string entry = std::string(".It Cm ") + kind.name + "\n";
        const size_t start = page.find(entry, page.find(".Ss [periods]"));
        ASSERT_NE(start, page.npos) << kind.name;
        const size_t line = start + entry.size();
        EXPECT_THAT(page.substr(line, page.find('\n', line) - line),
                    testing::EndsWith(": " + std::to_string(kind.period) + "."))
            << kind.name;
    }
}

} // namespace
