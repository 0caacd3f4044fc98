// These tests check causes and what follows from them, as a front end sees it. A scenario describes a street with six
// homes.
#include <cstring>
#include <fstream>
#include <map>

#include <gtest/gtest.h>

#include "bsp_pon.h"
#include "control.h"
#include "generated/service_words.h"
#include "simulator.h"
#include "view.h"

namespace
{

constexpr uint32_t port = 1;

constexpr char street[] = R"(seed = 3
[service.home]
maximum = 10000
load_up = 50000
load_down = 1000
[[olt]]
ports = 1
class = "PX10" # for so few splitters
[[olt.port]]
number = 1
[[olt.port.branch]]
name = "street"
length = 2000
split = 4
[[olt.port.branch]]
name = "corner"
from = "street"
length = 300
split = 4
[[olt.port.onu]]
name = "near"
count = 3
service = "home"
branch = "street"
[[olt.port.onu]]
name = "far"
count = 3
service = "home"
branch = "corner"
[[event]]
at = "2h"
do = "fault status 4001 count=1"
)";

std::string written_scenario()
{
    const std::string file = testing::TempDir() + "street.toml";
    std::ofstream(file) << street;
    return file;
}

class CauseStory : public testing::Test
{
protected:
    Simulator simulator{{"--scenario", written_scenario(), "--speed", "0"}};

    static View onus()
    {
        return View([](db_handle **db) { return bsp_pon_exec_get_json_(BSP_CMD_VIEW_ONU_INFO_WEB, port, 0, db); });
    }
    // Returns how many ONUs are in each state.
    static std::map<std::string, uint32_t> states()
    {
        const View view = onus();
        std::map<std::string, uint32_t> count;
        for (uint32_t row = 0; row < view.count(); ++row)
            ++count[view.text(row, "state")];
        return count;
    }
    static uint32_t online() { return states()["online"]; }

    // Returns how often the alarm was raised, summed over all ONUs.
    static uint32_t alarms(const std::string &name)
    {
        bsp_pon_msg record{};
        record.pon_port = port;
        const View view([&record](db_handle **db) { return bsp_pon_get_onu_alarm(db, &record); });
        uint32_t count = 0;
        for (uint32_t row = 0; row < view.count(); ++row)
            if (view.text(row, "name") == name) count += static_cast<uint32_t>(std::stoul(view.text(row, "count")));
        return count;
    }

    static uint64_t counter(layout::At<uint64_t> at)
    {
        bsp_plat_msg record;
        EXPECT_EQ(bsp_debug_8022_pon_stats(port, record.plat_data), BSP_OK);
        return layout::load(reinterpret_cast<const char *>(&record), at);
    }
    // Returns by how much a counter grows in ten minutes.
    static uint64_t growth(layout::At<uint64_t> at)
    {
        const uint64_t before = counter(at);
        control("step 600");
        return counter(at) - before;
    }
};

TEST_F(CauseStory, OfAFibreThatIsBentUntilTheHomesBehindItAreGone)
{
    namespace stats = layout::port_stats;
    ASSERT_EQ(online(), 6u);
    const uint64_t errors_before = growth(stats::in_fcs_errors);

    // Bit errors come first, with an alarm.
    for (int half_decibels = 0; half_decibels < 60 && alarms("receive_degraded") == 0; ++half_decibels)
        control("bend 1 corner 0.5");
    EXPECT_EQ(alarms("los"), 0u);
    EXPECT_EQ(online(), 6u);
    // With a stronger bend, many frames are lost.
    control("bend 1 corner 1.5");
    ASSERT_EQ(online(), 6u);
    EXPECT_GT(growth(stats::in_fcs_errors), 100 * (errors_before + 1));
    // With a still stronger bend, the OLT no longer hears the ONUs behind the bend, and only those.
    control("bend 1 corner 6");
    control("step 1");
    EXPECT_EQ(online(), 3u);
    EXPECT_EQ(alarms("los"), 3u);

    control("mend 1 corner");
    EXPECT_EQ(online(), 3u) << "they have still to register";
    control("step 5");
    EXPECT_EQ(online(), 6u);
}

TEST_F(CauseStory, OfAFibreThatIsCut)
{
    control("cut 1 corner");
    EXPECT_EQ(online(), 6u) << "nobody has noticed yet";
    control("step 1");
    EXPECT_EQ(online(), 3u);
    control("cut 1 street");
    control("step 1");
    EXPECT_EQ(online(), 0u);
    control("mend 1 street");
    control("step 5");
    EXPECT_EQ(online(), 3u) << "the corner is still cut";
}

TEST_F(CauseStory, OfALoadThatAnSlaLimits)
{
    namespace stats = layout::port_stats;
    constexpr double octets_of_a_megabit = 1e6 / 8 * 600;
    EXPECT_NEAR(static_cast<double>(growth(stats::in_octets)) / octets_of_a_megabit, 6 * 10, 0.6);
    for (const char *home : {"near-1", "near-2", "near-3", "far-1", "far-2", "far-3"})
        control(std::string("load 1 ") + home + " up 2000");
    EXPECT_NEAR(static_cast<double>(growth(stats::in_octets)) / octets_of_a_megabit, 6 * 2, 0.2);
}

TEST_F(CauseStory, OfAnOnuThatBlindsItsPort)
{
    control("rogue 1 far-2 on");
    control("step 1");
    EXPECT_EQ(online(), 0u);
    EXPECT_EQ(alarms("rogue"), 1u);
    // The fibre of the rogue ONU is unplugged, so the other ONUs come back.
    control("cut 1 far-2");
    control("step 5");
    EXPECT_EQ(online(), 5u);
}

TEST_F(CauseStory, OfAFaultThatTheScenarioOrders)
{
    control("step 7199");
    EXPECT_EQ(onus().status(), BSP_OK);
    control("step 1");
    EXPECT_EQ(onus().status(), 4001u);
    EXPECT_EQ(onus().status(), BSP_OK);
}

} // namespace
