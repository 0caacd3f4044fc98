// These tests check where the answers of get calls are stored.
#include "selection.h"

#include <algorithm>

namespace contract
{
namespace
{

std::vector<const Operation *> answered_in(catalogue::AnswerForm answer)
{
    return operations_where([answer](const Operation &each) { return each.answer == answer; });
}

} // namespace

using AnyAnswer = OfOperation;

TEST_P(AnyAnswer, IsOfferedThePresetLength)
{
    subject.call();
    EXPECT_EQ(only_exchange().preset, operation.preset);
}

ON_OPERATIONS(AnyAnswer,
              operations_where([](const Operation &each) { return each.answer != catalogue::AnswerForm::none; }));

class OwnBuffer : public OfOperation
{
protected:
    // Without the failure, an answer full of ones would say that a file has 4 GiB.
    void SetUp() override { rb_fail_pmalloc(1); }
};

TEST_P(OwnBuffer, IsNotTheRequest)
{
    subject.call();
    ASSERT_NE(only_exchange().response, nullptr);
    EXPECT_NE(only_exchange().response, only_exchange().request);
}

TEST_P(OwnBuffer, IsAlignedForWords)
{
    subject.call();
    EXPECT_EQ(reinterpret_cast<uintptr_t>(only_exchange().response) % 4, 0u);
}

TEST_P(OwnBuffer, OffersNoMoreThanItHas)
{
    subject.call();
    EXPECT_LE(only_exchange().room, operation.response_size);
}

// The whole buffer is cleared, also when less of it is offered.
TEST_P(OwnBuffer, IsClearedWholeBeforeTheAnswer)
{
    static Bytes buffer;
    buffer.assign(operation.response_size, 0xFF);
    rb_answer answer = {};
    answer.during = [](const rb_exchange *exchange, void *) {
        const auto *response = static_cast<const uint8_t *>(exchange->response);
        std::copy_n(response, buffer.size(), buffer.begin());
    };
    rb_script_answer(&answer);
    subject.call();
    EXPECT_EQ(buffer, Bytes(operation.response_size));
}

TEST_P(OwnBuffer, HoldsAnAnswerOfTheWholeRecord)
{
    const Bytes full(operation.response_size, 0xFF);
    script_exchange(IPC_OK, 0, full);
    subject.call();
    EXPECT_TRUE(subject.surroundings_untouched());
}

TEST_P(OwnBuffer, AnswerLeavesTheRequestAsItWas)
{
    static Bytes request_after_answer;
    const auto look = [](const rb_exchange *exchange, void *response_size) {
        const auto *request = static_cast<const uint8_t *>(exchange->request);
        std::fill_n(static_cast<uint8_t *>(exchange->response), *static_cast<uint32_t *>(response_size), 0xFF);
        request_after_answer.assign(request, request + exchange->request_length);
    };
    uint32_t response_size = operation.response_size;
    rb_answer answer = {};
    answer.during = look;
    answer.context = &response_size;
    rb_script_answer(&answer);
    subject.call();
    EXPECT_EQ(request_after_answer, sent());
}

ON_OPERATIONS(OwnBuffer, answered_in(catalogue::AnswerForm::own));

// CallersMemory tests answers that are stored directly in the caller's memory: in the record that was sent, or in a
// buffer of its own.
class CallersMemory : public OfOperation
{
protected:
    bool in_place = operation.answer == catalogue::AnswerForm::in_place;
    Memory &place = subject.memory(*subject.argument_of(in_place ? ArgumentType::record : ArgumentType::response));

    // Returns what the memory held when the answer came. An answer in place finds the request there.
    Bytes before() const { return in_place ? sent() : place.as_lent(); }
};

TEST_P(CallersMemory, IsHandedToTheIpcLibrary)
{
    subject.call();
    EXPECT_EQ(only_exchange().response, place.pointer());
    EXPECT_EQ(only_exchange().request == place.pointer(), in_place);
}

TEST_P(CallersMemory, ReceivesAFullAnswerAndNotAByteMore)
{
    script_exchange(IPC_OK, 0, Bytes(IPC_MAX_LENGTH, 0xFF));
    subject.call();
    EXPECT_EQ(place.bytes(), Bytes(operation.preset, 0xFF));
    EXPECT_TRUE(place.guards_stand());
}

TEST_P(CallersMemory, KeepsWhatAShortAnswerDoesNotReach)
{
    const Bytes part(100, 0xFF);
    script_exchange(IPC_OK, 0, part);
    subject.call();
    Bytes expected = before();
    std::ranges::copy(part, expected.begin());
    EXPECT_EQ(place.bytes(), expected);
}

TEST_P(CallersMemory, KeepsAllWithoutAnAnswer)
{
    subject.call();
    EXPECT_EQ(place.bytes(), before());
    EXPECT_TRUE(place.guards_stand());
}

TEST_P(CallersMemory, ReceivesTheAnswerWhateverTheStatus)
{
    script_exchange(IPC_OK, 4001, Bytes(operation.preset, 0xFF));
    EXPECT_EQ(subject.call(), 4001u);
    EXPECT_EQ(place.bytes(), Bytes(operation.preset, 0xFF));
}

ON_OPERATIONS(CallersMemory, operations_where([](const Operation &each) {
                  return each.answer == catalogue::AnswerForm::in_place || each.answer == catalogue::AnswerForm::caller;
              }));

// A DroppedAnswer is for a caller who wants no answer. The answer is then stored in memory of the library.
class DroppedAnswer : public OfArgument
{
protected:
    void SetUp() override { subject.set_null(argument); }
};

TEST_P(DroppedAnswer, IsOfferedThePresetLength)
{
    subject.call();
    EXPECT_EQ(only_exchange().preset, operation.preset);
}

TEST_P(DroppedAnswer, GoesToClearedMemoryThatIsNotTheRequest)
{
    subject.call();
    ASSERT_NE(only_exchange().response, nullptr);
    EXPECT_NE(only_exchange().response, only_exchange().request);
    EXPECT_EQ(Bytes(only_exchange().before, only_exchange().before + operation.preset), Bytes(operation.preset));
}

TEST_P(DroppedAnswer, LeavesTheStatus)
{
    script_exchange(IPC_OK, 4001, Bytes(IPC_MAX_LENGTH, 0xFF));
    EXPECT_EQ(subject.call(), 4001u);
    EXPECT_TRUE(subject.surroundings_untouched());
}

ON_ARGUMENTS(DroppedAnswer, arguments_where([](const Argument &each) {
                 return each.type == ArgumentType::response && each.optional;
             }));

using NoAnswer = OfOperation;

TEST_P(NoAnswer, OffersNoBuffer)
{
    subject.call();
    EXPECT_EQ(only_exchange().response, nullptr);
}

ON_OPERATIONS(NoAnswer, answered_in(catalogue::AnswerForm::none));

} // namespace contract
