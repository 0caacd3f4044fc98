// These tests run ponctl against a simulated OLT, break its plant, and see what ponctl concludes and follows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "bsp_pon.h"
#include "control.h"
#include "ponctl/support/process.h"
#include "simulator.h"
#include "view.h"

namespace
{

using testing::HasSubstr;
using testing::StartsWith;

constexpr uint32_t bound = 4; // ONUs 1 to 4 of port 1

class WhyStory : public testing::Test
{
protected:
    void SetUp() override
    {
        const View onus([](db_handle **db) { return bsp_pon_exec_get_json_(BSP_CMD_VIEW_ONU_INFO_WEB, 1, 0, db); });
        for (uint32_t id = 1; id <= bound; ++id) {
            const std::string mac = onus.text(id - 1, "mac");
            macs.push_back(mac);
            ASSERT_EQ(bsp_pon_bind_onu_spec_id(1, id, parse(mac).data(), "", nullptr, 0, nullptr), 0u);
        }
        control("step 60");
    }

    // Returns what ponctl concludes of an ONU, in JSON.
    static std::string why(const std::string &who)
    {
        const Finished finished = ponctl({"onu", "why", who, "-o", "json"});
        EXPECT_EQ(finished.code, 0) << finished.err;
        EXPECT_EQ(finished.err, "");
        return finished.out;
    }

    const Simulator simulator{{"--speed", "0", "--silent", "0", "--ports", "2", "--arrivals", "6"}};
    std::vector<std::string> macs;
};

std::string verdict(const char *word)
{
    return "\"verdict\": \"" + std::string(word) + "\"";
}

TEST_F(WhyStory, TellsPowerFromADropAndADropFromTheFeeder)
{
    EXPECT_THAT(why("1/1"), HasSubstr(verdict("good")));
    EXPECT_THAT(why("1/1"), HasSubstr("\"limit\": -33.01"));

    control("power 1 1 off");
    control("step 5");
    EXPECT_THAT(why("1/1"), HasSubstr(verdict("power")));
    EXPECT_THAT(why(macs[0]), HasSubstr("\"onu\": \"1/1\""));

    control("cut 1 2"); // the drop of ONU 2
    control("step 30");
    EXPECT_THAT(why("1/2"), HasSubstr(verdict("drop")));
    EXPECT_THAT(why("1/2"), HasSubstr("\"offline_together\": 0"));

    control("cut 1 feeder");
    control("step 30");
    EXPECT_THAT(why("1/3"), HasSubstr(verdict("feeder")));
    EXPECT_THAT(why("1/3"), HasSubstr("\"offline_together\": 1"));
    EXPECT_THAT(why("1/1"), HasSubstr(verdict("power"))) << "the one without power is so all the same";
}

TEST_F(WhyStory, KnowsWeakLightRefusalsAndWaiting)
{
    control("bend 1 3 9");
    control("step 60");
    EXPECT_THAT(why("1/3"), HasSubstr(verdict("weak_light")));

    EXPECT_EQ(ponctl({"onu", "reject", "1/4", "--yes"}).code, 0);
    control("step 60");
    EXPECT_THAT(why(macs[3]), HasSubstr(verdict("rejected")));

    const View onus([](db_handle **db) { return bsp_pon_exec_get_json_(BSP_CMD_VIEW_ONU_INFO_WEB, 1, 0, db); });
    EXPECT_THAT(why(onus.text(onus.count() - 1, "mac")), HasSubstr(verdict("waiting")));
}

TEST_F(WhyStory, AnOnuThatIsRebootedByCommandComesBack)
{
    EXPECT_EQ(ponctl({"onu", "reboot", "1/1-2", "--yes"}).code, 0);
    EXPECT_THAT(why("1/2"), HasSubstr(verdict("rebooting")));
    control("step 120");
    EXPECT_THAT(why("1/2"), HasSubstr(verdict("good")));
    EXPECT_THAT(why("1/2"), HasSubstr("\"cause\": \"reboot\""));
}

TEST_F(WhyStory, HealthFollowsThePlant)
{
    const Finished well = ponctl({"health"});
    EXPECT_EQ(well.code, 0) << well.out;
    EXPECT_THAT(well.out, StartsWith("OK: 4 of 4 ONUs online"));
    control("power 1 1 off");
    control("step 5");
    EXPECT_EQ(ponctl({"health"}).code, 0);
    control("cut 1 2");
    control("step 30");
    EXPECT_EQ(ponctl({"health", "--critical", "50"}).code, 1);
    control("cut 1 feeder");
    control("step 30");
    const Finished dark = ponctl({"health", "--critical", "100"});
    EXPECT_EQ(dark.code, 2);
    EXPECT_THAT(dark.out, StartsWith("CRITICAL: alarms: port 1: port_los"));
}

// Takes the power of an ONU and gives it back, again and again, as long as it lives: a watch sees only what happens
// after its first reading, whose time nobody knows.
class Toggling
{
public:
    ~Toggling()
    {
        ended = true;
        thread.join();
    }

private:
    void toggle() const
    {
        while (!ended)
            for (const char *line : {"power 1 1 off", "step 5", "power 1 1 on", "step 60"})
                control(line);
    }

    std::atomic<bool> ended = false;
    std::thread thread{[this] { toggle(); }};
};

TEST_F(WhyStory, AlarmWatchFollowsAlarmsUntilItIsInterrupted)
{
    Session watch({"alarm", "watch", "1", "--watch", "0.05"});
    {
        const Toggling power;
        watch.expect("raised 1/1 dying_gasp major (power)");
        watch.expect("cleared 1/1 ");
    }
    watch.type("\003");
    EXPECT_EQ(watch.end(), 130);
}

TEST_F(WhyStory, OnuWatchFollowsStatesAndTheirCauses)
{
    Session watch({"onu", "watch", "--watch", "0.01"});
    {
        const Toggling power;
        watch.expect("1/1 offline (was online): dying_gasp (power)");
        watch.expect("1/1 online (was offline)");
    }
    watch.type("\003");
    EXPECT_EQ(watch.end(), 130);
}

} // namespace
