// These tests read tables of all ONUs of a full OLT, each in one call.
#include "control.h"
#include "full_olt.h"
#include "simulator.h"

namespace
{

class Bulk : public testing::Test
{
protected:
    void SetUp() override { bind_all(); }

    // Checks that there is one row for each ONU, in order of port and id.
    static void expect_all(const View &table)
    {
        EXPECT_EQ(table.status(), BSP_OK);
        ASSERT_EQ(table.count(), ports * onus_per_port);
        for (uint32_t row = 0; row < table.count(); ++row) {
            ASSERT_EQ(table.text(row, "pon_port"), std::to_string(row / onus_per_port + 1));
            ASSERT_EQ(table.text(row, "onu_id"), std::to_string(row % onus_per_port));
        }
    }

    Simulator simulator{full_olt};
};

TEST_F(Bulk, OpticsOfAllOnusAreOneTable)
{
    const View all(bsp_pon_get_onu_optical_diag_data_all);
    expect_all(all);
    const View port([](db_handle **db) { return bsp_pon_get_onu_optical_diag_by_pon(16, db); });
    ASSERT_EQ(port.count(), onus_per_port);
    for (uint32_t row = 0; row < onus_per_port; ++row)
        EXPECT_EQ(port.text(row, "rx_power"), all.text(15 * onus_per_port + row, "rx_power"));
}

TEST_F(Bulk, StatisticsOfAllOnusAreOneTable)
{
    for (uint32_t id = 0; id < onus_per_port; ++id)
        ASSERT_EQ(bsp_pon_onu_ctc_set_perf_monitor_status(1, id, 0, 1), BSP_OK);
    control("step 1000000");
    const View all(bsp_pon_get_onu_perf_stat_data_all);
    expect_all(all);
    EXPECT_NE(all.text(0, "counted"), "null");
    EXPECT_EQ(all.text(onus_per_port, "counted"), "null");
}

TEST_F(Bulk, TheSummariesCountThem)
{
    const View olt(bsp_pon_get_basic_info);
    EXPECT_EQ(olt.text(0, "bound"), "2048");
    const View port(bsp_pon_get_port_info);
    ASSERT_EQ(port.count(), ports);
    EXPECT_EQ(port.text(15, "bound"), "128");
    char text[1024];
    ASSERT_EQ(bsp_pon_get_allonuinfo(text), BSP_OK);
    EXPECT_NE(std::string(text).find("total: 2048 bound"), std::string::npos) << text;
}

} // namespace
