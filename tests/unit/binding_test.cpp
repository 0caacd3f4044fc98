// These tests check binding and pass-through byte by byte. They are written from the contract's own examples, so that
// they find a mistake that the catalogue and the library share.
#include <gtest/gtest.h>

#include <cstring>

#include "bsp_pon.h"
#include "bsp_testing/board.h"

namespace
{

constexpr uint8_t mac[] = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55};

class Binding : public testing::Test
{
protected:
    Binding() { rb_reset(); }

    static uint32_t word(uint32_t offset)
    {
        uint32_t value;
        std::memcpy(&value, rb_exchange_at(0)->sent + offset, sizeof value);
        return value;
    }

    static std::string bytes(uint32_t offset, uint32_t length)
    {
        return {reinterpret_cast<const char *>(rb_exchange_at(0)->sent) + offset, length};
    }

    // Returns the text with its NUL, and zeros to the end of its field.
    static std::string field(std::string text, size_t size)
    {
        text.resize(size);
        return text;
    }

    static void expect_zero(uint32_t from, uint32_t to)
    {
        EXPECT_EQ(bytes(from, to - from), std::string(to - from, 0));
    }
};

TEST_F(Binding, ToAGivenIdWithoutTextsLeavesThemEmpty)
{
    EXPECT_EQ(bsp_pon_bind_onu_spec_id(1, 5, mac, nullptr, nullptr, 2, nullptr), BSP_OK);
    EXPECT_EQ(rb_exchange_at(0)->module, 6u);
    EXPECT_EQ(rb_exchange_at(0)->msg_type, 232u);
    EXPECT_EQ(rb_exchange_at(0)->request_length, 944u);
    EXPECT_EQ(word(0), 365u);
    EXPECT_EQ(word(4), 1u);
    EXPECT_EQ(word(8), 5u);
    expect_zero(12, 17);
    EXPECT_EQ(bytes(17, 6), std::string("\x00\x11\x22\x33\x44\x55", 6));
    expect_zero(23, 40);
    EXPECT_EQ(word(40), 2u);
    expect_zero(44, 944);
}

TEST_F(Binding, FirstTextGoesToTheLaterField)
{
    bsp_pon_bind_onu_spec_id(1, 5, mac, "first", "second", 2, "third");
    EXPECT_EQ(bytes(173, 64), field("second", 64));
    EXPECT_EQ(bytes(237, 128), field("first", 128));
    EXPECT_EQ(bytes(365, 64), field("third", 64));
}

TEST_F(Binding, ToAnIdOfTheServicesChoiceHasNoId)
{
    bsp_pon_bind_onu_auto_id(1, mac, "first", "second", 2, "third");
    EXPECT_EQ(word(0), 364u);
    EXPECT_EQ(word(8), 0u);
    EXPECT_EQ(bytes(237, 5), "first");
    EXPECT_EQ(bytes(173, 6), "second");
    EXPECT_EQ(bytes(365, 5), "third");
}

TEST_F(Binding, SupportIsSetByMac)
{
    bsp_pon_onu_support_set(3, mac, 1);
    EXPECT_EQ(word(0), 764u);
    EXPECT_EQ(word(4), 3u);
    EXPECT_EQ(bytes(17, 6), std::string(mac, mac + 6));
    EXPECT_EQ(word(40), 1u);
}

TEST_F(Binding, ReleasesShareACommandAndDifferInWhatTheyName)
{
    bsp_pon_no_bind_onu_spec_id(1, 5);
    EXPECT_EQ(word(0), 366u);
    EXPECT_EQ(word(8), 5u);
    expect_zero(12, 944);
    rb_reset();
    bsp_pon_no_bind_onu_spec_id_and_mac(1, 5, mac);
    EXPECT_EQ(word(0), 366u);
    EXPECT_EQ(word(8), 5u);
    EXPECT_EQ(bytes(17, 6), std::string(mac, mac + 6));
    rb_reset();
    bsp_pon_no_bind_onu_by_mac(1, mac);
    EXPECT_EQ(word(0), 366u);
    EXPECT_EQ(word(8), 0u);
    EXPECT_EQ(bytes(17, 6), std::string(mac, mac + 6));
}

TEST_F(Binding, ReleasesOfAPortHaveCommandsOfTheirOwn)
{
    bsp_pon_no_bind_onu_all(9);
    EXPECT_EQ(word(0), 369u);
    EXPECT_EQ(word(4), 9u);
    rb_reset();
    bsp_pon_no_bind_offline_onu_all(9);
    EXPECT_EQ(word(0), 370u);
    EXPECT_EQ(word(4), 9u);
}

TEST_F(Binding, BatchesHaveCommandsOfTheirOwnAndLeaveTheCallersRecord)
{
    const struct {
        uint32_t (*operation)(const bsp_pon_msg *);
        uint32_t command;
    } batches[] = {{bsp_pon_no_bind_onu_batch_spec_id, 367},
                   {bsp_pon_reboot_onu_batch, 368},
                   {bsp_pon_onu_batch_sort, 423},
                   {bsp_pon_set_opt_range, 424}};
    for (const auto &batch : batches) {
        rb_reset();
        bsp_pon_msg record = {};
        record.data429[3] = 0x77;
        batch.operation(&record);
        EXPECT_EQ(word(0), batch.command);
        EXPECT_EQ(record.cmd, 0u);
        EXPECT_EQ(bytes(432, 1), "\x77");
    }
}

TEST_F(Binding, BlockOfNoLengthIsNotSent)
{
    bsp_pon_cfg(77, 3, "abc", 0);
    EXPECT_EQ(word(0), 77u);
    EXPECT_EQ(word(4), 3u);
    expect_zero(8, 944);
}

TEST_F(Binding, BlockGoesToTheEndOfTheRecord)
{
    bsp_pon_cfg(77, 3, "abc", 3);
    expect_zero(8, 429);
    EXPECT_EQ(bytes(429, 3), "abc");
    expect_zero(432, 944);
}

TEST_F(Binding, AnIpcFailureIsAStatusOfTheLibrary)
{
    rb_answer failure = {};
    failure.result = -1;
    rb_script_answer(&failure);
    EXPECT_EQ(bsp_pon_no_bind_onu_all(1), 1001u);
    EXPECT_STREQ(rb_log_at(0)->function, "bsp_pon_no_bind_onu_all");
    EXPECT_STREQ(rb_log_at(0)->text, "ipc msg failed. rv=-1\n");
}

TEST_F(Binding, AStatusLikeTheLibrarysOwnComesThroughAndIsNotLogged)
{
    rb_answer answer = {};
    answer.status = 3003;
    rb_script_answer(&answer);
    EXPECT_EQ(bsp_pon_no_bind_onu_spec_id(1, 5), 3003u);
    EXPECT_EQ(rb_exchanges(), 1u);
    EXPECT_EQ(rb_logs(), 0u);
}

TEST_F(Binding, JsonTwinsDifferInTheBoundAlone)
{
    db_handle *small = nullptr, *large = nullptr;
    bsp_pon_exec_get_json(384, 2, 99, &small);
    bsp_pon_exec_get_json_(384, 2, 99, &large);
    EXPECT_EQ(std::memcmp(rb_exchange_at(0)->sent, rb_exchange_at(1)->sent, 944), 0);
    EXPECT_EQ(rb_db_at(0)->key, 384u);
    EXPECT_EQ(rb_db_at(1)->key, 384u);
    EXPECT_EQ(rb_db_at(0)->bound, 10240u);
    EXPECT_EQ(rb_db_at(1)->bound, 1048576u);
    EXPECT_EQ(rb_exchange_at(0)->preset, 0u);
    expect_zero(8, 944);
}

TEST_F(Binding, OnuViewNamesTheOnu)
{
    db_handle *db = nullptr;
    bsp_pon_exec_get_onu_json(500, 2, 31, 99, &db);
    EXPECT_EQ(word(0), 500u);
    EXPECT_EQ(word(4), 2u);
    EXPECT_EQ(word(8), 31u);
    expect_zero(12, 944);
    EXPECT_EQ(rb_db_at(0)->bound, 1048576u);
    EXPECT_EQ(db, rb_db_at(0)->handle);
}

} // namespace
