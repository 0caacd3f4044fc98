// These tests check the result of an exchange that failed.
#include "selection.h"

#include <climits>

namespace contract
{
namespace
{

constexpr int32_t failures[] = {-1, 7, INT32_MIN, INT32_MAX};
constexpr uint32_t failed = 1001;

std::vector<const Operation *> failing_by(catalogue::ErrorPolicy policy)
{
    return operations_where([policy](const Operation &each) { return each.error_policy == policy; });
}

} // namespace

class FailedExchange : public OfOperation
{
protected:
    // Calls with a failing exchange that left a status. When the response buffer is the library's own, the exchange
    // left a response, too.
    static uint32_t call_failing(Subject &failing, int32_t value)
    {
        const bool own = failing.operation().answer == catalogue::AnswerForm::own;
        script_exchange(value, 0x0BADBAD0, Bytes(own ? IPC_MAX_LENGTH : 0, 0xFF));
        return failing.call();
    }
};

TEST_P(FailedExchange, IsNotRetried)
{
    call_failing(subject, -1);
    EXPECT_EQ(rb_exchanges(), 1u);
}

TEST_P(FailedExchange, DeliversNothing)
{
    call_failing(subject, -1);
    EXPECT_TRUE(subject.outputs_untouched());
    EXPECT_EQ(rb_dbs(), 0u);
    EXPECT_EQ(rb_utils(), 0u);
}

ON_OPERATIONS(FailedExchange, all_operations());

using LoggedFailure = FailedExchange;

TEST_P(LoggedFailure, IsOneErrorLineWithTheValue)
{
    for (const int32_t value : failures) {
        Subject failing(operation);
        call_failing(failing, value);
        ASSERT_EQ(rb_logs(), 1u);
        EXPECT_EQ(rb_log_at(0)->level, RB_ERR);
        EXPECT_STREQ(rb_log_at(0)->format, "ipc msg failed. rv=%d\n");
        EXPECT_EQ(rb_log_at(0)->text, "ipc msg failed. rv=" + std::to_string(value) + "\n");
    }
}

TEST_P(LoggedFailure, NamesTheOperationAndALine)
{
    call_failing(subject, -1);
    ASSERT_EQ(rb_logs(), 1u);
    EXPECT_EQ(rb_log_at(0)->function, operation.logged_as);
    EXPECT_GT(rb_log_at(0)->line, 0);
}

ON_OPERATIONS(LoggedFailure, operations_where([](const Operation &each) {
                  return each.error_policy != catalogue::ErrorPolicy::silent;
              }));

using SilentFailure = FailedExchange;

TEST_P(SilentFailure, IsNotLogged)
{
    for (const int32_t value : failures) {
        Subject failing(operation);
        call_failing(failing, value);
        EXPECT_EQ(rb_logs(), 0u) << value;
    }
}

ON_OPERATIONS(SilentFailure, failing_by(catalogue::ErrorPolicy::silent));

using ReportedFailure = FailedExchange;

TEST_P(ReportedFailure, IsAStatusOfTheLibrary)
{
    for (const int32_t value : failures) {
        Subject failing(operation);
        EXPECT_EQ(call_failing(failing, value), failed) << value;
    }
}

ON_OPERATIONS(ReportedFailure, failing_by(catalogue::ErrorPolicy::report));

using PassedFailure = FailedExchange;

TEST_P(PassedFailure, IsTheValueOfTheIpcLibrary)
{
    for (const int32_t value : failures) {
        Subject failing(operation);
        EXPECT_EQ(call_failing(failing, value), static_cast<uint32_t>(value));
    }
}

ON_OPERATIONS(PassedFailure, operations_where([](const Operation &each) {
                  return each.error_policy != catalogue::ErrorPolicy::report;
              }));

} // namespace contract
