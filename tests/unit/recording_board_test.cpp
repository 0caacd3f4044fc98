// These tests check the recording board alone.
#include <gtest/gtest.h>

#include "bsp_testing/board.h"

namespace
{

constexpr uint32_t channel = 232;

class RecordingBoard : public testing::Test
{
protected:
    RecordingBoard() { rb_reset(); }

    int32_t set() { return ipc_set_exec(6, channel, &request, sizeof request, &status); }

    uint32_t request = 0x01020304;
    uint32_t status = 55;
};

TEST_F(RecordingBoard, SucceedsWithoutAScript)
{
    EXPECT_EQ(set(), IPC_OK);
    EXPECT_EQ(status, 0u);
}

TEST_F(RecordingBoard, UsesAnswersUpInTheirOrder)
{
    rb_answer first = {}, second = {};
    first.status = 1;
    second.status = 2;
    second.result = -5;
    rb_script_answer(&first);
    rb_script_answer(&second);
    EXPECT_EQ(set(), 0);
    EXPECT_EQ(status, 1u);
    EXPECT_EQ(set(), -5);
    EXPECT_EQ(status, 2u);
    EXPECT_EQ(set(), 0);
    EXPECT_EQ(status, 0u);
}

TEST_F(RecordingBoard, LeavesAStatusThatIsNotWritten)
{
    rb_answer answer = {};
    answer.status_not_written = 1;
    rb_script_answer(&answer);
    set();
    EXPECT_EQ(status, 55u);
    EXPECT_EQ(rb_exchange_at(0)->status_before, 55u);
}

TEST_F(RecordingBoard, KeepsTheFirstRecordsAndCountsTheRest)
{
    for (int i = 0; i < RB_KEPT + 3; ++i)
        set();
    EXPECT_EQ(rb_exchanges(), RB_KEPT + 3u);
    EXPECT_NE(rb_exchange_at(RB_KEPT - 1), nullptr);
    EXPECT_EQ(rb_exchange_at(RB_KEPT), nullptr);
}

TEST_F(RecordingBoard, RefusesMoreScriptsThanItHolds)
{
    const rb_answer answer = {};
    for (int i = 0; i < RB_KEPT; ++i) {
        EXPECT_EQ(rb_script_answer(&answer), 0);
        EXPECT_EQ(rb_script_db(nullptr), 0);
    }
    EXPECT_EQ(rb_script_answer(&answer), -1);
    EXPECT_EQ(rb_script_db(nullptr), -1);
}

TEST_F(RecordingBoard, ForgetsEverythingOnReset)
{
    rb_answer answer = {};
    answer.result = -5;
    rb_script_answer(&answer);
    userlog_err("f", 1, "x");
    rb_reset();
    EXPECT_EQ(rb_recorded(), 0u);
    EXPECT_EQ(rb_log_at(0), nullptr);
    EXPECT_EQ(set(), 0);
}

TEST_F(RecordingBoard, KeepsWhatWasSentWhenTheRequestChangesLater)
{
    rb_answer answer = {};
    answer.during = [](const rb_exchange *exchange, void *) { *static_cast<uint32_t *>(exchange->request) = 0; };
    rb_script_answer(&answer);
    set();
    EXPECT_EQ(request, 0u);
    EXPECT_EQ(rb_exchange_at(0)->sent[0] + rb_exchange_at(0)->sent[3], 5);
}

TEST_F(RecordingBoard, AnswersUpToThePresetLength)
{
    char response[8] = "1234567";
    uint32_t length = 4;
    rb_answer answer = {};
    answer.bytes = "abcdefgh";
    answer.length = 8;
    rb_script_answer(&answer);
    ipc_get_exec(6, channel, &request, sizeof request, response, &length, &status);
    EXPECT_STREQ(response, "abcd567");
    EXPECT_EQ(length, 4u);
    EXPECT_EQ(std::string(reinterpret_cast<const char *>(rb_exchange_at(0)->before), 4), "1234");
}

TEST_F(RecordingBoard, AnswersUpToTheChannelsRecordWithoutAPresetLength)
{
    const struct {
        uint32_t type, record;
    } channels[] = {{232, 944},  {235, 4120}, {236, 1148}, {237, 1888}, {238, 1888}, {239, 1148},
                    {240, 1148}, {241, 1888}, {242, 1044}, {243, 1888}, {244, 1044}};
    const std::string longest(IPC_MAX_LENGTH, 'x');
    for (const auto &each : channels) {
        std::string response(IPC_MAX_LENGTH, '.');
        uint32_t length = 0;
        rb_answer answer = {};
        answer.bytes = longest.data();
        answer.length = IPC_MAX_LENGTH;
        rb_script_answer(&answer);
        ipc_dgram_get_exec(6, each.type, &request, sizeof request, response.data(), &length, &status);
        EXPECT_EQ(length, each.record);
        EXPECT_EQ(response.find('.'), each.record);
    }
}

TEST_F(RecordingBoard, RecordsTheKindOfCall)
{
    uint32_t length = 0;
    char response[944] = {};
    ipc_set_exec(6, channel, &request, sizeof request, &status);
    ipc_dgram_set_exec(6, channel, &request, sizeof request, &status);
    ipc_get_exec(6, channel, &request, sizeof request, response, &length, &status);
    ipc_dgram_get_exec(6, channel, &request, sizeof request, response, &length, &status);
    EXPECT_EQ(rb_exchange_at(0)->call, RB_SET);
    EXPECT_EQ(rb_exchange_at(1)->call, RB_DGRAM_SET);
    EXPECT_EQ(rb_exchange_at(2)->call, RB_GET);
    EXPECT_EQ(rb_exchange_at(3)->call, RB_DGRAM_GET);
}

TEST_F(RecordingBoard, RecordsLogLinesAsGivenAndAsRead)
{
    userlog_debug("where", 12, "%s=%d", "rv", -1);
    EXPECT_EQ(rb_log_at(0)->level, RB_DEBUG);
    EXPECT_STREQ(rb_log_at(0)->function, "where");
    EXPECT_EQ(rb_log_at(0)->line, 12);
    EXPECT_STREQ(rb_log_at(0)->format, "%s=%d");
    EXPECT_STREQ(rb_log_at(0)->text, "rv=-1");
}

TEST_F(RecordingBoard, CutsLongTexts)
{
    const std::string longer(2 * RB_TEXT_LENGTH, 'x');
    db_from_string(longer.c_str());
    EXPECT_EQ(rb_db_at(0)->text, longer.substr(0, RB_TEXT_LENGTH - 1));
}

TEST_F(RecordingBoard, HandsOutScriptedHandlesAndThenDistinctOnes)
{
    rb_script_db(nullptr);
    EXPECT_EQ(db_from_shmem(383, 10240), nullptr);
    db_handle *const first = db_from_string("{}");
    db_handle *const second = db_create_fromfile("/tmp/a");
    EXPECT_NE(first, nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(rb_db_at(0)->key, 383u);
    EXPECT_EQ(rb_db_at(0)->bound, 10240u);
    EXPECT_STREQ(rb_db_at(2)->text, "/tmp/a");
}

TEST_F(RecordingBoard, RecordsWhichHandleWasReleased)
{
    db_handle *const handle = db_from_string("{}");
    db_free(handle);
    EXPECT_EQ(rb_db_at(1)->call, RB_DB_FREE);
    EXPECT_EQ(rb_db_at(1)->handle, handle);
}

TEST_F(RecordingBoard, KeepsTheOrderAmongAllKinds)
{
    set();
    db_from_shmem(1, 2);
    userlog_err("f", 1, "x");
    delete_file("/tmp/a");
    EXPECT_EQ(rb_exchange_at(0)->at, 0u);
    EXPECT_EQ(rb_db_at(0)->at, 1u);
    EXPECT_EQ(rb_log_at(0)->at, 2u);
    EXPECT_EQ(rb_util_at(0)->at, 3u);
    EXPECT_EQ(rb_recorded(), 4u);
}

TEST_F(RecordingBoard, FailsAllocationsAsOftenAsAsked)
{
    rb_fail_pmalloc(1);
    EXPECT_EQ(pmalloc(10), nullptr);
    void *const block = pmalloc(10);
    EXPECT_NE(block, nullptr);
    pfree(block);
    EXPECT_EQ(rb_util_at(2)->call, RB_PFREE);
    EXPECT_EQ(rb_util_at(2)->block, block);
}

TEST_F(RecordingBoard, ReadsFilesAsScripted)
{
    char content[4] = {'x', 'x', 'x', 'x'};
    rb_script_file(0, "ab", 2);
    EXPECT_EQ(get_from_file("/tmp/a", 4, content), 0);
    EXPECT_EQ(std::string(content, 4), std::string("ab\0\0", 4));
    rb_script_file(-2, nullptr, 0);
    EXPECT_EQ(get_from_file("/tmp/a", 4, content), -2);
    EXPECT_STREQ(rb_util_at(1)->file, "/tmp/a");
    EXPECT_EQ(rb_util_at(1)->count, 4u);
}

} // namespace
