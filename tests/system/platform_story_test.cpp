// These tests play days in the life of an OLT: what its operator sets, and what happens to it over model time.
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

// PlatformStory has an OLT whose time stands still until it is stepped. Two ONUs are bound to ids 1 and 2 of a port.
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

template <class Field, class Value>
void put(bsp_plat_msg &record, layout::At<Field> at, const Value &value)
{
    layout::store(reinterpret_cast<char *>(&record), at, value);
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

    // The setting is kept. The block and the view show the same, for the platform's clients and for the chip's.
    simulator.kill();
    simulator.start();
    uint32_t by_platform[5], by_chip[5], down;
    ASSERT_EQ(bsp_pon_onu_sla_get(port, 1, by_platform), BSP_OK);
    ASSERT_EQ(bsp_pon_plat_onu_sla_get(port, 1, by_chip), BSP_OK);
    EXPECT_EQ(
        std::memcmp(by_platform, reinterpret_cast<char *>(&upstream) + layout::sla::fixed.offset, sizeof by_platform),
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

// Returns a word of a port's diagnostics.
uint32_t diagnostics_word(layout::At<uint32_t> at)
{
    bsp_plat_msg record;
    EXPECT_EQ(bsp_om_plat_diag_get(port, record.plat_data), BSP_OK);
    return layout::load(reinterpret_cast<const char *>(&record), at);
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

    // Its bias rises each year, until the port raises an alarm.
    for (int year = 0; year < 60 && alarms().of("null", "name") == "none"; ++year)
        control("age 3 8760");
    EXPECT_EQ(alarms().of("null", "onu_id"), "null");
    EXPECT_NE(alarms().of("null", "name"), "none");
    EXPECT_GT(diagnostics_word(diagnostics::bias), bias_when_new);

    // The alarm is only a warning so far: the ONUs are served. The laser stays old, so that an alarm that is cleared
    // comes back.
    EXPECT_EQ(onus().of(mac[0], "state"), "online");
    const std::string name = alarms().of("null", "name");
    bsp_pon_msg record{};
    record.pon_port = port;
    ASSERT_EQ(bsp_pon_clear_onu_alarm(&record), BSP_OK);
    EXPECT_EQ(alarms().of("null", "name"), name);
    EXPECT_EQ(alarms().of("null", "count"), "1");
    EXPECT_EQ(alarms().of("null", "cause"), "age");
}

// An UpgradeBlock is a block that the upgrade operations take. Its fields are named by their offsets in the record.
class UpgradeBlock
{
public:
    template <class Field, class Value>
    UpgradeBlock &put(layout::At<Field> at, const Value &value)
    {
        layout::store(bytes, layout::At<Field>{at.offset - start}, value);
        return *this;
    }
    const void *block() const { return bytes; }

private:
    static constexpr uint32_t start = offsetof(bsp_pon_msg_ext, ext_payload);
    char bytes[400] = {};
};

// Returns what is known of the port's ONUs for upgrades.
View upgrades()
{
    bsp_pon_msg record{};
    record.pon_port = port;
    return View([&record](db_handle **db) { return bsp_pon_get_upgrade_base_info_web(db, &record); });
}

// Makes a type that fits the ONU, and binds it to this ONU alone.
void bind_type(const std::string &mac, uint32_t onu_id, const std::string &name)
{
    namespace type = layout::upgrade_type;
    const View known = upgrades();
    UpgradeBlock added;
    added.put(type::name, name).put(type::vendor, known.of(mac, "vendor")).put(type::model, known.of(mac, "model"));
    added.put(type::version, std::string("9.9.9")).put(type::size, 6000000u);
    ASSERT_EQ(bsp_pon_set_onu_upgrade_type_add(added.block()), BSP_OK);

    namespace bind = layout::upgrade_bind_onus;
    layout::IdSet ids{};
    ids[onu_id / 32] = 1u << onu_id % 32;
    const UpgradeBlock bound = UpgradeBlock().put(bind::pon_port, port).put(bind::name, name).put(bind::onu_set, ids);
    ASSERT_EQ(bsp_pon_onu_upgrade_type_bind_some(bound.block()), BSP_OK);
}

TEST_F(PlatformStory, OfAnUpgradeInWhichAnOnuLosesPower)
{
    bind_type(mac[0], 1, "first");
    bind_type(mac[1], 2, "second");
    const std::string old_version = upgrades().of(mac[1], "software");
    const UpgradeBlock run = UpgradeBlock().put(layout::upgrade_port::pon_port, port);
    ASSERT_EQ(bsp_pon_onu_upgrade_ponport(run.block()), BSP_OK);

    // Both ONUs are downloading when the second one loses power.
    control("step 10");
    EXPECT_EQ(upgrades().of(mac[0], "run"), "downloading");
    EXPECT_EQ(upgrades().of(mac[1], "run"), "downloading");
    EXPECT_NE(upgrades().of(mac[0], "progress"), "0");
    control("power 3 " + mac[1] + " off");
    EXPECT_EQ(onus().of(mac[1], "state"), "offline");

    // A restart of the service in the middle stops neither time nor upgrade runs.
    simulator.kill();
    simulator.start();
    control("step 600");
    const View after = upgrades();
    EXPECT_EQ(after.of(mac[0], "run"), "done");
    EXPECT_EQ(after.of(mac[0], "software"), "9.9.9");
    EXPECT_EQ(after.of(mac[1], "run"), "failed");
    EXPECT_EQ(after.of(mac[1], "reason"), "offline");
    EXPECT_EQ(after.of(mac[1], "software"), old_version);
    EXPECT_EQ(onus().of(mac[0], "state"), "online");

    // When it has power again, it is upgraded at the second attempt.
    control("power 3 " + mac[1] + " on");
    control("step 40");
    EXPECT_EQ(onus().of(mac[1], "state"), "online");
    const UpgradeBlock again =
        UpgradeBlock().put(layout::upgrade_onu::pon_port, port).put(layout::upgrade_onu::onu_id, 2u);
    ASSERT_EQ(bsp_pon_onu_upgrade_one(again.block()), BSP_OK);
    control("step 600");
    EXPECT_EQ(upgrades().of(mac[1], "software"), "9.9.9");
}

View loops()
{
    return View([](db_handle **db) { return bsp_pon_get_loop_detect_info(db); });
}

// Returns whether the first UNI port of the port's ONU 1 has a link.
std::string link_of_uni_1()
{
    const View unis([](db_handle **db) { return bsp_pon_onu_get_portcfg_info(db, port, 1); });
    return unis.text(0, "link");
}

TEST_F(PlatformStory, OfALoopThatShutsAPortAndIsRecovered)
{
    ASSERT_EQ(bsp_pon_loop_detect_pkt_send_interval(5), BSP_OK);
    ASSERT_EQ(bsp_pon_loop_detect_recover_time(60), BSP_OK);
    ASSERT_EQ(bsp_pon_loop_detect_recover_mode(0), BSP_OK);
    ASSERT_EQ(bsp_pon_loop_detect_status(1), BSP_OK);

    // Somebody plugs both ends of a cable in. One interval later the port is shut.
    control("loop 3 " + mac[0] + " 1 on");
    control("step 4");
    EXPECT_EQ(loops().of(mac[0], "state"), "looped");
    control("step 1");
    EXPECT_EQ(loops().of(mac[0], "state"), "shut");
    EXPECT_EQ(link_of_uni_1(), "down");

    // The port recovers by itself, and is shut again, because the cable is still there.
    control("step 66");
    EXPECT_EQ(loops().of(mac[0], "state"), "shut");
    EXPECT_EQ(loops().of(mac[0], "detected"), "2");

    // The cable is unplugged, and the operator does not want to wait.
    control("loop 3 " + mac[0] + " 1 off");
    ASSERT_EQ(bsp_pon_loop_detect_recover_manual(), BSP_OK);
    EXPECT_EQ(loops().of(mac[0], "state"), "recovered");

    uint32_t config[20];
    ASSERT_EQ(bsp_pon_get_loop_detect_config(config), BSP_OK);
    const auto setting = [&config](layout::At<uint32_t> at) {
        return config[(at.offset - offsetof(bsp_pon_msg_ext, ext_payload)) / sizeof(uint32_t)];
    };
    EXPECT_EQ(setting(layout::loop_config::detected), 2u);
    EXPECT_EQ(setting(layout::loop_config::recovered), 2u);
    EXPECT_EQ(setting(layout::loop_config::shut), 0u);
}

} // namespace
