// These tests run ponctl auth as a process against a fake service.
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <fcntl.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using testing::Not;
using Words = std::vector<std::string>;

const std::string summary = R"([{"pon_port":1,"mode":2,"records":3,"admitted":0,"unauthenticated":0,"waiting":4,)"
                            R"("rejected":0,"loid":null,"has_password":null,"mac":null,"onu_id":null}])";

TEST(AuthShow, IsASummaryWithTheModeInAWord)
{
    const FakeService service(rows(378, summary));
    EXPECT_EQ(service.ponctl({"auth", "show"}).out,
              "PORT MODE          RECORDS ADMITTED UNAUTHENTICATED WAITING REJECTED\n"
              "   1 loid-password       3        0               0       4        0\n");
    EXPECT_EQ(parsed(service.ponctl({"auth", "show", "-o", "json"}).out)[0]["mode"].GetUint(), 2u);
    EXPECT_EQ(service.received()[0].word(0), 378u);
}

TEST(AuthShow, IsTheRecordsOfOnePort)
{
    const FakeService service(rows(378, R"([{"pon_port":3,"mode":null,"loid":"shop","has_password":true}])"));
    EXPECT_EQ(service.ponctl({"auth", "show", "3"}).out, "PORT LOID PASSWORD\n"
                                                         "   3 shop yes\n");
    EXPECT_EQ(service.received()[0].word(0), 378u);
    EXPECT_EQ(service.received()[0].word(4), 3u);
}

TEST(AuthShow, NamesTheModeOfOnePortBeforeItsRecords)
{
    const FakeService service([](const board_request &request, board_answer *answer) {
        uint32_t port;
        std::memcpy(&port, static_cast<const uint8_t *>(request.data) + 4, sizeof port);
        rows(378, port ? R"([{"pon_port":3,"loid":"shop"}])"
                       : R"([{"pon_port":1,"mode":0},{"pon_port":3,"mode":2}])")(request, answer);
    });
    EXPECT_THAT(service.ponctl({"auth", "show", "3"}).out, testing::StartsWith("Mode: loid-password\n\nPORT"));
    EXPECT_THAT(service.ponctl({"auth", "show", "3", "--no-headings"}).out, testing::StartsWith("   3 "));
    EXPECT_EQ(parsed(service.ponctl({"auth", "show", "3", "-o", "json"}).out).Size(), 1u);
}

TEST(AuthShow, ShowsAModeWithoutAWordAsItsNumber)
{
    const FakeService service(rows(378, R"([{"pon_port":1,"mode":9}])"));
    EXPECT_EQ(service.ponctl({"auth", "show", "--no-headings"}).out, "   1 9\n");
}

TEST(AuthShow, FitsANarrowTerminal)
{
    const FakeService service(rows(378, summary));
    Terminal terminal(72);
    EXPECT_EQ(service.ponctl({"auth", "show", "--no-headings"}, terminal.descriptor()).code, 0);
    std::istringstream lines(terminal.text());
    for (std::string line; std::getline(lines, line);)
        EXPECT_LE(line.find_last_not_of(" \r") + 1, 72u) << line;
}

TEST(AuthSet, SendsTheModeAndTheTexts)
{
    const FakeService service;
    const Words modes{"mac", "loid", "loid-password", "hybrid"};
    for (const std::string &mode : modes)
        EXPECT_EQ(service.ponctl({"auth", "set", "1", mode, "--loid", "shop", "--password", "secret", "--yes"}).code,
                  0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 4u);
    for (uint32_t mode = 0; mode < 4; ++mode) {
        EXPECT_EQ(received[mode].word(0), 376u);
        EXPECT_EQ(received[mode].word(4), 1u);
        EXPECT_EQ(received[mode].word(12), mode);
        EXPECT_EQ(received[mode].text(45), "shop");
        EXPECT_EQ(received[mode].text(109), "secret");
    }
}

TEST(AuthSet, RefusesWhatCannotBe)
{
    const FakeService service;
    const std::vector<std::pair<Words, std::string>> cases{
        {{"pin", "--yes"}, "MODE: 'pin' is not one of mac, loid, loid-password, hybrid"},
        {{"loid", "--password", "x", "--yes"}, "--password: goes with --loid, whose password it is"},
        {{"loid", "--loid", std::string(25, 'x'), "--yes"}, "--loid: 25 bytes are more than the 24 that there can be"},
        {{"loid", "--loid", "x", "--password", std::string(13, 'x'), "--yes"},
         "--password: 13 bytes are more than the 12 that there can be"},
        {{"loid"},
         "--yes: missing; having the ONUs of port 1 prove anew who they are needs it when no terminal is there "
         "to ask"},
    };
    for (const auto &[more, error] : cases) {
        Words words{"auth", "set", "1"};
        words.insert(words.end(), more.begin(), more.end());
        const Finished finished = service.ponctl(words);
        EXPECT_EQ(finished.code, 2);
        EXPECT_EQ(finished.err, "ponctl: " + error + "\n");
    }
    EXPECT_TRUE(service.received().empty());
}

TEST(AuthRemove, KeepsTheModeOfThePort)
{
    const FakeService service(by_command({{377, bytes(pon_record({{12, 3}}))}}));
    EXPECT_EQ(service.ponctl({"auth", "remove", "1", "shop", "--yes"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 2u);
    EXPECT_EQ(received[0].word(4), 1u);
    EXPECT_EQ(received[1].word(0), 376u);
    EXPECT_EQ(received[1].word(4), 1u);
    EXPECT_EQ(received[1].word(12), 3u);
    EXPECT_EQ(received[1].text(45), "shop");
    EXPECT_EQ(received[1].word(432), 1u);
}

TEST(AuthRemove, RemovesNothingWhereTheModeIsNotKnown)
{
    const FakeService service(by_command({{377, status(4003)}}));
    EXPECT_EQ(service.ponctl({"auth", "remove", "99", "shop", "--yes"}).code, 1);
    EXPECT_EQ(service.received().size(), 1u);
}

TEST(AuthRemove, NeedsAYes)
{
    const FakeService service;
    EXPECT_THAT(service.ponctl({"auth", "remove", "1", "shop"}).err, HasSubstr("--yes: missing; "));
    EXPECT_TRUE(service.received().empty());
}

TEST(AuthSet, TakesThePasswordFromAFileOrFromStandardInput)
{
    const FakeService service;
    const std::string path = testing::TempDir() + "ponctl_password_" + std::to_string(getpid());
    std::ofstream(path) << "secret\r\nmore\n";
    const Words words{"auth", "set", "1", "loid", "--loid", "shop", "--yes", "--password-file"};
    const auto with = [&words](const std::string &file) {
        Words all = words;
        all.push_back(file);
        return all;
    };
    EXPECT_EQ(service.ponctl(with(path)).code, 0);
    EXPECT_EQ(service.received().back().text(109), "secret");
    std::ofstream(path) << "other\n";
    const int input = open(path.c_str(), O_RDONLY);
    EXPECT_EQ(service.ponctl(with("-"), -1, input).code, 0);
    close(input);
    EXPECT_EQ(service.received().back().text(109), "other");
    std::ofstream(path) << "";
    EXPECT_EQ(service.ponctl(with(path)).err, "ponctl: --password-file: nothing is in '" + path + "'\n");
    std::filesystem::remove(path);
    EXPECT_THAT(service.ponctl(with(path)).err, testing::StartsWith("ponctl: --password-file: cannot read '" + path));
    Words both = with(path);
    both.insert(both.end(), {"--password", "x"});
    EXPECT_EQ(service.ponctl(both).err, "ponctl: --password: not beside --password-file, which has it already\n");
}

TEST(AuthSet, AsksForThePasswordWithoutEchoAtATerminal)
{
    const FakeService service;
    Terminal shown;
    shown.type("secret\n");
    const Finished finished = service.ponctl(
        {"auth", "set", "1", "loid", "--loid", "shop", "--yes", "--password-file", "-"}, -1, shown.descriptor());
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(finished.err, "Password: \n");
    EXPECT_EQ(service.received().back().text(109), "secret");
}

} // namespace
