// Blocks of the caller's length that go into a request.
#include "selection.h"

namespace contract
{

// Of the length that another argument states.
class Block : public OfArgument
{
protected:
    uint32_t room = operation.record->size - argument.field->offset;

    void expect_sent_for(size_t length)
    {
        Subject writer(operation);
        writer.set_block(argument, pattern(length));
        EXPECT_EQ(writer.call(), 0u);
        EXPECT_EQ(sent(), writer.expected_request()) << length << " bytes";
        EXPECT_TRUE(writer.surroundings_untouched());
    }
};

TEST_P(Block, OfNoBytesIsNotRead)
{
    expect_sent_for(0);
}

TEST_P(Block, OfOneByteIsSent)
{
    expect_sent_for(1);
}

TEST_P(Block, OfTheWholeFieldIsSent)
{
    expect_sent_for(argument.field->size);
}

TEST_P(Block, EndsWithTheRecord)
{
    expect_sent_for(room);
    expect_sent_for(room + 1);
    expect_sent_for(8058);
    expect_sent_for(100000);
}

TEST_P(Block, OfAnyStatedLengthIsReadOnlyAsFarAsTheRecordReaches)
{
    subject.set_block(argument, pattern(room));
    for (const Argument &each : operation.arguments)
        if (each.type == ArgumentType::length) subject.set_number(each, UINT32_MAX);
    EXPECT_EQ(subject.call(), 0u);
    EXPECT_EQ(sent(), subject.expected_request());
}

TEST_P(Block, NullIsNoBlockWhateverTheLength)
{
    for (const size_t length : {0u, 1u, 100000u}) {
        Subject writer(operation);
        writer.set_block(argument, pattern(length));
        writer.set_null(argument);
        EXPECT_EQ(writer.call(), 0u);
        EXPECT_EQ(sent(), writer.expected_request());
    }
}

ON_ARGUMENTS(Block,
             arguments_where([](const Argument &each) { return each.type == ArgumentType::block && each.size == 0; }));

// Of a length that is always the same. Not one byte more is readable.
using FixedBlock = OfArgument;

TEST_P(FixedBlock, IsSentWholeWhateverItHolds)
{
    for (const uint8_t byte : {0x00, 0x7F, 0xFF}) {
        Subject writer(operation);
        writer.set_block(argument, Bytes(argument.size, byte));
        EXPECT_EQ(writer.call(), 0u);
        EXPECT_EQ(sent(), writer.expected_request());
    }
}

ON_ARGUMENTS(FixedBlock,
             arguments_where([](const Argument &each) { return each.type == ArgumentType::block && each.size != 0; }));

} // namespace contract
