#include "store/migration.h"

#include <sqlite3.h>

#include <string>

#include "store/statement.h"

namespace ponsim
{

namespace
{

constexpr Migration steps[] = {
    // ONUs that monitor their UNI ports count from the time of the file on. What they had counted was not kept.
    {8, "CREATE TABLE ledger(pon_port INTEGER NOT NULL, mac BLOB NOT NULL CHECK(length(mac) = 6),"
        " since INTEGER NOT NULL, until INTEGER NOT NULL, frames BLOB NOT NULL, at_period BLOB NOT NULL,"
        " at_last_period BLOB NOT NULL, PRIMARY KEY(pon_port, mac)) STRICT, WITHOUT ROWID;"
        "INSERT INTO ledger SELECT pon_port, mac, max(now, arrives), max(now, arrives),"
        " zeroblob(192), zeroblob(192), zeroblob(192)"
        " FROM onu_setting, clock WHERE command = 717 AND told <> zeroblob(8)"},
    // Each UNI port counts for itself, and frames that it cannot send are counted, too. What an ONU has counted stays
    // with
    // its first port.
    {9, "UPDATE ledger SET frames = CAST(frames || zeroblob(80) AS BLOB),"
        " at_period = CAST(at_period || zeroblob(80) AS BLOB),"
        " at_last_period = CAST(at_last_period || zeroblob(80) AS BLOB)"},
};

} // namespace

std::span<const Migration> migrations()
{
    return steps;
}

int64_t current_version()
{
    return migrations().empty() ? first_version : migrations().back().version;
}

void migrate(sqlite3 *db, int64_t version, std::span<const Migration> migrations)
{
    for (const Migration &step : migrations) {
        if (step.version <= version) continue;
        const std::string sql = "BEGIN IMMEDIATE;" + std::string(step.sql) +
                                ";PRAGMA user_version = " + std::to_string(step.version) + ";COMMIT;";
        if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK) continue;
        const std::string reason = sqlite3_errmsg(db);
        sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr);
        throw StoreError("it could not be carried over to version " + std::to_string(step.version) + ": " + reason);
    }
}

} // namespace ponsim
