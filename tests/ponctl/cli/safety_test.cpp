// These tests check that what affects service is not done without asking.
#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <regex>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "any_arguments.h"
#include "catalogue.h"
#include "fake_service.h"

namespace
{

using catalogue::Class;
using testing::HasSubstr;
using testing::Not;
using Words = std::vector<std::string>;

bool affects_service(const Received &received)
{
    const catalogue::Channel &channel = *catalogue::find_channel(received.channel);
    const catalogue::Command *command = catalogue::find_command(
        received.channel, received.word(channel.record->command->offset), static_cast<catalogue::Call>(received.call));
    return command && command->impact == Class::service_affecting;
}

bool affects_service(const std::vector<Received> &received)
{
    return std::ranges::any_of(received, [](const Received &one) { return affects_service(one); });
}

TEST(Safety, NoOperationThatAffectsServiceIsCalledUnasked)
{
    const FakeService service;
    for (const catalogue::Operation &operation : catalogue::operations()) {
        if (operation.impact != Class::service_affecting) continue;
        const Finished finished = service.ponctl(words_for(operation));
        EXPECT_EQ(finished.code, 2) << operation.name;
        EXPECT_THAT(finished.err, HasSubstr("ponctl: --yes: missing; calling " + std::string(operation.name)));
        ASSERT_TRUE(service.received().empty()) << operation.name;
    }
}

TEST(Safety, NothingIsAskedBeforeAnOperationThatReads)
{
    const FakeService service;
    for (const catalogue::Operation &operation : catalogue::operations()) {
        if (operation.impact != Class::read) continue;
        EXPECT_THAT(service.ponctl(words_for(operation)).err, Not(HasSubstr("--yes"))) << operation.name;
    }
}

TEST(Safety, TheQuestionNamesWhatIsHit)
{
    const FakeService service;
    EXPECT_EQ(
        service
            .ponctl({"call", "bsp_pon_bind_onu_spec_id", "pon_port=1", "onu_id=5", "mac=00:11:22:33:44:55", "value=0"})
            .err,
        "ponctl: --yes: missing; calling bsp_pon_bind_onu_spec_id (BSP_CMD_ONU_BIND) for port 1, ONU 5, MAC "
        "address 00:11:22:33:44:55 needs it when no terminal is there to ask\n");
    EXPECT_THAT(service.ponctl({"call", "bsp_pon_onu_ctc_upgrade_commit", "pon_port=1", "onu_id=0"}).err,
                HasSubstr(" for port 1, ONU 0 needs it"));
    EXPECT_THAT(service.ponctl({"onu", "release", "1", "--id", "0"}).err, HasSubstr(" for port 1, ONU 0 needs it"));
}

TEST(Safety, ARecordIsAsItsCommandOrUnknown)
{
    const FakeService service;
    const auto asks = [&service](const Words &words) {
        const Finished finished = service.ponctl(words);
        return finished.code == 2 && finished.err.find("--yes: missing; ") != finished.err.npos;
    };
    EXPECT_TRUE(asks({"raw", "BSP_MSG_PON", "set", "cmd=BSP_CMD_ONU_BIND", "pon_port=1"}));
    EXPECT_TRUE(asks({"raw", "BSP_MSG_PON", "set", "cmd=9999"})) << "unknown";
    EXPECT_TRUE(asks({"call", "bsp_pon_exec_set", "record.cmd=BSP_CMD_ONU_BIND"}));
    EXPECT_TRUE(service.received().empty());
    EXPECT_FALSE(asks({"raw", "BSP_MSG_PON", "get", "cmd=9999"}));
    EXPECT_FALSE(asks({"raw", "BSP_MSG_PON", "set", "cmd=BSP_CMD_ONU_ALARM_CLEAR"})) << "a write";
    EXPECT_FALSE(asks({"call", "bsp_pon_exec_set", "record.cmd=BSP_CMD_ONU_ALARM_CLEAR"}));
}

TEST(Safety, ADryRunAsksNothing)
{
    EXPECT_EQ(ponctl({"raw", "BSP_MSG_PON", "set", "cmd=BSP_CMD_ONU_BIND", "--dry-run"}).code, 0);
}

TEST(Safety, OneAnswerIsForTheWholeCommandLine)
{
    const FakeService service;
    const Terminal terminal;
    terminal.type("y\n");
    const Finished finished =
        service.ponctl({"call", "bsp_pon_no_bind_onu_spec_id", "--onus", "1/3-5"}, -1, terminal.descriptor());
    EXPECT_EQ(finished.code, 0) << finished.err;
    EXPECT_EQ(service.received().size(), 3u);
}

// These are command lines of the groups, one for each that may affect service.
const std::vector<Words> group_lines{
    {"onu", "bind", "1", "00:11:22:33:44:55"},
    {"onu", "bind", "1", "00:11:22:33:44:55", "--id", "5"},
    {"onu", "release", "1", "--id", "5"},
    {"onu", "release", "1", "--mac", "00:11:22:33:44:55"},
    {"onu", "release", "1", "--id", "5", "--mac", "00:11:22:33:44:55"},
    {"onu", "release", "1", "--offline"},
    {"onu", "release", "1", "--all"},
    {"onu", "release", "1/3-5"},
    {"onu", "confirm", "1", "5"},
    {"onu", "confirm", "1/3-5"},
    {"onu", "reject", "1", "5"},
    {"onu", "reject", "1", "5-7"},
    {"onu", "reject", "1/5-7"},
    {"onu", "reject", "1", "--mac", "00:11:22:33:44:55"},
    {"onu", "allow", "1", "00:11:22:33:44:55"},
    {"onu", "allow", "1", "--ids", "5"},
    {"onu", "set", "1/5", "vlan", "uni=1", "mode=1"},
    {"onu", "multillid", "1/5", "2"},
    {"onu", "image", "push", "1/5", "/etc/passwd", "--version", "1"},
    {"onu", "image", "commit", "1/5"},
    {"auth", "set", "1", "mac"},
    {"auth", "remove", "1", "loid"},
    {"sla", "set", "1", "5", "--max", "1"},
    {"sla", "set", "1/3-5", "--down-max", "1"},
    {"sla", "clear", "1", "5"},
    {"p2p", "set", "1", "on"},
    {"p2p", "set", "1", "on", "--onu", "3-5"},
    {"p2p", "entry", "1", "1", "drop"},
    {"p2p", "own-port", "1", "2"},
    {"fdb", "flush"},
    {"fdb", "set", "300"},
    {"upgrade", "start", "1"},
    {"upgrade", "start", "1", "--onu", "5"},
    {"upgrade", "start", "1/3-5"},
    {"loop", "on"},
    {"loop", "off"},
    {"loop", "recover"},
    {"config", "load", "/etc/passwd"},
    {"debug", "ge-phy-set", "1", "reset"},
    {"i2c", "write", "1", "0xa0", "0", "01"},
};

std::string text_of(const Words &words)
{
    std::string text;
    for (const std::string &word : words)
        text += word + " ";
    return text;
}

TEST(Safety, NoGroupAffectsServiceUnasked)
{
    for (const Words &words : group_lines) {
        const FakeService service;
        const Finished finished = service.ponctl(words);
        EXPECT_EQ(finished.code, 2) << text_of(words);
        EXPECT_THAT(finished.err, HasSubstr("--yes: missing; ")) << text_of(words);
        EXPECT_TRUE(service.received().empty()) << text_of(words);
    }
}

TEST(Safety, WithYesEachOfTheGroupsDoesIt)
{
    for (Words words : group_lines) {
        const FakeService service;
        words.emplace_back("--yes");
        const Finished finished = service.ponctl(words);
        EXPECT_TRUE(affects_service(service.received())) << text_of(words) << finished.err;
    }
}

// Returns which functions of the IPC library the members of the tool's archives call: "MEMBER NAME".
std::set<std::string> ipc_calls()
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> pipe(popen(NM " -A -u " TOOL_LIBRARIES, "r"), pclose);
    std::set<std::string> calls;
    std::array<char, 1024> line;
    const std::regex call(":([a-z_0-9]+)\\.cpp\\.o:.* (ipc_(dgram_)?[sg]et_exec)");
    std::cmatch match;
    while (pipe && std::fgets(line.data(), line.size(), pipe.get()))
        if (std::regex_search(line.data(), match, call)) calls.insert(match[1].str() + " " + match[2].str());
    return calls;
}

// The one file that calls the IPC library asks for permission before each request.
TEST(Safety, OnlyOneFileCallsTheIpcLibrary)
{
    EXPECT_EQ(ipc_calls(), (std::set<std::string>{"record ipc_set_exec", "record ipc_get_exec",
                                                  "record ipc_dgram_set_exec", "record ipc_dgram_get_exec"}));
}

} // namespace
