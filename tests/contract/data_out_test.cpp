// Words and blocks that come out of a response.
#include "selection.h"

#include <algorithm>
#include <cstring>

namespace contract
{

// An argument that receives bytes of the answer, always as many.
class DataOut : public OfArgument
{
protected:
    uint32_t offset = argument.field->offset;
    uint32_t size = argument.type == ArgumentType::u32_out ? sizeof(uint32_t) : argument.size;

    // An answer of `length` bytes, unlike anything that is lent.
    static Bytes answer_of(size_t length)
    {
        Bytes bytes = pattern(length);
        for (uint8_t &byte : bytes)
            byte ^= 0x55;
        return bytes;
    }

    // Zeros for what the answer does not hold.
    void expect_delivered(const Bytes &answer, uint32_t status = 0)
    {
        script_exchange(IPC_OK, status, answer);
        EXPECT_EQ(subject.call(), status);
        Bytes expected(size);
        if (answer.size() > offset)
            std::copy_n(answer.begin() + offset, std::min<size_t>(answer.size() - offset, size), expected.begin());
        EXPECT_EQ(subject.memory(argument).bytes(), expected);
        EXPECT_TRUE(subject.surroundings_untouched());
    }
};

TEST_P(DataOut, IsWhatTheAnswerHoldsAtItsPlace)
{
    expect_delivered(answer_of(operation.response_size));
}

TEST_P(DataOut, OfAnAnswerThatEndsInItIsFilledUpWithZeros)
{
    expect_delivered(answer_of(offset + size / 2));
}

TEST_P(DataOut, OfAnAnswerThatEndsBeforeItIsZero)
{
    expect_delivered(answer_of(offset));
}

TEST_P(DataOut, OfNoAnswerIsZero)
{
    expect_delivered({});
}

TEST_P(DataOut, IsDeliveredWhateverTheStatus)
{
    expect_delivered(answer_of(operation.response_size), 4001);
}

TEST_P(DataOut, AsksForNothingElse)
{
    subject.call();
    EXPECT_EQ(rb_recorded(), 1u);
}

ON_ARGUMENTS(DataOut, arguments_where([](const Argument &each) {
                 return each.type == ArgumentType::u32_out || each.type == ArgumentType::block_out ||
                        each.type == ArgumentType::block_inout;
             }));

} // namespace contract
