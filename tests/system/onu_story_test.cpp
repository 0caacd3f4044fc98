// These tests do what engineers do with the ONUs behind a port over model time, and check how the ONUs react.
#include <atomic>
#include <cstring>
#include <thread>

#include "bsp_pon.h"
#include "control.h"
#include "generated/service_words.h"
#include "simulator.h"
#include "view.h"

namespace
{

constexpr uint32_t port = 2;
constexpr uint32_t onu_id = 1;
constexpr uint32_t data_offset = offsetof(bsp_onu_msg, onu_data);

// A Block is a block of an ONU's data. Its fields have the offsets of a record.
template <size_t size>
struct Block {
    unsigned char bytes[size] = {};

    template <class Field>
    Field get(layout::At<Field> at) const
    {
        return layout::load(reinterpret_cast<const char *>(bytes), layout::At<Field>{at.offset - data_offset});
    }
    template <class Field>
    std::string text(layout::At<Field> at) const
    {
        return reinterpret_cast<const char *>(bytes) + at.offset - data_offset;
    }
};

template <class Record, class Field, class Value>
void put(Record &record, layout::At<Field> at, const Value &value)
{
    layout::store(reinterpret_cast<char *>(&record), at, value);
}

bsp_onu_msg of_uni(uint32_t command, uint8_t uni)
{
    bsp_onu_msg record{};
    record.onu_pon_port = port;
    record.onu_onu_id = onu_id;
    record.onu_uni_port = uni;
    record.onu_cmd = command;
    return record;
}

// OnuStory has an OLT whose time stands still until it is stepped. An ONU with all abilities is bound to id 1 of a
// port.
class OnuStory : public testing::Test
{
protected:
    void SetUp() override
    {
        bsp_pon_msg all{};
        all.pon_port = port;
        const View onus([&all](db_handle **db) { return bsp_pon_get_onu_info_web(db, &all); });
        for (uint32_t row = 0; row < onus.count(); ++row) {
            mac = onus.text(row, "mac");
            const Mac address = parse(mac);
            ASSERT_EQ(bsp_pon_bind_onu_spec_id(port, onu_id, address.data(), nullptr, nullptr, 0, nullptr), BSP_OK);
            const View abilities([](db_handle **db) { return bsp_pon_get_onu_cap_snmp(db); });
            if (abilities.text(0, "vlan_translation") == "true") return;
            ASSERT_EQ(bsp_pon_no_bind_onu_spec_id(port, onu_id), BSP_OK);
        }
        FAIL() << "no ONU can translate VLANs";
    }

    // Returns the software version that the ONU reports.
    static std::string software()
    {
        Block<54> identity;
        EXPECT_EQ(bsp_pon_onu_ctc_get_sn(port, onu_id, identity.bytes), BSP_OK);
        return identity.text(layout::onu_sn::software);
    }

    void power(const char *state) { control("power " + std::to_string(port) + " " + mac + " " + state); }

    Simulator simulator{{"--arrivals", "16", "--silent", "0", "--speed", "0"}};
    std::string mac;
};

TEST_F(OnuStory, OfAnImageThatIsPushedCommittedAndSeenAfterReboot)
{
    namespace part = layout::onu_image_part;
    namespace banks = layout::onu_banks;
    const std::string before = software();
    constexpr uint32_t size = 4000, longest = 1504;
    for (uint32_t offset = 0; offset < size; offset += longest) {
        bsp_onu_msg record{};
        put(record, part::offset, offset);
        put(record, part::size, size);
        put(record, part::length, std::min(longest, size - offset));
        put(record, part::version, "9.8.7");
        put(record, part::data, std::vector<uint8_t>(longest, 'x'));
        ASSERT_EQ(bsp_pon_onu_ctc_upgrade(port, onu_id, record.onu_data, sizeof record.onu_data), BSP_OK) << offset;
    }
    Block<20> state;
    ASSERT_EQ(bsp_pon_onu_ctc_get_upgrade_status(port, onu_id, state.bytes), BSP_OK);
    EXPECT_EQ(state.get(layout::onu_image_status::state), 2u);
    ASSERT_EQ(bsp_pon_onu_ctc_upgrade_commit(port, onu_id), BSP_OK);
    EXPECT_EQ(software(), before);

    // The OLT keeps all of it after a restart.
    simulator.kill();
    simulator.start();
    bsp_pon_msg reboot{};
    reboot.pon_port = port;
    put(reboot, layout::onu_batch::onu_set, layout::IdSet{1u << onu_id});
    ASSERT_EQ(bsp_pon_reboot_onu_batch(&reboot), BSP_OK);
    control("step 40");
    EXPECT_EQ(software(), "9.8.7");
    Block<64> both;
    ASSERT_EQ(bsp_pon_tk_onu_get_fw(port, onu_id, both.bytes), BSP_OK);
    EXPECT_EQ(both.text(banks::version[0]), before);
    EXPECT_EQ(both.text(banks::version[1]), "9.8.7");
    EXPECT_EQ(both.get(banks::active[1]), 1);
    const View updates([](db_handle **db) { return bsp_pon_onu_ctc_get_upgradestatus_json(port, onu_id, db); });
    ASSERT_EQ(updates.count(), 1u);
    EXPECT_EQ(updates.text(0, "mac"), mac);
}

TEST_F(OnuStory, OfAVlanRuleThatIsReadBackAsBlockAndAsTable)
{
    namespace vlan = layout::onu_vlan_set;
    bsp_onu_msg rule = of_uni(BSP_CMD_ONU_VLAN_SET, 1);
    put(rule, vlan::mode, 2);
    put(rule, vlan::count, 2);
    put(rule, vlan::pvid, 300);
    put(rule, vlan::tpid, 0x8100);
    put(rule, vlan::user[0], 10);
    put(rule, vlan::network[0], 1010);
    put(rule, vlan::user[1], 20);
    put(rule, vlan::network[1], 1020);
    Block<159> had, has;
    ASSERT_EQ(bsp_pon_onu_ctc_get_vlan(port, onu_id, 1, had.bytes), BSP_OK);
    ASSERT_EQ(bsp_pon_onu_ctc_config(&rule), BSP_OK);

    // The OLT's tables have the setting at once. The ONU has it when it has received it.
    const auto table_has_it = [](auto ask) {
        const View table(ask);
        EXPECT_EQ(table.text(0, "uni"), "1");
        EXPECT_EQ(table.text(0, "pvid"), "300");
        EXPECT_EQ(table.text(0, "vlans"), "10:1010,20:1020");
    };
    table_has_it([](db_handle **db) { return bsp_pon_onu_ctc_get_vlan_json(db, port, onu_id); });
    table_has_it([](db_handle **db) { return bsp_pon_onu_ctc_get_vlan_mode_json(db, port, onu_id); });
    table_has_it([](db_handle **db) { return bsp_pon_onu_get_portcfg_info(db, port, onu_id); });
    ASSERT_EQ(bsp_pon_onu_ctc_get_vlan(port, onu_id, 1, has.bytes), BSP_OK);
    EXPECT_EQ(std::memcmp(has.bytes, had.bytes, sizeof had.bytes), 0);
    control("step 1");
    ASSERT_EQ(bsp_pon_onu_ctc_get_vlan(port, onu_id, 1, has.bytes), BSP_OK);
    EXPECT_EQ(std::memcmp(has.bytes, rule.onu_data, sizeof has.bytes), 0);

    // Another port of the ONU does not have the setting, and an impossible rule changes nothing.
    put(rule, vlan::pvid, 4095);
    EXPECT_EQ(bsp_pon_onu_ctc_config(&rule), PON_ERR_BAD_RECORD);
    table_has_it([](db_handle **db) { return bsp_pon_onu_ctc_get_vlan_json(db, port, onu_id); });

    simulator.kill();
    simulator.start();
    Block<159> kept;
    ASSERT_EQ(bsp_pon_onu_ctc_get_vlan(port, onu_id, 1, kept.bytes), BSP_OK);
    EXPECT_EQ(std::memcmp(kept.bytes, has.bytes, sizeof kept.bytes), 0);
}

// Returns the frames upstream of the first UNI port that has any.
uint64_t frames(uint32_t (*ask)(uint32_t, uint32_t, uint16_t, void *, const uint32_t *), uint16_t uni)
{
    Block<296> counters;
    const uint32_t length = sizeof counters.bytes;
    EXPECT_EQ(ask(port, onu_id, uni, counters.bytes, &length), BSP_OK);
    return counters.get(layout::onu_performance::up_frames);
}

TEST_F(OnuStory, OfPerformanceThatBecomesHistory)
{
    Block<296> counters;
    const uint32_t length = sizeof counters.bytes;
    EXPECT_EQ(bsp_onu_ctc_get_perf_current_data(port, onu_id, 1, counters.bytes, &length), PON_ERR_NOT_MONITORED);
    ASSERT_EQ(bsp_pon_onu_ctc_set_perf_monitor_status(port, onu_id, 1, 1), BSP_OK);
    control("step 100");
    uint16_t unis = 0, busy = 0;
    ASSERT_EQ(bsp_pon_onu_get_max_port(port, onu_id, &unis), BSP_OK);
    for (uint16_t uni = 1; uni <= unis; ++uni)
        if (frames(bsp_onu_ctc_get_perf_current_data, uni) > 0) busy = uni;
    ASSERT_NE(busy, 0) << "no UNI port has traffic";
    const uint64_t early = frames(bsp_onu_ctc_get_perf_current_data, busy);
    EXPECT_EQ(bsp_onu_ctc_get_perf_history_data(port, onu_id, busy, counters.bytes, &length), PON_ERR_NOT_MONITORED);

    // A period lasts 900 s.
    control("step 700");
    const uint64_t late = frames(bsp_onu_ctc_get_perf_current_data, busy);
    EXPECT_GT(late, early);
    control("step 200");
    EXPECT_GT(frames(bsp_onu_ctc_get_perf_history_data, busy), late);
    EXPECT_LT(frames(bsp_onu_ctc_get_perf_current_data, busy), late);
    const uint64_t history = frames(bsp_onu_ctc_get_perf_history_data, busy);
    simulator.kill();
    simulator.start();
    EXPECT_EQ(frames(bsp_onu_ctc_get_perf_history_data, busy), history);
}

TEST_F(OnuStory, OfAnOnuThatDropsOffInTheMiddleOfQueries)
{
    Block<54> identity;
    ASSERT_EQ(bsp_pon_onu_ctc_get_sn(port, onu_id, identity.bytes), BSP_OK);
    std::atomic<bool> stop = false;
    std::atomic<uint32_t> answered = 0, refused = 0, wrong = 0;
    std::thread asking([&] {
        while (!stop) {
            Block<54> answer;
            const uint32_t status = bsp_pon_onu_ctc_get_sn(port, onu_id, answer.bytes);
            const bool same = std::memcmp(answer.bytes, identity.bytes, sizeof answer.bytes) == 0;
            if (status == BSP_OK && same)
                ++answered;
            else if (status == PON_ERR_OFFLINE && !same)
                ++refused;
            else
                ++wrong;
        }
    });
    const auto wait_for_more = [&wrong](const std::atomic<uint32_t> &count) {
        for (const uint32_t before = count; count < before + 10 && wrong == 0;)
            std::this_thread::yield();
    };
    for (int drop = 0; drop < 5; ++drop) {
        wait_for_more(answered);
        power("off");
        wait_for_more(refused);
        power("on");
        control("step 40");
    }
    wait_for_more(answered);
    stop = true;
    asking.join();
    EXPECT_EQ(wrong, 0u);

    // A setting that is sent while the ONU is off is refused. What the OLT has set before can still be queried.
    power("off");
    bsp_onu_msg rule = of_uni(BSP_CMD_ONU_VLAN_SET, 1);
    EXPECT_EQ(bsp_pon_onu_ctc_config(&rule), PON_ERR_OFFLINE);
    uint8_t mode = 0xFF;
    EXPECT_EQ(bsp_pon_onu_ctc_get_mc_switch_local(port, onu_id, &mode), BSP_OK);
    EXPECT_LE(mode, 1);
    EXPECT_EQ(bsp_pon_onu_ctc_get_mc_switch_remote(port, onu_id, &mode), PON_ERR_OFFLINE);
}

} // namespace
