// These tests check blocks of the caller's length that are sent in a request.
#include "selection.h"

namespace contract
{

// A Block has the length that another argument states.
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

std::vector<OperationArgument> blocks_in_records()
{
    std::vector<OperationArgument> selected =
        arguments_where([](const Argument &each) { return each.type == ArgumentType::block && each.size == 0; });
    std::erase_if(selected, [](const OperationArgument &each) { return each.operation->record->payload != nullptr; });
    return selected;
}

ON_ARGUMENTS(Block, blocks_in_records());

// A FixedBlock always has the same length. Not one byte more is readable.
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

// PayloadOfLength tests a payload of the caller's length. The request is as long as the payload makes it.
class PayloadOfLength : public OfOperation
{
protected:
    static constexpr uint32_t longest = 4092;

    // Sets the payload. A block that the operation may also overwrite lies in writable memory.
    void set(Subject &writer, uint32_t length) const
    {
        const Argument &payload = *writer.argument_of(
            operation.call == catalogue::Call::dgram_set ? ArgumentType::block : ArgumentType::block_inout);
        if (payload.type == ArgumentType::block)
            writer.set_block(payload, pattern(length));
        else
            writer.set_room(payload, length);
    }

    void set_null(Subject &writer) const
    {
        for (const Argument &each : operation.arguments)
            if (each.type == ArgumentType::block || each.type == ArgumentType::block_inout) writer.set_null(each);
    }
};

TEST_P(PayloadOfLength, IsSentWithFourZerosBehindIt)
{
    for (const uint32_t length : {0u, 1u, 4u, 100u, longest}) {
        Subject writer(operation);
        set(writer, length);
        EXPECT_EQ(writer.call(), 0u);
        EXPECT_EQ(only_exchange().request_length, length + 28) << length;
        const Bytes request = sent();
        EXPECT_EQ(request, writer.expected_request()) << length;
        EXPECT_EQ(Bytes(request.end() - 4, request.end()), Bytes(4)) << length;
    }
}

TEST_P(PayloadOfLength, NullIsAsManyZeros)
{
    for (const uint32_t length : {0u, 1u, 100u, longest}) {
        Subject writer(operation);
        set(writer, length);
        set_null(writer);
        EXPECT_EQ(writer.call(), 0u);
        EXPECT_EQ(only_exchange().request_length, length + 28) << length;
        EXPECT_EQ(sent(), writer.expected_request()) << length;
    }
}

TEST_P(PayloadOfLength, TooLongIsRefusedBeforeAnythingElse)
{
    for (const uint32_t length : {longest + 1, longest + 4, 8058u, 100000u}) {
        Subject writer(operation);
        set(writer, length);
        EXPECT_EQ(writer.call(), 3003u) << length;
        EXPECT_EQ(rb_recorded(), 0u) << length;
        EXPECT_TRUE(writer.outputs_untouched()) << length;
    }
}

TEST_P(PayloadOfLength, TooLongIsRefusedWithoutAPayloadToo)
{
    for (const uint32_t length : {longest + 1, 0x80000000u, UINT32_MAX - 27, UINT32_MAX}) {
        Subject writer(operation);
        set_null(writer);
        for (const Argument &each : operation.arguments)
            if (each.type == ArgumentType::length) writer.set_number(each, length);
        EXPECT_EQ(writer.call(), 3003u) << length;
        EXPECT_EQ(rb_recorded(), 0u) << length;
    }
}

std::vector<const Operation *> with_payloads()
{
    return operations_where(
        [](const Operation &each) { return each.record->payload && Subject(each).argument_of(ArgumentType::length); });
}

ON_OPERATIONS(PayloadOfLength, with_payloads());

} // namespace contract
