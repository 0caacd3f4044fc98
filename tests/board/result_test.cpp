// These tests check how result databases travel from a service to its caller.
#include <cstring>
#include <thread>

#include <gtest/gtest.h>

#include "board/datastore.h"
#include "support.h"

namespace
{

const TestEnvironment environment;

constexpr uint32_t key = 352;
constexpr uint32_t bound = BOARD_RESULT_MAX;

using Set = int32_t (*)(uint32_t, uint32_t, const void *, uint32_t, uint32_t *);

// Leaves as many bytes of JSON under `key` as the request's word says. With 0 it leaves no result.
void leave_result(const board_request &request, board_answer &answer)
{
    uint32_t size;
    std::memcpy(&size, request.data, sizeof size);
    if (size == 0) return;
    std::string json(size, 'x');
    json.front() = json.back() = '"';
    board_answer_result(&answer, key, json.data(), size);
}

class ResultDatabase : public testing::TestWithParam<Set>
{
protected:
    int32_t ask_for(uint32_t size)
    {
        uint32_t status;
        return GetParam()(test_module, test_channel, &size, sizeof size, &status);
    }

    // Takes the result and releases it. Returns its length, or -1 when no result came.
    static int64_t taken(uint32_t under, uint32_t at_most)
    {
        db_handle *db = db_from_shmem(under, at_most);
        if (!db) return -1;
        uint32_t length = 0;
        EXPECT_EQ(std::strlen(db_text(db, &length)), length);
        db_free(db);
        return length;
    }

    TestService service{leave_result};
};

TEST_P(ResultDatabase, comes_with_the_answer_under_its_key)
{
    ASSERT_EQ(ask_for(100), IPC_OK);
    EXPECT_EQ(taken(key, bound), 100);
}

TEST_P(ResultDatabase, can_be_had_again_until_the_next_exchange)
{
    ASSERT_EQ(ask_for(100), IPC_OK);
    EXPECT_EQ(taken(key, bound), 100);
    EXPECT_EQ(taken(key, bound), 100);
    ASSERT_EQ(ask_for(0), IPC_OK);
    EXPECT_EQ(taken(key, bound), -1);
}

TEST_P(ResultDatabase, is_not_given_for_another_key)
{
    ASSERT_EQ(ask_for(100), IPC_OK);
    EXPECT_EQ(log_of([&] { EXPECT_EQ(taken(key + 1, bound), -1); }), "") << "an absent result is no error";
}

TEST_P(ResultDatabase, of_the_greatest_length_arrives)
{
    ASSERT_EQ(ask_for(BOARD_RESULT_MAX), IPC_OK);
    EXPECT_EQ(taken(key, bound), BOARD_RESULT_MAX);
}

TEST_P(ResultDatabase, that_meets_the_callers_bound_is_taken_and_a_longer_one_is_not)
{
    ASSERT_EQ(ask_for(10240), IPC_OK);
    EXPECT_EQ(taken(key, 10240), 10240);
    const std::string log = log_of([&] { EXPECT_EQ(taken(key, 10239), -1); });
    EXPECT_NE(log.find("10240 bytes, larger than the bound of 10239"), std::string::npos) << log;
}

TEST_P(ResultDatabase, too_long_to_travel_is_logged_as_larger_than_the_bound)
{
    ASSERT_EQ(ask_for(BOARD_RESULT_MAX + 1), IPC_OK);
    const std::string log = log_of([&] { EXPECT_EQ(taken(key, bound), -1); });
    EXPECT_NE(log.find("1048577 bytes, larger than the bound of 1048576"), std::string::npos) << log;
}

TEST_P(ResultDatabase, does_not_outlive_a_failed_exchange)
{
    ASSERT_EQ(ask_for(100), IPC_OK);
    service.stop();
    ASSERT_NE(ask_for(100), IPC_OK);
    EXPECT_EQ(taken(key, bound), -1);
}

TEST_P(ResultDatabase, is_the_threads_own)
{
    ASSERT_EQ(ask_for(100), IPC_OK);
    std::thread([&] {
        EXPECT_EQ(taken(key, bound), -1);
        ASSERT_EQ(ask_for(200), IPC_OK);
        EXPECT_EQ(taken(key, bound), 200);
    }).join();
    EXPECT_EQ(taken(key, bound), 100);
}

TEST_P(ResultDatabase, once_taken_stays_whatever_comes_next)
{
    ASSERT_EQ(ask_for(4), IPC_OK);
    db_handle *db = db_from_shmem(key, bound);
    ASSERT_NE(db, nullptr);
    ASSERT_EQ(ask_for(200), IPC_OK);
    EXPECT_STREQ(db_text(db, nullptr), "\"xx\"");
    db_free(db);
}

TEST_P(ResultDatabase, leaves_nothing_behind_in_ten_thousand_queries)
{
    ASSERT_EQ(ask_for(10), IPC_OK);
    ASSERT_EQ(taken(key, bound), 10);
    const size_t descriptors = open_descriptors(), mapped = shared_mappings();
    for (uint32_t query = 0; query < 10000; ++query) {
        ASSERT_EQ(ask_for(2 + query % 100), IPC_OK);
        ASSERT_EQ(taken(key, bound), 2 + query % 100);
    }
    // Client and service are this one process, and the service may not have closed yet what it has passed.
    EXPECT_TRUE(eventually([&] { return open_descriptors() <= descriptors; }));
    EXPECT_EQ(shared_mappings(), mapped);
}

INSTANTIATE_TEST_SUITE_P(Connection, ResultDatabase, testing::Values(ipc_set_exec));
INSTANTIATE_TEST_SUITE_P(Datagram, ResultDatabase, testing::Values(ipc_dgram_set_exec));

TEST(ResultOfAHandler, is_the_last_one_stated)
{
    TestService service([](const board_request &, board_answer &answer) {
        EXPECT_EQ(board_answer_result(&answer, key, "[1,2]", 5), 0);
        EXPECT_EQ(board_answer_result(&answer, key, "{}", 2), 0);
    });
    uint32_t status;
    ASSERT_EQ(ipc_set_exec(test_module, test_channel, "", 1, &status), IPC_OK);
    db_handle *db = db_from_shmem(key, bound);
    ASSERT_NE(db, nullptr);
    EXPECT_STREQ(db_text(db, nullptr), "{}");
    db_free(db);
}

TEST(ResultOfAHandler, that_is_too_long_is_refused_and_takes_the_place_of_the_one_before)
{
    TestService service([](const board_request &, board_answer &answer) {
        const std::string json(BOARD_RESULT_MAX + 1, ' ');
        EXPECT_EQ(board_answer_result(&answer, key, "{}", 2), 0);
        EXPECT_EQ(board_answer_result(&answer, key, json.data(), BOARD_RESULT_MAX + 1), -1);
    });
    uint32_t status;
    ASSERT_EQ(ipc_set_exec(test_module, test_channel, "", 1, &status), IPC_OK);
    log_of([] { EXPECT_EQ(db_from_shmem(key, bound), nullptr); });
}

} // namespace
