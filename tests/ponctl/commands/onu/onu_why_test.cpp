// These tests run ponctl onu why, onu reboot and onu watch as processes against a fake service.
#include <atomic>
#include <cstring>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr const char *onus = R"([{"pon_port":1,"onu_id":5,"mac":"02:00:5e:10:00:05","state":"offline",)"
                             R"("description":"Main Street 7","supported":true},)"
                             R"({"pon_port":1,"onu_id":6,"mac":"02:00:5e:10:00:06","state":"online",)"
                             R"("description":"Main Street 9","supported":true}])";

FakeService::Handler a_port()
{
    return by_command(
        {{384, rows(384, onus)},
         {385, rows(385, "[]")},
         {410, rows(410, "[]")},
         {391, rows(391, R"([{"pon_port":2,"id":1,"mac":"02:00:5e:10:00:99"}])")},
         {388, rows(388, R"([{"pon_port":1,"onu_id":5,"mac":"02:00:5e:10:00:05","alarm":2,"name":"dying_gasp",)"
                         R"("severity":"major","state":"active","raised":40000,"cause":"power"}])")}});
}

TEST(OnuWhy, SaysWhatFollowsAndWhatToCheckNext)
{
    const FakeService service(a_port());
    const Finished finished = service.ponctl({"onu", "why", "1/5"});
    EXPECT_THAT(finished.out, StartsWith("ONU 1/5: it lost its power: it said good-bye with a dying gasp.\n"));
    EXPECT_THAT(finished.out, HasSubstr("dying_gasp (power)"));
    EXPECT_THAT(finished.out, HasSubstr("1 of 1 online"));
    EXPECT_THAT(finished.out, HasSubstr("Check next\n1. ask the customer whether the ONU has power"));
}

TEST(OnuWhy, SaysWhoseMeasurementTheLastOneWas)
{
    const FakeService service([](const board_request &request, board_answer *answer) {
        uint32_t port = 0, command = 0;
        std::memcpy(&port, request.data, sizeof port);
        if (request.length == 1148) std::memcpy(&command, static_cast<const char *>(request.data) + 92, sizeof command);
        if (command != 488) return a_port()(request, answer);
        const std::vector<uint8_t> measured =
            answer_to("BSP_CMD_OPTICS_RSSI_GET", {{"received_power", -2345}, {"time", 30000}});
        board_answer_data(answer, measured.data(), static_cast<uint32_t>(measured.size()));
    });
    EXPECT_THAT(service.ponctl({"onu", "why", "1/5"}).out,
                HasSubstr("-23.45 dBm at the OLT, by the port's last power measurement"));
    const auto document = parsed(service.ponctl({"onu", "why", "1/5", "-o", "json"}).out);
    EXPECT_EQ(document["light"]["last_measured"].GetDouble(), -23.45);
    EXPECT_EQ(document["light"]["last_measured_at"].GetUint(), 30000u);
    const FakeService refuses(by_command({{384, rows(384, onus)}, {488, status(4003)}}));
    EXPECT_THAT(refuses.ponctl({"onu", "why", "1/5"}).out,
                HasSubstr("never, or the last power measurement of the port was of another ONU"));
}

TEST(OnuWhy, TakesAnythingThatOneOnuIsFoundBy)
{
    const FakeService service(a_port());
    for (const char *who : {"1/5", "02-00-5e-10-00-05", "main street 7"})
        EXPECT_STREQ(parsed(service.ponctl({"onu", "why", who, "-o", "json"}).out)["onu"].GetString(), "1/5") << who;
    EXPECT_EQ(service.ponctl({"onu", "why", "main street"}).err,
              "ponctl: ONU: 2 ONUs have 'main street': 1/5, 1/6; name one\n");
}

TEST(OnuWhy, FindsAnOnuOnTheBlacklist)
{
    const FakeService service(a_port());
    const auto document = parsed(service.ponctl({"onu", "why", "0200.5e10.0099", "-o", "json"}).out);
    EXPECT_STREQ(document["verdict"].GetString(), "rejected");
    EXPECT_EQ(document["pon_port"].GetUint(), 2u);
    EXPECT_TRUE(document["onu_id"].IsNull());
}

TEST(OnuWhy, EndsWithOneWhereThereIsNoSuchOnu)
{
    const FakeService service(a_port());
    for (const char *who : {"1/9", "elsewhere", "02:00:5e:10:00:77"}) {
        const Finished finished = service.ponctl({"onu", "why", who});
        EXPECT_EQ(finished.code, 1) << who;
        EXPECT_EQ(finished.out, "") << who;
        EXPECT_THAT(finished.err, HasSubstr("no ONU")) << who;
    }
}

TEST(OnuReboot, RebootsEachOnuByItself)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"onu", "reboot", "1/3-4", "--yes"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 2u);
    for (const uint32_t index : {0u, 1u}) {
        EXPECT_EQ(received[index].word(0), 368u);
        EXPECT_EQ(received[index].word(4), 1u);
        EXPECT_EQ(received[index].word(432), 1u << (3 + index));
    }
}

TEST(OnuReboot, AsksFirstAndSaysWhichOnusWereNotRebooted)
{
    const FakeService service(status(4013));
    EXPECT_EQ(service.ponctl({"onu", "reboot", "1/3"}).err,
              "ponctl: --yes: missing; rebooting ONU 1/3 needs it when no terminal is there to ask\n");
    EXPECT_TRUE(service.received().empty());
    const Finished finished = service.ponctl({"onu", "reboot", "1/3-4", "--yes"});
    EXPECT_EQ(finished.code, 1);
    EXPECT_THAT(finished.err, HasSubstr("2 of 2 ONUs failed: 1/3-4"));
}

// Answers with other rows from the second reading on.
FakeService::Handler that_changes(uint32_t key, const std::string &before, const std::string &now)
{
    auto first = std::make_shared<std::atomic<bool>>(true);
    return [=](const board_request &request, board_answer *answer) {
        rows(key, first->exchange(false) ? before : now)(request, answer);
    };
}

TEST(OnuWatch, PrintsALineForEachOnuWhoseStateChanges)
{
    const std::string online = R"([{"pon_port":1,"onu_id":5,"mac":"02:00:5e:10:00:05","state":"online"}])";
    const FakeService service(by_command(
        {{384, that_changes(384, online, onus)},
         {388,
          rows(388, R"([{"pon_port":1,"onu_id":5,"mac":"02:00:5e:10:00:05","alarm":1,"name":"los",)"
                    R"("severity":"critical","state":"active","raised":40000,"cause":"fibre","place":"drop-2"}])")}}));
    const Finished finished = service.ponctl({"onu", "watch", "1", "--watch", "0", "--count", "3"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_THAT(
        finished.out,
        testing::MatchesRegex("[0-9T:-]+Z 1/5 offline \\(was online\\): los \\(fibre at drop-2\\) \"Main Street 7\"\n"
                              "[0-9T:-]+Z 1/6 online \\(was gone\\) \"Main Street 9\"\n"));
}

TEST(OnuWatch, IsALineAnEventInJson)
{
    const std::string online = R"([{"pon_port":1,"onu_id":5,"mac":"02:00:5e:10:00:05","state":"online"}])";
    const std::string waiting = R"([{"pon_port":1,"onu_id":null,"mac":"02:00:5e:10:00:05","state":"waiting"}])";
    const FakeService service(by_command({{384, that_changes(384, online, waiting)}, {388, rows(388, "[]")}}));
    const Finished finished = service.ponctl({"onu", "watch", "--watch", "0", "--count", "2", "-o", "json"});
    EXPECT_EQ(finished.out.substr(finished.out.find(",\"pon_port\"")),
              R"(,"pon_port":1,"onu_id":null,"mac":"02:00:5e:10:00:05","description":null,"before":"online",)"
              R"("state":"waiting","at":null,"alarm":null,"cause":null,"place":null})"
              "\n");
}

} // namespace
