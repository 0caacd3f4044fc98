// These tests check the daemon, its options, and the service over its sockets.
#include "daemon.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <thread>

#include <gmock/gmock.h>
#include <pty.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "board/datastore.h"
#include "board/ipc.h"
#include "board/service.h"
#include "support.h"
#include "text/sha256.h"

namespace ponsim
{
namespace
{

// The IPC library reads its folder once. So all tests use one folder, with one daemon at a time.
class DaemonTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        folder = new Folder;
        setenv("BOARD_IPC_DIR", folder->file("ipc").c_str(), 1);
    }
    static void TearDownTestSuite() { delete folder; }

    void SetUp() override { std::filesystem::remove(state()); }
    static std::string state() { return folder->file("olt.db"); }
    static std::vector<std::string> with(std::initializer_list<std::string> more)
    {
        std::vector<std::string> options{"--state", state()};
        options.insert(options.end(), more.begin(), more.end());
        return options;
    }

    static Folder *folder;
};
Folder *DaemonTest::folder;

int32_t set(const bsp_pon_msg &record, uint32_t &status)
{
    return ipc_set_exec(BSP_IPC_MODULE, BSP_MSG_PON, &record, sizeof record, &status);
}

uint32_t status_of(const bsp_pon_msg &record)
{
    uint32_t status = 0xdead;
    EXPECT_EQ(set(record, status), IPC_OK);
    return status;
}

struct Database {
    explicit Database(uint32_t command, uint32_t pon_port = 0)
    {
        const bsp_pon_msg record = record_of(command, pon_port);
        bsp_pon_msg response{};
        uint32_t length = 0, status = 0xdead;
        EXPECT_EQ(ipc_get_exec(BSP_IPC_MODULE, BSP_MSG_PON, &record, sizeof record, &response, &length, &status),
                  IPC_OK);
        EXPECT_EQ(status, BSP_OK);
        handle = db_from_shmem(command, max_result);
    }
    ~Database() { db_free(handle); }
    Database(const Database &) = delete;

    db_handle *handle;
};

TEST_F(DaemonTest, BindsAnOnuAndShowsIt)
{
    Daemon daemon(with({}));
    ASSERT_TRUE(daemon.serves());
    EXPECT_EQ(status_of(record_of(BSP_CMD_ONU_BIND, 3, 5, stranger(1))), BSP_OK);
    const Database onus(BSP_CMD_VIEW_ONU_INFO_WEB, 3);
    EXPECT_EQ(db_rows(onus.handle), 9u);
    EXPECT_STREQ(db_get_text(onus.handle, 0, "mac"), text::mac_text(stranger(1)).c_str());
    EXPECT_STREQ(db_get_text(onus.handle, 0, "state"), "offline");
}

TEST_F(DaemonTest, AnswersAnUnknownCommand)
{
    Daemon daemon(with({}));
    ASSERT_TRUE(daemon.serves());
    EXPECT_EQ(status_of(record_of(1)), PON_ERR_UNKNOWN_COMMAND);
}

TEST_F(DaemonTest, AGetCallPerformsACommandAndReturnsItsRecord)
{
    Daemon daemon(with({}));
    ASSERT_TRUE(daemon.serves());
    const bsp_pon_msg record = record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1));
    bsp_pon_msg response{};
    uint32_t length = sizeof response, status = 0xdead;
    EXPECT_EQ(ipc_get_exec(BSP_IPC_MODULE, BSP_MSG_PON, &record, sizeof record, &response, &length, &status), IPC_OK);
    EXPECT_EQ(status, BSP_OK);
    EXPECT_EQ(length, sizeof record);
    EXPECT_EQ(memcmp(&response, &record, sizeof record), 0);
    EXPECT_EQ(status_of(record_of(BSP_CMD_ONU_RELEASE, 1, 5)), BSP_OK);
}

TEST_F(DaemonTest, SendsAnOnusConfigurationAsATextInTheAnswer)
{
    Daemon daemon(with({}));
    ASSERT_TRUE(daemon.serves());
    ASSERT_EQ(status_of(record_of(BSP_CMD_ONU_BIND, 3, 5, stranger(1))), BSP_OK);
    const bsp_onu_msg record = onu_record_of(BSP_CMD_VIEW_ONU_CONFIG, 3, 5);
    char response[sizeof(bsp_pon_msg_ext)];
    uint32_t length = sizeof response, status = 0xdead;
    EXPECT_EQ(ipc_get_exec(BSP_IPC_MODULE, BSP_MSG_ONU_CFG, &record, sizeof record, response, &length, &status),
              IPC_OK);
    EXPECT_EQ(status, BSP_OK);
    EXPECT_EQ(length, sizeof response);
    db_handle *onu = db_from_string(response + offsetof(bsp_pon_msg_ext, ext_payload));
    EXPECT_STREQ(db_get_text(onu, 0, "mac"), text::mac_text(stranger(1)).c_str());
    db_free(onu);
}

TEST_F(DaemonTest, AnswersDatagramsToo)
{
    Daemon daemon(with({}));
    ASSERT_TRUE(daemon.serves());
    const bsp_pon_msg record = record_of(BSP_CMD_ONU_RELEASE, 1, 5);
    uint32_t status = 0xdead;
    EXPECT_EQ(ipc_dgram_set_exec(BSP_IPC_MODULE, BSP_MSG_PON, &record, sizeof record, &status), IPC_OK);
    EXPECT_EQ(status, PON_ERR_NOT_BOUND);
}

TEST_F(DaemonTest, KeepsWhatItAcknowledgedWhenItIsKilled)
{
    {
        Daemon daemon(with({}));
        ASSERT_TRUE(daemon.serves());
        for (uint8_t index = 0; index < 50; ++index)
            ASSERT_EQ(status_of(record_of(BSP_CMD_ONU_BIND, 1, index, stranger(index))), BSP_OK);
        EXPECT_EQ(daemon.stop(SIGKILL), -SIGKILL);
    }
    Daemon daemon(with({}));
    ASSERT_TRUE(daemon.serves());
    for (uint8_t index = 0; index < 50; ++index)
        EXPECT_EQ(status_of(record_of(BSP_CMD_ONU_RELEASE, 1, index, stranger(index))), BSP_OK);
}

TEST_F(DaemonTest, StateNoneKeepsNothing)
{
    for (int run = 0; run < 2; ++run) {
        Daemon daemon({"--state", "none"});
        ASSERT_TRUE(daemon.serves());
        EXPECT_EQ(status_of(record_of(BSP_CMD_ONU_RELEASE, 1, 5)), PON_ERR_NOT_BOUND);
        EXPECT_EQ(status_of(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1))), BSP_OK);
    }
}

TEST_F(DaemonTest, StopsCleanlyOnTermAndInt)
{
    for (int signal : {SIGTERM, SIGINT}) {
        Daemon daemon(with({}));
        ASSERT_TRUE(daemon.serves());
        EXPECT_EQ(daemon.stop(signal), 0);
        EXPECT_FALSE(std::filesystem::exists(folder->file("ipc/6.seq")));
    }
}

TEST_F(DaemonTest, AGrantDecidesWhoMayDoWhat)
{
    Daemon daemon(with({"--grant", "*=read"}));
    ASSERT_TRUE(daemon.serves());
    uint32_t status = 0xdead;
    EXPECT_EQ(set(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1)), status), IPC_ERR_REFUSED);
    EXPECT_EQ(status, 0xdeadu);
    EXPECT_NE(daemon.line().find("command 365 on channel 232 is service-affecting"), std::string::npos);
    const Database onus(BSP_CMD_VIEW_ONU_INFO_WEB, 1);
    EXPECT_EQ(db_rows(onus.handle), 8u);
}

TEST_F(DaemonTest, AGroupsGrantIsForThoseWhoAreInIt)
{
    const std::string group = "@" + std::to_string(getegid());
    Daemon daemon(with({"--grant", "*=read", "--grant", group + "=service-affecting"}));
    ASSERT_TRUE(daemon.serves());
    uint32_t status = 0xdead;
    EXPECT_EQ(set(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1)), status), IPC_OK);
    EXPECT_NE(status, 0xdeadu);
}

TEST_F(DaemonTest, ALogThatNobodyKnowsIsRefused)
{
    setenv("BOARD_LOG", "err,verbose", 1);
    Daemon daemon(with({}));
    unsetenv("BOARD_LOG");
    int exit_status;
    EXPECT_EQ(daemon.rest(exit_status), "ponsim: BOARD_LOG: 'verbose' is not one of off, err, debug, syslog\n");
    EXPECT_EQ(exit_status, 2);
}

TEST_F(DaemonTest, SocketsHaveTheModeAskedFor)
{
    Daemon daemon(with({"--socket-mode", "0600"}));
    ASSERT_TRUE(daemon.serves());
    const auto mode = std::filesystem::status(folder->file("ipc/6.seq")).permissions();
    EXPECT_EQ(static_cast<unsigned>(mode), 0600u);
}

TEST_F(DaemonTest, MakesTheFolderOfItsState)
{
    Daemon daemon({"--state", folder->file("a/b/olt.db")});
    EXPECT_TRUE(daemon.serves());
    EXPECT_TRUE(std::filesystem::exists(folder->file("a/b/olt.db")));
}

TEST_F(DaemonTest, WhatItKeepsIsForItsUserWhateverTheUmaskIs)
{
    const mode_t before = umask(0);
    Daemon daemon({"--state", folder->file("c/d/olt.db"), "--record", folder->file("session")});
    umask(before);
    ASSERT_TRUE(daemon.serves());
    EXPECT_EQ(status_of(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1))), BSP_OK);
    const auto mode_of = [](const std::string &name) {
        return static_cast<unsigned>(std::filesystem::status(folder->file(name)).permissions());
    };
    for (const char *made : {"c", "c/d"})
        EXPECT_EQ(mode_of(made), 0700u) << made;
    for (const char *file : {"c/d/olt.db", "c/d/olt.db-wal", "session", "ipc/6.lock", "ipc/106.lock"})
        EXPECT_EQ(mode_of(file), 0600u) << file;
}

// 200 OLTs need more descriptors than the 256 that the process may have at first.
TEST_F(DaemonTest, ServesHundredsOfOltsWithTwoThreadsEach)
{
    constexpr size_t olts = 200;
    std::ofstream(folder->file("many.toml")) << "[[olt]]\nname = \"site\"\ncount = " << olts << "\nports = 1\n";
    rlimit before;
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit few{256, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
    Daemon daemon({"--scenario", folder->file("many.toml"), "--state", "none", "--socket-dir", folder->file("many")});
    setrlimit(RLIMIT_NOFILE, &before);
    ASSERT_TRUE(daemon.serves());
    const std::filesystem::directory_iterator tasks("/proc/" + std::to_string(daemon.process()) + "/task");
    constexpr size_t shared = 2; // the program's own, and the one that keeps the time
    EXPECT_EQ(static_cast<size_t>(std::distance(begin(tasks), end(tasks))), 2 * olts + shared);
    board_ipc_use_directory(folder->file("many/site-200").c_str());
    EXPECT_EQ(status_of(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1))), BSP_OK);
    board_ipc_use_directory(nullptr);
}

TEST_F(DaemonTest, WrongUsageIsExplained)
{
    const std::vector<std::vector<std::string>> uses{{"--ports", "17"},
                                                     {"--ports", "0"},
                                                     {"--arrivals", "129"},
                                                     {"--silent", "101"},
                                                     {"--seed", "x"},
                                                     {"--grant", "alice"},
                                                     {"--socket-mode", "9"},
                                                     {"--nonsense"},
                                                     {"--check"},
                                                     {"--scenario", "/nowhere.toml"},
                                                     {"stray"}};
    for (const std::vector<std::string> &use : uses) {
        Daemon daemon(use);
        int exit_status;
        const std::string said = daemon.rest(exit_status);
        EXPECT_EQ(exit_status, 2) << use[0];
        EXPECT_NE(said.find(use[0]), std::string::npos) << said;
    }
}

TEST_F(DaemonTest, AnotherOltsStateIsRefused)
{
    {
        Daemon daemon(with({"--seed", "1"}));
        ASSERT_TRUE(daemon.serves());
        daemon.stop(SIGTERM);
    }
    Daemon other(with({"--seed", "2"}));
    int exit_status;
    EXPECT_NE(other.rest(exit_status).find("--fresh"), std::string::npos);
    EXPECT_EQ(exit_status, 1);
    Daemon fresh(with({"--seed", "2", "--fresh"}));
    EXPECT_TRUE(fresh.serves());
}

TEST_F(DaemonTest, ASecondServiceInTheFolderIsRefused)
{
    Daemon daemon(with({}));
    ASSERT_TRUE(daemon.serves());
    Daemon second({"--state", "none"});
    int exit_status;
    EXPECT_NE(second.rest(exit_status).find("cannot serve on"), std::string::npos);
    EXPECT_EQ(exit_status, 1);
    EXPECT_EQ(status_of(record_of(1)), PON_ERR_UNKNOWN_COMMAND);
}

// Returns the answer of the running daemon to `ponsim ctl`. The exit status is that of `ponsim ctl`.
std::string control(std::vector<std::string> words, int &exit_status)
{
    words.insert(words.begin(), "ctl");
    return Daemon(words).rest(exit_status);
}

std::vector<std::string> lines_of(const std::string &file)
{
    std::vector<std::string> lines;
    std::ifstream text(file);
    for (std::string line; std::getline(text, line);)
        lines.push_back(line);
    return lines;
}

TEST_F(DaemonTest, AnAuditSaysWhoChangedWhatAndWhatCameOfIt)
{
    const std::string file = folder->file("audit");
    Daemon daemon(with({"--audit", file}));
    ASSERT_TRUE(daemon.serves());
    int exit_status;
    EXPECT_EQ(status_of(record_of(BSP_CMD_ONU_BIND, 3, 5, stranger(1))), BSP_OK);
    const Database onus(BSP_CMD_VIEW_ONU_INFO_WEB, 1);
    EXPECT_NE(status_of(record_of(BSP_CMD_ONU_BIND, 3, 5, stranger(2))), BSP_OK);
    control({"cut", "1", "feeder"}, exit_status);
    control({"cut", "1", "nobody"}, exit_status);

    const std::string who = "\"user\":" + std::to_string(getuid()) + ",\"process\":" + std::to_string(getpid());
    const std::vector<std::string> lines = lines_of(file);
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_THAT(lines[0], testing::HasSubstr(who + R"(,"class":"service-affecting","channel":232,)"
                                                   R"("command":"BSP_CMD_ONU_BIND","fields":{"pon_port":"3",)"
                                                   R"("onu_id":"5",)"));
    EXPECT_THAT(lines[0], testing::EndsWith(R"("result":"BSP_OK"})"));
    EXPECT_THAT(lines[1], testing::HasSubstr(R"("result":"PON_ERR_)"));
    EXPECT_THAT(lines[2], testing::EndsWith(R"("control":"cut 1 feeder","result":"done"})"));
    EXPECT_THAT(lines[3], testing::HasSubstr(R"("control":"cut 1 nobody","result":"failed: )"));
    struct stat found;
    ASSERT_EQ(stat(file.c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 07777, 0600u);
}

TEST_F(DaemonTest, AnAuditKeepsOnlySomeRefusals)
{
    const std::string file = folder->file("refusals");
    Daemon daemon(with({"--grant", "*=read", "--audit", file}));
    ASSERT_TRUE(daemon.serves());
    for (int count = 0; count < 200; ++count) {
        uint32_t status;
        EXPECT_EQ(set(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1)), status), IPC_ERR_REFUSED);
    }
    const std::vector<std::string> lines = lines_of(file);
    EXPECT_GE(lines.size(), 16u);
    EXPECT_LE(lines.size(), 32u) << "a minute may end meanwhile, but hardly two";
    EXPECT_THAT(lines.at(0), testing::HasSubstr(R"("result":"refused: user )"));
}

TEST_F(DaemonTest, RefusesToStartWithAnAuditThatCannotBeKept)
{
    const std::string file = folder->file("full");
    std::filesystem::create_directory(file);
    Daemon refused(with({"--audit", file}));
    int exit_status;
    EXPECT_NE(refused.rest(exit_status).find("cannot keep the log " + file), std::string::npos);
    EXPECT_EQ(exit_status, 1);

    Daemon daemon(with({"--audit", "/dev/full"}));
    EXPECT_NE(daemon.rest(exit_status).find("it is not a plain file"), std::string::npos);
    EXPECT_EQ(exit_status, 1);
}

TEST_F(DaemonTest, IsControlled)
{
    Daemon daemon(with({"--speed", "0"}));
    ASSERT_TRUE(daemon.serves());
    int exit_status;
    EXPECT_EQ(control({"now"}, exit_status), "0 s of model time\n");
    EXPECT_EQ(exit_status, 0);
    EXPECT_EQ(control({"step", "100"}, exit_status), "100 s of model time\n");
    EXPECT_EQ(exit_status, 0);
    EXPECT_NE(control({"help"}, exit_status).find("step SECONDS"), std::string::npos);
    EXPECT_EQ(exit_status, 0);
}

TEST_F(DaemonTest, ShowsWhatIsWrongAsTableAndAsJson)
{
    Daemon daemon(with({"--speed", "0"}));
    ASSERT_TRUE(daemon.serves());
    int exit_status;
    EXPECT_EQ(control({"show"}, exit_status), "nothing differs from a healthy plant\n");
    EXPECT_EQ(control({"cut", "1-3", "feeder"}, exit_status), "");
    EXPECT_EQ(control({"show", "2-3"}, exit_status), "PORT  WHAT  WHERE          HOW MUCH\n"
                                                     "2     cut   branch feeder\n"
                                                     "3     cut   branch feeder\n");
    EXPECT_EQ(control({"show", "--json", "1"}, exit_status),
              "{\"model_time_ms\":0,\"differences\":[{\"kind\":\"cut\",\"pon_port\":1,\"branch\":\"feeder\"}]}\n");
    EXPECT_EQ(exit_status, 0);
    EXPECT_EQ(control({"power", "1", "nobody,a-*", "off"}, exit_status),
              "ponsim: nobody: expected a MAC address, as 02:00:5e:10:00:01, or the name of an ONU at PON port 1\n");
    EXPECT_EQ(exit_status, 2);
}

// Returns what a command of ponsim writes to a file, however long that is.
std::string written_by(const std::string &words, const std::string &file)
{
    EXPECT_EQ(system((std::string(PONSIM) + ' ' + words + " > " + file).c_str()), 0);
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

TEST_F(DaemonTest, WritesAnOltAsAScenarioThatMakesTheSameOlt)
{
    const std::string kept = state(), file = folder->file("olt.toml");
    std::string text;
    {
        Daemon daemon({"--state", kept, "--speed", "0", "--silent", "0"});
        ASSERT_TRUE(daemon.serves());
        int exit_status;
        EXPECT_EQ(control({"arrive", "2", "count=3", "name=late"}, exit_status), "");
        EXPECT_EQ(control({"step", "60"}, exit_status), "60 s of model time\n");
        text = written_by("ctl export", file);
        daemon.stop(SIGTERM);
    }
    EXPECT_GT(text.size(), IPC_MAX_LENGTH) << "it does not fit into a message";
    EXPECT_NE(text.find("name = \"late-3\"\n"), std::string::npos);
    EXPECT_EQ(written_by("--state " + kept + " --export", folder->file("stored.toml")), text);
    Daemon daemon({"--scenario", file, "--state", "none", "--speed", "0"});
    ASSERT_TRUE(daemon.serves());
    EXPECT_EQ(written_by("ctl export", folder->file("again.toml")), text);
}

TEST_F(DaemonTest, WithoutAStateThereIsNothingToExport)
{
    int exit_status;
    EXPECT_NE(Daemon({"--state", "none", "--export"}).rest(exit_status).find("expected the state file"),
              std::string::npos);
    EXPECT_EQ(exit_status, 2);
}

TEST_F(DaemonTest, LetsExchangesGoWrong)
{
    Daemon daemon(with({"--speed", "0"}));
    ASSERT_TRUE(daemon.serves());
    int exit_status;
    EXPECT_EQ(control({"fault", "status", "PON_ERR_OFFLINE", "command=BSP_CMD_ONU_RELEASE"}, exit_status),
              "1: status " + std::to_string(PON_ERR_OFFLINE) + " command=BSP_CMD_ONU_RELEASE, happened 0 times\n");
    EXPECT_EQ(exit_status, 0);
    EXPECT_EQ(status_of(record_of(BSP_CMD_ONU_RELEASE, 1, 5)), PON_ERR_OFFLINE);
    EXPECT_NE(control({"faults"}, exit_status).find("happened 1 time\n"), std::string::npos);
    EXPECT_EQ(control({"fault", "clear", "1"}, exit_status), "");
    EXPECT_EQ(status_of(record_of(BSP_CMD_ONU_RELEASE, 1, 5)), PON_ERR_NOT_BOUND);
    EXPECT_EQ(control({"fault", "clear", "1"}, exit_status),
              "ponsim: fault: there is no number 1; ponsim ctl faults lists those there are\n");
    EXPECT_EQ(exit_status, 2);
}

// Returns what `ponsim ctl` writes to a terminal.
std::string control_on_a_terminal(const std::string &words)
{
    int terminal;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        execl("/bin/sh", "sh", "-c", (std::string(PONSIM) + " ctl " + words).c_str(), nullptr);
        _exit(127);
    }
    std::string said;
    char bytes[256];
    for (ssize_t got; (got = read(terminal, bytes, sizeof bytes)) > 0;)
        said.append(bytes, static_cast<size_t>(got));
    close(terminal);
    waitpid(child, nullptr, 0);
    return said;
}

TEST_F(DaemonTest, ShowsTheProgressOfAStepOnATerminal)
{
    Daemon daemon(with({"--speed", "0"}));
    ASSERT_TRUE(daemon.serves());
    EXPECT_EQ(control_on_a_terminal("step 100"), "\r\033[K0 % of the step\r\033[K100 s of model time\r\n");
    EXPECT_EQ(control_on_a_terminal("now"), "100 s of model time\r\n");
}

TEST_F(DaemonTest, StepsAtTheSameTimeFollowEachOther)
{
    Daemon daemon(with({"--speed", "0"}));
    ASSERT_TRUE(daemon.serves());
    constexpr int steps = 4;
    std::vector<std::thread> threads;
    for (int step = 0; step < steps; ++step)
        threads.emplace_back([] {
            int exit_status;
            control({"step", "100"}, exit_status);
            EXPECT_EQ(exit_status, 0);
        });
    for (std::thread &thread : threads)
        thread.join();
    int exit_status;
    EXPECT_EQ(control({"now"}, exit_status), "400 s of model time\n");
}

TEST_F(DaemonTest, GoesOnWithItsTimeWhenItIsStartedAnew)
{
    int exit_status;
    {
        Daemon daemon(with({"--speed", "0"}));
        ASSERT_TRUE(daemon.serves());
        control({"step", "100"}, exit_status);
        daemon.stop(SIGTERM);
    }
    Daemon daemon(with({"--speed", "0"}));
    ASSERT_TRUE(daemon.serves());
    EXPECT_EQ(control({"now"}, exit_status), "100 s of model time\n");
}

TEST_F(DaemonTest, AStepIsKeptWhenItIsKilled)
{
    int exit_status;
    {
        Daemon daemon(with({"--speed", "0"}));
        ASSERT_TRUE(daemon.serves());
        control({"step", "100"}, exit_status);
        ASSERT_EQ(status_of(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1))), BSP_OK);
        control({"step", "50"}, exit_status);
        daemon.stop(SIGKILL);
    }
    Daemon daemon(with({"--speed", "0"}));
    ASSERT_TRUE(daemon.serves());
    EXPECT_EQ(control({"now"}, exit_status), "150 s of model time\n");
}

TEST_F(DaemonTest, AnUnknownControlCommandIsExplainedInALine)
{
    Daemon daemon(with({}));
    ASSERT_TRUE(daemon.serves());
    int exit_status;
    EXPECT_EQ(control({"jump", "5"}, exit_status), "ponsim: jump: not a command; ponsim ctl help lists the commands\n");
    EXPECT_EQ(exit_status, 2);
}

TEST_F(DaemonTest, ControlNeedsARunningDaemon)
{
    int exit_status;
    EXPECT_NE(control({"now"}, exit_status).find(folder->file("ipc")), std::string::npos);
    EXPECT_EQ(exit_status, 1);
}

TEST_F(DaemonTest, OnlyWhoMayDoEverythingControls)
{
    Daemon daemon(with({"--speed", "0", "--grant", "*=write"}));
    ASSERT_TRUE(daemon.serves());
    int exit_status;
    EXPECT_NE(control({"step", "100"}, exit_status).find("refuse the request"), std::string::npos);
    EXPECT_EQ(exit_status, 1);
    EXPECT_NE(daemon.line().find("controlling the simulation is service-affecting"), std::string::npos);
}

std::string write_file(const std::string &name, const std::string &text)
{
    std::ofstream(name) << text;
    return name;
}

constexpr char one_olt[] = "[service.s]\n[[olt]]\nname = \"core\"\nports = 2\n[[olt.port]]\nnumber = 1\n"
                           "[[olt.port.onu]]\nname = \"home\"\ncount = 3\nservice = \"s\"\n"
                           "[[event]]\nat = 60\ndo = \"power 1 home-1 off\"\n";

// Returns the state of the first ONU that is bound to port 1.
std::string first_state()
{
    const Database onus(BSP_CMD_VIEW_ONU_INFO_WEB, 1);
    return db_get_text(onus.handle, 0, "state");
}

TEST_F(DaemonTest, ServesTheOltOfAScenarioAndGoesOnWithItsTimeline)
{
    const std::string file = write_file(folder->file("one.toml"), one_olt);
    int exit_status;
    {
        Daemon daemon(with({"--speed", "0", "--scenario", file}));
        EXPECT_EQ(daemon.line(),
                  "ponsim: serving on " + folder->file("ipc") + " (OLT core, 2 ports, 3 ONUs, state " + state() + ")");
        control({"step", "59"}, exit_status);
        EXPECT_EQ(first_state(), "online");
        daemon.stop(SIGKILL);
    }
    Daemon daemon(with({"--speed", "0"}));
    ASSERT_TRUE(daemon.serves());
    EXPECT_EQ(first_state(), "online");
    control({"step", "1"}, exit_status);
    EXPECT_EQ(first_state(), "offline");
    control({"power", "1", "home-1", "on"}, exit_status);
    control({"step", "600"}, exit_status);
    EXPECT_EQ(first_state(), "online");
}

TEST_F(DaemonTest, WhatIsDueHappensWithoutAClient)
{
    const std::string file = write_file(folder->file("one.toml"), one_olt);
    setenv("BOARD_LOG", "debug", 1);
    Daemon daemon(with({"--speed", "1000000", "--scenario", file}));
    unsetenv("BOARD_LOG");
    std::string line = daemon.line(); // perhaps the event is there before the line that says what is served
    while (!line.empty() && line.find("event at 1min: power 1 home-1 off") == std::string::npos)
        line = daemon.line();
    EXPECT_NE(line, "");
}

// A port with a loop is shut and recovers all the time. In ten years this happens so often that the step takes far
// longer than the test.
TEST_F(DaemonTest, AnswersInTheMiddleOfAStepAndEndsItWhenItStops)
{
    const std::string file = write_file(folder->file("one.toml"), one_olt);
    Daemon daemon(with({"--speed", "0", "--scenario", file}));
    ASSERT_TRUE(daemon.serves());
    bsp_pon_msg_ext detection{};
    detection.cmd = BSP_CMD_LOOP_STATE_SET;
    detection.ext_arg = 1;
    uint32_t status = 0xdead;
    EXPECT_EQ(ipc_set_exec(BSP_IPC_MODULE, BSP_MSG_LOOP_DETECT, &detection, sizeof detection, &status), IPC_OK);
    EXPECT_EQ(status, BSP_OK);
    int exit_status;
    control({"loop", "1", "home-2", "1", "on"}, exit_status);
    EXPECT_EQ(exit_status, 0);
    std::string said;
    std::thread step([&] {
        int exit_status_of_step;
        said = control({"step", "315360000"}, exit_status_of_step);
        EXPECT_NE(exit_status_of_step, 0);
    });
    std::string now;
    for (int looks = 0; looks < 1000 && (now = control({"now"}, exit_status)) == "0 s of model time\n"; ++looks) {
    }
    EXPECT_EQ(exit_status, 0);
    EXPECT_NE(now, "315360000 s of model time\n");
    EXPECT_EQ(first_state(), "offline") << "a request is answered, too";
    EXPECT_EQ(daemon.stop(SIGTERM), 0);
    step.join();
    EXPECT_TRUE(said.starts_with("ponsim: ")) << said;
}

TEST_F(DaemonTest, AWrongScenarioIsExplainedWithItsLine)
{
    const std::string file = write_file(folder->file("wrong.toml"), "[[olt]]\nports = 17\n");
    for (const std::vector<std::string> &options :
         {std::vector<std::string>{"--scenario", file}, {"--scenario", file, "--check"}}) {
        int exit_status;
        EXPECT_EQ(Daemon(options).rest(exit_status),
                  "ponsim: " + file + ":2: ports: expected a number from 1 to 16, found 17\n");
        EXPECT_EQ(exit_status, 2);
    }
}

TEST_F(DaemonTest, AScenarioIsCheckedWithoutBeingServed)
{
    const std::string file = write_file(folder->file("one.toml"), one_olt);
    int exit_status;
    const std::string said = Daemon({"--scenario", file, "--check"}).rest(exit_status);
    EXPECT_EQ(exit_status, 0);
    EXPECT_NE(said.find("core: 1 events, the last at 1min"), std::string::npos) << said;
    EXPECT_FALSE(std::filesystem::exists(state()));
}

TEST_F(DaemonTest, AnotherScenarioIsRefused)
{
    const std::string file = write_file(folder->file("one.toml"), one_olt);
    {
        Daemon daemon(with({"--scenario", file}));
        ASSERT_TRUE(daemon.serves());
    }
    write_file(file, std::string(one_olt) + "[[event]]\nat = 70\ndo = \"age 1 1\"\n");
    Daemon other(with({"--scenario", file}));
    int exit_status;
    EXPECT_NE(other.rest(exit_status).find("of another scenario"), std::string::npos);
    EXPECT_EQ(exit_status, 1);
}

TEST_F(DaemonTest, ServesSeveralOltsAndGoesOnWithThem)
{
    const std::string file = write_file(folder->file("two.toml"), "[[olt]]\nname = \"metro\"\ncount = 2\nports = 1\n");
    const std::string states = folder->file("states");
    int exit_status;
    {
        Daemon daemon({"--state", states, "--speed", "0", "--scenario", file});
        EXPECT_EQ(daemon.line(),
                  "ponsim: serving on " + folder->file("ipc") + " (2 OLTs, 2 ports, 0 ONUs, state " + states + ")");
        EXPECT_EQ(control({"--olt", "metro-2", "step", "7"}, exit_status), "7 s of model time\n");
        EXPECT_EQ(control({"--olt", "metro-1", "now"}, exit_status), "0 s of model time\n");
        EXPECT_EQ(daemon.stop(SIGTERM), 0);
    }
    Daemon daemon({"--state", states, "--speed", "0"});
    ASSERT_TRUE(daemon.serves());
    EXPECT_EQ(control({"--olt", "metro-2", "now"}, exit_status), "7 s of model time\n");
}

TEST_F(DaemonTest, ControlOfOneOfSeveralOltsNeedsItsName)
{
    const std::string file = write_file(folder->file("two.toml"), "[[olt]]\nname = \"metro\"\ncount = 2\nports = 1\n");
    int exit_status;
    {
        Daemon daemon({"--state", "none", "--speed", "0", "--scenario", file});
        ASSERT_TRUE(daemon.serves());
        EXPECT_EQ(control({"now"}, exit_status),
                  "ponsim: " + folder->file("ipc") + " has the OLTs metro-1, metro-2: add --olt NAME\n");
        EXPECT_EQ(exit_status, 2);
        EXPECT_EQ(daemon.stop(SIGTERM), 0);
    }
    EXPECT_NE(control({"now"}, exit_status).find("nobody serves"), std::string::npos);
    EXPECT_EQ(exit_status, 1);
}

// No file of the process can grow beyond so many bytes.
void limit_files(pid_t process, rlim_t bytes)
{
    rlimit limit;
    ASSERT_EQ(prlimit(process, RLIMIT_FSIZE, nullptr, &limit), 0);
    limit.rlim_cur = bytes;
    ASSERT_EQ(prlimit(process, RLIMIT_FSIZE, &limit, nullptr), 0);
}

std::string state_of_first_onu()
{
    const Database onus(BSP_CMD_VIEW_ONU_INFO_WEB, 1);
    const char *state = db_get_text(onus.handle, 0, "state");
    return state ? state : "no row";
}

TEST_F(DaemonTest, WithAFullDiskRequestsThatReadAreAnsweredAlsoWhenSomethingIsDue)
{
    Daemon daemon(with({"--silent", "0", "--speed", "10"}));
    ASSERT_TRUE(daemon.serves());
    const ServiceFixture same({.seed = {}, .ports = {}, .arrivals = {}, .silent = 0});
    const Mac onu = same.port(1).arrivals.at(0).mac;
    ASSERT_EQ(status_of(record_of(BSP_CMD_ONU_BIND, 1, 1, onu)), BSP_OK);
    for (uint8_t id = 2; id < 20; ++id)
        ASSERT_EQ(status_of(record_of(BSP_CMD_ONU_BIND, 2, id, stranger(id))), BSP_OK);
    int exit_status;
    control({"power", "1", text::mac_text(onu), "off"}, exit_status);
    control({"power", "1", text::mac_text(onu), "on"}, exit_status);
    ASSERT_EQ(state_of_first_onu(), "offline");
    limit_files(daemon.process(), std::filesystem::file_size(state() + "-wal"));

    // The ONU boots and registers, which cannot be stored.
    std::string now = "offline";
    for (int times = 0; times < 600 && now == "offline"; ++times) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        now = state_of_first_onu();
    }
    EXPECT_EQ(now, "online");
    EXPECT_EQ(status_of(record_of(BSP_CMD_ONU_BIND, 2, 20, stranger(20))), PON_ERR_STORE);
    EXPECT_EQ(state_of_first_onu(), "online");

    limit_files(daemon.process(), RLIM_INFINITY);
    EXPECT_EQ(status_of(record_of(BSP_CMD_ONU_BIND, 2, 20, stranger(20))), BSP_OK);
    EXPECT_EQ(daemon.stop(SIGTERM), 0);
}

// Sends a request on the profile channel.
uint32_t profile_status(uint32_t action, const std::string &payload)
{
    bsp_profile_msg record{};
    record.action = action;
    payload.copy(reinterpret_cast<char *>(record.data), sizeof record.data);
    uint32_t status = 0xdead;
    EXPECT_EQ(ipc_dgram_set_exec(BSP_IPC_MODULE, BSP_MSG_PROFILE, &record,
                                 payload_header + static_cast<uint32_t>(payload.size()), &status),
              IPC_OK);
    return status;
}

// Returns a configuration that takes long to read, of the OLT that the daemon simulates unless told otherwise.
std::string long_configuration()
{
    ServiceFixture same;
    Change change;
    for (uint32_t number = 0; number < 60000; ++number) {
        const auto byte = [number](uint32_t place) { return static_cast<uint8_t>(number >> 8 * place); };
        const Mac mac{0x00, 0x1b, 0x21, byte(2), byte(1), byte(0)};
        change.put<OnuSetting>({1, mac, BSP_CMD_ONU_PAUSE_GET, 1}, {std::string("\1", 1), std::string("\0", 1), 5});
    }
    same.simulator.change(std::move(change));
    bsp_profile_msg record{};
    record.action = BSP_CMD_CONFIG_READ;
    Message message{BSP_MSG_PROFILE, &record, payload_header};
    message.call = catalogue::Call::dgram_get;
    return same.simulator.handle(message).file.value().content;
}

TEST_F(DaemonTest, AnswersOthersWhileAConfigurationIsRead)
{
    Daemon daemon(with({}));
    ASSERT_TRUE(daemon.serves());
    const std::string text = long_configuration();
    const text::Sha256 digest = text::sha256(text);
    const std::string name(digest.begin(), digest.end());
    constexpr size_t longest_part = 4048;
    for (size_t offset = 0; offset < text.size(); offset += longest_part) {
        const std::string part = text.substr(offset, longest_part);
        const uint32_t head[] = {static_cast<uint32_t>(offset), static_cast<uint32_t>(text.size()),
                                 static_cast<uint32_t>(part.size())};
        ASSERT_EQ(profile_status(BSP_CMD_CONFIG_LOAD_PART,
                                 std::string(reinterpret_cast<const char *>(head), sizeof head) + name + part),
                  BSP_OK);
    }
    std::atomic<bool> asked{false}, answered{false};
    std::thread loading([&] {
        const uint32_t usual_timeout = board_ipc_use_thread_timeout(120000);
        asked = true;
        EXPECT_EQ(profile_status(BSP_CMD_CONFIG_LOAD, name), BSP_OK);
        answered = true;
        board_ipc_use_thread_timeout(usual_timeout);
    });
    while (!asked)
        std::this_thread::yield();
    uint32_t others = 0;
    // Each of the others comes with a connection of its own.
    const auto ask = [] {
        board_ipc_use_thread_timeout(120000);
        EXPECT_EQ(status_of(record_of(BSP_CMD_ONU_RELEASE, 2, 1)), PON_ERR_NOT_BOUND);
    };
    for (; !answered && !HasFailure(); ++others)
        std::thread(ask).join();
    loading.join();
    EXPECT_GE(others, 20u);
}

TEST_F(DaemonTest, HelpAndVersionGoWell)
{
    for (const auto &[option, wanted] : {std::pair{"--help", "Examples:"}, {"--version", "ponsim "}}) {
        std::string command = std::string(PONSIM) + " " + option;
        FILE *output = popen(command.c_str(), "r");
        std::string said(10000, '\0');
        said.resize(fread(said.data(), 1, said.size(), output));
        EXPECT_EQ(pclose(output), 0);
        EXPECT_NE(said.find(wanted), std::string::npos) << said;
    }
}

} // namespace
} // namespace ponsim
