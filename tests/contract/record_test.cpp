// Operations that take a record which the caller built.
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
              operations_where([](const Operation &each) { return each.request == catalogue::Request::as_is; }));

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
              operations_where([](const Operation &each) { return each.request == catalogue::Request::copied; }));

} // namespace contract
