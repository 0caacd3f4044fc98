// These tests check result databases.
#include "selection.h"

#include <algorithm>
#include <cstring>

namespace contract
{
namespace
{

constexpr uint32_t other_command = 0xABCDEF01;

template <class Holds>
std::vector<OperationArgument> databases_where(Holds holds)
{
    return arguments_where([holds](const Argument &each) { return each.type == ArgumentType::db && holds(each); });
}

} // namespace

using Database = OfArgument;

TEST_P(Database, IsMadeOnceAfterTheExchange)
{
    subject.call();
    ASSERT_EQ(rb_dbs(), 1u);
    EXPECT_GT(rb_db_at(0)->at, only_exchange().at);
}

ON_ARGUMENTS(Database, arguments_of(ArgumentType::db));

// A KeyedDatabase comes through shared memory.
class KeyedDatabase : public OfArgument
{
protected:
    uint32_t expected_key() const
    {
        switch (argument.key) {
        case catalogue::Key::argument:
            return subject.number(operation.arguments[static_cast<size_t>(argument.other)]);
        case catalogue::Key::command:
            return operation.command->code;
        case catalogue::Key::request: {
            uint32_t key;
            std::memcpy(&key, subject.expected_request().data() + operation.record->command->offset, sizeof key);
            return key;
        }
        case catalogue::Key::none:
            break;
        }
        throw std::logic_error("a result in shared memory without a key");
    }
};

TEST_P(KeyedDatabase, IsFetchedByItsKeyWithinItsBound)
{
    subject.call();
    ASSERT_EQ(rb_dbs(), 1u);
    EXPECT_EQ(rb_db_at(0)->call, RB_FROM_SHMEM);
    EXPECT_EQ(rb_db_at(0)->key, expected_key());
    EXPECT_EQ(rb_db_at(0)->bound, argument.bound);
}

// The service may answer into the request; nothing excludes it.
TEST_P(KeyedDatabase, KeyOfTheRequestIsReadAfterTheExchangeAndNoOther)
{
    rb_answer answer = {};
    answer.during = [](const rb_exchange *exchange, void *offset) {
        std::memcpy(static_cast<uint8_t *>(exchange->request) + *static_cast<uint32_t *>(offset), &other_command,
                    sizeof other_command);
    };
    uint32_t offset = operation.record->command->offset;
    answer.context = &offset;
    rb_script_answer(&answer);
    subject.call();
    ASSERT_EQ(rb_dbs(), 1u);
    EXPECT_EQ(rb_db_at(0)->key, argument.key == catalogue::Key::request ? other_command : expected_key());
}

ON_ARGUMENTS(KeyedDatabase,
             databases_where([](const Argument &each) { return each.source == catalogue::Source::shmem; }));

// A TextDatabase is made of a text in the answer.
class TextDatabase : public OfArgument
{
protected:
    uint32_t offset = argument.field->offset;

    void expect_made_from(std::string_view text, const Bytes &answer)
    {
        script_exchange(IPC_OK, 0, answer);
        subject.call();
        ASSERT_EQ(rb_dbs(), 1u);
        EXPECT_EQ(rb_db_at(0)->call, RB_FROM_STRING);
        EXPECT_EQ(rb_db_at(0)->text_length, text.size());
        EXPECT_EQ(rb_db_at(0)->text, text.substr(0, RB_TEXT_LENGTH - 1));
    }

    // Returns an answer with 0xFF before the text, which stands at its own offset.
    Bytes answer_with(std::string_view text) const
    {
        Bytes bytes(offset, 0xFF);
        bytes.insert(bytes.end(), text.begin(), text.end());
        return bytes;
    }
};

TEST_P(TextDatabase, IsMadeFromTheTextAtItsPlace)
{
    expect_made_from("{}", answer_with(std::string("{}\0rest", 7)));
}

TEST_P(TextDatabase, OfAShortAnswerIsMadeFromWhatThereIs)
{
    expect_made_from("{", answer_with("{"));
}

TEST_P(TextDatabase, OfNoAnswerIsMadeFromAnEmptyText)
{
    expect_made_from("", {});
}

TEST_P(TextDatabase, WithoutItsNulEndsWithTheRecord)
{
    const std::string endless(operation.response_size - offset, 'x');
    expect_made_from(endless.substr(1), answer_with(endless));
}

ON_ARGUMENTS(TextDatabase,
             databases_where([](const Argument &each) { return each.source == catalogue::Source::text; }));

// A FileDatabase is made of a file that the answer names.
class FileDatabase : public OfArgument
{
protected:
    uint32_t offset = argument.field->offset;

    void answer(std::string_view name, uint32_t status = 0)
    {
        Bytes bytes(offset, 0xFF);
        bytes.insert(bytes.end(), name.begin(), name.end());
        script_exchange(IPC_OK, status, bytes);
    }

    static void expect_taken(std::string_view name)
    {
        ASSERT_EQ(rb_dbs(), 1u);
        EXPECT_EQ(rb_db_at(0)->call, RB_FROM_FILE);
        EXPECT_EQ(rb_db_at(0)->text, name);
        ASSERT_EQ(rb_utils(), 1u);
        EXPECT_EQ(rb_util_at(0)->call, RB_DELETE_FILE);
        EXPECT_EQ(rb_util_at(0)->file, name);
        EXPECT_GT(rb_util_at(0)->at, rb_db_at(0)->at);
    }
};

TEST_P(FileDatabase, IsMadeFromTheFileAndTheFileRemoved)
{
    answer(std::string("/tmp/table\0rest", 15));
    subject.call();
    expect_taken("/tmp/table");
}

TEST_P(FileDatabase, IsTakenAlsoWhenThereIsNone)
{
    answer("/tmp/table");
    rb_script_db(nullptr);
    subject.call();
    expect_taken("/tmp/table");
}

TEST_P(FileDatabase, IsTakenWhateverTheStatus)
{
    answer("/tmp/table", 4001);
    EXPECT_EQ(subject.call(), 4001u);
    expect_taken("/tmp/table");
}

TEST_P(FileDatabase, OfNoAnswerIsThatOfAnEmptyName)
{
    subject.call();
    expect_taken("");
}

TEST_P(FileDatabase, WithoutItsNulEndsWithTheAnswer)
{
    const std::string endless(operation.response_size - offset, 'x');
    answer(endless);
    subject.call();
    ASSERT_EQ(rb_dbs(), 1u);
    EXPECT_LE(rb_db_at(0)->text_length, endless.size());
    EXPECT_EQ(std::string_view(rb_db_at(0)->text),
              std::string_view(endless).substr(0, std::min<size_t>(rb_db_at(0)->text_length, RB_TEXT_LENGTH - 1)));
}

ON_ARGUMENTS(FileDatabase,
             databases_where([](const Argument &each) { return each.source == catalogue::Source::file; }));

// The name of a LoggedFile is logged before the file is removed.
using LoggedFile = FileDatabase;

TEST_P(LoggedFile, IsOneLineAtDebugLevelBetweenMakingAndRemoving)
{
    answer(std::string("/tmp/table\0rest", 15));
    subject.call();
    ASSERT_EQ(rb_logs(), 1u);
    EXPECT_EQ(rb_log_at(0)->level, RB_DEBUG);
    EXPECT_EQ(rb_log_at(0)->function, operation.logged_as);
    EXPECT_GT(rb_log_at(0)->line, 0);
    EXPECT_EQ(rb_log_at(0)->format, argument.logged);
    std::string line(argument.logged);
    EXPECT_EQ(rb_log_at(0)->text, line.replace(line.find("%s"), 2, "/tmp/table"));
    EXPECT_GT(rb_log_at(0)->at, rb_db_at(0)->at);
    EXPECT_LT(rb_log_at(0)->at, rb_util_at(0)->at);
}

ON_ARGUMENTS(LoggedFile, databases_where([](const Argument &each) {
                 return each.source == catalogue::Source::file && !each.logged.empty();
             }));

// The text of a LoggedText is logged first, as an error.
using LoggedText = TextDatabase;

TEST_P(LoggedText, IsOneLineBeforeTheDatabaseIsMade)
{
    script_exchange(IPC_OK, 0, answer_with(std::string("{}\0rest", 7)));
    subject.call();
    ASSERT_EQ(rb_logs(), 1u);
    EXPECT_EQ(rb_log_at(0)->level, RB_ERR);
    EXPECT_EQ(rb_log_at(0)->function, operation.logged_as);
    EXPECT_GT(rb_log_at(0)->line, 0);
    EXPECT_EQ(rb_log_at(0)->format, argument.logged);
    std::string line(argument.logged);
    EXPECT_EQ(rb_log_at(0)->text, line.replace(line.find("%s"), 2, "{}"));
    ASSERT_EQ(rb_dbs(), 1u);
    EXPECT_LT(rb_log_at(0)->at, rb_db_at(0)->at);
}

TEST_P(LoggedText, IsLoggedWhateverTheStatus)
{
    script_exchange(IPC_OK, 4001, answer_with("{}"));
    EXPECT_EQ(subject.call(), 4001u);
    EXPECT_EQ(rb_logs(), 1u);
}

ON_ARGUMENTS(LoggedText, databases_where([](const Argument &each) {
                 return each.source == catalogue::Source::text && !each.logged.empty();
             }));

class HandedOutDatabase : public OfArgument
{
protected:
    static db_handle *delivered(Subject &called, const Argument &out)
    {
        db_handle *handle;
        std::memcpy(&handle, called.memory(out).pointer(), sizeof handle);
        return handle;
    }
};

TEST_P(HandedOutDatabase, GoesToTheCaller)
{
    char token;
    rb_script_db(reinterpret_cast<db_handle *>(&token));
    subject.call();
    EXPECT_EQ(delivered(subject, argument), reinterpret_cast<db_handle *>(&token));
    EXPECT_TRUE(subject.surroundings_untouched());
}

TEST_P(HandedOutDatabase, GoesToTheCallerAlsoWhenThereIsNone)
{
    rb_script_db(nullptr);
    EXPECT_EQ(subject.call(), 0u);
    EXPECT_EQ(delivered(subject, argument), nullptr);
}

TEST_P(HandedOutDatabase, GoesToTheCallerWhateverTheStatus)
{
    for (const uint32_t status : {1001u, 3003u, 4001u, 0xFFFFFFFFu}) {
        char token;
        Subject answered(operation);
        script_exchange(IPC_OK, status, {});
        rb_script_db(reinterpret_cast<db_handle *>(&token));
        answered.call();
        EXPECT_EQ(delivered(answered, argument), reinterpret_cast<db_handle *>(&token)) << status;
    }
}

ON_ARGUMENTS(HandedOutDatabase, databases_where([](const Argument &each) { return !each.dropped; }));

// The callers of these operations use the status alone.
using DroppedDatabase = OfArgument;

TEST_P(DroppedDatabase, IsNotHandedOut)
{
    for (const uint32_t status : {0u, 4001u}) {
        Subject answered(operation);
        script_exchange(IPC_OK, status, {});
        EXPECT_EQ(answered.call(), status);
        EXPECT_TRUE(answered.memory(argument).unchanged());
    }
}

ON_ARGUMENTS(DroppedDatabase, databases_where([](const Argument &each) { return each.dropped; }));

} // namespace contract
