// Days in the life of an OLT: what its operator sets, and what happens to it over model time.
#include <cstring>

#include "bsp_pon.h"
#include "control.h"
#include "generated/service_words.h"
#include "simulator.h"
#include "view.h"

namespace
{

constexpr uint32_t port = 3;

View onus()
{
    bsp_pon_msg record{};
    record.pon_port = port;
    return View([&record](db_handle **db) { return bsp_pon_get_onu_info_web(db, &record); });
}

// An OLT whose time stands still until it is stepped, with two ONUs bound to ids 1 and 2 of a port.
class PlatformStory : public testing::Test
{
protected:
    void SetUp() override
    {
        for (uint32_t onu = 0; onu < 2; ++onu) {
            mac[onu] = onus().text(onu, "mac");
            const Mac address = parse(mac[onu]);
            ASSERT_EQ(bsp_pon_bind_onu_spec_id(port, onu + 1, address.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
        }
    }

    Simulator simulator{{"--arrivals", "4", "--silent", "0", "--speed", "0"}};
    std::string mac[2];
};

template <class Value>
void put(bsp_plat_msg &record, uint32_t offset, Value value)
{
    std::memcpy(reinterpret_cast<char *>(&record) + offset, &value, sizeof value);
}

bsp_plat_msg of_onu(uint32_t onu_id)
{
    bsp_plat_msg record{};
    record.plat_port = port;
    record.plat_arg4 = onu_id;
    return record;
}

TEST_F(PlatformStory, OfAContractThatEveryViewTells)
{
    bsp_plat_msg upstream = of_onu(1);
    put(upstream, layout::sla::fixed, 1000u);
    put(upstream, layout::sla::assured, 20000u);
    put(upstream, layout::sla::maximum, 100000u);
    put(upstream, layout::sla::priority, 5u);
    put(upstream, layout::sla::weight, 10u);
    ASSERT_EQ(bsp_pon_onu_sla_config(&upstream), BSP_OK);
    bsp_plat_msg downstream = of_onu(1);
    put(downstream, layout::sla_down::maximum, 300000u);
    ASSERT_EQ(bsp_pon_onu_sla_down_config(&downstream), BSP_OK);

    // It is kept, and told alike by block and by view, for the platform's clients and the chip's.
    simulator.kill();
    simulator.start();
    uint32_t by_platform[5], by_chip[5], down;
    ASSERT_EQ(bsp_pon_onu_sla_get(port, 1, by_platform), BSP_OK);
    ASSERT_EQ(bsp_pon_plat_onu_sla_get(port, 1, by_chip), BSP_OK);
    EXPECT_EQ(std::memcmp(by_platform, reinterpret_cast<char *>(&upstream) + layout::sla::fixed, sizeof by_platform),
              0);
    EXPECT_EQ(std::memcmp(by_platform, by_chip, sizeof by_chip), 0);
    ASSERT_EQ(bsp_pon_onu_sla_down_get(port, 1, &down), BSP_OK);
    EXPECT_EQ(down, 300000u);

    const View web([](db_handle **db) { return bsp_pon_onu_sla_get_web(port, db); });
    EXPECT_EQ(web.text(0, "onu_id"), "1");
    EXPECT_EQ(web.text(0, "fixed"), "1000");
    EXPECT_EQ(web.text(0, "assured"), "20000");
    EXPECT_EQ(web.text(0, "max"), "100000");
    const View down_web([](db_handle **db) { return bsp_pon_onu_sla_down_get_web(port, db); });
    EXPECT_EQ(down_web.text(0, "max"), "300000");
    const View snmp([](db_handle **db) { return bsp_pon_onu_sla_get_snmp(db); });
    EXPECT_EQ(snmp.text(port - 1, "fixed"), "1000");
    EXPECT_EQ(snmp.text(port - 1, "assured"), "20000");
}

// The bytes of a port's diagnostics from an offset of the record on.
uint32_t diagnostics_word(uint32_t offset)
{
    unsigned char block[56];
    EXPECT_EQ(bsp_om_plat_diag_get(port, block), BSP_OK);
    uint32_t word;
    std::memcpy(&word, block + offset - offsetof(bsp_plat_msg, plat_data), sizeof word);
    return word;
}

View alarms()
{
    bsp_pon_msg record{};
    record.pon_port = port;
    return View([&record](db_handle **db) { return bsp_pon_get_onu_alarm(db, &record); });
}

TEST_F(PlatformStory, OfALaserThatAgesUntilItsAlarmComes)
{
    namespace diagnostics = layout::optics_diagnostics;
    const uint32_t bias_when_new = diagnostics_word(diagnostics::bias);
    const uint32_t threshold = diagnostics_word(diagnostics::bias_high_alarm);
    EXPECT_LT(bias_when_new, threshold);
    EXPECT_EQ(alarms().count(), 0u);

    // Year by year its bias rises, until the port says so.
    for (int year = 0; year < 60 && alarms().of("null", "name") == "none"; ++year)
        control("age 3 8760");
    EXPECT_EQ(alarms().of("null", "onu_id"), "null");
    EXPECT_NE(alarms().of("null", "name"), "none");
    EXPECT_GT(diagnostics_word(diagnostics::bias), bias_when_new);

    // An alarm is a warning yet: the ONUs are served, and what was cleared is not raised again by the same laser.
    EXPECT_EQ(onus().of(mac[0], "state"), "online");
    const std::string name = alarms().of("null", "name");
    bsp_pon_msg record{};
    record.pon_port = port;
    ASSERT_EQ(bsp_pon_clear_onu_alarm(&record), BSP_OK);
    control("step 3600");
    EXPECT_NE(alarms().of("null", "name"), name);
}

} // namespace
