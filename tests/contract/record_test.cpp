// These tests check operations that take a record which the caller built, or that read from another record.
#include "selection.h"

#include <algorithm>
#include <cstring>

namespace contract
{

class CallersRecord : public OfOperation
{
protected:
    Memory &record = subject.memory(*subject.argument_of(ArgumentType::record));

    uint32_t command_sent() const
    {
        uint32_t command;
        std::memcpy(&command, only_exchange().sent + operation.record->command->offset, sizeof command);
        return command;
    }
};

using RecordAsIs = CallersRecord;

TEST_P(RecordAsIs, IsSentFromTheCallersOwnMemory)
{
    subject.call();
    EXPECT_EQ(only_exchange().request, record.pointer());
}

TEST_P(RecordAsIs, IsSentByteForByte)
{
    subject.call();
    EXPECT_EQ(sent(), record.as_lent());
}

ON_OPERATIONS(RecordAsIs,
              operations_where([](const Operation &each) { return each.request == catalogue::RequestForm::as_is; }));

using RecordCopied = CallersRecord;

TEST_P(RecordCopied, IsSentFromMemoryOfTheLibrary)
{
    subject.call();
    EXPECT_NE(only_exchange().request, record.pointer());
}

TEST_P(RecordCopied, GetsTheOperationsOwnCommand)
{
    subject.call();
    EXPECT_EQ(command_sent(), operation.command->code);
}

TEST_P(RecordCopied, KeepsEveryByteButTheCommand)
{
    subject.call();
    Bytes wire = sent();
    const uint32_t command = operation.record->command->offset;
    std::copy_n(record.as_lent().begin() + command, 4, wire.begin() + command);
    EXPECT_EQ(wire, record.as_lent());
}

TEST_P(RecordCopied, StaysTheCallers)
{
    subject.call();
    EXPECT_TRUE(record.unchanged());
    EXPECT_TRUE(record.guards_stand());
}

ON_OPERATIONS(RecordCopied,
              operations_where([](const Operation &each) { return each.request == catalogue::RequestForm::copied; }));

class RecordStamped : public CallersRecord
{
protected:
    // Returns the caller's record with the operation's command.
    Bytes stamped() const
    {
        Bytes bytes = record.as_lent();
        std::memcpy(bytes.data() + operation.record->command->offset, &operation.command->code, sizeof(uint32_t));
        return bytes;
    }
};

TEST_P(RecordStamped, IsSentFromTheCallersOwnMemory)
{
    subject.call();
    EXPECT_EQ(only_exchange().request, record.pointer());
}

TEST_P(RecordStamped, KeepsTheCommandAndIsNotChangedOtherwise)
{
    subject.call();
    EXPECT_EQ(record.bytes(), stamped());
    EXPECT_TRUE(record.guards_stand());
}

TEST_P(RecordStamped, KeepsTheCommandAfterAFailedExchange)
{
    script_exchange(-1, 0, {});
    subject.call();
    EXPECT_EQ(record.bytes(), stamped());
}

ON_OPERATIONS(RecordStamped,
              operations_where([](const Operation &each) { return each.request == catalogue::RequestForm::stamped; }));

class RecordPicked : public CallersRecord
{
protected:
    const Argument &argument = *subject.argument_of(ArgumentType::record);

    bool is_picked(size_t at) const
    {
        return std::ranges::any_of(argument.picked, [at](const catalogue::Field *field) {
            return at >= field->offset && at < field->offset + field->size;
        });
    }
};

TEST_P(RecordPicked, IsNotSentItself)
{
    subject.call();
    EXPECT_NE(only_exchange().request, record.pointer());
}

TEST_P(RecordPicked, GivesNothingButThePickedFields)
{
    subject.call();
    const Bytes request = sent();
    Bytes changed = record.as_lent();
    for (size_t at = 0; at < changed.size(); ++at)
        if (!is_picked(at)) changed[at] ^= 0xFF;

    Subject other(operation);
    std::ranges::copy(changed, static_cast<uint8_t *>(other.pointer(argument)));
    other.call();
    EXPECT_EQ(sent(), request);
}

TEST_P(RecordPicked, StaysTheCallers)
{
    subject.call();
    EXPECT_TRUE(record.unchanged());
    EXPECT_TRUE(record.guards_stand());
}

ON_OPERATIONS(RecordPicked, operations_where([](const Operation &each) {
                  const Argument *record = Subject(each).argument_of(ArgumentType::record);
                  return record && !record->picked.empty();
              }));

} // namespace contract
