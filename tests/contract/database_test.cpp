// Result databases that come through shared memory.
#include "selection.h"

#include <cstring>

namespace contract
{
namespace
{

constexpr uint32_t other_command = 0xABCDEF01;

} // namespace

class Database : public OfArgument
{
protected:
    db_handle *delivered()
    {
        db_handle *handle;
        std::memcpy(&handle, subject.memory(argument).pointer(), sizeof handle);
        return handle;
    }

    // The key that the operation puts into its request.
    uint32_t expected_key() const
    {
        uint32_t key;
        std::memcpy(&key, subject.expected_request().data() + argument.key->offset, sizeof key);
        return key;
    }
};

TEST_P(Database, IsFetchedOnceAfterTheExchange)
{
    subject.call();
    ASSERT_EQ(rb_dbs(), 1u);
    EXPECT_EQ(rb_db_at(0)->call, RB_FROM_SHMEM);
    EXPECT_GT(rb_db_at(0)->at, only_exchange().at);
}

TEST_P(Database, IsFetchedByItsKeyWithinItsBound)
{
    subject.call();
    ASSERT_EQ(rb_dbs(), 1u);
    EXPECT_EQ(rb_db_at(0)->key, expected_key());
    EXPECT_EQ(rb_db_at(0)->bound, argument.bound);
}

TEST_P(Database, KeyIsTheCallersWhateverBecomesOfTheRequest)
{
    rb_answer answer = {};
    answer.during = [](const rb_exchange *exchange, void *offset) {
        std::memcpy(static_cast<uint8_t *>(exchange->request) + *static_cast<uint32_t *>(offset), &other_command,
                    sizeof other_command);
    };
    uint32_t offset = argument.key->offset;
    answer.context = &offset;
    rb_script_answer(&answer);
    subject.call();
    ASSERT_EQ(rb_dbs(), 1u);
    EXPECT_EQ(rb_db_at(0)->key, expected_key());
}

TEST_P(Database, GoesToTheCaller)
{
    char token;
    rb_script_db(reinterpret_cast<db_handle *>(&token));
    subject.call();
    EXPECT_EQ(delivered(), reinterpret_cast<db_handle *>(&token));
    EXPECT_TRUE(subject.surroundings_untouched());
}

TEST_P(Database, GoesToTheCallerAlsoWhenThereIsNone)
{
    rb_script_db(nullptr);
    EXPECT_EQ(subject.call(), 0u);
    EXPECT_EQ(delivered(), nullptr);
}

TEST_P(Database, GoesToTheCallerWhateverTheStatus)
{
    for (const uint32_t status : {1001u, 3003u, 4001u, 0xFFFFFFFFu}) {
        char token;
        Subject answered(operation);
        script_exchange(IPC_OK, status, {});
        rb_script_db(reinterpret_cast<db_handle *>(&token));
        EXPECT_EQ(answered.call(), status);
        db_handle *handle;
        std::memcpy(&handle, answered.memory(argument).pointer(), sizeof handle);
        EXPECT_EQ(handle, reinterpret_cast<db_handle *>(&token)) << status;
    }
}

ON_ARGUMENTS(Database, arguments_of(ArgumentType::db));

} // namespace contract
