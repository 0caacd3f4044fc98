// These tests check which events follow from two readings of alarms and ONUs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "diagnosis/differences.h"

namespace ponctl
{
namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

AlarmFact los(MilliTime raised, std::optional<MilliTime> cleared = {})
{
    AlarmFact alarm;
    alarm.port = 1;
    alarm.onu_id = 5;
    alarm.mac = "02:00:00:00:00:05";
    alarm.name = "los";
    alarm.active = !cleared;
    alarm.raised = raised;
    alarm.cleared = cleared;
    return alarm;
}

std::vector<std::string> words(const std::vector<AlarmEvent> &events)
{
    std::vector<std::string> all;
    for (const AlarmEvent &event : events)
        all.push_back(std::string(event.what) + " " + std::to_string(event.at().value_or(0)));
    return all;
}

TEST(AlarmEvents, AreWhatWasRaisedAndCleared)
{
    EXPECT_THAT(words(alarm_events({}, {los(10)})), ElementsAre("raised 10"));
    EXPECT_THAT(words(alarm_events({los(10)}, {los(10)})), IsEmpty());
    EXPECT_THAT(words(alarm_events({los(10)}, {los(10, 20)})), ElementsAre("cleared 20"));
    EXPECT_THAT(words(alarm_events({los(10, 20)}, {los(10, 20)})), IsEmpty());
    EXPECT_THAT(words(alarm_events({los(10, 20)}, {los(30)})), ElementsAre("raised 30"));
}

TEST(AlarmEvents, AreBothOfAnAlarmThatCameAndWentBetweenTheReadings)
{
    EXPECT_THAT(words(alarm_events({}, {los(10, 20)})), ElementsAre("raised 10", "cleared 20"));
    EXPECT_THAT(words(alarm_events({los(1, 2)}, {los(10, 20)})), ElementsAre("raised 10", "cleared 20"));
}

TEST(AlarmEvents, SayWhatWasRemovedWhileItWasActive)
{
    EXPECT_THAT(words(alarm_events({los(10)}, {})), ElementsAre("removed 10"));
    EXPECT_THAT(words(alarm_events({los(10, 20)}, {})), IsEmpty());
}

TEST(AlarmEvents, AreOfEachUniPortByItself)
{
    AlarmFact first = los(10), second = los(10);
    first.name = second.name = "uni_loop";
    first.place = "UNI 1";
    second.place = "UNI 2";
    EXPECT_EQ(alarm_events({first}, {first, second}).size(), 1u);
    first.name = second.name = "los"; // where the fault is found may change while the alarm goes on
    EXPECT_THAT(alarm_events({first}, {second}), IsEmpty());
}

OnuFact onu_in(const char *state)
{
    OnuFact onu;
    onu.port = 1;
    onu.id = 5;
    onu.mac = "02:00:00:00:00:05";
    onu.state = state;
    return onu;
}

TEST(OnuEvents, AreChangesOfStateWithTheirCause)
{
    const auto events = onu_events({onu_in("online")}, {onu_in("offline")}, {los(10)});
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].before, "online");
    EXPECT_EQ(events[0].state, "offline");
    EXPECT_EQ(events[0].cause->name, "los");
    EXPECT_THAT(onu_events({onu_in("online")}, {onu_in("online")}, {los(10)}), IsEmpty());
}

TEST(OnuEvents, OfAnOnuThatIsOnlineHaveNoCause)
{
    const auto events = onu_events({onu_in("offline")}, {onu_in("online")}, {los(10)});
    ASSERT_EQ(events.size(), 1u);
    EXPECT_FALSE(events[0].cause);
    EXPECT_FALSE(onu_events({onu_in("online")}, {onu_in("offline")}, {los(10, 20)})[0].cause);
}

TEST(OnuEvents, SayWhichOnusAreNewAndGone)
{
    EXPECT_EQ(onu_events({}, {onu_in("waiting")}, {})[0].before, "gone");
    EXPECT_EQ(onu_events({onu_in("waiting")}, {}, {})[0].state, "gone");
}

} // namespace
} // namespace ponctl
