#include "store/statement.h"

#include <sqlite3.h>

namespace ponsim
{

Statement::Statement(sqlite3 *db, std::string_view sql)
{
    sqlite3_stmt *prepared = nullptr;
    const int length = static_cast<int>(sql.size());
    if (sqlite3_prepare_v3(db, sql.data(), length, SQLITE_PREPARE_PERSISTENT, &prepared, nullptr) != SQLITE_OK)
        throw StoreError(sqlite3_errmsg(db));
    statement.reset(prepared);
}

void Statement::Finalize::operator()(sqlite3_stmt *statement) const
{
    sqlite3_finalize(statement);
}

void Statement::check(int result)
{
    if (result == SQLITE_OK) return;
    bound = 0;
    throw StoreError(sqlite3_errmsg(sqlite3_db_handle(statement.get())));
}

Statement &Statement::bind(int64_t value)
{
    check(sqlite3_bind_int64(statement.get(), ++bound, value));
    return *this;
}

Statement &Statement::bind(std::string_view text)
{
    check(sqlite3_bind_text(statement.get(), ++bound, text.data(), static_cast<int>(text.size()), SQLITE_STATIC));
    return *this;
}

Statement &Statement::bind(std::span<const uint8_t> bytes)
{
    check(sqlite3_bind_blob(statement.get(), ++bound, bytes.data(), static_cast<int>(bytes.size()), SQLITE_STATIC));
    return *this;
}

void Statement::run()
{
    while (row()) {
    }
}

bool Statement::row()
{
    const int result = sqlite3_step(statement.get());
    if (result == SQLITE_ROW) return true;
    bound = 0;
    // After a failed step, reset reports the failure again.
    check(sqlite3_reset(statement.get()));
    return false;
}

int64_t Statement::number(int column) const
{
    return sqlite3_column_int64(statement.get(), column);
}

std::string Statement::text(int column) const
{
    const unsigned char *text = sqlite3_column_text(statement.get(), column);
    return text ? reinterpret_cast<const char *>(text) : std::string{};
}

std::span<const uint8_t> Statement::bytes(int column) const
{
    const void *bytes = sqlite3_column_blob(statement.get(), column);
    return {static_cast<const uint8_t *>(bytes), static_cast<size_t>(sqlite3_column_bytes(statement.get(), column))};
}

} // namespace ponsim
