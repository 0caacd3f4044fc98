// These tests check how faults on the wire are written, to which requests they happen, and how they change replies.
#include "engine/faults.h"

#include <algorithm>

#include "control/control.h"
#include "daemon/console.h"
#include "support.h"

namespace ponsim
{
namespace
{

class FaultsTest : public testing::Test
{
protected:
    std::string say(const std::string &line)
    {
        try {
            return control(fixture.simulator, clock, line);
        } catch (const ControlError &error) {
            return error.what();
        }
    }
    size_t happen(const bsp_pon_msg &record) { return fixture.simulator.faults().happen_to(message_of(record)).size(); }
    // Shows to which of so many requests something happens.
    std::string pattern(uint32_t requests)
    {
        std::string text;
        for (uint32_t i = 0; i < requests; ++i)
            text += happen(bind) ? '!' : '.';
        return text;
    }

    ServiceFixture fixture;
    Clock clock{0, 0};
    const bsp_pon_msg bind = record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1));
    const bsp_pon_msg release = record_of(BSP_CMD_ONU_RELEASE, 1, 5);
};

TEST_F(FaultsTest, AreListedAsTheyAreWritten)
{
    EXPECT_EQ(say("faults"), "");
    for (const std::string line :
         {"late 500", "lost", "short 0", "oversized 8192", "duplicated 8", "status 4294967295", "no-result",
          "big-result", "bad-result columns", "unterminated", "kill before",
          "kill after channel=BSP_MSG_PON command=BSP_CMD_ONU_BIND percent=5 count=3 skip=2", "lost command=365"}) {
        EXPECT_EQ(say("fault clear"), "");
        const std::string listed = say("fault " + line);
        EXPECT_EQ(listed.substr(listed.find(' ') + 1), line + ", happened 0 times\n");
    }
}

TEST_F(FaultsTest, AreNumberedAndClearedOneByOne)
{
    say("fault lost");
    say("fault late 10");
    EXPECT_EQ(say("fault clear 1"), "2: late 10, happened 0 times\n");
    EXPECT_EQ(say("fault clear 1"), "fault: there is no number 1; ponsim ctl faults lists those there are");
    EXPECT_EQ(say("fault no-result"), "2: late 10, happened 0 times\n3: no-result, happened 0 times\n");
    EXPECT_EQ(say("fault clear"), "");
    EXPECT_EQ(happen(bind), 0u);
}

TEST_F(FaultsTest, AreOnlySoMany)
{
    for (uint32_t i = 0; i < max_faults; ++i)
        say("fault lost");
    EXPECT_EQ(say("fault lost"), "fault: 32 are set, and no more can be; clear some");
}

TEST_F(FaultsTest, WrongWordsAreExplained)
{
    const std::pair<const char *, const char *> wrong[] = {
        {"fault", "expected a kind of fault, or clear"},
        {"fault slow", "slow: expected late, lost, short,"},
        {"fault late", "fault late: expected MS behind it"},
        {"fault late 60001", "60001: expected a number from 1 to 60000"},
        {"fault late channel=232", "fault late: expected MS behind it"},
        {"fault lost 3", "3: expected channel=, command="},
        {"fault short 8193", "from 0 to 8192"},
        {"fault duplicated 9", "from 1 to 8"},
        {"fault status WRONG", "expected a status word"},
        {"fault kill", "expected before or after behind it"},
        {"fault kill now", "now: expected before or after"},
        {"fault bad-result long", "expected any, cut, text, type or columns"},
        {"fault lost channel=BSP_MSG_NONE", "BSP_MSG_NONE: expected a channel"},
        {"fault lost channel", "expected a channel"},
        {"fault lost command=BSP_CMD_NONE", "BSP_CMD_NONE: expected a command"},
        {"fault lost percent=0", "from 1 to 100"},
        {"fault lost count=0", "expected a number from 1"},
        {"fault lost colour=red", "colour=red: expected channel=, command="},
        {"fault clear 1 2", "fault clear: expected the number of a fault"},
        {"faults all", "faults: expected no more words"},
    };
    for (const auto &[line, expected] : wrong)
        EXPECT_NE(say(line).find(expected), std::string::npos) << line << ": " << say(line);
    EXPECT_EQ(say("faults"), "");
}

TEST_F(FaultsTest, HappenToTheirCommandOnly)
{
    for (const char *match : {"command=365", "command=BSP_CMD_ONU_BIND", "channel=232 command=365"}) {
        say("fault clear");
        say("fault lost " + std::string(match));
        EXPECT_EQ(happen(bind), 1u) << match;
        EXPECT_EQ(happen(release), 0u) << match;
    }
}

TEST_F(FaultsTest, ACommandOfTheSameCodeOnAnotherChannelIsNotTheOneNamed)
{
    bsp_onu_msg record = onu_record_of(BSP_CMD_ONU_BIND);
    const Message other = message_of(BSP_MSG_ONU_CFG, record);
    say("fault lost command=BSP_CMD_ONU_BIND");
    EXPECT_TRUE(fixture.simulator.faults().happen_to(other).empty());
    say("fault lost command=365");
    EXPECT_EQ(fixture.simulator.faults().happen_to(other).size(), 1u);
}

TEST_F(FaultsTest, OfTwoCommandsOfACodeTheCallTellsWhichOneIsMeant)
{
    say("fault lost command=BSP_CMD_ONU_INFO_GET");
    const bsp_pon_msg record = record_of(BSP_CMD_ONU_INFO_GET);
    Message message = message_of(record);
    message.call = catalogue::Call::dgram_get;
    EXPECT_EQ(fixture.simulator.faults().happen_to(message).size(), 1u);
    message.call = catalogue::Call::get;
    EXPECT_TRUE(fixture.simulator.faults().happen_to(message).empty());
}

TEST_F(FaultsTest, HappenToTheirChannelOnly)
{
    say("fault lost channel=BSP_MSG_PLAT");
    EXPECT_EQ(happen(bind), 0u);
    Message message = message_of(bind);
    message.channel = BSP_MSG_PLAT;
    EXPECT_EQ(fixture.simulator.faults().happen_to(message).size(), 1u);
}

TEST_F(FaultsTest, HappenAfterSomeRequestsAndSoOften)
{
    say("fault lost command=365 skip=2 count=3");
    EXPECT_EQ(happen(release), 0u) << "does not count";
    EXPECT_EQ(pattern(8), "..!!!...");
    EXPECT_EQ(say("faults"), "") << "it is gone";
}

TEST_F(FaultsTest, AreCounted)
{
    say("fault lost");
    pattern(1);
    EXPECT_EQ(say("faults"), "1: lost, happened 1 time\n");
    pattern(4);
    EXPECT_EQ(say("faults"), "1: lost, happened 5 times\n");
}

TEST_F(FaultsTest, HappenToAShareOfRequestsAndToTheSameOnesEachTime)
{
    say("fault lost percent=30");
    const std::string first = pattern(1000);
    const auto count = std::ranges::count(first, '!');
    EXPECT_GT(count, 250);
    EXPECT_LT(count, 350);
    Faults again(fixture.simulator.settings().seed);
    again.carry_out(Fault{.kind = FaultKind::lost, .percent = 30});
    std::string second;
    for (int i = 0; i < 1000; ++i)
        second += again.happen_to(message_of(bind)).empty() ? '.' : '!';
    EXPECT_EQ(second, first);
}

TEST_F(FaultsTest, AreNotShiftedByOtherFaults)
{
    Faults alone(1), beside(1);
    const Fault half{.kind = FaultKind::lost, .percent = 50};
    alone.carry_out(half);
    beside.carry_out(half);
    beside.carry_out(half);
    uint32_t different = 0;
    for (int i = 0; i < 200; ++i) {
        const auto one = alone.happen_to(message_of(bind));
        const auto two = beside.happen_to(message_of(bind));
        const bool first = std::ranges::any_of(two, [](const FaultCase &fault) { return fault.number == 1; });
        const bool second = std::ranges::any_of(two, [](const FaultCase &fault) { return fault.number == 2; });
        EXPECT_EQ(one.size(), size_t{first});
        different += first != second;
    }
    EXPECT_GT(different, 50u) << "each has its own luck";
}

TEST_F(FaultsTest, AnotherSeedHasOtherLuck)
{
    Faults one(1), other(2);
    for (Faults *faults : {&one, &other})
        faults->carry_out(Fault{.kind = FaultKind::lost, .percent = 50});
    uint32_t different = 0;
    for (int i = 0; i < 200; ++i)
        different += one.happen_to(message_of(bind)).size() != other.happen_to(message_of(bind)).size();
    EXPECT_GT(different, 50u);
}

TEST_F(FaultsTest, AreNotKept)
{
    const Folder folder;
    {
        ServiceFixture first({}, folder.file("olt.db"));
        control(first.simulator, clock, "fault lost");
        EXPECT_EQ(first.simulator.faults().happen_to(message_of(bind)).size(), 1u);
    }
    ServiceFixture next({}, folder.file("olt.db"));
    EXPECT_TRUE(next.simulator.faults().happen_to(message_of(bind)).empty());
}

TEST_F(FaultsTest, AnOrderThatComesTooManyIsLogged)
{
    for (uint32_t i = 0; i < max_faults; ++i)
        say("fault lost");
    Change change;
    change.faults.push_back(Fault{.kind = FaultKind::lost});
    fixture.simulator.change(change);
    EXPECT_EQ(fixture.simulator.take_log(),
              std::vector<std::string>{"fault: 32 are set, and no more can be; clear some"});
}

FaultCase case_of(FaultKind kind, uint32_t value = 0, uint64_t random = 12345)
{
    return {{.kind = kind, .value = value}, 1, random};
}

TEST_F(FaultsTest, AStatusTakesThePlaceOfTheServices)
{
    Reply reply{BSP_OK, true};
    spoil(reply, case_of(FaultKind::status, 77));
    EXPECT_EQ(reply.status, 77u);
}

TEST_F(FaultsTest, AResultIsNotThereOrTooBig)
{
    Reply none{BSP_OK, true, "[]"};
    spoil(none, case_of(FaultKind::no_result));
    EXPECT_FALSE(none.result);
    Reply big{BSP_OK, true, "[]"};
    spoil(big, case_of(FaultKind::big_result));
    EXPECT_GT(big.result.value().size(), max_result);
}

TEST_F(FaultsTest, ABadResultIsCutShort)
{
    const std::string good = R"([{"a":1},{"a":2}])";
    for (uint64_t random = 0; random < 500; random += 7) {
        Reply reply{BSP_OK, true, good};
        spoil(reply, case_of(FaultKind::bad_result, static_cast<uint32_t>(BadResult::cut), random));
        EXPECT_LT(reply.result->size(), good.size());
        EXPECT_TRUE(good.starts_with(*reply.result));
    }
}

TEST_F(FaultsTest, ABadResultIsBadInEachWayByAndBy)
{
    std::vector<std::string> ways;
    for (uint64_t random = 0; random < 4; ++random) {
        Reply reply{BSP_OK, true, R"([{"a":1}])"};
        spoil(reply, case_of(FaultKind::bad_result, static_cast<uint32_t>(BadResult::any), random));
        ways.push_back(*reply.result);
    }
    std::ranges::sort(ways);
    EXPECT_EQ(std::ranges::adjacent_find(ways), ways.end());
}

TEST_F(FaultsTest, AnAnswerIsShorterOrLonger)
{
    std::string answer(100, 'a');
    spoil(answer, case_of(FaultKind::shortened, 200), message_of(bind));
    spoil(answer, case_of(FaultKind::oversized, 50), message_of(bind));
    EXPECT_EQ(answer, std::string(100, 'a'));
    spoil(answer, case_of(FaultKind::shortened, 10), message_of(bind));
    EXPECT_EQ(answer, std::string(10, 'a'));
    spoil(answer, case_of(FaultKind::oversized, 13), message_of(bind));
    EXPECT_EQ(answer, std::string(10, 'a') + "xxx");
}

TEST_F(FaultsTest, TextsLoseTheirEnd)
{
    bsp_pon_msg record = bind;
    std::memcpy(record.text45, "text", 5);
    std::string answer(reinterpret_cast<const char *>(&record), sizeof record);
    spoil(answer, case_of(FaultKind::unterminated), message_of(record));
    EXPECT_EQ(answer.substr(offsetof(bsp_pon_msg, text45), 64), "text" + std::string(60, 'x'));
    EXPECT_EQ(answer.substr(0, 45), std::string(reinterpret_cast<const char *>(&record), 45)) << "no text";
}

} // namespace
} // namespace ponsim
