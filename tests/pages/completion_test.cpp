// These tests check the completions of shells where no service answers. A shell that is missing is skipped.
#include <algorithm>
#include <cstdlib>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue.h"
#include "cli/program.h"
#include "completing_shell.h"
#include "pages/tree.h"

namespace
{

using namespace ponctl;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::StartsWith;
using testing::UnorderedElementsAreArray;
using Words = std::vector<std::string>;

class Completion : public testing::TestWithParam<ShellKind>
{
protected:
    void SetUp() override
    {
        if (!is_installed(GetParam())) GTEST_SKIP() << "the shell is not installed";
        setenv("BOARD_IPC_DIR", "/nonexistent", 1);
    }
    ~Completion() override { unsetenv("BOARD_IPC_DIR"); }

    std::vector<Words> completed(const Words &lines) const { return completed_by(GetParam(), lines); }
    Words completed(const std::string &line) const { return completed(Words{line}).front(); }
    // Returns how the shell writes the value of a long option: bash and readline replace what is behind the = alone.
    std::string with_option(const std::string &option, const std::string &value) const
    {
        return GetParam() == ShellKind::bash ? value : option + "=" + value;
    }
};

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

TEST_P(Completion, FinishesACommand)
{
    EXPECT_THAT(completed("ponctl on"), ElementsAre("onu"));
    EXPECT_THAT(completed("ponctl onu bi"), ElementsAre("bind"));
    EXPECT_THAT(completed("ponctl zzz"), IsEmpty());
}

TEST_P(Completion, KnowsEveryCommandAndOptionOfEveryCommand)
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

TEST_P(Completion, OffersTheCommandsOfAGroupAndNothingElse)
{
    const Program program;
    EXPECT_THAT(completed("ponctl onu "),
                UnorderedElementsAreArray(names_of(commands_of(command_named("onu", program)))));
    EXPECT_THAT(completed("ponctl "), UnorderedElementsAreArray(names_of(commands_of(program.tree))));
}

TEST_P(Completion, OffersTheWordsThatAnOptionTakes)
{
    EXPECT_THAT(completed("ponctl -o "), ElementsAre("table", "json", "hex", "csv"));
    EXPECT_THAT(completed("ponctl onu list --output j"), ElementsAre("json"));
    EXPECT_THAT(completed("ponctl --output=t"), ElementsAre(with_option("--output", "table")));
    EXPECT_THAT(completed("ponctl fdb set 300 --learning "), ElementsAre("on", "off"));
}

TEST_P(Completion, OffersNothingWhereOnlyTheUserKnows)
{
    EXPECT_THAT(completed("ponctl onu bind 1 --id "), IsEmpty());
    EXPECT_THAT(completed("ponctl onu list "), IsEmpty());
}

TEST_P(Completion, OffersTheWordsOfAnArgumentAtItsPlace)
{
    EXPECT_THAT(completed("ponctl auth set 1 "), ElementsAre("mac", "loid", "loid-password", "hybrid"));
    EXPECT_THAT(completed("ponctl -o json auth set --loid x 1 h"), ElementsAre("hybrid"));
    EXPECT_THAT(completed("ponctl auth set 1 mac "), IsEmpty());
    EXPECT_THAT(completed("ponctl onu services 1/5 wan wl"), ElementsAre("wlan"));
}

TEST_P(Completion, FinishesOperationsChannelsRecordsAndKinds)
{
    EXPECT_THAT(completed("ponctl call bsp_pon_bind_onu_sp"), ElementsAre("bsp_pon_bind_onu_spec_id"));
    EXPECT_THAT(completed("ponctl ops bsp_pon_bind_onu_sp"), ElementsAre("bsp_pon_bind_onu_spec_id"));
    EXPECT_THAT(completed("ponctl raw BSP_MSG_PLA"), ElementsAre("BSP_MSG_PLAT"));
    EXPECT_THAT(completed("ponctl raw BSP_MSG_PON get --record bsp_pla"), ElementsAre("bsp_plat_msg"));
    EXPECT_THAT(completed("ponctl profile show li"), ElementsAre("line"));
}

TEST_P(Completion, FinishesTheArgumentsOfAnOperation)
{
    EXPECT_THAT(completed("ponctl call bsp_pon_bind_onu_spec_id "),
                ElementsAre("pon_port=", "onu_id=", "mac=", "text_a=", "text_b=", "value=", "text_c="));
    EXPECT_THAT(completed("ponctl call bsp_pon_bind_onu_spec_id mac=00:11:22:33:44:55 o"), ElementsAre("onu_id="));
    EXPECT_THAT(completed("ponctl call bsp_pon_no_bind_onu_batch_spec_id record.onu_s"), Contains("record.onu_set="));
}

TEST_P(Completion, KnowsEveryOperation)
{
    EXPECT_EQ(completed("ponctl call ").size(), catalogue::operations().size());
}

TEST_P(Completion, FinishesFilesAndFolders)
{
    EXPECT_THAT(completed("ponctl config load " COMPLETION "/ponctl.f"), ElementsAre(COMPLETION "/ponctl.fish"));
    const Words folders = completed("ponctl --socket-dir " COMPLETION "/../comp");
    ASSERT_EQ(folders.size(), 1u);
    EXPECT_THAT(folders[0], StartsWith(COMPLETION "/../completion"));
    if (GetParam() == ShellKind::bash) { // the others do not offer the folder above
        EXPECT_THAT(completed("ponctl --socket-dir " COMPLETION "/.."), ElementsAre(COMPLETION "/.."));
    }
    EXPECT_THAT(completed("ponctl --socket-dir " COMPLETION "/pon"), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Of, Completion, testing::Values(ShellKind::bash, ShellKind::zsh, ShellKind::fish),
                         [](const auto &shell) {
                             return shell.param == ShellKind::bash  ? "bash"
                                    : shell.param == ShellKind::zsh ? "zsh"
                                                                    : "fish";
                         });

} // namespace
