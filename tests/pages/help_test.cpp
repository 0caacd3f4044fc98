// The help of every command.
#include <cctype>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/program.h"
#include "pages/tree.h"
#include "shell.h"
#include "tool.h"

namespace
{

using namespace ponctl;
using testing::HasSubstr;

std::vector<std::string> words_of(const CLI::App &command)
{
    const std::string path = path_of(command);
    return path.empty() ? std::vector<std::string>() : CLI::detail::split(path, ' ');
}

Said help_of(const CLI::App &command)
{
    std::vector<std::string> words = words_of(command);
    words.push_back("--help");
    return run_tool(words);
}

// An acronym may stand anywhere.
bool starts_in_lower_case(const std::string &text)
{
    const auto upper = [&text](size_t i) { return std::isupper(static_cast<unsigned char>(text[i])) != 0; };
    return !upper(0) || (text.size() > 1 && upper(1));
}

TEST(Help, OfEveryCommandGoesToStandardOutputWithSuccess)
{
    const Program program;
    for (const CLI::App *command : all_commands_of(program.app)) {
        const Said finished = help_of(*command);
        const std::string path = path_of(*command);
        EXPECT_EQ(finished.code, 0) << path;
        EXPECT_EQ(finished.err, "") << path;
        EXPECT_THAT(finished.out, HasSubstr("\nUsage: ponctl " + (path.empty() ? "" : path + " ") + "["));
    }
}

TEST(Help, NamesAllThatACommandTakes)
{
    const Program program;
    for (const CLI::App *command : all_commands_of(program.app)) {
        const std::string help = help_of(*command).out;
        for (const CLI::App *each : commands_of(*command))
            EXPECT_THAT(help, HasSubstr("\n  " + each->get_name())) << path_of(*command);
        for (const CLI::Option *argument : arguments_of(*command))
            EXPECT_THAT(help, HasSubstr("\n  " + argument->get_name(true))) << path_of(*command);
        for (const CLI::Option *option : options_of(*command))
            EXPECT_THAT(help, HasSubstr(spellings_of(*option).back())) << path_of(*command);
    }
}

TEST(Help, FitsATerminal)
{
    const Program program;
    for (const CLI::App *command : all_commands_of(program.app))
        for (const std::string &line : lines_of(help_of(*command).out))
            EXPECT_LE(line.size(), 80u) << line;
}

TEST(Help, DescribesEveryArgumentAndOptionAlike)
{
    const Program program;
    for (const CLI::App *command : all_commands_of(program.app))
        for (const CLI::Option *option : command->get_options()) {
            const std::string about = option->get_description();
            const std::string where = path_of(*command) + " " + option->get_name(true, true);
            ASSERT_NE(about, "") << where;
            EXPECT_TRUE(starts_in_lower_case(about)) << where << ": " << about;
            EXPECT_NE(about.back(), '.') << where << ": " << about;
        }
}

TEST(Help, SaysWhatEveryCommandDoesInTheThirdPerson)
{
    const Program program;
    for (const CLI::App *command : all_commands_of(program.app)) {
        if (!command->get_parent()) continue;
        const std::string about = command->get_description();
        const std::string verb = about.substr(0, about.find_first_of(", "));
        EXPECT_TRUE(std::isupper(static_cast<unsigned char>(verb.front()))) << about;
        EXPECT_TRUE(verb.ends_with('s')) << about;
        EXPECT_NE(about.back(), '.') << about;
    }
}

TEST(Help, NamesTheValueOfEveryOption)
{
    const Program program;
    for (const CLI::App *command : all_commands_of(program.app))
        for (const CLI::Option *option : options_of(*command)) {
            if (option->get_type_size() == 0) continue;
            EXPECT_THAT(help_of(*command).out, HasSubstr(spellings_of(*option).back() + " " + value_name(*option)));
        }
}

} // namespace
