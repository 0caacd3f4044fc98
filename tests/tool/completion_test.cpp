// These tests complete command lines in shells by what a live service knows. A shell that is missing is skipped.
#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "completing_shell.h"
#include "control.h"
#include "process.h"
#include "simulator.h"

namespace
{

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::Not;
using Words = std::vector<std::string>;

class LiveCompletion : public testing::TestWithParam<ShellKind>
{
protected:
    void SetUp() override
    {
        if (!is_installed(GetParam())) GTEST_SKIP() << "the shell is not installed";
        simulator.emplace(Words{"--ports", "2", "--arrivals", "4", "--silent", "0", "--speed", "0"});
        ASSERT_EQ(ponctl({"onu", "bind", "1", mac, "--id", "5", "--yes"}).code, 0);
        ASSERT_EQ(ponctl({"upgrade", "add", "basic", "ACME", "X4", "1.1", "307200"}).code, 0);
    }

    std::vector<Words> completed(const Words &lines) const { return completed_by(GetParam(), lines); }

    const std::string mac = "02:00:5e:10:00:01";
    std::optional<Simulator> simulator;
};

TEST_P(LiveCompletion, KnowsPortsOnusTypesFieldsAndColumns)
{
    const std::vector<Words> found =
        completed({"ponctl onu list ", "ponctl onu show 1 ", "ponctl onu info 1/", "ponctl upgrade bind 1/5 ",
                   "ponctl onu set 1/5 vlan pv", "ponctl call bsp_pon_bind_onu_spec_id pon_port=",
                   "ponctl onu list --columns mac,dis", "ponctl ops --sort -c", "ponctl onu set 1/5 vlan mode=t"});
    EXPECT_THAT(found[0], ElementsAre("1", "2"));
    EXPECT_THAT(found[1], Contains("5"));
    EXPECT_THAT(found[2], IsSupersetOf({"1/5", "1/all"}));
    EXPECT_THAT(found[4], ElementsAre("pvid="));
    EXPECT_EQ(found[5].size(), 2u);
    EXPECT_THAT(found[6], ElementsAre("mac,distance"));
    EXPECT_THAT(found[7], ElementsAre("-class", "-command", "-code"));
    EXPECT_EQ(found[8].size(), 4u) << "transparent, tag, translation, trunk";
}

TEST_P(LiveCompletion, DoesNotHangWhenTheServiceDoesNotAnswer)
{
    kill(simulator->process(), SIGSTOP);
    const std::vector<Words> found = completed({"ponctl onu list ", "ponctl onu sh"});
    kill(simulator->process(), SIGCONT);
    EXPECT_TRUE(found[0].empty());
    EXPECT_THAT(found[1], Contains("show"));
}

INSTANTIATE_TEST_SUITE_P(Of, LiveCompletion, testing::Values(ShellKind::bash, ShellKind::zsh, ShellKind::fish),
                         [](const auto &shell) {
                             return shell.param == ShellKind::bash  ? "bash"
                                    : shell.param == ShellKind::zsh ? "zsh"
                                                                    : "fish";
                         });

} // namespace
