// These tests record a session with the simulator, serve it again, and send it again.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "control.h"
#include "every_command.h"
#include "ponctl/support/process.h"
#include "simulator.h"

namespace
{

using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;

struct Recording {
    const std::string file = Simulator::folder() + "/recording";

    ~Recording() { std::remove(file.c_str()); }
};

// Returns the options of an OLT whose time stands still, so that the same requests give the same answers.
std::vector<std::string> still(std::vector<std::string> more = {})
{
    more.insert(more.end(), {"--speed", "0", "--fresh"});
    return more;
}

// Runs ponctl replay against a fresh simulator with these options.
Finished replay_against(const std::vector<std::string> &options, std::vector<std::string> words)
{
    const Simulator simulator(still(options));
    words.insert(words.begin(), "replay");
    return ponctl(words);
}

TEST(Replay, GivesAClientTheSameBytes)
{
    const Recording recording;
    std::vector<std::string> before, after;
    {
        const Simulator simulator(still({"--record", recording.file}));
        before = send_every_command();
    }
    {
        const Simulator simulator({"replay", recording.file});
        after = send_every_command();
    }
    ASSERT_GT(before.size(), 100u);
    EXPECT_EQ(after, before);
}

TEST(Replay, AgainstTheSameOltShowsNoDifference)
{
    const Recording recording;
    size_t count = 0;
    {
        const Simulator simulator(still({"--record", recording.file}));
        count = send_every_command().size();
    }
    const Finished finished = replay_against({}, {recording.file, "--yes"});
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(finished.err, "ponctl: " + std::to_string(count) + " exchanges, 0 differ\n");
    EXPECT_EQ(finished.code, 0);
}

TEST(Replay, AgainstAnotherOltNamesWhatDiffers)
{
    const Recording recording;
    {
        const Simulator simulator(still({"--record", recording.file}));
        send_every_command();
    }
    const Finished finished = replay_against({"--seed", "2"}, {recording.file, "--reads-only"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_THAT(finished.out, HasSubstr("row 1 mac"));
}

TEST(Replay, LeavesOutTheNamesOfResultFiles)
{
    const Recording recording;
    {
        const Simulator simulator(still({"--record", recording.file}));
        ponctl({"call", "bsp_profile_exec_get_json", "action=BSP_CMD_CONFIG_READ"});
    }
    const Finished finished = replay_against({}, {recording.file, "--yes"});
    EXPECT_EQ(finished.out, "");
    EXPECT_THAT(finished.err, EndsWith("1 exchanges, 0 differ\n"));
}

TEST(Replay, LeavesOutTheCommandsOfTheSimulation)
{
    const Recording recording;
    {
        const Simulator simulator(still({"--record", recording.file}));
        control("step 2.5");
        ponctl({"port", "list"});
    }
    EXPECT_THAT(ponctl({"trace", recording.file, "--no-headings"}).out,
                MatchesRegex("2.500000 +- get +1 of module 106 step 2.5 +0 BSP_OK: success\n"
                             "2.500000 +- get +BSP_MSG_PON +BSP_CMD_VIEW_BASE_INFO_WEB 0 BSP_OK: success\n"));
    const Finished finished = replay_against({}, {recording.file, "--ignore", "uptime"});
    EXPECT_THAT(finished.err, EndsWith("1 exchanges, 0 differ, 1 with other services left out\n")) << finished.out;
}

} // namespace
