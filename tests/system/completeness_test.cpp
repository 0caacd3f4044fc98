// These tests check that every operation is everywhere: in the catalogue, the library, its contract test, its header,
// the tool and the simulated service. Each test names what is missing.
#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <regex>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "catalogue.h"
#include "handlers/handler.h"
#include "ponctl/support/any_arguments.h"
#include "ponctl/support/process.h"
#include "simulator.h"

namespace
{

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;
using Names = std::set<std::string>;

// Returns what is in one set and not in the other.
Names only_in(const Names &these, const Names &those)
{
    Names rest;
    std::ranges::set_difference(these, those, std::inserter(rest, rest.end()));
    return rest;
}

Names operations()
{
    Names names;
    for (const catalogue::Operation &operation : catalogue::operations())
        names.emplace(operation.name);
    return names;
}

// Returns all functions, including those that make no request.
Names all()
{
    Names names = operations();
    for (const catalogue::Function &function : catalogue::functions())
        names.emplace(function.name);
    return names;
}

std::string output_of(const std::string &command)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> pipe(popen(command.c_str(), "r"), pclose);
    if (!pipe) throw std::runtime_error("cannot run " + command);
    std::string text;
    std::array<char, 4096> chunk;
    while (const size_t count = std::fread(chunk.data(), 1, chunk.size(), pipe.get()))
        text.append(chunk.data(), count);
    return text;
}

// Returns what the first group of the expression matches, line by line.
Names matches(const std::string &text, const std::string &expression)
{
    const std::regex pattern(expression);
    Names names;
    std::istringstream lines(text);
    std::smatch match;
    for (std::string line; std::getline(lines, line);)
        if (std::regex_search(line, match, pattern)) names.insert(match[1]);
    return names;
}

void expect_same(const Names &expected, const Names &found, const char *place)
{
    EXPECT_EQ(only_in(expected, found), Names()) << "in the catalogue and not in " << place;
    EXPECT_EQ(only_in(found, expected), Names()) << "in " << place << " and not in the catalogue";
}

TEST(Completeness, ThereAre237Functions)
{
    EXPECT_EQ(all().size(), 237u);
    EXPECT_EQ(catalogue::operations().size() + catalogue::functions().size(), 237u) << "two of one name";
}

TEST(Completeness, TheLibraryExportsThem)
{
    expect_same(all(), matches(output_of(NM " -D --defined-only " LIBRARY), "^[0-9a-f]+ T (\\w+)"), "the library");
}

TEST(Completeness, TheContractTestCoversEachThatMakesARequest)
{
    const std::string tests = output_of(CONTRACT_TEST " --gtest_list_tests --gtest_filter=Each/Request.*");
    expect_same(operations(), matches(tests, "^ +\\w+/(\\w+)"), "the contract test");
}

TEST(Completeness, TheHeaderDescribesThem)
{
    std::ifstream file(HEADER);
    const std::string header{std::istreambuf_iterator<char>(file), {}};
    Names described;
    std::istringstream lines(header);
    const std::regex prototype("^BSP_PON_API .*?(\\w+)\\(");
    std::smatch match;
    bool after_comment = false;
    for (std::string line; std::getline(lines, line); after_comment = line.ends_with("*/"))
        if (after_comment && std::regex_search(line, match, prototype)) described.insert(match[1]);
    expect_same(all(), described, "the header with a description");
}

TEST(Completeness, TheToolHasThem)
{
    rapidjson::Document pages;
    pages.Parse(ponctl({"ops", "-o", "json"}).out.c_str());
    ASSERT_TRUE(pages.IsArray());
    Names names;
    for (const rapidjson::Value &page : pages.GetArray())
        names.insert(page["name"].GetString());
    expect_same(all(), names, "the tool");
}

// Returns the channel whose commands an operation takes: its own channel, or the other channel whose record it sends.
const catalogue::Channel &channel_of(const catalogue::Operation &operation)
{
    if (operation.command || operation.record == operation.channel->record) return *operation.channel;
    return *std::ranges::find(catalogue::channels(), operation.record, &catalogue::Channel::record);
}

// Returns a command that a caller of this operation may state, or null when there is none. For an operation that
// delivers rows it is a command that has rows, if there is one: the tool takes an answer without them for a failure.
const catalogue::Command *command_for(const catalogue::Operation &operation)
{
    const bool asks = operation.call == catalogue::Call::get || operation.call == catalogue::Call::dgram_get;
    const bool lists = std::ranges::any_of(operation.arguments, [](const catalogue::Argument &argument) {
        return argument.type == catalogue::ArgumentType::db && !argument.dropped;
    });
    const catalogue::Command *any = nullptr;
    for (const catalogue::Command &command : catalogue::commands()) {
        const bool fits = command.channel == &channel_of(operation) &&
                          command.call.value_or(operation.call) == operation.call &&
                          asks == (command.impact == catalogue::Class::read);
        if (fits && lists && catalogue::find_view(command)) return &command;
        if (fits && !any) any = &command;
    }
    return any;
}

TEST(Completeness, TheServiceHasAHandlerForEach)
{
    Names missing;
    for (const catalogue::Operation &operation : catalogue::operations()) {
        const catalogue::Command *command = operation.command ? operation.command : command_for(operation);
        if (!command || !ponsim::find_handler(channel_of(operation).type, command->code, operation.call))
            missing.emplace(operation.name);
    }
    EXPECT_EQ(missing, Names());
}

TEST(Completeness, TheServiceAnswersEachThatTheToolCalls)
{
    const Simulator simulator;
    std::string lines;
    for (const catalogue::Operation &operation : catalogue::operations()) {
        const catalogue::Command *stated = operation.command ? nullptr : command_for(operation);
        for (const std::string &word : words_for(operation, {.number = "1", .command = stated}))
            lines += "'" + word + "' ";
        lines += "--yes\n";
    }
    const Finished finished = ponctl({"batch", "--keep-going", "-"}, -1, Input(lines).descriptor());
    // Exit code 1 means a status of the service.
    EXPECT_EQ(finished.code, 1);
    EXPECT_THAT(finished.err, HasSubstr(" of " + std::to_string(catalogue::operations().size()) + " lines failed:\n"));
    EXPECT_THAT(finished.err, Not(HasSubstr("PON_ERR_UNKNOWN_COMMAND")));
    EXPECT_THAT(finished.err, Not(ContainsRegex("ended with [^1]")));
}

} // namespace
