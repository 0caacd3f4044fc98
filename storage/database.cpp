#include "storage/database.h"

#include <sqlite3.h>

#include <utility>

#include "storage/statement.h"

namespace storage
{
namespace
{

// No value in a file is longer. The longest is the text of a scenario.
constexpr int longest_value = 64 * 1024 * 1024;

} // namespace

std::vector<std::string> files_of(const std::string &file)
{
    if (file.empty()) return {};
    return {file, file + "-wal", file + "-journal", file + "-shm"};
}

void trust_nothing(sqlite3 *db)
{
    constexpr std::pair<int, int> settings[] = {
        {SQLITE_DBCONFIG_DEFENSIVE, 1},   {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0}, {SQLITE_DBCONFIG_ENABLE_TRIGGER, 0},
        {SQLITE_DBCONFIG_ENABLE_VIEW, 0}, {SQLITE_DBCONFIG_DQS_DDL, 0},        {SQLITE_DBCONFIG_DQS_DML, 0},
    };
    for (const auto &[setting, on] : settings)
        if (sqlite3_db_config(db, setting, on, nullptr) != SQLITE_OK) throw Error(sqlite3_errmsg(db));
    sqlite3_limit(db, SQLITE_LIMIT_LENGTH, longest_value);
}

} // namespace storage
