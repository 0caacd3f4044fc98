// These tests check the pages of the manual that are written from what ponctl knows of itself.
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue.h"
#include "cli/program.h"
#include "pages/tree.h"
#include "shell.h"
#include "text/words.h"

namespace
{

using namespace ponctl;
using testing::AnyOf;
using testing::HasSubstr;

std::string page_of(const Syntax &group)
{
    return MANUAL "/man1/ponctl-" + group.name + ".1";
}

// Returns the part of a page, as it is read, from a heading with this text to the next heading.
std::string section_of(const std::string &page, const std::string &heading)
{
    std::string section;
    bool inside = false;
    for (const std::string &line : lines_of(page)) {
        const bool starts_one = !line.empty() && line.find_first_not_of(' ') < 5;
        if (starts_one) inside = line.substr(line.find_first_not_of(' ')) == heading;
        if (inside) section += line + "\n";
    }
    return section;
}

TEST(Manual, IsGoodMdoc)
{
    size_t pages = 0;
    for (const auto &file : std::filesystem::recursive_directory_iterator(MANUAL)) {
        if (!file.is_regular_file()) continue;
        EXPECT_EQ(complaints_about(file.path()), "");
        ++pages;
    }
    const Program program;
    EXPECT_EQ(pages, commands_of(program.tree).size() + 2);
}

TEST(Manual, ListsEveryCommandInTheOverview)
{
    const Program program;
    const std::string commands = section_of(rendered(MANUAL "/man1/ponctl.1"), "COMMANDS");
    for (const Syntax *group : commands_of(program.tree)) {
        const std::string item = "\n     " + group->name;
        EXPECT_THAT(commands, AnyOf(HasSubstr(item + " "), HasSubstr(item + "\n")));
        EXPECT_THAT(commands, HasSubstr("See ponctl-" + group->name + "(1)."));
    }
}

TEST(Manual, HasEveryOptionOfTheProgramInTheOverview)
{
    const Program program;
    const std::string options = section_of(rendered(MANUAL "/man1/ponctl.1"), "OPTIONS");
    for (const Operand &option : program.tree.options)
        EXPECT_THAT(options, HasSubstr(text::join(option.spellings())));
}

TEST(Manual, OverviewHasAllThatIsWrittenByHand)
{
    const std::string page = rendered(MANUAL "/man1/ponctl.1");
    for (const char *heading : {"DESCRIPTION", "VALUES", "ENVIRONMENT", "FILES", "EXIT STATUS", "EXAMPLES"})
        EXPECT_GT(lines_of(section_of(page, heading)).size(), 2u) << heading;
}

TEST(Manual, HasASectionForEveryCommandBelowAGroup)
{
    const Program program;
    for (const Syntax *group : commands_of(program.tree)) {
        const std::string page = rendered(page_of(*group));
        for (const Syntax *command : all_commands_of(*group)) {
            const std::string heading = command == group ? "DESCRIPTION" : command->path();
            const std::string section = section_of(page, heading);
            EXPECT_THAT(section, HasSubstr(command->brief)) << heading;
            for (const Operand &argument : command->arguments)
                EXPECT_THAT(section, HasSubstr("\n     " + argument.name)) << heading;
            for (const Operand &option : command->options) {
                if (command->inherits(option)) continue;
                EXPECT_THAT(section, HasSubstr(text::join(option.spellings()))) << heading;
            }
        }
    }
}

TEST(Manual, HasTheSynopsisOfEveryCommandThatRuns)
{
    const Program program;
    for (const Syntax *group : commands_of(program.tree)) {
        const std::string synopsis = section_of(rendered(page_of(*group)), "SYNOPSIS");
        for (const Syntax *command : all_commands_of(*group)) {
            if (!command->runs_itself()) continue;
            const std::string line = "     ponctl " + command->path();
            const bool there = (synopsis + " ").find(line + "\n") != synopsis.npos ||
                               (synopsis + " ").find(line + " ") != synopsis.npos;
            EXPECT_TRUE(there) << line << " in\n" << synopsis;
        }
    }
}

TEST(Manual, HasEveryOperationWithItsArguments)
{
    const std::string page = rendered(MANUAL "/man7/ponctl-operations.7");
    for (const catalogue::Operation &operation : catalogue::operations()) {
        const std::string section = section_of(page, std::string(operation.name));
        EXPECT_THAT(section, HasSubstr("Class   ")) << operation.name;
        EXPECT_THAT(section, HasSubstr("Failure\n")) << operation.name;
        EXPECT_THAT(section, HasSubstr(std::string(operation.channel->name))) << operation.name;
        for (const catalogue::Argument &argument : operation.arguments)
            EXPECT_THAT(section, HasSubstr("\n     " + std::string(argument.name))) << operation.name;
    }
    for (const catalogue::Function &function : catalogue::functions())
        EXPECT_THAT(section_of(page, std::string(function.name)), HasSubstr("It makes no request."));
}

TEST(Manual, HasEveryStatusWord)
{
    const std::string words = section_of(rendered(MANUAL "/man7/ponctl-operations.7"), "STATUS WORDS");
    for (const catalogue::Status &status : catalogue::statuses())
        EXPECT_THAT(words, HasSubstr("\n     " + std::to_string(status.value) + " " + std::string(status.name)));
}

} // namespace
