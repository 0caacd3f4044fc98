// These tests run ponctl onu and ponctl port as a process against a fake service.
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using Words = std::vector<std::string>;

Words with(Words words, const Words &more)
{
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

TEST(OnuList, AsksForOnePortOrAll)
{
    const FakeService service(rows(384, "[]"));
    EXPECT_EQ(service.ponctl({"onu", "list", "3"}).code, 0);
    EXPECT_EQ(service.ponctl({"onu", "list"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 2u);
    EXPECT_EQ(received[0].word(0), 384u);
    EXPECT_EQ(received[0].word(4), 3u);
    EXPECT_EQ(received[1].word(4), 0u);
}

TEST(OnuList, IsATableOrTheRowsAsJson)
{
    const FakeService service(
        rows(384, R"([{"pon_port":1,"onu_id":null,"mac":"00:11:22:33:44:55","state":"waiting","supported":true}])"));
    EXPECT_THAT(service.ponctl({"onu", "list"}).out, HasSubstr("\n   1  - 00:11:22:33:44:55 waiting yes"));
    const auto document = parsed(service.ponctl({"onu", "list", "-o", "json"}).out);
    ASSERT_TRUE(document.IsArray());
    EXPECT_STREQ(document[0]["state"].GetString(), "waiting");
}

TEST(OnuList, LeavesOutWhatDoesNotFitATerminalAndSaysSo)
{
    const FakeService service(rows(384, R"([{"pon_port":1,"onu_id":5,"mac":"00:11:22:33:44:55","state":"online",)"
                                        R"("text_a":"the shop at the corner of the street","text_b":""}])"));
    Terminal terminal(80);
    const Finished finished =
        service.ponctl({"onu", "list", "--no-headings", "--color", "never"}, terminal.descriptor());
    EXPECT_EQ(finished.err,
              "ponctl: the terminal is too narrow for MODE, TEXT B, TEXT C, DESCRIPTION, LOID; -o json has all\n");
    std::istringstream lines(terminal.text());
    std::string shown;
    for (std::string line; std::getline(lines, line); shown += line)
        EXPECT_LE(line.find_last_not_of(" \r") + 1, 80u) << line;
    EXPECT_THAT(shown, HasSubstr("00:11:22:33:44:55"));
    EXPECT_THAT(shown, HasSubstr("the shop"));
}

TEST(OnuBind, TakesTheGivenIdOrLetsTheServicePickOne)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"onu", "bind", "1", "00:11:22:33:44:55", "--id", "5", "--mode", "2", "--yes"}).code, 0);
    EXPECT_EQ(service.ponctl({"onu", "bind", "1", "00:11:22:33:44:55", "--text-a", "name", "--yes"}).code, 0);
    const auto received = service.received();
    ASSERT_GE(received.size(), 2u);
    EXPECT_EQ(received[0].word(0), 365u);
    EXPECT_EQ(received[0].word(8), 5u);
    EXPECT_EQ(received[0].word(40), 2u);
    EXPECT_EQ(received[1].word(0), 364u);
    EXPECT_STREQ(reinterpret_cast<const char *>(&received[1].record[237]), "name");
}

TEST(OnuBind, TellsTheIdThatTheServicePicked)
{
    const FakeService service(by_command({{381, bytes(pon_record({{8, 17}}))}}));
    const Words words{"onu", "bind", "3", "00:11:22:33:44:55", "--yes"};
    EXPECT_EQ(service.ponctl(words).out, "bound to ONU id 17\n");
    const auto received = service.received();
    ASSERT_EQ(received.size(), 2u);
    EXPECT_EQ(received[1].word(0), 381u);
    EXPECT_EQ(received[1].word(4), 3u);
    EXPECT_EQ(received[1].mac(), "00:11:22:33:44:55");
    EXPECT_EQ(parsed(service.ponctl(with(words, {"-o", "json"})).out)["outputs"]["onu_id"].GetUint(), 17u);
}

TEST(OnuBind, NamesTheOptionThatIsWrong)
{
    const FakeService service;
    const Words words{"onu", "bind", "3", "00:11:22:33:44:55", "--yes"};
    EXPECT_EQ(service.ponctl(with(words, {"--mode", "x"})).err,
              "ponctl: --mode: 'x' is not a number from 0 to 4294967295, decimal or hexadecimal with 0x\n");
    EXPECT_EQ(service.ponctl(with(words, {"--text-b", std::string(64, 'x')})).err,
              "ponctl: --text-b: 64 bytes are more than the 63 that there can be\n");
    EXPECT_TRUE(service.received().empty());
}

TEST(OnuBind, LooksUpNothingWhereTheServiceRefuses)
{
    const FakeService service(status(4008));
    EXPECT_EQ(service.ponctl({"onu", "bind", "3", "00:11:22:33:44:55", "--yes"}).code, 1);
    EXPECT_EQ(service.received().size(), 1u);
}

TEST(OnuBind, SaysThatItIsDoneWhereTheLookUpFails)
{
    const FakeService service(by_command({{381, status(4005)}}));
    const Finished finished = service.ponctl({"onu", "bind", "3", "00:11:22:33:44:55", "--yes"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_THAT(finished.err, HasSubstr("the ONU is bound, but its id could not be looked up\n"));
}

TEST(OnuConfirm, NamesTheOnuByIdOrByMac)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"onu", "confirm", "1", "5", "--yes"}).code, 0);
    EXPECT_EQ(service.ponctl({"onu", "confirm", "1", "0011.2233.4455", "--mode", "7", "--as-mode-says", "--yes"}).code,
              0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 2u);
    EXPECT_EQ(received[0].word(0), 380u);
    EXPECT_EQ(received[0].word(8), 5u);
    EXPECT_EQ(received[0].record[16], 0);
    EXPECT_EQ(received[1].word(8), 0u);
    EXPECT_EQ(received[1].mac(), "00:11:22:33:44:55");
    EXPECT_EQ(received[1].record[16], 1);
    EXPECT_EQ(received[1].word(36), 7u);
}

TEST(OnuConfirm, CannotNameId0)
{
    const FakeService service;
    const Finished finished = service.ponctl({"onu", "confirm", "1", "0"});
    EXPECT_EQ(finished.code, 2);
    EXPECT_EQ(finished.err, "ponctl: ONU: here id 0 means none; name that ONU by its MAC address\n");
    EXPECT_TRUE(service.received().empty());
}

TEST(OnuConfirm, SaysWhatAnOnuMayBe)
{
    EXPECT_EQ(
        ponctl({"onu", "confirm", "1", "five"}).err,
        "ponctl: ONU: 'five' is not an ONU id from 0 to 127, or a MAC address: six pairs of hexadecimal digits, as "
        "00:11:22:33:44:55\n");
    EXPECT_EQ(ponctl({"onu", "confirm", "1", "128"}).code, 2);
}

TEST(OnuDescribe, SendsTheText)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"onu", "describe", "1", "0", "the shop"}).code, 0);
    EXPECT_EQ(service.ponctl({"onu", "describe", "1", "5", ""}).code, 0);
    EXPECT_EQ(service.ponctl({"onu", "describe", "1", "5", std::string(128, 'x')}).err,
              "ponctl: TEXT: 128 bytes are more than the 127 that there can be\n");
    const auto received = service.received();
    ASSERT_EQ(received.size(), 2u);
    EXPECT_EQ(received[0].word(0), 398u);
    EXPECT_EQ(received[0].word(8), 0u);
    EXPECT_EQ(received[0].text(237), "the shop");
    EXPECT_EQ(received[1].word(8), 5u);
    EXPECT_EQ(received[1].text(237), "");
}

TEST(OnuRelease, NamesTheOnuByIdByMacOrByBoth)
{
    const FakeService service;
    const Words release{"onu", "release", "1", "--yes"};
    for (const Words &which :
         {Words{"--id", "5"}, Words{"--mac", "02:11:22:33:44:55"}, Words{"--id", "5", "--mac", "02:11:22:33:44:55"}}) {
        Words words = release;
        words.insert(words.end(), which.begin(), which.end());
        EXPECT_EQ(service.ponctl(words).code, 0);
    }
    const auto received = service.received();
    ASSERT_EQ(received.size(), 3u);
    const uint32_t ids[] = {5, 0, 5};
    const uint8_t first_bytes[] = {0, 2, 2};
    for (size_t index = 0; index < 3; ++index) {
        EXPECT_EQ(received[index].word(0), 366u);
        EXPECT_EQ(received[index].word(8), ids[index]);
        EXPECT_EQ(received[index].record[17], first_bytes[index]);
    }
}

TEST(OnuRelease, OfManyNeedsAYes)
{
    const FakeService service;
    for (const char *which : {"--all", "--offline"}) {
        const Finished refused = service.ponctl({"onu", "release", "1", which});
        EXPECT_EQ(refused.code, 2);
        EXPECT_THAT(refused.err, HasSubstr("ponctl: --yes: missing; releasing all"));
    }
    EXPECT_TRUE(service.received().empty());
    EXPECT_EQ(service.ponctl({"onu", "release", "1", "--all", "--yes"}).code, 0);
    EXPECT_EQ(service.ponctl({"onu", "release", "1", "--offline", "--yes"}).code, 0);
    ASSERT_EQ(service.received().size(), 2u);
    EXPECT_EQ(service.received()[0].word(0), 369u);
    EXPECT_EQ(service.received()[1].word(0), 370u);
}

TEST(OnuRelease, OfManyAsksWhoSitsAtATerminal)
{
    const FakeService service;
    Terminal terminal;
    for (const char *refusal : {"n\n", "\n", "yesterday\n"}) {
        terminal.type(refusal);
        const Finished finished = service.ponctl({"onu", "release", "1", "--all"}, -1, terminal.descriptor());
        EXPECT_EQ(finished.code, 2);
        EXPECT_EQ(finished.err, "ponctl: releasing all ONUs of port 1? [y/N] ponctl: nothing was changed\n");
    }
    EXPECT_TRUE(service.settings().empty());
    terminal.type("y\n");
    EXPECT_EQ(service.ponctl({"onu", "release", "1", "--all"}, -1, terminal.descriptor()).code, 0);
    EXPECT_EQ(service.settings().size(), 1u);
}

TEST(OnuRelease, OfNoneOrOfTwoKindsIsRefused)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"onu", "release", "1"}).err,
              "ponctl: which ONU? give --id N, --mac MAC or both, --offline or --all, or a set as PORT/IDS\n");
    EXPECT_EQ(service.ponctl({"onu", "release", "1", "--all", "--id", "5", "--yes"}).err,
              "ponctl: --all and --offline stand alone: not with each other, not with --id or --mac\n");
    EXPECT_TRUE(service.received().empty());
}

TEST(PortList, ShowsAPortARow)
{
    const FakeService service(rows(386, R"([{"pon_port":1,"bound":0},{"pon_port":2,"bound":7}])"));
    EXPECT_EQ(service.ponctl({"port", "list", "--no-headings"}).out, "   1     0      0       0       0       0\n"
                                                                     "   2     7      0       0       0       0\n");
}

} // namespace
