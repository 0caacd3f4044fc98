// These tests use the profile channel by ponctl call, raw and trace. Its records are as long as their payloads and 28
// bytes.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using Words = std::vector<std::string>;

constexpr size_t payload = 24; // offset in a record

std::string payload_of(const Received &received)
{
    return {received.record.begin() + payload, received.record.end() - 4};
}

// Returns a handler that answers with a payload, and with what the header says of a result file.
FakeService::Handler answer(const std::string &text, uint32_t count = 0, uint32_t status_word = 0)
{
    return [=](const board_request &, board_answer *reply) {
        std::vector<uint8_t> record(payload + text.size() + 1);
        std::memcpy(&record[8], &count, sizeof count);
        std::memcpy(&record[payload], text.data(), text.size());
        board_answer_status(reply, status_word);
        board_answer_data(reply, record.data(), static_cast<uint32_t>(record.size()));
    };
}

// A ResultFile is a result file of the service, in the folder where its clients take files. Its name fits into every
// answer.
class ResultFile
{
public:
    explicit ResultFile(std::string text) : size(static_cast<uint32_t>(text.size())), content(std::move(text)) {}
    ResultFile(const ResultFile &) = delete;
    ResultFile &operator=(const ResultFile &) = delete;

    void put_into(const std::string &folder)
    {
        name = folder + "/result";
        std::ofstream(name, std::ios::binary) << content;
    }

    std::string name; // empty until it is there
    uint32_t size;

private:
    std::string content;
};

// Returns a handler that answers with the name of a file, and this number of bytes.
FakeService::Handler answer(const ResultFile &file, uint32_t count = 0)
{
    return
        [&file, count](const board_request &request, board_answer *reply) { answer(file.name, count)(request, reply); };
}

TEST(ProfileSet, SendsThePayload)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"call", "bsp_profile_exec_set", "action=7", "buf=text:hello", "--yes"}).code, 0);
    const Received received = service.received().at(0);
    EXPECT_EQ(received.call, BOARD_CALL_DGRAM_SET);
    EXPECT_EQ(received.record.size(), 33u);
    EXPECT_EQ(received.word(0), 7u);
    EXPECT_EQ(received.word(4), 0u);
    EXPECT_EQ(payload_of(received), "hello");
}

TEST(ProfileSet, SendsZerosUpToTheLength)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"call", "bsp_profile_exec_set", "action=7", "buf=text:hi", "len=5", "--yes"}).code, 0);
    EXPECT_EQ(service.ponctl({"call", "bsp_profile_exec_set", "action=7", "len=100", "--yes"}).code, 0);
    EXPECT_EQ(service.ponctl({"call", "bsp_profile_exec_set", "action=7", "buf=text:hello", "len=4", "--yes"}).code, 0);
    EXPECT_EQ(payload_of(service.received().at(0)), std::string("hi\0\0\0", 5));
    EXPECT_EQ(payload_of(service.received().at(1)), std::string(100, '\0'));
    EXPECT_EQ(payload_of(service.received().at(2)), "hell");
}

TEST(ProfileSet, HasNoPayloadOfMoreThan4092Bytes)
{
    const FakeService service;
    const Words set{"call", "bsp_profile_exec_set", "action=7", "--allow-long", "--yes"};
    const auto with = [&set](const std::string &word) {
        Words words = set;
        words.push_back(word);
        return words;
    };
    EXPECT_EQ(service.ponctl(with("buf=text:" + std::string(4093, 'x'))).err,
              "ponctl: buf: 4093 bytes are more than the 4092 of a payload\n");
    EXPECT_EQ(service.ponctl(with("len=4093")).err, "ponctl: len: 4093 bytes are more than the 4092 of a payload\n");
    EXPECT_TRUE(service.received().empty());
    EXPECT_EQ(service.ponctl(with("buf=text:" + std::string(4092, 'x'))).code, 0);
    EXPECT_EQ(service.received().at(0).record.size(), 4120u);
}

TEST(ProfileGet, ShowsTheAnswerInThePayloadsPlaceWhateverTheStatus)
{
    const FakeService service(answer("answer", 0, 4001));
    const Finished finished = service.ponctl({"call", "bsp_profile_exec_get", "action=7", "buf=text:ask", "len=6"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.out, "FIELD VALUE\ndata  text:answer\n");
    EXPECT_EQ(service.received().at(0).word(4), 1u);
    EXPECT_EQ(payload_of(service.received().at(0)), std::string("ask\0\0\0", 6));
}

TEST(ProfileGet, ShowsAsMuchOfTheAnswerAsThePayloadIsLong)
{
    const FakeService service(answer("answer"));
    const Words get{"call", "bsp_profile_exec_get", "action=7", "buf=text:ask", "-o", "json"};
    EXPECT_STREQ(parsed(service.ponctl(get).out)["outputs"]["buf"]["data"].GetString(), "616e73");
}

TEST(ProfileGet, WithoutAPayloadHasNoAnswerToShow)
{
    const FakeService service(answer("answer"));
    const Finished finished = service.ponctl({"call", "bsp_profile_exec_get", "action=7", "len=100"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(service.received().at(0).record.size(), 128u);
}

TEST(ProfileGetWithABufferForTheAnswer, ShowsTheWholeAnswerOnce)
{
    const FakeService service(answer("an answer longer than the question"));
    const Words get{"call", "bsp_profile_exec_get_", "action=7", "buf=text:ask"};
    const Finished finished = service.ponctl(get);
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(finished.out, "FIELD VALUE\ndata  text:an answer longer than the question\n");
    EXPECT_EQ(payload_of(service.received().at(0)), "ask");
}

TEST(ProfileGetWithABufferForTheAnswer, ShowsAsManyBytesAsAreWanted)
{
    const FakeService service(answer("answer"));
    EXPECT_EQ(service.ponctl({"call", "bsp_profile_exec_get_", "action=7", "out_len=2", "-o", "hex"}).out,
              "   24  61 6e                                            an                data\n");
}

TEST(ProfileGetWithABufferForTheAnswer, ShowsNothingAfterAStatus)
{
    const FakeService service(answer("answer", 0, 4001));
    const Finished finished = service.ponctl({"call", "bsp_profile_exec_get_", "action=7"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.out, "");
}

TEST(ProfileGetJson, ShowsTheRowsOfAFileThatGoes)
{
    ResultFile file(R"([{"colour":"red"}])");
    const FakeService service(answer(file));
    file.put_into(service.folder());
    const Finished finished = service.ponctl({"call", "bsp_profile_exec_get_json", "action=7"});
    EXPECT_EQ(finished.code, 0) << finished.err;
    EXPECT_EQ(finished.out, "colour\nred\n");
    EXPECT_FALSE(std::filesystem::exists(file.name));
}

TEST(ProfileGetJson, SaysThatThereIsNoDatabase)
{
    const FakeService service(answer("/nowhere/at/all"));
    EXPECT_THAT(service.ponctl({"call", "bsp_profile_exec_get_json", "action=7"}).err,
                HasSubstr("ponctl: bsp_profile_exec_get_json: db_out: the service left no result database\n"));
}

TEST(ProfileGetFile, ShowsACleanTextAsItIs)
{
    ResultFile file("vlan 17\n\tname a\n");
    const FakeService service(answer(file, file.size));
    file.put_into(service.folder());
    const Words get{"call", "bsp_profile_exec_get_cfgwr", "action=7"};
    EXPECT_EQ(service.ponctl(get).out, "vlan 17\n\tname a\nlen_out: 16\n");
    EXPECT_THAT(service.ponctl({"call", "bsp_profile_exec_get_cfgwr", "action=7", "-o", "hex"}).out,
                HasSubstr("    0  76 6c 61 6e 20 31 37 0a 09 6e 61 6d 65 20 61 0a  vlan 17..name a.\n"));
    const auto outputs = parsed(service.ponctl({"call", "bsp_profile_exec_get_cfgwr", "action=7", "-o", "json"}).out);
    EXPECT_STREQ(outputs["outputs"]["data_out"].GetString(), "vlan 17\n\tname a\n");
    EXPECT_EQ(outputs["outputs"]["len_out"].GetUint(), 16u);
    EXPECT_TRUE(std::filesystem::exists(file.name));
}

TEST(ProfileGetFile, ShowsBytesOfAnythingElse)
{
    ResultFile file("\x1b[2J");
    const FakeService service(answer(file, file.size));
    file.put_into(service.folder());
    EXPECT_THAT(service.ponctl({"call", "bsp_profile_exec_get_cfgwr", "action=7"}).out,
                HasSubstr("    0  1b 5b 32 4a                                      .[2J\n"));
    const auto outputs = parsed(service.ponctl({"call", "bsp_profile_exec_get_cfgwr", "action=7", "-o", "json"}).out);
    EXPECT_STREQ(outputs["outputs"]["data_out"].GetString(), "1b5b324a");
}

TEST(ProfileGetFile, SaysThatThereIsNothingInIt)
{
    const FakeService service(answer("/nowhere"));
    const Finished finished = service.ponctl({"call", "bsp_profile_exec_get_cfgwr", "action=7"});
    EXPECT_EQ(finished.code, 3);
    EXPECT_EQ(finished.err,
              "ponctl: bsp_profile_exec_get_cfgwr: data_out: the service left nothing in a result file\n");
}

TEST(ProfileGetFile, ThatCannotBeReadIsAFailure)
{
    const FakeService service(answer("/nowhere/at/all", 5));
    const Finished finished = service.ponctl({"call", "bsp_profile_exec_get_cfgwr", "action=7"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_THAT(finished.err, HasSubstr("ponctl: bsp_profile_exec_get_cfgwr: status "));
}

TEST(ConfigWrite, ShowsTextAndWord)
{
    std::vector<uint8_t> record(1148);
    record[120] = record[123] = 5; // 0x05000005 in both byte orders
    std::memcpy(&record[124], "port 1\nport 2", 13);
    const FakeService service(bytes(record));
    const Finished finished = service.ponctl({"call", "bsp_pon_get_config_write", "port=3", "arg=2"});
    EXPECT_EQ(finished.out, "port 1\nport 2\nword_out: 83886085 bytes\n");
    EXPECT_EQ(service.received().at(0).channel, 240u);
    EXPECT_EQ(service.received().at(0).word(0), 3u);
    EXPECT_EQ(service.received().at(0).word(4), 2u);
}

TEST(UniProfile, TakesASmallNumberAndABody)
{
    const FakeService service;
    const Words set{"call", "bsp_pon_prof_uni_set", "profile_id=3", "body=text:body"};
    const auto with_value = [&set](const std::string &value) {
        Words words = set;
        words.push_back("value=" + value);
        return words;
    };
    EXPECT_EQ(service.ponctl(with_value("65536")).code, 2);
    EXPECT_EQ(service.ponctl(with_value("0xffff")).code, 0);
    ASSERT_EQ(service.received().size(), 1u);
    EXPECT_EQ(service.received()[0].word(4), 3u);
    EXPECT_EQ(service.received()[0].word(40), 65535u);
    EXPECT_EQ(service.received()[0].text(429), "body");
}

TEST(Oui, IsThreeBytes)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"call", "bsp_pon_onu_ctc_set_oui", "oui=hex:a1b2c3", "--yes"}).code, 0);
    EXPECT_EQ(service.ponctl({"call", "bsp_pon_onu_ctc_set_oui", "oui=hex:a1b2c3d4"}).err,
              "ponctl: oui: 4 bytes are more than its 3\n");
    EXPECT_THAT(service.ponctl({"call", "bsp_pon_onu_ctc_set_oui"}).err, HasSubstr("oui: missing"));
    ASSERT_EQ(service.received().size(), 1u);
    EXPECT_EQ(service.received()[0].text(429), "\xa1\xb2\xc3");
}

TEST(DryRun, ShowsARecordAsLongAsItsPayload)
{
    const FakeService service;
    const Finished finished =
        service.ponctl({"call", "bsp_profile_exec_get", "action=7", "buf=text:hello", "--dry-run"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_THAT(finished.out, testing::StartsWith("not sent: dgram-get on BSP_MSG_PROFILE, 33 bytes\n"
                                                  "FIELD  VALUE\n"
                                                  "action 7\n"
                                                  "is_get 1\n"
                                                  "data   text:hello\n"));
    EXPECT_TRUE(service.received().empty());
}

TEST(DryRun, LooksForNoResultFile)
{
    const FakeService service;
    for (const Words &words :
         {Words{"bsp_profile_exec_get_json", "action=7"}, Words{"bsp_profile_exec_get_cfgwr", "action=7"},
          Words{"bsp_pon_get_arptable", "pon_port=1"}}) {
        Words all{"call", "--dry-run"};
        all.insert(all.end(), words.begin(), words.end());
        const Finished finished = service.ponctl(all);
        EXPECT_EQ(finished.code, 0);
        EXPECT_THAT(finished.out, testing::StartsWith("not sent: "));
        EXPECT_EQ(finished.err, "");
    }
}

TEST(Raw, ShowsAnAnswerAsLongAsItIs)
{
    const FakeService service(answer("answer"));
    const Finished finished = service.ponctl({"raw", "BSP_MSG_PROFILE", "dgram-get", "action=7", "is_get=1"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(finished.out, "status 0 BSP_OK: success, 31 bytes\nFIELD VALUE\ndata  text:answer\n");
}

TEST(Raw, SendsAllOfAProfileWhateverIsSetOfIt)
{
    const FakeService service;
    EXPECT_EQ(
        service.ponctl({"raw", "BSP_MSG_PROFILE", "dgram-set", "action=BSP_CMD_PROFILE_LINE_STORE", "name=x"}).code, 0);
    EXPECT_EQ(service.received().at(0).record.size(), 84u);
}

TEST(TraceOfProfiles, HasRecordsAsLongAsTheyWere)
{
    const FakeService service(answer("answer"));
    const std::string file = std::filesystem::temp_directory_path() / ("ponctl_trace_" + std::to_string(getpid()));
    setenv("BOARD_IPC_TRACE", file.c_str(), 1);
    service.ponctl({"call", "bsp_profile_exec_get", "action=7", "buf=text:hello"});
    unsetenv("BOARD_IPC_TRACE");
    const std::string out = ponctl({"trace", file, "-v"}).out;
    std::filesystem::remove(file);
    EXPECT_THAT(out, HasSubstr("request, 33 bytes\nFIELD  VALUE\naction 7\nis_get 1\ndata   text:hello\n"));
    EXPECT_THAT(out, HasSubstr("response, 31 bytes\nFIELD VALUE\ndata  text:answer\n"));
}

} // namespace
