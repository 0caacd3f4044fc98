// These tests run the queries of ponctl onu to remote ONUs as a process against a fake service.
#include <cstring>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue.h"
#include "fake_service.h"

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using Words = std::vector<std::string>;

constexpr size_t port = 0, onu = 4, uni = 8, code = 16, data = 352; // offsets in a record of the remote-ONU channels

// Returns a handler that answers for all ONUs except one, which is offline.
FakeService::Handler all_but(uint32_t offline, FakeService::Handler handler)
{
    return [offline, handler = std::move(handler)](const board_request &request, board_answer *answer) {
        uint32_t id;
        std::memcpy(&id, static_cast<const uint8_t *>(request.data) + onu, sizeof id);
        if (id == offline)
            status(4013)(request, answer);
        else
            handler(request, answer);
    };
}

FakeService::Handler vlans()
{
    return rows(645, R"([{"uni":1,"vlan_mode":"tag"},{"uni":2,"vlan_mode":"transparent"}])");
}

std::vector<uint32_t> codes_of(const FakeService &service)
{
    std::vector<uint32_t> codes;
    for (const Received &received : service.received())
        codes.push_back(received.word(code));
    return codes;
}

std::vector<uint32_t> onus_of(const FakeService &service)
{
    std::vector<uint32_t> onus;
    for (const Received &received : service.received())
        onus.push_back(received.word(onu));
    return onus;
}

// Returns the answer to the query for links, which has its rows as a text.
std::vector<uint8_t> link_text()
{
    std::vector<uint8_t> record(1044);
    const catalogue::Operation &operation = *catalogue::find_operation("bsp_pon_onu_ctc_get_linkstate");
    for (const catalogue::Argument &argument : operation.arguments)
        if (argument.type == catalogue::ArgumentType::db) std::memcpy(&record[argument.field->offset], "[]", 2);
    return record;
}

// Returns the codes that a command sends for one ONU.
std::vector<uint32_t> codes_of(const Words &more)
{
    const FakeService service(no_rows(link_text()));
    Words words{"onu"};
    words.insert(words.end(), more.begin(), more.end());
    const Finished finished = service.ponctl(words);
    EXPECT_EQ(finished.code, 0) << finished.err;
    return codes_of(service);
}

TEST(RemoteOnus, AreAskedInOrder)
{
    const FakeService service(vlans());
    EXPECT_EQ(service.ponctl({"onu", "vlan", "2/20,3-5"}).code, 0);
    EXPECT_THAT(onus_of(service), ElementsAre(3, 4, 5, 20));
    EXPECT_EQ(service.received()[0].word(port), 2u);
}

TEST(RemoteOnus, AreAllThatAreBoundWhereTheSetSaysSo)
{
    const FakeService service([](const board_request &request, board_answer *answer) {
        const bool listing = request.msg_type == catalogue::find_channel("BSP_MSG_PON")->type;
        (listing ? rows(384, R"([{"onu_id":9},{"onu_id":null},{"onu_id":2}])") : vlans())(request, answer);
    });
    const auto document = parsed(service.ponctl({"onu", "vlan", "1/all", "-o", "json"}).out);
    ASSERT_EQ(document.Size(), 2u);
    EXPECT_STREQ(document[0]["onu"].GetString(), "1/2");
    EXPECT_STREQ(document[1]["onu"].GetString(), "1/9");
    EXPECT_EQ(service.received().at(0).word(4), 1u);
}

TEST(RemoteOnus, OfWhichNoneIsBoundAreAnError)
{
    const FakeService service(rows(384, "[]"));
    const Finished finished = service.ponctl({"onu", "vlan", "1/all"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.err, "ponctl: no ONU is bound at port 1\n");
    EXPECT_EQ(service.received().size(), 1u);
}

TEST(RemoteOnus, AreAFirstColumnWhereTheyAreSeveral)
{
    const FakeService service(vlans());
    const std::string out = service.ponctl({"onu", "vlan", "1/3,14", "--columns", "uni,vlan_mode"}).out;
    EXPECT_EQ(out.substr(0, 4), "ONU ");
    EXPECT_THAT(out, testing::ContainsRegex("\n1/3 .*tag *\n1/3 .*transparent *\n1/14 .*tag"));
    EXPECT_THAT(service.ponctl({"onu", "vlan", "1/3"}).out, Not(HasSubstr("1/3")));
}

TEST(RemoteOnus, AreObjectsInJsonAlsoWhereThereIsOne)
{
    const FakeService service(vlans());
    const auto document = parsed(service.ponctl({"onu", "vlan", "1/3-4", "-o", "json"}).out);
    EXPECT_STREQ(document[1]["vlan"][1]["vlan_mode"].GetString(), "transparent");
    const auto one = parsed(service.ponctl({"onu", "vlan", "1/3", "-o", "json"}).out);
    EXPECT_STREQ(one[0]["onu"].GetString(), "1/3");
    EXPECT_STREQ(one[0]["vlan"][1]["vlan_mode"].GetString(), "transparent");
}

TEST(RemoteOnus, AreHeadingsOfBytes)
{
    const FakeService service(vlans());
    EXPECT_THAT(service.ponctl({"onu", "vlan", "1/3-4", "-o", "hex"}).out, HasSubstr("\n1/4\n    0  5b 7b"));
}

TEST(RemoteOnus, GoOnWhereOneFailsAndSayWhich)
{
    const FakeService service(all_but(4, vlans()));
    const Finished finished = service.ponctl({"onu", "vlan", "1/3-5", "-o", "json"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_THAT(finished.err, testing::MatchesRegex("ponctl: 1/4: bsp_pon_onu_ctc_get_vlan_json: status 4013 .*\n"
                                                    "ponctl: 1 of 3 ONUs failed: 1/4\n"));
    const auto document = parsed(finished.out);
    EXPECT_TRUE(document[0]["vlan"].IsArray());
    EXPECT_TRUE(document[1]["vlan"].IsNull());
    EXPECT_TRUE(document[2]["vlan"].IsArray());
    EXPECT_THAT(service.ponctl({"onu", "vlan", "1/3-5"}).out, Not(HasSubstr("1/4")));
}

TEST(RemoteOnus, OfWhichOneAloneFailsNeedNoSummary)
{
    const FakeService service(status(4013));
    const Finished finished = service.ponctl({"onu", "vlan", "1/4"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(finished.err.find("ponctl: bsp_pon_onu_ctc_get_vlan_json: status 4013"), 0u);
    EXPECT_THAT(finished.err, Not(HasSubstr("failed")));
}

TEST(RemoteOnus, EndWithTheWorstExitCode)
{
    const Finished finished = ponctl({"--socket-dir", "/nowhere", "onu", "vlan", "1/3-5,9"});
    EXPECT_EQ(finished.code, 3);
    EXPECT_THAT(finished.err, HasSubstr("ponctl: 4 of 4 ONUs failed: 1/3-5,9\n"));
}

TEST(RemoteOnus, AreCountedOnATerminalAndTheCountIsWiped)
{
    const FakeService service(vlans());
    Terminal terminal;
    EXPECT_EQ(service.ponctl({"onu", "vlan", "1/3-4"}, -1, -1, terminal.descriptor()).code, 0);
    EXPECT_EQ(terminal.text(), "\r\033[K1 of 2: ONU 1/3\r\033[K2 of 2: ONU 1/4\r\033[K");
    EXPECT_EQ(service.ponctl({"onu", "vlan", "1/3-4"}).err, "");
}

TEST(OnuInfo, IsAMemberAQuestion)
{
    EXPECT_THAT(codes_of({"info", "1/5"}), ElementsAre(637, 638, 639, 640, 634, 650));
    std::vector<uint8_t> answer(1888);
    answer[uni] = 4;
    const FakeService service(by_command({{650, bytes(answer)}, {634, status(4013)}}));
    const Finished finished = service.ponctl({"onu", "info", "1/5", "-o", "json"});
    EXPECT_EQ(finished.code, 1);
    const auto document = parsed(finished.out);
    EXPECT_EQ(document[0]["uni_ports"].GetUint(), 4u);
    EXPECT_TRUE(document[0]["identity"].IsObject());
    EXPECT_TRUE(document[0]["device"].IsNull());
    EXPECT_THAT(service.ponctl({"onu", "info", "1/5"}).out, HasSubstr("\nUNI ports\nFIELD     VALUE\nuni_ports 4\n"));
    EXPECT_EQ(parsed(service.ponctl({"onu", "info", "1/5-6", "-o", "json"}).out)[1]["uni_ports"].GetUint(), 4u);
}

TEST(OnuPorts, AreTheLinksOrAllOfOnePort)
{
    const FakeService service(by_command({}));
    EXPECT_EQ(service.ponctl({"onu", "ports", "1/5", "--uni", "2"}).code, 0);
    EXPECT_THAT(codes_of(service), ElementsAre(688, 690, 683, 655));
    for (const Received &received : service.received())
        EXPECT_EQ(received.record[uni], 2);
    EXPECT_THAT(codes_of({"ports", "1/5"}), ElementsAre(682));
}

TEST(OnuVlan, OfOnePortIsItsBlock)
{
    EXPECT_THAT(codes_of({"vlan", "1/5", "--uni", "2"}), ElementsAre(644));
}

TEST(OnuMulticast, IsAsTheOnuOrAsTheOltHasIt)
{
    EXPECT_THAT(codes_of({"multicast", "1/5"}), ElementsAre(678, 679, 681, 662, 659, 658, 672));
    EXPECT_THAT(codes_of({"multicast", "1/5", "--uni", "2"}), ElementsAre(665, 668, 670, 680));
    EXPECT_THAT(codes_of({"multicast", "1/5", "--local"}), ElementsAre(663, 660));
    EXPECT_THAT(codes_of({"multicast", "1/5", "--local", "--uni", "2"}), ElementsAre(666, 669, 671));
}

TEST(OnuPerf, ShowsCountersAndSwitchesMonitoring)
{
    EXPECT_THAT(codes_of({"perf", "1/5", "--uni", "2"}), ElementsAre(718, 720));
    EXPECT_THAT(codes_of({"perf", "1/5", "--uni", "2", "--history"}), ElementsAre(718, 722));
    const FakeService service;
    EXPECT_EQ(service.ponctl({"onu", "perf", "on", "1/5-6"}).code, 0);
    EXPECT_EQ(service.ponctl({"onu", "perf", "off", "1/5"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 3u);
    EXPECT_EQ(received[1].word(code), 717u);
    EXPECT_EQ(received[1].record[data], 1);
    EXPECT_EQ(received[2].record[data], 0);
}

TEST(OnuOptics, IsTheDataOfTheAnswer)
{
    std::vector<uint8_t> answer(1888);
    answer[port] = 77;
    answer[data] = 0x5a;
    const FakeService service(bytes(answer));
    const std::string out = service.ponctl({"onu", "optics", "1/5", "-o", "hex"}).out;
    EXPECT_EQ(out.find("  352  5a"), 0u);
    EXPECT_EQ(service.received().at(0).word(code), 648u);
    EXPECT_EQ(service.received().at(0).word(onu), 5u);
}

TEST(OnuServices, LeaveOutWhatTheOnuHasNot)
{
    std::map<uint32_t, FakeService::Handler> answers{{737, status(4070)}, {751, status(4070)}};
    for (const uint32_t key : {734, 736, 757, 761})
        answers.emplace(key, result(key, "[]"));
    const FakeService service(by_command(std::move(answers)));
    const Finished finished = service.ponctl({"onu", "services", "1/5", "-o", "json"});
    EXPECT_EQ(finished.code, 0) << finished.err;
    EXPECT_THAT(codes_of(service), ElementsAre(734, 736, 737, 751, 757, 761, 685, 686, 706, 651));
    const auto document = parsed(finished.out);
    EXPECT_TRUE(document[0]["wan"].IsArray());
    EXPECT_FALSE(document[0].HasMember("catv"));
    EXPECT_FALSE(document[0].HasMember("voip"));
}

TEST(OnuServices, ThatAreNamedMustBeThere)
{
    const FakeService service(status(4070));
    EXPECT_EQ(service.ponctl({"onu", "services", "1/5", "catv"}).code, 1);
    EXPECT_THAT(codes_of(service), ElementsAre(737));
}

TEST(OnuServices, OfWanMayBeOneConnection)
{
    const FakeService service(rows(734, "[]"));
    EXPECT_EQ(service.ponctl({"onu", "services", "1/5", "wan", "--wan", "3"}).out, "none\n");
    EXPECT_EQ(service.received().at(0).word(24), 3u);
}

TEST(OnuImage, IsBanksAndUpdate)
{
    EXPECT_THAT(codes_of({"image", "1/5"}), ElementsAre(714, 702));
}

TEST(RemoteOnus, AreRefusedBeforeAnythingIsSent)
{
    const FakeService service;
    const std::vector<std::pair<Words, std::string>> cases{
        {{"image"}, "SET: missing; give a PON port and ids of its ONUs"},
        {{"image", "5"}, "SET: '5' is not a PON port and ids of its ONUs"},
        {{"ports", "1/5", "--uni", "256"}, "--uni: '256' is not a number from 0 to 255"},
        {{"perf", "1/5"}, "--uni: missing"},
        {{"services", "1/5", "tv"}, "SERVICE: 'tv' is not one of wan, wlan"},
        {{"services", "1/5", "fec", "fec"}, "SERVICE: 'fec' given twice"},
        {{"services", "1/5", "--wan", "x"}, "--wan: 'x' is not a number"},
    };
    for (const auto &[more, error] : cases) {
        Words words{"onu"};
        words.insert(words.end(), more.begin(), more.end());
        const Finished finished = service.ponctl(words);
        EXPECT_EQ(finished.code, 2) << error;
        EXPECT_THAT(finished.err, HasSubstr("ponctl: " + error));
    }
    EXPECT_TRUE(service.received().empty());
}

TEST(OnuAnswers, AreShownInWordsAndLightInDbm)
{
    const auto shown = [](const char *command, const std::map<std::string, int64_t> &numbers, const Words &words) {
        const FakeService service(bytes(answer_to(command, numbers)));
        Words all{"onu"};
        all.insert(all.end(), words.begin(), words.end());
        return service.ponctl(all).out;
    };
    EXPECT_THAT(shown("BSP_CMD_ONU_TIME_GET", {{"mode", 1}}, {"services", "1/5", "time"}),
                HasSubstr("mode     SNTP\n"));
    EXPECT_THAT(shown("BSP_CMD_ONU_OPTICS_GET", {{"launch_power", 10000}, {"received_power", 0}}, {"optics", "1/5"}),
                testing::AllOf(HasSubstr("launch_power   0.00 dBm\n"), HasSubstr("received_power -40.00 dBm\n")));
    const FakeService service(bytes(answer_to("BSP_CMD_ONU_OPTICS_GET", {{"launch_power", 10000}})));
    EXPECT_EQ(
        parsed(service.ponctl({"onu", "optics", "1/5", "-o", "json"}).out)[0]["optics"]["launch_power_dbm"].GetDouble(),
        0.0);
}

} // namespace
