// These tests check what is concluded from the states, alarms and light of a port's ONUs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "diagnosis/why.h"

namespace ponctl
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;

std::string mac_of(uint32_t id)
{
    return "02:00:00:00:00:0" + std::to_string(id);
}

// A port with four bound ONUs that are online; the diagnosis is of the first one.
Facts four_onus()
{
    Facts facts;
    for (uint32_t id = 1; id <= 4; ++id) {
        OnuFact onu;
        onu.port = 1;
        onu.id = id;
        onu.mac = mac_of(id);
        onu.state = "online";
        facts.onus.push_back(onu);
    }
    facts.onu = facts.onus.front();
    facts.now = 100000;
    facts.limits = LightLimits{-29.5, -33, -9};
    return facts;
}

AlarmFact alarm_of(uint32_t id, const char *name, const char *cause, MilliTime raised)
{
    AlarmFact alarm;
    alarm.port = 1;
    if (id) alarm.onu_id = id;
    if (id) alarm.mac = mac_of(id);
    alarm.name = name;
    alarm.cause = cause;
    alarm.active = true;
    alarm.raised = raised;
    return alarm;
}

// Lets an ONU be offline for an alarm.
void lose(Facts &facts, uint32_t id, const AlarmFact &alarm)
{
    facts.onus[id - 1].state = "offline";
    facts.onu = facts.onus.front();
    facts.alarms.push_back(alarm);
}

TEST(Why, AnOnlineOnuWithoutAlarmsIsGood)
{
    Facts facts = four_onus();
    facts.light = LightFact{1, 1, -22.5, -20};
    const Diagnosis diagnosis = diagnose(facts);
    EXPECT_EQ(diagnosis.verdict, "good");
    EXPECT_EQ(diagnosis.margin, 10.5);
    EXPECT_FALSE(diagnosis.since);
    EXPECT_TRUE(diagnosis.checks.empty());
    EXPECT_EQ(diagnosis.neighbours.bound, 3u);
    EXPECT_EQ(diagnosis.neighbours.online, 3u);
}

TEST(Why, LightBelowWhatTheReceiverNeedsIsWeakAlsoWithoutAnAlarm)
{
    Facts facts = four_onus();
    facts.light = LightFact{1, 1, -29.6, -20};
    EXPECT_EQ(diagnose(facts).verdict, "weak_light");
    facts.light->at_olt = -29.4;
    EXPECT_EQ(diagnose(facts).verdict, "good");
    facts.alarms = {alarm_of(1, "onu_receive_degraded", "fibre", 1)};
    EXPECT_EQ(diagnose(facts).verdict, "weak_light");
}

TEST(Why, ADyingGaspMeansPower)
{
    Facts facts = four_onus();
    lose(facts, 1, alarm_of(1, "los", "power", 40000));
    facts.alarms.push_back(alarm_of(1, "dying_gasp", "power", 40000));
    const Diagnosis diagnosis = diagnose(facts);
    EXPECT_EQ(diagnosis.verdict, "power");
    EXPECT_EQ(diagnosis.since, 40000u);
    EXPECT_EQ(diagnosis.last_cause->name, "dying_gasp");
    EXPECT_EQ(diagnosis.neighbours.together, 0u);
    EXPECT_THAT(diagnosis.checks.front(), HasSubstr("has power"));
}

TEST(Why, SeveralDyingGaspsAtATimeMeanAPowerFailure)
{
    Facts facts = four_onus();
    lose(facts, 1, alarm_of(1, "dying_gasp", "power", 40000));
    lose(facts, 2, alarm_of(2, "dying_gasp", "power", 44000));
    const Diagnosis diagnosis = diagnose(facts);
    EXPECT_EQ(diagnosis.verdict, "power");
    EXPECT_EQ(diagnosis.neighbours.together, 1u);
    EXPECT_THAT(diagnosis.summary, HasSubstr("together with 1 other ONU"));
}

TEST(Why, LightThatAloneIsLostMeansTheDrop)
{
    Facts facts = four_onus();
    AlarmFact alarm = alarm_of(1, "los", "fibre", 40000);
    alarm.place = "drop-1";
    lose(facts, 1, alarm);
    lose(facts, 2, alarm_of(2, "los", "fibre", 46000)); // at another time
    const Diagnosis diagnosis = diagnose(facts);
    EXPECT_EQ(diagnosis.verdict, "drop");
    EXPECT_EQ(diagnosis.neighbours.offline, 1u);
    EXPECT_EQ(diagnosis.neighbours.together, 0u);
    EXPECT_THAT(diagnosis.summary, HasSubstr("(fibre at drop-1)"));
}

TEST(Why, LightThatSomeLoseTogetherMeansABranchAndAllTheFeeder)
{
    Facts facts = four_onus();
    for (uint32_t id = 1; id <= 3; ++id)
        lose(facts, id, alarm_of(id, "los", "unknown", 40000 + id));
    EXPECT_EQ(diagnose(facts).verdict, "branch");
    EXPECT_EQ(diagnose(facts).neighbours.together, 2u);
    lose(facts, 4, alarm_of(4, "los", "unknown", 40004));
    EXPECT_EQ(diagnose(facts).verdict, "feeder");
}

TEST(Why, WhatThePortSaysOfItselfCountsBeforeTheFibre)
{
    Facts facts = four_onus();
    lose(facts, 1, alarm_of(1, "los", "unknown", 40000));
    facts.alarms.push_back(alarm_of(0, "transmitter_off", "command", 40000));
    EXPECT_EQ(diagnose(facts).verdict, "transmitter");
    EXPECT_EQ(diagnose(facts).alarms.size(), 2u);
    facts.alarms.back() = alarm_of(0, "rogue", "rogue", 40000);
    EXPECT_EQ(diagnose(facts).verdict, "rogue");
    facts.alarms.back().active = false;
    EXPECT_EQ(diagnose(facts).verdict, "drop");
}

TEST(Why, RefusalsNameTheListThatRefuses)
{
    Facts facts = four_onus();
    facts.onu.state = "unauthenticated";
    facts.onu.loid = "shop";
    EXPECT_EQ(diagnose(facts).verdict, "refused");
    EXPECT_THAT(diagnose(facts).summary, HasSubstr("'shop'"));
    facts.alarms = {alarm_of(1, "same_loid", "same_loid", 1)};
    EXPECT_EQ(diagnose(facts).verdict, "same_loid");
    facts.onu.state = "rejected";
    facts.onu.id.reset();
    facts.alarms = {alarm_of(1, "rejected", "black_list", 1)};
    const Diagnosis diagnosis = diagnose(facts);
    EXPECT_EQ(diagnosis.verdict, "rejected");
    EXPECT_THAT(diagnosis.checks.back(), HasSubstr("ponctl onu allow 1 02:00:00:00:00:01"));
}

TEST(Why, AnOnuThatNobodyBoundWaits)
{
    Facts facts = four_onus();
    facts.onu.state = "waiting";
    facts.onu.id.reset();
    EXPECT_EQ(diagnose(facts).verdict, "waiting");
    EXPECT_THAT(diagnose(facts).checks.front(), HasSubstr("ponctl onu bind 1 02:00:00:00:00:01"));
    facts.onu.supported = false;
    EXPECT_EQ(diagnose(facts).verdict, "not_supported");
    facts.alarms = {alarm_of(1, "wrong_port", "elsewhere", 1)};
    EXPECT_EQ(diagnose(facts).verdict, "wrong_port");
}

TEST(Why, AnOnuWithoutAnyAlarmWasNeverSeen)
{
    Facts facts = four_onus();
    facts.onu.state = "offline";
    EXPECT_EQ(diagnose(facts).verdict, "never_seen");
    EXPECT_FALSE(diagnose(facts).since);
    AlarmFact ended = alarm_of(1, "los", "fibre", 1);
    ended.active = false;
    ended.cleared = 90000;
    facts.alarms = {ended};
    EXPECT_EQ(diagnose(facts).verdict, "returning");
}

TEST(Why, AnOnuIsOnlineSinceItsLastFaultEnded)
{
    Facts facts = four_onus();
    for (const MilliTime end : {50000, 70000}) {
        AlarmFact alarm = alarm_of(1, end == 50000 ? "los" : "deregistered", "fibre", end - 1000);
        alarm.active = false;
        alarm.cleared = end;
        facts.alarms.push_back(alarm);
    }
    const Diagnosis diagnosis = diagnose(facts);
    EXPECT_EQ(diagnosis.verdict, "good");
    EXPECT_EQ(diagnosis.since, 70000u);
    EXPECT_EQ(diagnosis.last_cause->name, "deregistered");
}

TEST(Why, EveryOtherCauseHasItsVerdict)
{
    const std::pair<const char *, const char *> causes[] = {{"reboot", "rebooting"}, {"distance", "distance"}};
    for (const auto &[cause, verdict] : causes) {
        Facts facts = four_onus();
        lose(facts, 1, alarm_of(1, "los", cause, 40000));
        EXPECT_EQ(diagnose(facts).verdict, verdict);
    }
    for (const char *name : {"deregistered", "oam_link_lost"}) {
        Facts facts = four_onus();
        lose(facts, 1, alarm_of(1, name, "bit_errors", 40000));
        EXPECT_EQ(diagnose(facts).verdict, "link_lost");
    }
    Facts facts = four_onus();
    facts.alarms = {alarm_of(1, "receive_overload", "laser", 1)};
    EXPECT_EQ(diagnose(facts).verdict, "strong_light");
    facts.alarms = {alarm_of(1, "uni_loop", "loop", 1)};
    EXPECT_EQ(diagnose(facts).verdict, "loop");
    facts.onu.state = "offline";
    facts.alarms = {alarm_of(1, "same_mac", "same_mac", 1)};
    EXPECT_EQ(diagnose(facts).verdict, "same_mac");
}

TEST(Spans, HaveTwoUnitsAtMost)
{
    const std::vector<std::pair<MilliTime, std::string>> spans{
        {0, "0.0 s"},      {5060, "5.1 s"},       {10000, "10 s"},  {250000, "4 min 10 s"},
        {240000, "4 min"}, {90061000, "1 d 1 h"}, {86460000, "1 d"}};
    for (const auto &[span, text] : spans)
        EXPECT_EQ(span_text(span), text);
    EXPECT_EQ(ago_text(20000, 5000), "15 s ago");
    EXPECT_EQ(ago_text(5000, 20000), "0.0 s ago");
    EXPECT_EQ(ago_text(std::nullopt, 5000), "-");
}

} // namespace
} // namespace ponctl
