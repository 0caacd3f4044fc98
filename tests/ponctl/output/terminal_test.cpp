// These tests check what the tool does differently on a terminal.
#include <cstdlib>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "process.h"

namespace
{

using testing::HasSubstr;
using testing::Not;

std::string on_terminal(const std::vector<std::string> &arguments)
{
    Terminal terminal;
    EXPECT_EQ(ponctl(arguments, terminal.descriptor()).code, 0);
    return terminal.text();
}

TEST(Terminal, IsNotNarrowerThanATable)
{
    std::istringstream lines(on_terminal({"--no-headings", "ops", "offline"}));
    for (std::string line; std::getline(lines, line);) {
        line.erase(line.find_last_not_of(" \r") + 1);
        EXPECT_LE(line.size(), 80u) << line;
        EXPECT_THAT(line, HasSubstr("bsp_pon_no_bind_offline_onu_all"));
    }
}

TEST(Terminal, ShowsALongFieldWhole)
{
    std::string digits;
    for (int byte = 0; byte < 100; ++byte)
        digits += std::to_string(10 + byte % 90);
    std::string text = on_terminal({"call", "bsp_pon_cfg", "cmd=1", "pon_port=1", "data=hex:" + digits, "--dry-run"});
    std::erase_if(text, [](char c) { return c == ' ' || c == '\r' || c == '\n'; });
    EXPECT_THAT(text, HasSubstr("data429hex:" + digits));
}

TEST(Terminal, HasColourUnlessNoColorIsSet)
{
    EXPECT_THAT(on_terminal({"ops", "offline"}), HasSubstr("\033["));
    setenv("NO_COLOR", "1", 1);
    EXPECT_THAT(on_terminal({"ops", "offline"}), Not(HasSubstr("\033[")));
    unsetenv("NO_COLOR");
}

TEST(Terminal, NothingElseHasColour)
{
    EXPECT_THAT(ponctl({"ops", "offline"}).out, Not(HasSubstr("\033[")));
}

} // namespace
