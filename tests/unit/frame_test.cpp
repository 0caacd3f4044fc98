// These tests check the frame alone: what no operation shows yet, or what no operation shows by itself.
#include <gtest/gtest.h>

#include <cstring>

#include "bsp_testing/board.h"
#include "frame/exchange.h"
#include "frame/request.h"

namespace
{

using frame::ErrorPolicy;
using frame::on;
using frame::Request;

class Frame : public testing::Test
{
protected:
    Frame() { rb_reset(); }

    static void fail_with(int32_t value)
    {
        rb_answer answer = {};
        answer.result = value;
        rb_script_answer(&answer);
    }

    static void answer_with(const void *bytes, uint32_t length)
    {
        rb_answer answer = {};
        answer.bytes = bytes;
        answer.length = length;
        rb_script_answer(&answer);
    }

    static constexpr frame::Room whole = frame::whole<bsp_pon_msg>;
    Request<bsp_pon_msg> request{7};
};

TEST_F(Frame, ReportedFailureIsLoggedAndAStatusOfTheLibrary)
{
    fail_with(-3);
    EXPECT_EQ(frame::set(*request, on(BSP_MSG_PON)), BSP_ERR_IPC);
    EXPECT_EQ(rb_logs(), 1u);
}

TEST_F(Frame, PassedFailureIsLoggedAndTheIpcValue)
{
    fail_with(-3);
    EXPECT_EQ(frame::set(*request, on(BSP_MSG_PON, ErrorPolicy::pass)), 0xFFFFFFFDu);
    EXPECT_EQ(rb_logs(), 1u);
}

TEST_F(Frame, SilentFailureIsTheIpcValueAlone)
{
    fail_with(-3);
    EXPECT_EQ(frame::set(*request, on(BSP_MSG_PON, ErrorPolicy::silent)), 0xFFFFFFFDu);
    EXPECT_EQ(rb_logs(), 0u);
}

TEST_F(Frame, GetInPlaceFailsByItsPolicy)
{
    bsp_pon_msg record = {};
    fail_with(9);
    EXPECT_EQ(frame::get_in_place(record, on(BSP_MSG_PON, ErrorPolicy::pass)), 9u);
    fail_with(9);
    EXPECT_EQ(frame::get_in_place(record, on(BSP_MSG_PON, ErrorPolicy::silent)), 9u);
    EXPECT_EQ(rb_logs(), 1u);
}

TEST_F(Frame, GetDatabaseFailsByItsPolicy)
{
    db_handle *handle;
    fail_with(9);
    EXPECT_EQ(frame::get_database(*request, whole, request->cmd, 1, &handle, on(BSP_MSG_PON, ErrorPolicy::pass)), 9u);
    fail_with(9);
    EXPECT_EQ(frame::get_database(*request, whole, request->cmd, 1, &handle, on(BSP_MSG_PON, ErrorPolicy::silent)), 9u);
    EXPECT_EQ(rb_logs(), 1u);
}

TEST_F(Frame, LogLineNamesTheCallersFunctionAndLine)
{
    fail_with(1);
    const int line = __LINE__ + 1;
    frame::set(*request, on(BSP_MSG_PON));
    EXPECT_STREQ(rb_log_at(0)->function, __func__);
    EXPECT_EQ(rb_log_at(0)->line, line);
}

TEST_F(Frame, ResponseLongerThanTheRecordIsOfferedAndClearedWhole)
{
    db_handle *handle;
    frame::get_database(*request, frame::view_room, request->cmd, 1, &handle, on(BSP_MSG_PON));
    EXPECT_EQ(rb_exchange_at(0)->preset, 1044u);
    for (uint32_t i = 0; i < 1044; ++i)
        ASSERT_EQ(rb_exchange_at(0)->before[i], 0) << i;
}

TEST_F(Frame, LengthShorterThanTheRoomIsOfferedAsItIs)
{
    db_handle *handle;
    frame::get_database(*request, frame::room_of(1044, 776), request->cmd, 1, &handle, on(BSP_MSG_PON));
    EXPECT_EQ(rb_exchange_at(0)->preset, 776u);
}

TEST_F(Frame, RouteKeepsChannelCallPolicyAndLine)
{
    for (const uint32_t channel : {BSP_MSG_PON, BSP_MSG_PROFILE, BSP_MSG_LOOP_DETECT})
        for (const ErrorPolicy policy : {ErrorPolicy::report, ErrorPolicy::pass, ErrorPolicy::silent})
            for (const uint32_t line : {0u, 1u, 511u}) {
                const frame::Route route = on(channel, policy, "operation", line);
                for (const frame::Route &each : {route, route.by_datagram()}) {
                    EXPECT_EQ(each.channel(), channel);
                    EXPECT_EQ(each.policy(), policy);
                    EXPECT_EQ(each.line(), static_cast<int>(line));
                    EXPECT_STREQ(each.function, "operation");
                }
                EXPECT_FALSE(route.is_datagram());
                EXPECT_TRUE(route.by_datagram().is_datagram());
            }
}

TEST_F(Frame, DatabaseKeyIsReadAfterTheExchange)
{
    db_handle *handle;
    rb_answer answer = {};
    answer.during = [](const rb_exchange *exchange, void *) {
        static_cast<bsp_pon_msg *>(exchange->request)->cmd = 0xABCD;
    };
    rb_script_answer(&answer);
    frame::get_database(*request, whole, request->cmd, 1, &handle, on(BSP_MSG_PON));
    EXPECT_EQ(rb_db_at(0)->key, 0xABCDu);
}

TEST_F(Frame, TextOfALongerResponseMayReachItsEnd)
{
    char full[1044];
    std::memset(full, 'x', sizeof full);
    answer_with(full, sizeof full);
    char text[1044 - 20] = {};
    frame::get_text(*request, frame::view_room, 20, text, on(BSP_MSG_PON));
    EXPECT_EQ(text, std::string(1044 - 20 - 1, 'x'));
}

TEST_F(Frame, BlockBeyondTheResponseIsFilledUpWithZeros)
{
    char full[944];
    std::memset(full, 'x', sizeof full);
    answer_with(full, sizeof full);
    std::string block(2000, '.');
    frame::get_block(*request, 429, block.data(), 1999, on(BSP_MSG_PON));
    EXPECT_EQ(block, std::string(944 - 429, 'x') + std::string(1999 - (944 - 429), '\0') + '.');
}

TEST_F(Frame, BlockAtTheEndOfTheResponseMayEndWithIt)
{
    char full[944];
    std::memset(full, 'x', sizeof full);
    answer_with(full, sizeof full);
    std::string block(516, '.');
    frame::get_block(*request, 429, block.data(), 515, on(BSP_MSG_PON));
    EXPECT_EQ(block, std::string(515, 'x') + '.');
}

TEST_F(Frame, CopyOfTheCallersRecordHasTheCommandAlone)
{
    bsp_pon_msg callers = {};
    callers.cmd = 1;
    callers.data429[514] = 0xEE;
    Request<bsp_pon_msg> copy{2, callers};
    EXPECT_EQ(copy->cmd, 2u);
    EXPECT_EQ(copy->data429[514], 0xEE);
    EXPECT_EQ(callers.cmd, 1u);
}

TEST_F(Frame, TextFillsItsRoomWhateverItsLength)
{
    for (uint32_t room = 1; room < 20; ++room)
        for (size_t length = 0; length < 24; ++length) {
            std::string to(24, '.');
            const std::string text(length, 'x');
            frame::put_text(to.data(), room, text.c_str());
            const std::string copied = (text + '\0').substr(0, room);
            ASSERT_EQ(to, copied + std::string(24 - copied.size(), '.')) << room << ' ' << length;
        }
}

} // namespace
