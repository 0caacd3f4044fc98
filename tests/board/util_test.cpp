// These tests check blocks of memory and result files.
#include <cstring>
#include <fstream>

#include <gtest/gtest.h>
#include <unistd.h>

#include "board/util.h"
#include "support.h"

namespace
{

TEST(Block, can_be_used_and_released)
{
    void *block = pmalloc(100);
    ASSERT_NE(block, nullptr);
    std::memset(block, 1, 100);
    pfree(block);
    pfree(nullptr);
}

class ResultFile : public testing::Test
{
protected:
    ResultFile()
    {
        close(mkstemp(name));
        std::ofstream(name) << "0123456789";
    }
    ~ResultFile() { unlink(name); }

    char name[32] = "/tmp/board-util-XXXXXX";
    char bytes[12] = "###########";
};

TEST_F(ResultFile, gives_exactly_the_bytes_asked_for)
{
    EXPECT_EQ(get_from_file(name, 4, bytes), 0);
    EXPECT_STREQ(bytes, "0123#######");
    EXPECT_EQ(get_from_file(name, 10, bytes), 0);
    EXPECT_STREQ(bytes, "0123456789#");
}

TEST_F(ResultFile, that_is_too_short_missing_or_unreadable_fails_in_its_own_way)
{
    const int too_short = get_from_file(name, 11, bytes);
    const int missing = get_from_file("/nonexistent", 1, bytes);
    const int unreadable = get_from_file("/tmp", 1, bytes);
    EXPECT_NE(too_short, 0);
    EXPECT_NE(missing, 0);
    EXPECT_NE(unreadable, 0);
    EXPECT_NE(too_short, missing);
    EXPECT_NE(too_short, unreadable);
    EXPECT_NE(missing, unreadable);
}

TEST_F(ResultFile, can_be_removed_once)
{
    EXPECT_EQ(delete_file(name), 0);
    EXPECT_NE(access(name, F_OK), 0);
    EXPECT_NE(delete_file(name), 0);
}

} // namespace
