// These tests let ponsim record sessions, and let the sessions happen again.
#include <sys/stat.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "board/datastore.h"
#include "board/ipc.h"
#include "bsp_pon.h"
#include "control.h"
#include "every_command.h"
#include "simulator.h"

namespace
{

using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

class Rerun : public testing::Test
{
protected:
    ~Rerun() override
    {
        for (const std::string &each : {file, other, state})
            std::filesystem::remove(each);
    }

    const std::string file = Simulator::folder() + "/session";
    const std::string other = Simulator::folder() + "/other-session";
    const std::string state = Simulator::folder() + "/olt.db"; // that of the next Simulator
};

std::string bytes_of(const std::string &file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

struct Ended {
    int code;
    std::string out;
};

// Runs ponsim rerun with these arguments, whose words have no spaces.
Ended rerun(const std::string &arguments)
{
    const std::string line = std::string(PONSIM) + " rerun " + arguments + " 2>&1";
    std::FILE *output = popen(line.c_str(), "r");
    std::string text;
    for (int byte; (byte = std::fgetc(output)) != EOF;)
        text += static_cast<char>(byte);
    const int status = pclose(output);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, text};
}

// Returns the view of all ONUs.
std::string onus()
{
    bsp_pon_msg request{}, response{};
    request.cmd = BSP_CMD_VIEW_ONU_INFO_WEB;
    uint32_t length = 0, status = 0;
    EXPECT_EQ(ipc_get_exec(BSP_IPC_MODULE, BSP_MSG_PON, &request, sizeof request, &response, &length, &status), IPC_OK);
    db_handle *database = db_from_shmem(request.cmd, UINT32_MAX);
    std::string text = db_text(database, nullptr);
    db_free(database);
    return text;
}

// Lets much happen to an OLT whose time stands still but for steps.
void make_session(const std::string &recorded)
{
    const Simulator simulator({"--speed", "0", "--record", recorded});
    control("step 5");
    send_every_command();
    control("cut 1 feeder");
    control("fault status 9 command=BSP_CMD_VIEW_ONU_INFO_WEB");
    onus();
    control("fault clear 1");
    control("step 3600.5");
    onus();
    control("mend 1 feeder");
    control("step 86400");
    send_every_command();
}

TEST_F(Rerun, EqualSessionsMakeEqualFiles)
{
    make_session(file);
    make_session(other);
    EXPECT_GT(bytes_of(file).size(), 100000u);
    EXPECT_TRUE(bytes_of(file) == bytes_of(other));
}

TEST_F(Rerun, OfASessionWithEveryCommandGivesTheSameBytes)
{
    make_session(file);
    const Ended ended = rerun(file);
    EXPECT_EQ(ended.code, 0);
    EXPECT_THAT(ended.out, MatchesRegex("ponsim: [0-9]+ requests and 7 commands, up to 90005.500 s of model time: 0 "
                                        "were answered otherwise\n"));
}

TEST_F(Rerun, OfSeveralClientsWhileTimePassesGivesTheSameBytes)
{
    {
        const Simulator simulator({"--speed", "5000", "--arrivals", "32", "--record", file});
        std::vector<std::thread> clients;
        for (int client = 0; client < 3; ++client)
            clients.emplace_back([] {
                for (int time = 0; time < 20; ++time)
                    onus();
            });
        control("cut 1 feeder");
        control("cut 2 feeder");
        control("step 60");
        control("mend 1 feeder");
        for (std::thread &client : clients)
            client.join();
    }
    const Ended ended = rerun(file);
    EXPECT_EQ(ended.code, 0) << ended.out;
    EXPECT_THAT(ended.out, HasSubstr("60 requests and 4 commands"));
}

TEST_F(Rerun, StopsAtATimeAndKeepsTheOltOfThen)
{
    std::string then;
    {
        const Simulator simulator({"--speed", "0", "--record", file});
        control("step 10");
        control("cut 1 feeder");
        control("step 10");
        then = onus();
        control("mend 1 feeder");
        control("step 3600");
        EXPECT_NE(onus(), then);
    }
    EXPECT_THAT(rerun(file + " --until 20 --state " + state).out, EndsWith("up to 20 s of model time: 0 were answered "
                                                                           "otherwise\n"));
    EXPECT_EQ(std::filesystem::status(state).permissions(), std::filesystem::perms(0600));
    const Simulator simulator({"--speed", "0"});
    EXPECT_EQ(onus(), then);
}

TEST_F(Rerun, LeavesAStateThatIsThereAsItIs)
{
    {
        const Simulator simulator({"--record", file});
    }
    std::ofstream(state) << "precious";
    const Ended ended = rerun(file + " --state " + state);
    EXPECT_EQ(ended.code, 1);
    EXPECT_EQ(ended.out, "ponsim: " + state + ": File exists\n");
    EXPECT_EQ(bytes_of(state), "precious");
}

TEST_F(Rerun, SaysWhichAnswersAreOthers)
{
    {
        const Simulator simulator({"--speed", "0", "--record", file});
        onus();
        control("step 1");
    }
    std::string bytes = bytes_of(file);
    const size_t at = bytes.rfind("\"mac\"");
    ASSERT_NE(at, std::string::npos);
    bytes[at + 1] = 'M';
    std::ofstream(file, std::ios::binary) << bytes;
    const Ended ended = rerun(file);
    EXPECT_EQ(ended.code, 1);
    EXPECT_THAT(ended.out, MatchesRegex("ponsim: record 2 at 0 s of model time, BSP_MSG_PON, command "
                                        "BSP_CMD_VIEW_ONU_INFO_WEB: byte [0-9]+ of the result is another\n"
                                        "ponsim: 1 requests and 1 commands, up to 1 s of model time: 1 were answered "
                                        "otherwise\n"));
}

TEST_F(Rerun, GoesOnWithTheNextSessionOfTheFile)
{
    for (int session = 0; session < 2; ++session) {
        const Simulator simulator({"--speed", "0", "--record", file});
        control("cut 1 feeder");
        control("step 60");
        onus();
    }
    EXPECT_THAT(rerun(file).out, StartsWith("ponsim: 2 requests and 4 commands, up to 60 s"));
}

TEST_F(Rerun, NeedsARecordingOfPonsim)
{
    {
        const Simulator simulator({"--speed", "0", "--record", file});
        onus();
    }
    const std::string whole = bytes_of(file);
    std::ofstream(file, std::ios::binary | std::ios::trunc) << whole.substr(0, whole.size() - 1);
    EXPECT_EQ(rerun(file).out, "ponsim: " + file + ": damaged at record 2\n");
    std::ofstream(file, std::ios::binary | std::ios::trunc) << whole.substr(0, 16);
    EXPECT_EQ(rerun(file).out, "ponsim: " + file + ": does not begin with the state of an OLT\n");
    std::string of_client = whole;
    of_client[10] = 0; // the clock
    std::ofstream(file, std::ios::binary | std::ios::trunc) << of_client;
    EXPECT_THAT(rerun(file).out, StartsWith("ponsim: " + file + ": has no model time"));
    EXPECT_EQ(rerun(file + " --until soon").code, 2);
}

} // namespace
