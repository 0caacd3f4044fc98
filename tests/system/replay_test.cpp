// These tests record a session with the simulator, serve it again, and send it again.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "board/datastore.h"
#include "board/ipc.h"
#include "catalogue.h"
#include "ponctl/support/process.h"
#include "simulator.h"

namespace
{

using testing::EndsWith;
using testing::HasSubstr;

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

// Sends each command of the catalogue with a few words in its record, and returns what came back for each.
std::vector<std::string> session()
{
    std::vector<std::string> answers;
    for (const catalogue::Operation &operation : catalogue::operations()) {
        const catalogue::Command *command = operation.command;
        const catalogue::Record &record = *operation.record;
        if (!command || !record.command) continue;
        std::string request(record.payload ? 40 : record.size, '\0');
        const uint32_t one = 1;
        for (size_t offset = 0; offset < 16; offset += sizeof one)
            std::memcpy(request.data() + offset, &one, sizeof one);
        std::memcpy(request.data() + record.command->offset, &command->code, sizeof command->code);

        char response[IPC_MAX_LENGTH];
        uint32_t received = sizeof response, status = 0;
        const auto length = static_cast<uint32_t>(request.size());
        const uint32_t channel = operation.channel->type;
        int32_t result = IPC_OK;
        if (operation.call == catalogue::Call::set)
            result = ipc_set_exec(catalogue::module, channel, request.data(), length, &status), received = 0;
        else if (operation.call == catalogue::Call::dgram_set)
            result = ipc_dgram_set_exec(catalogue::module, channel, request.data(), length, &status), received = 0;
        else
            result = (operation.call == catalogue::Call::get ? ipc_get_exec : ipc_dgram_get_exec)(
                catalogue::module, channel, request.data(), length, response, &received, &status);
        db_handle *database = db_from_shmem(command->code, UINT32_MAX);
        answers.push_back(std::string(operation.name) + " " + std::to_string(result) + " " + std::to_string(status) +
                          " " + std::string(response, received) + db_text(database, nullptr));
        db_free(database);
    }
    return answers;
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
        before = session();
    }
    {
        const Simulator simulator({"replay", recording.file});
        after = session();
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
        count = session().size();
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
        session();
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

} // namespace
