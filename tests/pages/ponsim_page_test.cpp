// These tests check that the page of the daemon, which is written by hand, has everything that the daemon has, and
// nothing else.
#include <algorithm>
#include <fstream>
#include <set>

#include <gtest/gtest.h>

#include "daemon/console.h"
#include "shell.h"

namespace
{

// Returns the source of the page.
std::string page()
{
    std::ifstream in(PAGE);
    return {std::istreambuf_iterator<char>(in), {}};
}

// Returns a section or subsection of the page.
std::string section(const std::string &heading)
{
    const std::string text = page();
    const size_t start = text.find(heading + "\n");
    EXPECT_NE(start, text.npos) << heading;
    const size_t end = std::min(text.find("\n.Sh ", start), text.find("\n.Ss ", start));
    return text.substr(start, end - start);
}

// Returns the options of the program itself, or of one of its commands.
Names options_of(const std::string &command = {})
{
    return found(output_of(PONSIM " " + command + " --help"), "\n  (?:-\\w,)?--([a-z-]+)");
}

TEST(PonsimPage, IsGoodMdoc)
{
    EXPECT_EQ(complaints_about(PAGE), "");
}

TEST(PonsimPage, DescribesTheOptionsThatThereAre)
{
    Names wanted = options_of();
    wanted.merge(options_of("test"));
    EXPECT_EQ(found(page(), "\n\\.It (?:Fl h , )?Fl -([a-z-]+)"), wanted);
}

TEST(PonsimPage, HasTheOptionsInItsSynopsis)
{
    Names wanted = options_of();
    wanted.merge(options_of("ctl"));
    wanted.merge(options_of("replay"));
    wanted.merge(options_of("rerun"));
    wanted.merge(options_of("test"));
    wanted.erase("help");
    wanted.erase("version");
    EXPECT_EQ(found(section(".Sh SYNOPSIS"), "Fl -([a-z-]+)"), wanted);
}

TEST(PonsimPage, DescribesTheControlCommandsThatThereAre)
{
    ponsim::Store store("", false);
    ponsim::Simulator simulator(store, {});
    ponsim::Clock clock(0, 0);
    const Names commands = found("\n" + ponsim::control(simulator, clock, "help"), "\n([a-z-]+) ");
    EXPECT_EQ(found(section(".Ss Model time and control"), "\n\\.It Cm ([a-z-]+)"), commands);
}

} // namespace
