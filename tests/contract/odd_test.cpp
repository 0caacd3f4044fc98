// These tests check what the catalogue cannot describe of an operation. A suite is named after the facet and the
// operation.
#include <algorithm>
#include <cstring>

#include "bsp_pon.h"
#include "selection.h"

namespace contract
{
namespace
{

constexpr uint8_t onu_mac[] = {0xE2, 0xE4, 0xE6, 0xE9, 0xEB, 0xED};

bsp_pon_msg waiting_onu(uint32_t onu_id)
{
    bsp_pon_msg record;
    std::memset(&record, 0x7B, sizeof record);
    record.onu_id = onu_id;
    std::ranges::copy(onu_mac, record.onu_mac);
    record.arg_byte16 = 0xC3;
    record.arg_word36 = 0x0B0A0908;
    return record;
}

// Returns the record that is sent to confirm an ONU of port 5.
bsp_pon_msg confirmation()
{
    bsp_pon_msg record{};
    record.cmd = 380;
    record.pon_port = 5;
    record.arg_byte16 = 0xC3;
    record.arg_word36 = 0x0B0A0908;
    return record;
}

void expect_sent(const bsp_pon_msg &expected)
{
    const auto *bytes = reinterpret_cast<const uint8_t *>(&expected);
    EXPECT_EQ(sent(), Bytes(bytes, bytes + sizeof expected));
}

} // namespace

class Request_of_bsp_pon_confirm_onu : public testing::Test
{
protected:
    void SetUp() override { rb_reset(); }
};

TEST_F(Request_of_bsp_pon_confirm_onu, NamesAnOnuWithAnIdByThatAlone)
{
    for (const uint32_t onu_id : {1u, 127u, 0x01020304u, 0x80000000u, 0xFFFFFFFFu}) {
        rb_reset();
        const bsp_pon_msg onu = waiting_onu(onu_id);
        EXPECT_EQ(bsp_pon_confirm_onu(5, &onu), 0u);
        bsp_pon_msg expected = confirmation();
        expected.onu_id = onu_id;
        expect_sent(expected);
    }
}

TEST_F(Request_of_bsp_pon_confirm_onu, NamesAnOnuWithoutAnIdByItsMacAddress)
{
    const bsp_pon_msg onu = waiting_onu(0);
    EXPECT_EQ(bsp_pon_confirm_onu(5, &onu), 0u);
    bsp_pon_msg expected = confirmation();
    std::ranges::copy(onu_mac, expected.onu_mac);
    expect_sent(expected);
}

TEST_F(Request_of_bsp_pon_confirm_onu, PassesThePortUnchecked)
{
    const bsp_pon_msg onu = waiting_onu(7);
    EXPECT_EQ(bsp_pon_confirm_onu(0xFFFFFFFF, &onu), 0u);
    bsp_pon_msg expected = confirmation();
    expected.pon_port = 0xFFFFFFFF;
    expected.onu_id = 7;
    expect_sent(expected);
}

TEST(Status_of_bsp_pon_onu_get_cfg_info, IsZeroAfterEveryExchangeThatSucceeded)
{
    for (const uint32_t status : {0u, 1u, 1001u, 3003u, 4001u, 0xFFFFFFFFu}) {
        rb_reset();
        script_exchange(IPC_OK, status, {});
        db_handle *database;
        EXPECT_EQ(bsp_pon_onu_get_cfg_info(&database, 1, 2), 0u) << status;
    }
}

TEST(Status_of_bsp_pon_onu_alarm_more_test, IsTheIpcResultWhateverTheServiceSays)
{
    const bsp_onu_msg record{};
    for (const uint32_t status : {0u, 1u, 1001u, 3003u, 4001u, 0xFFFFFFFFu}) {
        rb_reset();
        script_exchange(IPC_OK, status, {});
        EXPECT_EQ(bsp_pon_onu_alarm_more_test(&record), 0u) << status;
        EXPECT_EQ(rb_recorded(), 1u);
    }
}

TEST(Null_of_bsp_debug_cs8022_get, IsRefusedWithOneLineAtDebugLevel)
{
    bsp_plat_msg record{};
    bsp_plat_msg answer{};
    const std::pair<bsp_plat_msg *, bsp_plat_msg *> calls[] = {{nullptr, &answer}, {&record, nullptr}, {}};
    for (const auto &[request, response] : calls) {
        rb_reset();
        EXPECT_EQ(bsp_debug_cs8022_get(request, response), 3003u);
        ASSERT_EQ(rb_recorded(), 1u);
        ASSERT_EQ(rb_logs(), 1u);
        EXPECT_EQ(rb_log_at(0)->level, RB_DEBUG);
        EXPECT_STREQ(rb_log_at(0)->function, "bsp_debug_cs8022_get");
        EXPECT_GT(rb_log_at(0)->line, 0);
        EXPECT_STREQ(rb_log_at(0)->format, "param error");
        EXPECT_STREQ(rb_log_at(0)->text, "param error");
    }
}

} // namespace contract
