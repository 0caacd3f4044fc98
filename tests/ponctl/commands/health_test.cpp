// These tests run ponctl health as a process against a fake service.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_service.h"

namespace
{

using testing::HasSubstr;
using testing::StartsWith;

FakeService::Handler an_olt(const std::string &state)
{
    return by_command(
        {{400, rows(400, R"([{"model":"EP16","version":"1.0.0","pon_ports":1,"uptime":60.5}])")},
         {384, rows(384, R"([{"pon_port":1,"onu_id":5,"mac":"02:00:5e:10:00:05","state":")" + state + "\"}]")},
         {388, rows(388, "[]")},
         {403, rows(403, "[]")},
         {490, rows(490, "[]")}});
}

TEST(Health, IsOneLineAndTheDetailsBehindIt)
{
    const FakeService service(an_olt("online"));
    const Finished finished = service.ponctl({"health"});
    EXPECT_EQ(finished.code, 0) << finished.err;
    EXPECT_THAT(finished.out, StartsWith("OK: 1 of 1 ONUs online, no alarm of a port or uplink\nCHECK"));
    EXPECT_THAT(finished.out, HasSubstr("EP16 1.0.0, up 1 min"));
}

TEST(Health, EndsAsMonitorsExpect)
{
    const FakeService service(an_olt("offline"));
    EXPECT_EQ(service.ponctl({"health"}).code, 2);
    EXPECT_EQ(service.ponctl({"health", "--critical", "100", "--warning", "100"}).code, 2);
    const FakeService without(status(4001));
    EXPECT_EQ(without.ponctl({"health"}).code, 3);
    const Finished nobody = ponctl({"--socket-dir", "/nowhere", "health"});
    EXPECT_EQ(nobody.code, 3);
    EXPECT_THAT(nobody.out, StartsWith("UNKNOWN: service: the service did not say"));
    EXPECT_THAT(nobody.err, HasSubstr("nobody serves the module in /nowhere"));
}

TEST(Health, RefusesWrongLimits)
{
    EXPECT_EQ(ponctl({"health", "--warning", "101"}).code, 2);
    EXPECT_EQ(ponctl({"health", "--warning", "30", "--critical", "20"}).err,
              "ponctl: --warning: more than --critical\n");
}

TEST(Health, HasNumbersInJson)
{
    const FakeService service(an_olt("offline"));
    const auto document = parsed(service.ponctl({"health", "-o", "json"}).out);
    EXPECT_STREQ(document["condition"].GetString(), "critical");
    EXPECT_EQ(document["code"].GetUint(), 2u);
    EXPECT_EQ(document["offline"].GetUint(), 1u);
    EXPECT_EQ(document["checks"].Size(), 5u);
}

} // namespace
