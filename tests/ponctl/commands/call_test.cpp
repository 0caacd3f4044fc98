// These tests run ponctl call as a process against a fake service.
#include <algorithm>
#include <bit>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "any_arguments.h"
#include "board/ipc.h"
#include "catalogue.h"
#include "fake_service.h"

namespace
{

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using Words = std::vector<std::string>;

const Words bind{"call", "bsp_pon_bind_onu_spec_id", "pon_port=1", "onu_id=5", "mac=00:11:22:33:44:55", "value=2",
                 "--yes"};

Words with(Words words, const Words &more)
{
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

TEST(Call, ReachesTheServiceWithEveryOperation)
{
    std::string lines, failed;
    size_t number = 0;
    for (const catalogue::Operation &operation : catalogue::operations()) {
        for (const std::string &word : words_for(operation))
            lines += "'" + word + "' ";
        lines += "--yes\n";
        ++number;
        // The service leaves no result.
        if (std::ranges::any_of(operation.arguments, [](const catalogue::Argument &argument) {
                return (argument.type == catalogue::ArgumentType::db && !argument.dropped) ||
                       argument.type == catalogue::ArgumentType::pblock_out;
            }))
            failed += "  standard input:" + std::to_string(number) + ": ended with 3\n";
    }
    const FakeService service;
    const Finished finished = service.ponctl({"batch", "--keep-going", "-"}, -1, Input(lines).descriptor());
    EXPECT_THAT(finished.err, EndsWith(" lines failed:\n" + failed));
    const std::vector<Received> received = service.received();
    ASSERT_EQ(received.size(), number);
    for (size_t i = 0; i < number; ++i) {
        const catalogue::Operation &operation = catalogue::operations()[i];
        EXPECT_EQ(received[i].channel, operation.channel->type) << operation.name;
        EXPECT_EQ(static_cast<int>(received[i].call), static_cast<int>(operation.call)) << operation.name;
        if (operation.command) {
            EXPECT_EQ(received[i].word(operation.record->command->offset), operation.command->code) << operation.name;
        }
    }
}

TEST(Call, HasHelpForEveryOperation)
{
    std::string lines;
    for (const catalogue::Operation &operation : catalogue::operations()) {
        const std::string name(operation.name);
        lines += "call " + name + " --help | include 'ponctl call " + name + "'\n";
    }
    const Finished finished = ponctl({"batch", "-"}, -1, Input(lines).descriptor());
    EXPECT_EQ(finished.code, 0) << finished.err;
    for (const catalogue::Operation &operation : catalogue::operations())
        EXPECT_THAT(finished.out, HasSubstr("  ponctl call " + std::string(operation.name)));
}

TEST(Call, SendsWhatItWasGiven)
{
    const FakeService service;
    const Finished finished = service.ponctl(with(bind, {"text_a=first", "text_c=third"}));
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(finished.out + finished.err, "");
    ASSERT_EQ(service.received().size(), 1u);
    const Received received = service.received().front();
    EXPECT_EQ(received.word(4), 1u);
    EXPECT_EQ(received.word(8), 5u);
    EXPECT_EQ(std::memcmp(&received.record[17], "\x00\x11\x22\x33\x44\x55", 6), 0);
    EXPECT_EQ(received.word(40), 2u);
    EXPECT_STREQ(reinterpret_cast<const char *>(&received.record[237]), "first");
    EXPECT_STREQ(reinterpret_cast<const char *>(&received.record[365]), "third");
}

TEST(Call, NamesTheStatusAndEndsWithOne)
{
    const FakeService service(status(4006));
    const Finished finished = service.ponctl(bind);
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.err, "ponctl: bsp_pon_bind_onu_spec_id: status 4006 PON_ERR_ID_IN_USE: " +
                                std::string(catalogue::find_status(4006)->brief) + "\n");
}

TEST(Call, SaysThatAStatusHasNoName)
{
    const FakeService service(status(77));
    const Finished finished = service.ponctl(bind);
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.err, "ponctl: bsp_pon_bind_onu_spec_id: status 77, which has no name\n");
}

TEST(Call, TellsAServiceStatusOf1001FromAnIpcFailure)
{
    const FakeService service(status(1001));
    EXPECT_EQ(service.ponctl(bind).code, 1);
}

TEST(Call, EndsWithThreeWhenNobodyServes)
{
    const Finished finished = ponctl(with({"--socket-dir", "/nowhere"}, bind));
    EXPECT_EQ(finished.code, 3);
    EXPECT_EQ(finished.out, "");
    EXPECT_THAT(finished.err, EndsWith("ponctl: bsp_pon_bind_onu_spec_id: IPC failure -1: " +
                                       std::string(ipc_strerror(IPC_ERR_NO_SERVICE)) +
                                       " in /nowhere; start ponsim, or name its folder with --socket-dir\n"));
    EXPECT_EQ(std::ranges::count(finished.err, '\n'), 1) << "what the library logs is said twice";
}

TEST(Call, NamesTheFoldersOfSeveralOltsWhereNobodyServesBesideThem)
{
    const FakeService service;
    const std::filesystem::path own = service.folder(), olts = own.string() + "-olts";
    std::filesystem::create_directory(olts);
    for (const char *olt : {"south", "north"})
        std::filesystem::create_directory_symlink(own, olts / olt);
    const Finished finished = ponctl(with({"--socket-dir", olts.string()}, bind));
    std::filesystem::remove_all(olts);
    EXPECT_EQ(finished.code, 3);
    EXPECT_THAT(finished.err,
                EndsWith(" in " + olts.string() + ", but in its folders north, south; name one, as with " +
                         "--socket-dir " + olts.string() + "/north\n"));
}

TEST(Call, EndsWithThreeWhenTheServiceFailsTheExchange)
{
    const FakeService service(
        [](const board_request &, board_answer *answer) { board_answer_fail(answer, IPC_ERR_SERVICE); });
    const Finished finished = service.ponctl({"call", "bsp_pon_exec_get", "record.cmd=1"});
    EXPECT_EQ(finished.code, 3);
    EXPECT_EQ(finished.out, "");
    EXPECT_THAT(finished.err, HasSubstr(ipc_strerror(IPC_ERR_SERVICE)));
}

TEST(Call, SendsNothingAfterAWrongArgument)
{
    const FakeService service;
    const Finished finished = service.ponctl(with(bind, {"colour=red"}));
    EXPECT_EQ(finished.code, 2);
    EXPECT_EQ(finished.err, "ponctl: colour: not an argument of bsp_pon_bind_onu_spec_id (known are pon_port, onu_id, "
                            "mac, text_a, text_b, value, text_c)\n");
    EXPECT_TRUE(service.received().empty());
}

TEST(Call, ShowsTheRowsOfAResultByItsView)
{
    const FakeService service(rows(386, R"([{"pon_port":1,"bound":3,"online":2,"max_distance":20000}])"));
    const Finished finished =
        service.ponctl({"call", "bsp_pon_exec_get_json", "cmd=BSP_CMD_VIEW_BASE_INFO_WEB", "pon_port=0"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(finished.out, "PORT BOUND ONLINE WAITING MIN (m) MAX (m)\n"
                            "   1     3      2       0       0   20000\n");
}

TEST(Call, GivesStatusAndOutputsAsJson)
{
    const FakeService service([](const board_request &, board_answer *answer) {
        board_answer_status(answer, 4003);
        board_answer_result(answer, 386, "[{\"pon_port\":1}]", 16);
    });
    const Finished finished =
        service.ponctl({"-o", "json", "call", "bsp_pon_exec_get_json", "cmd=BSP_CMD_VIEW_BASE_INFO_WEB", "pon_port=0"});
    EXPECT_EQ(finished.code, 1);
    const auto document = parsed(finished.out);
    EXPECT_STREQ(document["operation"].GetString(), "bsp_pon_exec_get_json");
    EXPECT_EQ(document["status"].GetUint(), 4003u);
    EXPECT_STREQ(document["status_name"].GetString(), "PON_ERR_NO_PORT");
    EXPECT_EQ(document["outputs"]["db_out"][0]["pon_port"].GetInt(), 1);
}

TEST(Call, SaysThatThereIsNoResult)
{
    const FakeService service;
    const Words words{"call", "bsp_pon_exec_get_json", "cmd=386", "pon_port=0"};
    const Finished finished = service.ponctl(words);
    EXPECT_EQ(finished.code, 3);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(finished.err, "ponctl: bsp_pon_exec_get_json: db_out: the service left no result database\n");
    EXPECT_TRUE(parsed(service.ponctl(with(words, {"-o", "json"})).out)["outputs"]["db_out"].IsNull());
}

// Answers with the request, into which the name of a result file is written.
void answer_with_name(const board_request &request, board_answer *answer)
{
    std::vector<uint8_t> record(request.length);
    std::memcpy(record.data(), request.data, request.length);
    std::memcpy(&record[429], "/tmp/a result", 14);
    board_answer_data(answer, record.data(), request.length);
}

TEST(Call, PrintsATextThatItReadsBack)
{
    const FakeService service(answer_with_name);
    const Finished finished = service.ponctl({"call", "bsp_pon_exec_get_file", "cmd=1", "pon_port=1"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(finished.out, "/tmp/a result\n");
}

TEST(Call, ShowsTheFieldsOfAnAnswerInPlace)
{
    const FakeService service(answer_with_name);
    const Words words{"call", "bsp_pon_exec_get", "record.cmd=1", "record.onu_mac=00:11:22:33:44:55"};
    EXPECT_EQ(service.ponctl(words).out, "FIELD   VALUE\n"
                                         "cmd     1\n"
                                         "onu_mac 00:11:22:33:44:55\n"
                                         "data429 text:/tmp/a result\n");
    const auto document = parsed(service.ponctl(with(words, {"-o", "json"})).out);
    EXPECT_STREQ(document["outputs"]["record"]["onu_mac"].GetString(), "00:11:22:33:44:55");
    EXPECT_EQ(document["outputs"]["record"]["pon_port"].GetUint(), 0u);
    EXPECT_THAT(service.ponctl(with(words, {"-o", "hex"})).out,
                HasSubstr("  429  2f 74 6d 70 2f 61 20 72 65 73 75 6c 74 00 00 00  /tmp/a result...  data429\n"));
}

TEST(Call, ShowsTheFieldsOfAResponseAsFarAsItGoes)
{
    const FakeService service([](const board_request &request, board_answer *answer) {
        board_answer_data(answer, request.data, request.length);
    });
    const Words words{"call", "bsp_pon_get_w_onu_by_mac", "pon_port=3", "mac=00:11:22:33:44:55"};
    EXPECT_EQ(service.ponctl(with(words, {"-o", "hex"})).out.substr(0, 5), "    0");
    const Finished finished = service.ponctl(words);
    EXPECT_EQ(finished.code, 0);
    EXPECT_THAT(finished.out, HasSubstr("pon_port 3\n"));
    EXPECT_THAT(finished.out, HasSubstr("onu_mac  00:11:22:33:44:55\n"));
    const auto document = parsed(service.ponctl(with(words, {"-o", "json"})).out);
    EXPECT_EQ(document["outputs"]["resp"]["pon_port"].GetUint(), 3u);
    EXPECT_EQ(service.received()[0].allowed, 776u);
}

TEST(Call, ReadsAResponseByTheLayoutOfTheAnswer)
{
    const FakeService service(bytes(pon_record({{8, 5}, {432, 1}, {436, 1940}})));
    const Words words{"call", "bsp_pon_get_w_onu_spec_id", "pon_port=3", "onu_id=5"};
    EXPECT_EQ(service.ponctl(words).out, "FIELD    VALUE\n"
                                         "onu_id   5\n"
                                         "state    online\n"
                                         "distance 1940 m\n");
    const auto document = parsed(service.ponctl(with(words, {"-o", "json"})).out);
    EXPECT_EQ(document["outputs"]["resp"]["distance"].GetUint(), 1940u);
    EXPECT_STREQ(document["outputs"]["resp"]["loid"].GetString(), "");
}

// The service leaves no result here, because the operation would drop it, and a run that looks for leaks would report
// it.
TEST(Call, SaysThatAnOperationHandsOutNoDatabase)
{
    const FakeService service;
    const Finished finished = service.ponctl({"call", "bsp_pon_onu_get_vlan_mode_snmp"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(finished.out, "");
    EXPECT_THAT(finished.err,
                EndsWith("ponctl: db_out: bsp_pon_onu_get_vlan_mode_snmp hands out no database, only the status\n"));
    EXPECT_THAT(finished.err, Not(HasSubstr("left no result database")));
}

// Returns a handler that answers with a text at the offset of an ONU's configuration.
FakeService::Handler configuration(const std::string &json, uint32_t status_word = 0)
{
    return [=](const board_request &, board_answer *answer) {
        std::vector<uint8_t> record(1044);
        std::memcpy(&record[20], json.data(), json.size());
        board_answer_status(answer, status_word);
        board_answer_data(answer, record.data(), static_cast<uint32_t>(record.size()));
    };
}

TEST(Call, ReadsADatabaseThatIsATextInTheAnswer)
{
    const FakeService service(configuration(R"([{"model":"E8010"}])"));
    const Words words{"call", "bsp_pon_onu_get_cfg_info", "pon_port=1", "onu_id=2", "-o", "json"};
    EXPECT_STREQ(parsed(service.ponctl(words).out)["outputs"]["db_out"][0]["model"].GetString(), "E8010");
}

TEST(Call, TellsAStatusThatTheOperationDrops)
{
    const FakeService service(configuration("", 4005));
    const Words words{"call", "bsp_pon_onu_get_cfg_info", "pon_port=1", "onu_id=2"};
    const Finished finished = service.ponctl(words);
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.err,
              "ponctl: db_out: the service left no result database\n"
              "ponctl: bsp_pon_onu_get_cfg_info: the service's status, which the operation drops, is 4005 "
              "PON_ERR_NOT_BOUND: no ONU is bound to this id or by this MAC address\n");
    EXPECT_EQ(parsed(service.ponctl(with(words, {"-o", "json"})).out)["status"].GetUint(), 0u);
}

TEST(Call, ShowsTheRequestOfADryRunAndSendsNothing)
{
    const FakeService service;
    const Finished finished = service.ponctl(with(bind, {"--dry-run"}));
    EXPECT_EQ(finished.code, 0);
    // Records are in the byte order of the machine.
    const std::string code = std::endian::native == std::endian::little
                                 ? "6d 01 00 00                                      m..."
                                 : "00 00 01 6d                                      ...m";
    EXPECT_THAT(finished.out, StartsWith("not sent: set on BSP_MSG_PON, 944 bytes\n"
                                         "FIELD     VALUE\n"
                                         "cmd       365 BSP_CMD_ONU_BIND\n"
                                         "pon_port  1\n"
                                         "onu_id    5\n"
                                         "onu_mac   00:11:22:33:44:55\n"
                                         "arg_value 2\n"));
    EXPECT_THAT(service.ponctl(with(bind, {"--dry-run", "-o", "hex"})).out,
                StartsWith("    0  " + code + "              cmd\n"));
    EXPECT_TRUE(service.received().empty());
}

TEST(Call, LongTextGoesWhenItMay)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl(with(bind, {"text_b=" + std::string(70, 'x')})).code, 2);
    EXPECT_EQ(service.ponctl(with(bind, {"text_b=" + std::string(70, 'x'), "--allow-long"})).code, 0);
    ASSERT_EQ(service.received().size(), 1u);
    EXPECT_EQ(service.received()[0].record[173 + 69], 'x');
    EXPECT_EQ(service.received()[0].record[173 + 70], 0);
}

TEST(CommandLine, TimeOutIsTheOneGiven)
{
    std::mutex holding;
    std::unique_lock held(holding);
    const FakeService service([&holding](const board_request &, board_answer *) { std::lock_guard wait(holding); });
    const Finished finished = service.ponctl(with({"--timeout", "50"}, bind));
    held.unlock();
    EXPECT_EQ(finished.code, 3);
    EXPECT_THAT(finished.err, HasSubstr(ipc_strerror(IPC_ERR_TIMEOUT)));
}

TEST(CommandLine, OutputThatCannotBeWrittenIsAnError)
{
    const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
    const Finished finished = ponctl({"ops"}, full);
    close(full);
    EXPECT_EQ(finished.code, 4);
    // The reason follows when it is still known.
    EXPECT_THAT(finished.err, StartsWith("ponctl: cannot write the output"));
}

TEST(CommandLine, ReaderThatHasGoneIsNoError)
{
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
    close(ends[0]);
    for (const Words &words : {Words{"ops"}, Words{"ops", "-o", "json"}, Words{"ops", "bsp_pon_cfg"}}) {
        const Finished finished = ponctl(words, ends[1]);
        EXPECT_EQ(finished.code, 0);
        EXPECT_EQ(finished.err, "");
    }
    close(ends[1]);
}

} // namespace
