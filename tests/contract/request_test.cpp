// These tests check what every operation sends.
#include "selection.h"

namespace contract
{

namespace
{

rb_call stated_call(const Operation &operation)
{
    switch (operation.call) {
    case catalogue::Call::set:
        return RB_SET;
    case catalogue::Call::get:
        return RB_GET;
    case catalogue::Call::dgram_set:
        return RB_DGRAM_SET;
    case catalogue::Call::dgram_get:
        return RB_DGRAM_GET;
    }
    throw std::logic_error("a call that is not known here");
}

} // namespace

using Request = OfOperation;

TEST_P(Request, IsOneExchangeAndNoMoreIsLoggedOrAllocated)
{
    subject.call();
    EXPECT_EQ(rb_exchanges(), 1u);
    EXPECT_EQ(rb_logs(), lines_logged(operation));
    EXPECT_EQ(rb_utils(), files_removed(operation));
}

TEST_P(Request, GoesToTheModuleOnItsChannel)
{
    subject.call();
    EXPECT_EQ(only_exchange().module, catalogue::module);
    EXPECT_EQ(only_exchange().msg_type, operation.channel->type);
}

TEST_P(Request, GoesByTheStatedCall)
{
    subject.call();
    EXPECT_EQ(only_exchange().call, stated_call(operation));
}

TEST_P(Request, IsAWholeRecordOrAHeaderAndThePayload)
{
    subject.call();
    EXPECT_EQ(only_exchange().request_length, subject.expected_request().size());
}

// The bytes that are sent of a payload say nothing of the buffer behind it, so the test looks there.
TEST_P(Request, BufferIsClearBehindWhatIsSent)
{
    static Bytes behind;
    static uint32_t size;
    size = operation.record->size;
    rb_answer answer = {};
    answer.during = [](const rb_exchange *exchange, void *) {
        const auto *request = static_cast<const uint8_t *>(exchange->request);
        behind.assign(request + exchange->request_length, request + size);
    };
    rb_script_answer(&answer);
    subject.call();
    EXPECT_EQ(behind, Bytes(size - only_exchange().request_length));
}

TEST_P(Request, IsAlignedForWords)
{
    subject.call();
    EXPECT_EQ(reinterpret_cast<uintptr_t>(only_exchange().request) % 4, 0u);
}

TEST_P(Request, PresetsTheStatusToZero)
{
    subject.call();
    EXPECT_EQ(only_exchange().status_before, 0u);
}

TEST_P(Request, LeavesWhatItReadsAsItWas)
{
    subject.call();
    EXPECT_TRUE(subject.surroundings_untouched());
}

ON_OPERATIONS(Request, all_operations());

using RequestBytes = OfOperation;

TEST_P(RequestBytes, HoldWhatTheArgumentsSayAndZerosElsewhere)
{
    subject.call();
    EXPECT_EQ(sent(), subject.expected_request());
}

TEST_P(RequestBytes, PassNumbersUnchecked)
{
    for (const uint32_t number : {0u, 0x7Fu, 0x80u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        Subject extreme(operation);
        for (const Argument &argument : operation.arguments)
            if (is_number(argument)) extreme.set_number(argument, number);
        extreme.call();
        EXPECT_EQ(sent(), extreme.expected_request()) << number;
    }
}

ON_OPERATIONS(RequestBytes, operations_where([](const Operation &each) {
                  return !catalogue::find_oddity(each, catalogue::Facet::request);
              }));

} // namespace contract
