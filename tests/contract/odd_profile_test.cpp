// These tests check what the catalogue cannot describe of the operations on profiles and configuration.
#include <algorithm>
#include <cstring>
#include <string>

#include "bsp_pon.h"
#include "selection.h"

namespace contract
{
namespace
{

constexpr uint32_t data_offset = 24;

// Scripts an answer of the profile channel with this data behind its header.
void answer(const std::string &data, uint32_t status = 0, uint32_t count = 0)
{
    Bytes bytes(data_offset, 0xFF);
    std::memcpy(&bytes[8], &count, sizeof count);
    bytes.insert(bytes.end(), data.begin(), data.end());
    script_exchange(IPC_OK, status, bytes);
}

} // namespace

class Answer_of_bsp_profile_exec_get_ : public testing::Test
{
protected:
    Answer_of_bsp_profile_exec_get_() { rb_reset(); }

    std::string buf = "question";
    std::string out = "........";
};

TEST_F(Answer_of_bsp_profile_exec_get_, GoesToTheOtherBufferAlone)
{
    answer("answered");
    EXPECT_EQ(bsp_profile_exec_get_(1, buf.data(), 8, out.data(), 5), 0u);
    EXPECT_EQ(buf, "question");
    EXPECT_EQ(out, "answe...");
}

TEST_F(Answer_of_bsp_profile_exec_get_, LeavesThePayloadAloneAlsoWhenNothingOfItIsWanted)
{
    answer("answered");
    EXPECT_EQ(bsp_profile_exec_get_(1, buf.data(), 8, out.data(), 0), 0u);
    EXPECT_EQ(buf, "question");
    EXPECT_EQ(out, "........");
}

TEST_F(Answer_of_bsp_profile_exec_get_, GoesInThePayloadsPlaceWithoutAnother)
{
    answer("answered");
    EXPECT_EQ(bsp_profile_exec_get_(1, buf.data(), 6, nullptr, 8), 0u);
    EXPECT_EQ(buf, "answeron");
}

TEST_F(Answer_of_bsp_profile_exec_get_, GoesNowhereWithoutEither)
{
    answer("answered");
    EXPECT_EQ(bsp_profile_exec_get_(1, nullptr, 8, nullptr, 8), 0u);
}

TEST_F(Answer_of_bsp_profile_exec_get_, IsNotDeliveredWithAStatus)
{
    for (char *other : {out.data(), static_cast<char *>(nullptr)}) {
        rb_reset();
        answer("answered", 4001);
        EXPECT_EQ(bsp_profile_exec_get_(1, buf.data(), 8, other, 8), 4001u);
        EXPECT_EQ(buf, "question");
        EXPECT_EQ(out, "........");
    }
}

TEST_F(Answer_of_bsp_profile_exec_get_, IsFilledUpWithZerosBehindItsRecord)
{
    answer(std::string(4096, 'x'));
    std::string large(10001, '.');
    EXPECT_EQ(bsp_profile_exec_get_(1, nullptr, 0, large.data(), 10000), 0u);
    EXPECT_EQ(large, std::string(4096, 'x') + std::string(10000 - 4096, '\0') + '.');
}

TEST_F(Answer_of_bsp_profile_exec_get_, IsZeroWhereItIsShort)
{
    answer("abc");
    EXPECT_EQ(bsp_profile_exec_get_(1, nullptr, 0, out.data(), 6), 0u);
    EXPECT_EQ(out, std::string("abc\0\0\0..", 8));
}

class ReadIntoMemory : public testing::Test
{
protected:
    ReadIntoMemory() { rb_reset(); }

    uint32_t read() { return bsp_profile_exec_get_cfgwr(7, &block, &length); }

    // Checks that nothing was stored, and that no block is left behind.
    void expect_nothing() const
    {
        EXPECT_EQ(block, untouched);
        EXPECT_EQ(length, 0xA5A5A5A5u);
        uint32_t held = 0;
        for (uint32_t index = 0; index < rb_utils(); ++index) {
            held += rb_util_at(index)->call == RB_PMALLOC && rb_util_at(index)->block;
            held -= rb_util_at(index)->call == RB_PFREE;
        }
        EXPECT_EQ(held, 0u);
    }

    char mark;
    void *untouched = &mark;
    void *block = untouched;
    uint32_t length = 0xA5A5A5A5;
};

using Answer_of_bsp_profile_exec_get_cfgwr = ReadIntoMemory;

TEST_F(Answer_of_bsp_profile_exec_get_cfgwr, IsTheFileInABlockOfTheBoard)
{
    answer("/tmp/config", 0, 6);
    rb_script_file(0, "config", 6);
    EXPECT_EQ(read(), 0u);
    ASSERT_EQ(rb_utils(), 2u);
    EXPECT_EQ(rb_util_at(0)->call, RB_PMALLOC);
    EXPECT_EQ(rb_util_at(0)->count, 6u);
    EXPECT_EQ(rb_util_at(1)->call, RB_GET_FROM_FILE);
    EXPECT_STREQ(rb_util_at(1)->file, "/tmp/config");
    EXPECT_EQ(rb_util_at(1)->count, 6u);
    EXPECT_EQ(block, rb_util_at(0)->block);
    ASSERT_EQ(length, 6u);
    EXPECT_EQ(std::string_view(static_cast<const char *>(block), 6), "config");
    pfree(block);
}

TEST_F(Answer_of_bsp_profile_exec_get_cfgwr, NamesAFileThatEndsWithTheAnswerAtTheLatest)
{
    answer(std::string(4096, 'x'), 0, 6);
    EXPECT_EQ(read(), 0u);
    ASSERT_EQ(rb_utils(), 2u);
    EXPECT_EQ(rb_util_at(1)->file, std::string(RB_TEXT_LENGTH - 1, 'x')) << "what is kept of a long name";
    pfree(block);
}

TEST_F(Answer_of_bsp_profile_exec_get_cfgwr, IsNoneWithAStatus)
{
    answer("/tmp/config", 4001, 6);
    EXPECT_EQ(read(), 4001u);
    EXPECT_EQ(rb_utils(), 0u);
    expect_nothing();
}

TEST_F(Answer_of_bsp_profile_exec_get_cfgwr, IsNoneOfAnEmptyFile)
{
    answer("/tmp/config", 0, 0);
    EXPECT_EQ(read(), 0u);
    EXPECT_EQ(rb_utils(), 0u);
    expect_nothing();
}

TEST_F(Answer_of_bsp_profile_exec_get_cfgwr, IsNoneOfAFailedExchange)
{
    script_exchange(-4, 0, Bytes(100, 0xFF));
    EXPECT_EQ(read(), 0xFFFFFFFCu);
    EXPECT_EQ(rb_utils(), 0u);
    EXPECT_EQ(rb_logs(), 0u);
    expect_nothing();
}

TEST_F(Answer_of_bsp_profile_exec_get_cfgwr, IsStoredThroughNullDeathTest)
{
    answer("/tmp/config", 0, 6);
    EXPECT_DEATH(bsp_profile_exec_get_cfgwr(7, nullptr, &length), "");
    EXPECT_DEATH(bsp_profile_exec_get_cfgwr(7, &block, nullptr), "");
}

using Status_of_bsp_profile_exec_get_cfgwr = ReadIntoMemory;

TEST_F(Status_of_bsp_profile_exec_get_cfgwr, SaysThatThereIsNoMemory)
{
    answer("/tmp/config", 0, 6);
    rb_fail_pmalloc(1);
    EXPECT_EQ(read(), 1002u);
    ASSERT_EQ(rb_logs(), 1u);
    EXPECT_EQ(rb_log_at(0)->level, RB_ERR);
    EXPECT_STREQ(rb_log_at(0)->function, "bsp_profile_exec_get_cfgwr");
    EXPECT_STREQ(rb_log_at(0)->format, "pmalloc failed. action:%d");
    EXPECT_STREQ(rb_log_at(0)->text, "pmalloc failed. action:7");
    expect_nothing();
}

TEST_F(Status_of_bsp_profile_exec_get_cfgwr, SaysWhatReadingTheFileFailedWith)
{
    for (const int failure : {-1, 5}) {
        rb_reset();
        answer("/tmp/config", 0, 6);
        rb_script_file(failure, nullptr, 0);
        EXPECT_EQ(read(), static_cast<uint32_t>(failure));
        ASSERT_EQ(rb_logs(), 1u);
        EXPECT_EQ(rb_log_at(0)->level, RB_ERR);
        EXPECT_STREQ(rb_log_at(0)->function, "bsp_profile_exec_get_cfgwr");
        EXPECT_STREQ(rb_log_at(0)->format, "get count from file failed. rv=%d");
        EXPECT_EQ(rb_log_at(0)->text, "get count from file failed. rv=" + std::to_string(failure));
        expect_nothing();
    }
}

TEST_F(Status_of_bsp_profile_exec_get_cfgwr, IsTheServicesElse)
{
    for (const uint32_t status : {0u, 1u, 1001u, 3003u, 4001u, 0xFFFFFFFFu}) {
        rb_reset();
        answer("", status);
        EXPECT_EQ(read(), status);
        EXPECT_EQ(rb_logs(), 0u);
    }
}

TEST(Null_of_bsp_pon_get_config_write, WithoutATextStoresNoWordEither)
{
    rb_reset();
    script_exchange(IPC_OK, 0, Bytes(1148, 0x5A));
    uint32_t word = 0xA5A5A5A5;
    EXPECT_EQ(bsp_pon_get_config_write(nullptr, &word, 1, 2), 0u);
    EXPECT_EQ(word, 0xA5A5A5A5u);
}

} // namespace contract
