// These tests run ponctl trace on exchanges that ponctl itself made.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "board/trace.h"
#include "fake_service.h"

namespace
{

using testing::ContainsRegex;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class Trace : public testing::Test
{
protected:
    Trace()
    {
        char path[] = "/tmp/ponctl_trace_XXXXXX";
        file = std::string(mkdtemp(path)) + "/trace";
        setenv("BOARD_IPC_TRACE", file.c_str(), 1);
    }
    ~Trace() override
    {
        unsetenv("BOARD_IPC_TRACE");
        std::filesystem::remove_all(std::filesystem::path(file).parent_path());
    }

    // Releases ONUs 1 to 5 and 7, and asks for a view.
    void make_two_exchanges() const
    {
        const FakeService service([](const board_request &request, board_answer *answer) {
            if (request.call == BOARD_CALL_SET) return board_answer_status(answer, 4005);
            board_answer_result(answer, 386, "[{\"pon_port\":1}]", 16);
        });
        service.ponctl(
            {"call", "bsp_pon_no_bind_onu_batch_spec_id", "record.pon_port=3", "record.onu_set=1-5,7", "--yes"});
        service.ponctl({"port", "list"});
        unsetenv("BOARD_IPC_TRACE");
    }

    rapidjson::Document as_json() const
    {
        rapidjson::Document document;
        document.Parse(ponctl({"trace", file, "-o", "json"}).out.c_str());
        EXPECT_FALSE(document.HasParseError());
        return document;
    }

    std::string file;
};

TEST_F(Trace, IsALineAnExchange)
{
    make_two_exchanges();
    const Finished finished = ponctl({"trace", file, "--no-headings"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_THAT(finished.out,
                ContainsRegex("^[-0-9]+T[0-9:.]+Z +[0-9]+ set +BSP_MSG_PON BSP_CMD_ONU_RELEASE_BATCH +4005 "
                              "PON_ERR_NOT_BOUND: [^\n]*\n[^\n]* get +BSP_MSG_PON "
                              "BSP_CMD_VIEW_BASE_INFO_WEB +0 BSP_OK: success\n$"));
}

TEST_F(Trace, ShowsTheFieldsWhenAsked)
{
    make_two_exchanges();
    EXPECT_THAT(ponctl({"trace", file, "-v"}).out, HasSubstr("request, 944 bytes\n"
                                                             "FIELD    VALUE\n"
                                                             "cmd      367 BSP_CMD_ONU_RELEASE_BATCH\n"
                                                             "pon_port 3\n"
                                                             "onu_set  1-5,7\n"));
}

TEST_F(Trace, HidesPasswordsUnlessTheyAreWanted)
{
    const std::string secret = R"(["a row with sesame"])";
    {
        const FakeService service([&secret](const board_request &request, board_answer *answer) {
            if (request.msg_type == 232) return;
            std::array<char, 24 + sizeof BOARD_RESULT_FILE> data{};
            const auto size = static_cast<uint32_t>(secret.size());
            std::memcpy(&data[8], &size, sizeof size);
            std::memcpy(&data[24], BOARD_RESULT_FILE, sizeof BOARD_RESULT_FILE);
            board_answer_data(answer, data.data(), data.size());
            board_answer_file(answer, secret.data(), size);
        });
        service.ponctl({"loid", "add", "1", "shop17", "--password", "sesame", "--yes"});
        EXPECT_EQ(service.ponctl({"config", "save", "-"}).out, secret);
        unsetenv("BOARD_IPC_TRACE");
    }
    for (const std::vector<std::string> &form : {std::vector<std::string>{"-v"}, {"-o", "json"}, {"-o", "hex"}}) {
        std::vector<std::string> words{"trace", file};
        words.insert(words.end(), form.begin(), form.end());
        const std::string hidden = ponctl(words).out;
        EXPECT_THAT(hidden, HasSubstr("***"));
        EXPECT_THAT(hidden, testing::Not(HasSubstr("sesame")));
        words.emplace_back("--secrets");
        EXPECT_THAT(ponctl(words).out, HasSubstr("sesame"));
    }
}

TEST_F(Trace, IsChosenAsOtherListings)
{
    make_two_exchanges();
    EXPECT_EQ(ponctl({"trace", file, "--where", "outcome~NOT_BOUND", "--columns", "call,command", "-o", "csv"}).out,
              "call,command\nset,BSP_CMD_ONU_RELEASE_BATCH\n");
    EXPECT_EQ(parsed(ponctl({"trace", file, "--sort", "call", "--limit", "1", "-o", "json"}).out)[0], as_json()[1]);
    EXPECT_EQ(ponctl({"trace", file, "-v", "--limit", "1"}).code, 2);
}

TEST_F(Trace, IsFilteredByChannelCommandProcessAndErrors)
{
    make_two_exchanges();
    const std::string pid = std::to_string(as_json()[1]["pid"].GetUint());
    const std::vector<std::pair<std::vector<std::string>, std::vector<std::string>>> cases{
        {{"--channel", "BSP_MSG_PON"}, {"BSP_CMD_ONU_RELEASE_BATCH", "BSP_CMD_VIEW_BASE_INFO_WEB"}},
        {{"--channel", "232"}, {"BSP_CMD_ONU_RELEASE_BATCH", "BSP_CMD_VIEW_BASE_INFO_WEB"}},
        {{"--channel", "BSP_MSG_PROFILE"}, {}},
        {{"--channel", "4711"}, {}},
        {{"--command", "BSP_CMD_ONU_RELEASE_BATCH"}, {"BSP_CMD_ONU_RELEASE_BATCH"}},
        {{"--command", "386"}, {"BSP_CMD_VIEW_BASE_INFO_WEB"}},
        {{"--pid", pid}, {"BSP_CMD_VIEW_BASE_INFO_WEB"}},
        {{"--errors"}, {"BSP_CMD_ONU_RELEASE_BATCH"}},
        {{"--errors", "--command", "386"}, {}},
    };
    for (const auto &[options, commands] : cases) {
        std::vector<std::string> words{"trace", file, "-o", "json"};
        words.insert(words.end(), options.begin(), options.end());
        std::vector<std::string> shown;
        const rapidjson::Document exchanges = parsed(ponctl(words).out);
        for (const auto &exchange : exchanges.GetArray())
            shown.emplace_back(exchange["command"].GetString());
        EXPECT_EQ(shown, commands) << options.front() << " " << options.back();
    }
}

TEST_F(Trace, RefusesNamesThatItDoesNotKnow)
{
    make_two_exchanges();
    EXPECT_THAT(ponctl({"trace", file, "--channel", "BSP_MSG_PN"}).err,
                StartsWith("ponctl: --channel: 'BSP_MSG_PN' is not a channel; did you mean BSP_MSG_PON?"));
    EXPECT_THAT(ponctl({"trace", file, "--command", "BSP_CMD_ONU_BINT"}).err,
                StartsWith("ponctl: --command: 'BSP_CMD_ONU_BINT' is not a command code or the name of a command; did "
                           "you mean BSP_CMD_ONU_BIND"));
    EXPECT_THAT(ponctl({"trace", file, "--pid", "me"}).err, StartsWith("ponctl: --pid: 'me' is not a number"));
}

TEST_F(Trace, HasRecordsAndResultsAsJson)
{
    make_two_exchanges();
    const auto document = as_json();
    ASSERT_EQ(document.Size(), 2u);
    EXPECT_EQ(document[0]["request"]["pon_port"].GetUint(), 3u);
    EXPECT_EQ(document[0]["status"].GetUint(), 4005u);
    EXPECT_EQ(document[1]["result"][0]["pon_port"].GetInt(), 1);
}

TEST_F(Trace, TellsTwoCommandsOfOneCodeApartByTheCall)
{
    const FakeService service;
    service.ponctl({"call", "bsp_pon_get_w_onu_spec_id", "pon_port=1", "onu_id=2"});
    service.ponctl({"call", "bsp_pon_get_onu_info", "record.pon_port=1"});
    unsetenv("BOARD_IPC_TRACE");
    const auto document = as_json();
    EXPECT_STREQ(document[0]["command"].GetString(), "BSP_CMD_WHITELIST_GET");
    EXPECT_STREQ(document[1]["command"].GetString(), "BSP_CMD_ONU_INFO_GET");
}

TEST_F(Trace, HasNoStatusForAFailedExchange)
{
    ponctl({"--socket-dir", "/nowhere", "port", "list"});
    unsetenv("BOARD_IPC_TRACE");
    const auto document = as_json();
    ASSERT_EQ(document.Size(), 1u);
    EXPECT_EQ(document[0]["ipc_result"].GetInt(), -1);
    EXPECT_TRUE(document[0]["status"].IsNull());
}

// Rewrites the first exchange of a trace as a machine of the other byte order would have written it.
void turn_byte_order(const std::string &file)
{
    std::ifstream in(file, std::ios::binary);
    std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
    const auto turn = [&bytes](size_t at, size_t size) {
        std::reverse(bytes.begin() + static_cast<std::ptrdiff_t>(at),
                     bytes.begin() + static_cast<std::ptrdiff_t>(at + size));
    };
    const size_t record = sizeof(board_trace_file), request = record + sizeof(board_trace_record);
    char &order = bytes[offsetof(board_trace_file, byte_order)];
    order = order == BOARD_TRACE_BIG_ENDIAN ? BOARD_TRACE_LITTLE_ENDIAN : BOARD_TRACE_BIG_ENDIAN;
    turn(record, 8);
    for (size_t at = record + 8; at < request; at += 4)
        turn(at, 4);
    for (const size_t offset : {0, 4, 432, 436, 440, 444})
        turn(request + offset, 4);
    std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(request + 944));
}

TEST_F(Trace, OfTheOtherByteOrderReadsTheSame)
{
    make_two_exchanges();
    turn_byte_order(file);
    const auto document = as_json();
    ASSERT_EQ(document.Size(), 1u);
    EXPECT_STREQ(document[0]["command"].GetString(), "BSP_CMD_ONU_RELEASE_BATCH");
    EXPECT_EQ(document[0]["request"]["pon_port"].GetUint(), 3u);
    EXPECT_EQ(document[0]["request"]["onu_set"].Size(), 6u);
    EXPECT_EQ(document[0]["request"]["onu_set"][5].GetUint(), 7u);
}

TEST_F(Trace, ThatIsDamagedIsShownUpToTheDamage)
{
    make_two_exchanges();
    std::filesystem::resize_file(file, std::filesystem::file_size(file) - 1);
    const Finished finished = ponctl({"trace", file});
    EXPECT_EQ(finished.code, 2);
    EXPECT_THAT(finished.out, HasSubstr("BSP_CMD_ONU_RELEASE_BATCH"));
    EXPECT_THAT(finished.err, EndsWith("is damaged at record 2; what is before it is shown\n"));
}

TEST_F(Trace, ThatIsNoneIsRefused)
{
    unsetenv("BOARD_IPC_TRACE");
    const Finished finished = ponctl({"trace", file});
    EXPECT_EQ(finished.code, 2);
    EXPECT_EQ(finished.err, "ponctl: FILE: cannot read '" + file + "': No such file or directory\n");
    EXPECT_THAT(ponctl({"trace", PONCTL}).err, EndsWith("not a trace file\n"));
}

} // namespace
