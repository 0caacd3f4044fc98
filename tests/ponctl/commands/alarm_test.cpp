// These tests run ponctl alarm as a process against a fake service.
#include <csignal>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;

TEST(AlarmList, AsksForAllForAPortOrForAnOnu)
{
    const FakeService service(rows(388, R"([{"pon_port":1,"onu_id":5,"alarm":1,"name":"los"}])"));
    EXPECT_THAT(service.ponctl({"alarm", "list"}).out, HasSubstr("los"));
    EXPECT_EQ(service.ponctl({"alarm", "list", "3"}).code, 0);
    EXPECT_EQ(service.ponctl({"alarm", "list", "3", "5"}).code, 0);
    EXPECT_EQ(service.ponctl({"alarm", "list", "3", "02:11:22:33:44:55", "-o", "json"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 4u);
    const uint32_t ports[] = {0, 3, 3, 3}, ids[] = {0, 0, 5, 0};
    for (size_t index = 0; index < 4; ++index) {
        EXPECT_EQ(received[index].word(0), 388u);
        EXPECT_EQ(received[index].word(4), ports[index]);
        EXPECT_EQ(received[index].word(8), ids[index]);
    }
    EXPECT_EQ(received[3].mac(), "02:11:22:33:44:55");
}

TEST(AlarmList, CannotNameId0)
{
    EXPECT_EQ(ponctl({"alarm", "list", "3", "0"}).err,
              "ponctl: ONU: here id 0 means none; name that ONU by its MAC address\n");
}

constexpr const char *two_alarms =
    R"([{"pon_port":1,"onu_id":5,"mac":"02:00:00:00:00:05","alarm":1,"name":"los","severity":"critical",)"
    R"("state":"active","raised":10,"cause":"fibre","place":"feeder"},)"
    R"({"pon_port":1,"onu_id":6,"mac":"02:00:00:00:00:06","alarm":7,"name":"receive_degraded","severity":"minor",)"
    R"("state":"cleared","raised":20,"cleared":30,"cause":"laser"}])";

TEST(AlarmList, ShowsThoseThatAreActiveOrHaveEnded)
{
    const FakeService service(rows(388, two_alarms));
    const auto ids = [&service](std::vector<std::string> more) {
        std::vector<std::string> words{"alarm", "list", "-o", "csv", "--columns", "onu_id", "--no-headings"};
        words.insert(words.end(), more.begin(), more.end());
        return service.ponctl(words).out;
    };
    EXPECT_EQ(ids({"--active"}), "5\n");
    EXPECT_EQ(ids({"--history"}), "6\n");
    EXPECT_EQ(ids({"--active", "--where", "severity=minor or severity=major"}), "");
    EXPECT_EQ(ponctl({"alarm", "list", "--active", "--history"}).err,
              "ponctl: --active and --history: not together; all without them\n");
}

TEST(AlarmWatch, PrintsALineForEachAlarmThatIsRaisedOrCleared)
{
    int readings = 0;
    const FakeService service([&readings](const board_request &request, board_answer *answer) {
        const std::string two = two_alarms;
        rows(388, ++readings == 1 ? "[" + two.substr(two.find("},") + 2) : two)(request, answer);
    });
    const Finished finished = service.ponctl({"alarm", "watch", "--watch", "0", "--count", "3"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_THAT(finished.out, testing::MatchesRegex("[0-9T:-]+Z raised 1/5 los critical \\(fibre at feeder\\)\n"));
    EXPECT_EQ(readings, 3);
    readings = 0;
    const std::string line = service.ponctl({"alarm", "watch", "--watch", "0", "--count", "2", "-o", "json"}).out;
    EXPECT_EQ(line.substr(line.find(",\"event\"")),
              R"(,"event":"raised","at":10,"pon_port":1,"onu_id":5,"mac":"02:00:00:00:00:05","alarm":"los",)"
              R"("severity":"critical","cause":"fibre","place":"feeder"})"
              "\n");
}

TEST(AlarmWatch, EndsWith130WhenItIsInterrupted)
{
    const FakeService service([](const board_request &request, board_answer *answer) {
        kill(request.pid, SIGINT);
        rows(388, two_alarms)(request, answer);
    });
    EXPECT_EQ(service.ponctl({"alarm", "watch", "--watch", "3600"}).code, 130);
    EXPECT_EQ(service.received().size(), 1u);
}

TEST(AlarmWatch, EndsWithAReadingThatFails)
{
    const FakeService service(status(4003));
    EXPECT_EQ(service.ponctl({"alarm", "watch", "99", "--watch", "0"}).code, 1);
}

TEST(AlarmWatch, ShowsItsRequestInADryRun)
{
    const FakeService service;
    const Finished finished = service.ponctl({"alarm", "watch", "3", "--dry-run", "-o", "json"});
    EXPECT_EQ(finished.code, 0);
    EXPECT_EQ(parsed(finished.out).Size(), 1u);
    EXPECT_TRUE(service.received().empty());
}

TEST(AlarmClear, SelectsByOnuAndCode)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"alarm", "clear", "3", "5", "--alarm", "2"}).code, 0);
    EXPECT_EQ(service.ponctl({"alarm", "clear", "3"}).code, 0);
    EXPECT_EQ(service.ponctl({"alarm", "clear", "--alarm", "4"}).code, 0);
    const auto received = service.received();
    ASSERT_EQ(received.size(), 3u);
    EXPECT_EQ(received[0].word(0), 389u);
    EXPECT_EQ(received[0].word(4), 3u);
    EXPECT_EQ(received[0].word(8), 5u);
    EXPECT_EQ(received[0].word(40), 2u);
    EXPECT_EQ(received[1].word(40), 0u);
    EXPECT_EQ(received[2].word(4), 0u);
}

TEST(AlarmClear, OfEverythingNeedsAYes)
{
    const FakeService service;
    EXPECT_EQ(service.ponctl({"alarm", "clear"}).err,
              "ponctl: --yes: missing; clearing all alarms of all ports needs it "
              "when no terminal is there to ask\n");
    EXPECT_TRUE(service.received().empty());
    EXPECT_EQ(service.ponctl({"alarm", "clear", "--yes"}).code, 0);
    EXPECT_EQ(service.received().size(), 1u);
}

TEST(AlarmClear, TellsAnIpcFailureFromAStatus)
{
    const FakeService service(status(4003));
    EXPECT_EQ(service.ponctl({"alarm", "clear", "99"}).code, 1);
    EXPECT_EQ(ponctl({"--socket-dir", "/nowhere", "alarm", "clear", "1"}).code, 3);
}

} // namespace
