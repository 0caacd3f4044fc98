// These tests check the completions of shells. bash runs its completion. The other shells may be missing, so the tests
// check what their completions contain.
#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue.h"
#include "cli/program.h"
#include "pages/tree.h"
#include "shell.h"

namespace
{

using namespace ponctl;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::UnorderedElementsAreArray;
using Words = std::vector<std::string>;

// Returns what bash offers at the end of each of the lines.
std::vector<Words> completed(const Words &lines)
{
    std::string script = "source " COMPLETION "/ponctl\n";
    for (const std::string &line : lines)
        script += "COMP_LINE='" + line + "'; COMP_POINT=${#COMP_LINE}; _ponctl; echo \"${COMPREPLY[*]}\"\n";
    const std::string file = testing::TempDir() + "complete." + std::to_string(getpid());
    std::ofstream(file) << script;
    std::vector<Words> offered;
    for (const std::string &line : lines_of(output_of("bash --norc '" + file + "'"))) {
        std::istringstream words(line);
        offered.emplace_back(std::istream_iterator<std::string>(words), std::istream_iterator<std::string>());
    }
    unlink(file.c_str());
    EXPECT_EQ(offered.size(), lines.size()) << testing::PrintToString(offered);
    offered.resize(lines.size());
    return offered;
}

Words completed(const std::string &line)
{
    return completed(Words{line}).front();
}

Words names_of(const std::vector<const Syntax *> &commands)
{
    Words names;
    for (const Syntax *command : commands)
        names.push_back(command->name);
    return names;
}

const Syntax &command_named(const std::string &name, const Program &program)
{
    return **std::ranges::find(program.tree.commands, name, &Syntax::name);
}

// Returns the options of the command itself. --help belongs to the program.
Words spellings_of_options(const Syntax &command)
{
    Words spellings;
    for (const Operand &option : command.options) {
        if (command.inherits(option)) continue;
        for (const std::string &spelling : option.spellings())
            spellings.push_back(spelling);
    }
    return spellings;
}

TEST(BashCompletion, FinishesACommand)
{
    EXPECT_THAT(completed("ponctl on"), ElementsAre("onu"));
    EXPECT_THAT(completed("ponctl onu bi"), ElementsAre("bind"));
    EXPECT_THAT(completed("ponctl zzz"), IsEmpty());
}

TEST(BashCompletion, KnowsEveryCommandAndOptionOfEveryCommand)
{
    const Program program;
    const auto commands = all_commands_of(program.tree);
    Words lines;
    for (const Syntax *command : commands) {
        const std::string line = "ponctl " + command->path();
        lines.push_back(line + (line.ends_with(' ') ? "" : " "));
        lines.push_back(lines.back() + "-");
    }
    const std::vector<Words> offered = completed(lines);
    const Words everywhere = spellings_of_options(program.tree);
    for (size_t i = 0; i < commands.size(); ++i) {
        EXPECT_THAT(offered[2 * i], IsSupersetOf(names_of(commands_of(*commands[i])))) << lines[2 * i];
        EXPECT_THAT(offered[2 * i + 1], IsSupersetOf(spellings_of_options(*commands[i]))) << lines[2 * i];
        EXPECT_THAT(offered[2 * i + 1], IsSupersetOf(everywhere)) << lines[2 * i];
    }
}

TEST(BashCompletion, OffersTheCommandsOfAGroupAndNothingElse)
{
    const Program program;
    EXPECT_THAT(completed("ponctl onu "),
                UnorderedElementsAreArray(names_of(commands_of(command_named("onu", program)))));
    EXPECT_THAT(completed("ponctl "), UnorderedElementsAreArray(names_of(commands_of(program.tree))));
}

TEST(BashCompletion, OffersTheWordsThatAnOptionTakes)
{
    EXPECT_THAT(completed("ponctl -o "), ElementsAre("table", "json", "hex", "csv"));
    EXPECT_THAT(completed("ponctl onu list --output j"), ElementsAre("json"));
    EXPECT_THAT(completed("ponctl --output=t"), ElementsAre("table"));
    EXPECT_THAT(completed("ponctl fdb set 300 --learning "), ElementsAre("on", "off"));
}

TEST(BashCompletion, OffersNothingWhereOnlyTheUserKnows)
{
    EXPECT_THAT(completed("ponctl onu bind 1 --id "), IsEmpty());
    EXPECT_THAT(completed("ponctl onu list "), IsEmpty());
}

TEST(BashCompletion, OffersTheWordsOfAnArgumentAtItsPlace)
{
    EXPECT_THAT(completed("ponctl auth set 1 "), ElementsAre("mac", "loid", "loid-password", "hybrid"));
    EXPECT_THAT(completed("ponctl -o json auth set --loid x 1 h"), ElementsAre("hybrid"));
    EXPECT_THAT(completed("ponctl auth set 1 mac "), IsEmpty());
    EXPECT_THAT(completed("ponctl onu services 1/5 wan wl"), ElementsAre("wlan"));
}

TEST(BashCompletion, FinishesOperationsChannelsRecordsAndKinds)
{
    EXPECT_THAT(completed("ponctl call bsp_pon_bind_onu_sp"), ElementsAre("bsp_pon_bind_onu_spec_id"));
    EXPECT_THAT(completed("ponctl ops bsp_pon_bind_onu_sp"), ElementsAre("bsp_pon_bind_onu_spec_id"));
    EXPECT_THAT(completed("ponctl raw BSP_MSG_PLA"), ElementsAre("BSP_MSG_PLAT"));
    EXPECT_THAT(completed("ponctl raw BSP_MSG_PON get --record bsp_pla"), ElementsAre("bsp_plat_msg"));
    EXPECT_THAT(completed("ponctl profile show li"), ElementsAre("line"));
}

TEST(BashCompletion, FinishesTheArgumentsOfAnOperation)
{
    EXPECT_THAT(completed("ponctl call bsp_pon_bind_onu_spec_id "),
                ElementsAre("pon_port=", "onu_id=", "mac=", "text_a=", "text_b=", "value=", "text_c="));
    EXPECT_THAT(completed("ponctl call bsp_pon_bind_onu_spec_id mac=00:11:22:33:44:55 o"), ElementsAre("onu_id="));
    EXPECT_THAT(completed("ponctl call bsp_pon_no_bind_onu_batch_spec_id record.onu_s"), Contains("record.onu_set="));
}

TEST(BashCompletion, KnowsEveryOperation)
{
    EXPECT_EQ(completed("ponctl call ").size(), catalogue::operations().size());
}

TEST(BashCompletion, FinishesFilesAndFolders)
{
    EXPECT_THAT(completed("ponctl config load " COMPLETION "/ponctl.f"), ElementsAre(COMPLETION "/ponctl.fish"));
    EXPECT_THAT(completed("ponctl --socket-dir " COMPLETION "/.."), ElementsAre(COMPLETION "/.."));
    EXPECT_THAT(completed("ponctl --socket-dir " COMPLETION "/pon"), IsEmpty());
}

// Returns the first words of the candidates under a key of a table: the text between a quotation mark and one of
// `ends`.
Words words_of_table(const std::string &table, const std::string &head, const std::string &tail,
                     const std::string &start, const std::string &ends)
{
    Words words;
    const size_t from = table.find(head);
    if (from == table.npos) return words;
    const size_t to = table.find(tail, from + head.size());
    for (const std::string &line : lines_of(table.substr(from + head.size(), to - from - head.size()))) {
        const size_t at = line.find(start);
        if (at == line.npos) continue;
        const size_t first = at + start.size();
        words.push_back(line.substr(first, line.find_first_of(ends, first) - first));
    }
    return words;
}

std::string contents(const char *file)
{
    std::ifstream in(file);
    return {std::istreambuf_iterator<char>(in), {}};
}

// Compares the commands and options of a table with those that exist.
template <class Known>
void compare_with_commands(Known known)
{
    const Program program;
    for (const Syntax *command : all_commands_of(program.tree)) {
        const std::string path = command->path();
        EXPECT_EQ(known("commands:" + path), names_of(commands_of(*command))) << path;
        EXPECT_EQ(known("options:" + path), spellings_of_options(*command)) << path;
    }
}

TEST(ZshCompletion, KnowsEveryCommandAndOption)
{
    const std::string table = contents(COMPLETION "/_ponctl");
    EXPECT_EQ(lines_of(table).front(), "#compdef ponctl");
    compare_with_commands([&table](const std::string &key) {
        return words_of_table(table, "    '" + key + "') known=(", ";;", "        '", ":'");
    });
}

TEST(FishCompletion, KnowsEveryCommandAndOption)
{
    const std::string table = contents(COMPLETION "/ponctl.fish");
    compare_with_commands([&table](const std::string &key) {
        return words_of_table(table, "        case '" + key + "'\n", "        case '", "\\n' '", "'");
    });
}

} // namespace
