// These tests check what is concluded of the health of an OLT.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "diagnosis/health.h"

namespace ponctl
{
namespace
{

using testing::ElementsAre;
using testing::HasSubstr;

// An OLT with 20 online ONUs on each of two ports.
HealthFacts forty_onus()
{
    HealthFacts facts;
    facts.olt = "EP16 1.0.0";
    facts.now = 3600000;
    facts.onus.emplace();
    facts.alarms.emplace();
    facts.light.emplace();
    facts.modules.emplace();
    for (const uint32_t port : {1u, 2u}) {
        facts.limits[port] = {-29.5, -33, -9};
        facts.modules->push_back({port, "temperature", "normal"});
        for (uint32_t id = 0; id < 20; ++id) {
            OnuFact onu;
            onu.port = port;
            onu.id = id;
            onu.mac = std::to_string(port) + "-" + std::to_string(id);
            onu.state = "online";
            facts.onus->push_back(onu);
        }
    }
    return facts;
}

void lose(HealthFacts &facts, size_t first, size_t count)
{
    for (size_t index = first; index < first + count; ++index)
        facts.onus->at(index).state = "offline";
}

AlarmFact alarm_of(const char *name, const char *severity, const std::string &mac = {})
{
    AlarmFact alarm;
    alarm.port = 1;
    alarm.mac = mac;
    alarm.name = name;
    alarm.severity = severity;
    alarm.active = true;
    return alarm;
}

Condition of(const HealthFacts &facts)
{
    return examine(facts, {}).condition;
}

TEST(Health, IsOkWhenNothingIsWrong)
{
    const Health health = examine(forty_onus(), {});
    EXPECT_EQ(health.condition, Condition::ok);
    EXPECT_EQ(health.summary, "40 of 40 ONUs online, no alarm of a port or uplink");
    EXPECT_EQ(health.checks[0].summary, "EP16 1.0.0, up 1 h");
    EXPECT_EQ(health.online, 40u);
}

TEST(Health, CountsOfflineOnusByTheirShare)
{
    HealthFacts facts = forty_onus();
    lose(facts, 0, 1);
    EXPECT_EQ(of(facts), Condition::ok);
    lose(facts, 1, 1);
    EXPECT_EQ(of(facts), Condition::warning);
    lose(facts, 2, 5);
    EXPECT_EQ(of(facts), Condition::warning);
    lose(facts, 7, 1);
    EXPECT_EQ(of(facts), Condition::critical);
    EXPECT_EQ(examine(facts, {50, 60}).condition, Condition::ok);
    EXPECT_EQ(examine(facts, {0, 60}).condition, Condition::warning);
    EXPECT_EQ(examine(forty_onus(), {0, 0}).condition, Condition::ok);
}

TEST(Health, DoesNotMindOnusThatTheirUsersSwitchedOff)
{
    HealthFacts facts = forty_onus();
    lose(facts, 0, 10);
    for (size_t index = 0; index < 10; ++index)
        facts.alarms->push_back(alarm_of("dying_gasp", "major", facts.onus->at(index).mac));
    const Health health = examine(facts, {});
    EXPECT_EQ(health.condition, Condition::ok);
    EXPECT_EQ(health.without_power, 10u);
    EXPECT_EQ(health.active_alarms.at("major"), 10u);
}

TEST(Health, IsCriticalWhenAPortIsDark)
{
    HealthFacts facts = forty_onus();
    lose(facts, 20, 20);
    const Health health = examine(facts, {90, 90});
    EXPECT_EQ(health.condition, Condition::critical);
    EXPECT_THAT(health.dark_ports, ElementsAre(2u));
    EXPECT_THAT(health.summary, HasSubstr("port 2 is dark"));
}

TEST(Health, JudgesAlarmsOfPortsByTheirSeverity)
{
    HealthFacts facts = forty_onus();
    facts.alarms->push_back(alarm_of("bias_high", "major"));
    EXPECT_EQ(of(facts), Condition::warning);
    facts.alarms->push_back(alarm_of("uplink_down", "critical"));
    EXPECT_EQ(of(facts), Condition::critical);
    for (AlarmFact &alarm : *facts.alarms)
        alarm.active = false;
    EXPECT_EQ(of(facts), Condition::ok);
}

TEST(Health, WarnsOfWeakLightByTheLimitsOfThePort)
{
    HealthFacts facts = forty_onus();
    facts.light->push_back({2, 3, -29.5, -20});
    EXPECT_EQ(of(facts), Condition::ok);
    facts.light->push_back({2, 4, -29.51, -20});
    facts.light->push_back({2, 5, std::nullopt, std::nullopt});
    const Health health = examine(facts, {});
    EXPECT_EQ(health.condition, Condition::warning);
    EXPECT_EQ(health.checks[3].summary, "1 ONU with weak light: 2/4");
}

TEST(Health, JudgesModulesByTheirThresholds)
{
    HealthFacts facts = forty_onus();
    facts.modules->push_back({1, "received power", "low alarm"});
    EXPECT_EQ(of(facts), Condition::ok);
    facts.modules->push_back({1, "bias", "high warning"});
    EXPECT_EQ(of(facts), Condition::warning);
    facts.modules->push_back({2, "temperature", "high alarm"});
    EXPECT_EQ(of(facts), Condition::critical);
}

TEST(Health, IsUnknownWhereTheServiceDoesNotAnswer)
{
    EXPECT_EQ(of({}), Condition::unknown);
    HealthFacts facts = forty_onus();
    facts.light.reset();
    EXPECT_EQ(of(facts), Condition::unknown);
    lose(facts, 0, 40);
    EXPECT_EQ(of(facts), Condition::critical) << "what is known to be critical counts";
}

} // namespace
} // namespace ponctl
