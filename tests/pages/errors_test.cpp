// These tests check what the tool says to wrong input. Each file of the folder errors has command lines of one group of
// commands, with what they write on standard error and the exit code. There is no service and no terminal.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "cli/program.h"
#include "pages/tree.h"
#include "shell/tokens.h"
#include "tool.h"

namespace
{

struct Case {
    std::string line; // the text after "$ "
    std::string error;
    int code = -1; // the number after "exit "
};

std::vector<Case> cases_of(const std::filesystem::path &file)
{
    std::ifstream in(file);
    std::vector<Case> cases;
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with("$ "))
            cases.push_back({line.substr(2), {}, -1});
        else if (line.starts_with("exit "))
            cases.back().code = std::stoi(line.substr(5));
        else if (!line.empty())
            cases.back().error += line + "\n";
    }
    return cases;
}

// Returns the words of a line without the program's name. Apostrophes hold words together.
std::vector<std::string> words_of(const std::string &line)
{
    std::vector<std::string> words = ponctl::split_line(line);
    words.erase(words.begin());
    return words;
}

std::vector<std::filesystem::path> files()
{
    std::vector<std::filesystem::path> all;
    for (const auto &entry : std::filesystem::directory_iterator(ERRORS))
        all.push_back(entry.path());
    std::ranges::sort(all);
    return all;
}

class Errors : public testing::TestWithParam<std::filesystem::path>
{
};

void write_cases(const std::filesystem::path &file, const std::vector<Case> &cases)
{
    std::ofstream out(file);
    for (const Case &each : cases)
        out << (&each == &cases.front() ? "" : "\n") << "$ " << each.line << "\n"
            << each.error << "exit " << each.code << "\n";
}

// With WRITE_ERRORS in the environment, the current messages are written to the file. Read them before you commit them.
TEST_P(Errors, AreTheOnesThatAreCommitted)
{
    setenv("BOARD_IPC_DIR", "/nonexistent", 1);
    std::vector<Case> cases = cases_of(GetParam());
    ASSERT_FALSE(cases.empty());
    for (Case &each : cases) {
        const Said said = run_tool(words_of(each.line));
        EXPECT_EQ(said.err, each.error) << each.line;
        EXPECT_EQ(said.code, each.code) << each.line;
        each.error = said.err;
        each.code = said.code;
    }
    if (std::getenv("WRITE_ERRORS")) write_cases(GetParam(), cases);
}

INSTANTIATE_TEST_SUITE_P(OfGroup, Errors, testing::ValuesIn(files()),
                         [](const auto &each) { return each.param.stem().string(); });

TEST(ErrorFiles, AreThereForEveryGroup)
{
    const ponctl::Program program;
    for (const ponctl::Syntax *group : ponctl::commands_of(program.tree))
        EXPECT_TRUE(std::filesystem::exists(std::filesystem::path(ERRORS) / (group->name + ".txt")))
            << group->name << ": write what it says to wrong input";
}

} // namespace
