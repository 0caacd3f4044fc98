#include "storage/statement.h"

#include <sqlite3.h>

namespace storage
{

Statement::Statement(sqlite3 *db, std::string_view sql)
{
    sqlite3_stmt *prepared = nullptr;
    const int length = static_cast<int>(sql.size());
    if (sqlite3_prepare_v3(db, sql.data(), length, SQLITE_PREPARE_PERSISTENT, &prepared, nullptr) != SQLITE_OK)
        throw Error(sqlite3_errmsg(db));
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
    throw Error(sqlite3_errmsg(sqlite3_db_handle(statement.get())));
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
    // SQLite takes bytes at a null pointer for no value, even when there are none.
    const void *begin = bytes.empty() ? "" : static_cast<const void *>(bytes.data());
    check(sqlite3_bind_blob(statement.get(), ++bound, begin, static_cast<int>(bytes.size()), SQLITE_STATIC));
    return *this;
}

Statement &Statement::bind_real(double value)
{
    check(sqlite3_bind_double(statement.get(), ++bound, value));
    return *this;
}

Statement &Statement::bind_null()
{
    check(sqlite3_bind_null(statement.get(), ++bound));
    return *this;
}

Statement &Statement::bind_cell(const Cell &cell)
{
    if (const auto *number = std::get_if<int64_t>(&cell)) return bind(*number);
    if (const auto *text = std::get_if<std::string>(&cell)) return bind(std::string_view(*text));
    const std::string &bytes = std::get<Blob>(cell).bytes;
    return bind(std::span(reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size()));
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
    // After a failed step, sqlite3_reset() reports the failure again.
    check(sqlite3_reset(statement.get()));
    return false;
}

bool Statement::is_null(int column) const
{
    return sqlite3_column_type(statement.get(), column) == SQLITE_NULL;
}

double Statement::real(int column) const
{
    return sqlite3_column_double(statement.get(), column);
}

int64_t Statement::number(int column) const
{
    return sqlite3_column_int64(statement.get(), column);
}

// SQLite returns no text and no bytes for an empty value, but also when it has no memory for them.
void Statement::check_memory(const void *value, int column) const
{
    if (!value && sqlite3_errcode(sqlite3_db_handle(statement.get())) == SQLITE_NOMEM)
        throw Error("no memory for column " + std::to_string(column));
}

std::string Statement::text(int column) const
{
    const unsigned char *text = sqlite3_column_text(statement.get(), column);
    check_memory(text, column);
    const auto size = static_cast<size_t>(sqlite3_column_bytes(statement.get(), column));
    return text ? std::string(reinterpret_cast<const char *>(text), size) : std::string{};
}

std::span<const uint8_t> Statement::bytes(int column) const
{
    const void *bytes = sqlite3_column_blob(statement.get(), column);
    check_memory(bytes, column);
    return {static_cast<const uint8_t *>(bytes), static_cast<size_t>(sqlite3_column_bytes(statement.get(), column))};
}

std::vector<Cell> Statement::cells() const
{
    std::vector<Cell> cells;
    for (int column = 0; column < sqlite3_column_count(statement.get()); ++column) {
        const int type = sqlite3_column_type(statement.get(), column);
        const std::span<const uint8_t> content = type == SQLITE_BLOB ? bytes(column) : std::span<const uint8_t>();
        if (type == SQLITE_INTEGER)
            cells.emplace_back(number(column));
        else if (type == SQLITE_TEXT)
            cells.emplace_back(text(column));
        else
            cells.emplace_back(Blob{{content.begin(), content.end()}});
    }
    return cells;
}

} // namespace storage
