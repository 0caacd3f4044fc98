// These tests check the help of every command.
#include <cctype>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/program.h"
#include "pages/tree.h"
#include "shell.h"
#include "text/words.h"
#include "tool.h"

namespace
{

using namespace ponctl;
using testing::HasSubstr;

std::vector<std::string> words_of(const Syntax &command)
{
    const std::string path = command.path();
    return path.empty() ? std::vector<std::string>() : text::split(path, ' ');
}

Said help_of(const Syntax &command)
{
    std::vector<std::string> words = words_of(command);
    words.push_back("--help");
    return run_tool(words);
}

// An acronym may stand at the start, too.
bool starts_in_lower_case(const std::string &text)
{
    const auto upper = [&text](size_t i) { return std::isupper(static_cast<unsigned char>(text[i])) != 0; };
    return !upper(0) || (text.size() > 1 && upper(1));
}

TEST(Help, OfEveryCommandGoesToStandardOutputWithSuccess)
{
    const Program program;
    for (const Syntax *command : all_commands_of(program.tree)) {
        const Said finished = help_of(*command);
        const std::string path = command->path();
        EXPECT_EQ(finished.code, 0) << path;
        EXPECT_EQ(finished.err, "") << path;
        EXPECT_THAT(finished.out, HasSubstr("\nUsage: ponctl " + (path.empty() ? "" : path + " ") + "["));
    }
}

TEST(Help, NamesAllThatACommandTakes)
{
    const Program program;
    for (const Syntax *command : all_commands_of(program.tree)) {
        const std::string help = help_of(*command).out;
        for (const Syntax *each : commands_of(*command))
            EXPECT_THAT(help, HasSubstr("\n  " + each->name)) << command->path();
        for (const Operand &argument : command->arguments)
            EXPECT_THAT(help, HasSubstr("\n  " + argument.name)) << command->path();
        for (const Operand &option : command->options)
            EXPECT_THAT(help, HasSubstr(option.spellings().back())) << command->path();
    }
}

TEST(Help, FitsATerminal)
{
    const Program program;
    for (const Syntax *command : all_commands_of(program.tree))
        for (const std::string &line : lines_of(help_of(*command).out))
            EXPECT_LE(line.size(), 80u) << line;
}

TEST(Help, DescribesEveryArgumentAndOptionAlike)
{
    const Program program;
    for (const Syntax *command : all_commands_of(program.tree))
        for (const auto *operands : {&command->arguments, &command->options})
            for (const Operand &operand : *operands) {
                const std::string &about = operand.help;
                const std::string where = command->path() + " " + operand.name;
                ASSERT_NE(about, "") << where;
                EXPECT_TRUE(starts_in_lower_case(about)) << where << ": " << about;
                EXPECT_NE(about.back(), '.') << where << ": " << about;
            }
}

TEST(Help, SaysWhatEveryCommandDoesInTheThirdPerson)
{
    const Program program;
    for (const Syntax *command : all_commands_of(program.tree)) {
        if (!command->parent) continue;
        const std::string about = command->brief;
        const std::string verb = about.substr(0, about.find_first_of(", "));
        EXPECT_TRUE(std::isupper(static_cast<unsigned char>(verb.front()))) << about;
        EXPECT_TRUE(verb.ends_with('s')) << about;
        EXPECT_NE(about.back(), '.') << about;
    }
}

TEST(Help, NamesTheValueOfEveryOption)
{
    const Program program;
    for (const Syntax *command : all_commands_of(program.tree))
        for (const Operand &option : command->options) {
            if (option.is_flag()) continue;
            EXPECT_THAT(help_of(*command).out, HasSubstr(option.spellings().back() + " " + option.value_name()));
        }
}

} // namespace
