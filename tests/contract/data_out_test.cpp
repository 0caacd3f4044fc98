// These tests check words and blocks that a response delivers.
#include "selection.h"

#include <algorithm>
#include <cstring>

namespace contract
{
namespace
{

template <class Holds>
std::vector<OperationArgument> delivered_as_they_stand(Holds holds)
{
    std::vector<OperationArgument> selected = arguments_where(holds);
    std::erase_if(selected, [](const OperationArgument &each) {
        return catalogue::find_oddity(*each.operation, catalogue::Facet::answer) != nullptr;
    });
    return selected;
}

} // namespace

// A DataOut is an argument that receives bytes of the answer.
class DataOut : public OfArgument
{
protected:
    uint32_t offset = argument.field->offset;
    // This is how many bytes it takes of an answer. A block whose length the caller states takes as many as are lent to
    // it.
    uint32_t size = argument.type == ArgumentType::u32_out ? sizeof(uint32_t)
                    : argument.type == ArgumentType::u16_out || argument.type == ArgumentType::u8_out
                        ? 1
                        : static_cast<uint32_t>(subject.memory(argument).as_lent().size()) - argument.skip;

    // Returns an answer of `length` bytes that differs from everything that is lent.
    static Bytes answer_of(size_t length)
    {
        Bytes bytes = pattern(length);
        for (uint8_t &byte : bytes)
            byte ^= 0x55;
        return bytes;
    }

    static Bytes widened(uint16_t number)
    {
        Bytes bytes(sizeof number);
        std::memcpy(bytes.data(), &number, sizeof number);
        return bytes;
    }

    // Checks that zeros stand for what the answer does not hold, and that the bytes before it do not change.
    void expect_delivered(const Bytes &answer, uint32_t status = 0)
    {
        script_exchange(IPC_OK, status, answer);
        EXPECT_EQ(subject.call(), status);
        Bytes delivered(size);
        const size_t held = std::min<size_t>(answer.size(), operation.response_size);
        if (held > offset)
            std::copy_n(answer.begin() + offset, std::min<size_t>(held - offset, size), delivered.begin());
        if (argument.type == ArgumentType::u16_out) delivered = widened(delivered[0]);
        Bytes expected = subject.memory(argument).as_lent();
        std::ranges::copy(delivered, expected.begin() + argument.skip);
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

TEST_P(DataOut, OfMoreThanAnAnswerHoldsEndsWithTheRecord)
{
    expect_delivered(answer_of(operation.response_size + 100));
}

TEST_P(DataOut, AsksForNothingElse)
{
    subject.call();
    EXPECT_EQ(rb_recorded(), 1u);
}

ON_ARGUMENTS(DataOut, delivered_as_they_stand([](const Argument &each) { return is_data_out(each); }));

// A length behind a pointer belongs to the copy, which is made after the exchange.
class LengthBehindAPointer : public OfArgument
{
protected:
    const Argument &block = operation.arguments[static_cast<size_t>(argument.other)];
};

TEST_P(LengthBehindAPointer, IsNotReadWhereTheExchangeFailed)
{
    subject.set_null(argument);
    script_exchange(-4, 0, {});
    EXPECT_EQ(subject.call(), 0xFFFFFFFCu);
    EXPECT_TRUE(subject.memory(block).unchanged());
}

TEST_P(LengthBehindAPointer, IsNotReadWhereTheBlockIsRefused)
{
    subject.set_null(argument);
    subject.set_null(block);
    EXPECT_EQ(subject.call(), 3003u);
}

TEST_P(LengthBehindAPointer, IsReadAfterTheExchange)
{
    const Bytes full(operation.response_size, 0x5A);
    rb_answer answer = {};
    answer.during = [](const rb_exchange *, void *length) { *static_cast<uint32_t *>(length) = 3; };
    answer.context = subject.pointer(argument);
    answer.bytes = full.data();
    answer.length = operation.response_size;
    rb_script_answer(&answer);
    EXPECT_EQ(subject.call(), 0u);
    Bytes expected = subject.memory(block).as_lent();
    std::fill_n(expected.begin(), 3, 0x5A);
    EXPECT_EQ(subject.memory(block).bytes(), expected);
}

ON_ARGUMENTS(LengthBehindAPointer, arguments_of(ArgumentType::length_at));

// DataOutOfLength receives as many bytes as the caller wants.
class DataOutOfLength : public OfArgument
{
protected:
    uint32_t held = operation.response_size - argument.field->offset;

    // Checks that zeros stand for what the response record does not hold.
    void expect_delivered(uint32_t length)
    {
        Subject wanting(operation);
        wanting.set_room(argument, length);
        script_exchange(IPC_OK, 0, Bytes(operation.response_size, 0x5A));
        EXPECT_EQ(wanting.call(), 0u);
        Bytes expected(length);
        std::fill_n(expected.begin(), std::min(length, held), 0x5A);
        EXPECT_EQ(wanting.memory(argument).bytes(), expected) << length << " bytes";
        EXPECT_TRUE(wanting.surroundings_untouched());
    }
};

TEST_P(DataOutOfLength, OfNoBytesIsNothing)
{
    expect_delivered(0);
}

TEST_P(DataOutOfLength, OfAFewBytesIsNoMore)
{
    expect_delivered(1);
    expect_delivered(100);
}

TEST_P(DataOutOfLength, OfAllThatTheRecordHolds)
{
    expect_delivered(held);
}

TEST_P(DataOutOfLength, OfMoreIsFilledUpWithZeros)
{
    expect_delivered(held + 1);
    expect_delivered(8058);
    expect_delivered(100000);
}

ON_ARGUMENTS(DataOutOfLength, delivered_as_they_stand([](const Argument &each) {
                 return each.type == ArgumentType::block_out && each.size == 0;
             }));

} // namespace contract
