// This file has the result databases of board/datastore.h.
#include "board/datastore.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <string_view>

#include "board/util.h"
#include "client.h"
#include "not_cancelled.h"
#include "result_file.h"
#include "table.h"
#include "text/number.h"

struct db_handle {
    std::unique_ptr<char[]> text; // NUL-terminated
    uint32_t length = 0;

    // The text is read as a table when the table is first used, because many callers want the text alone.
    const board::Table &table() const
    {
        std::call_once(read, [this] {
            try {
                contents.emplace(std::string_view(text.get(), length));
            } catch (const std::bad_alloc &) {
                userlog_err(__func__, __LINE__, "no memory to read a result of %u bytes",
                            static_cast<unsigned>(length));
                contents.emplace("");
            }
        });
        return *contents;
    }

private:
    mutable std::once_flag read;
    mutable std::optional<board::Table> contents;
};

namespace
{

std::unique_ptr<db_handle> new_handle(uint32_t length)
{
    auto db = std::make_unique<db_handle>();
    db->text.reset(new char[size_t{length} + 1]);
    db->text[length] = '\0';
    db->length = length;
    return db;
}

db_handle *no_memory(uint32_t length)
{
    userlog_err(__func__, __LINE__, "no memory for a result of %u bytes", static_cast<unsigned>(length));
    return nullptr;
}

// Returns the table of a handle. A null handle has an empty table.
const board::Table &table_of(const db_handle *db)
{
    // This is never destroyed, because handlers of exit() may read a table.
    static const board::Table &nothing = *new board::Table("");
    return db ? db->table() : nothing;
}

// Returns the cell when its type has a value.
const board::Cell *cell_of(const db_handle *db, uint32_t row, const char *column)
{
    if (!column) return nullptr;
    const board::Cell *cell = table_of(db).find(row, column);
    return cell && cell->kind != DB_NONE ? cell : nullptr;
}

} // namespace

db_handle *db_from_shmem(uint32_t key, uint32_t bound)
{
    const board::NotCancelled whole;
    uint32_t length = 0;
    try {
        const board::Result result = board::last_result();
        length = result.length;
        const unsigned shown_key = key;
        if (!result.is_database() || result.key != key) {
            userlog_debug(__func__, __LINE__, "no result under key %u came with the last exchange", shown_key);
            return nullptr;
        }
        if (result.state == board::Result::too_long || length > bound) {
            userlog_err(__func__, __LINE__,
                        "the result under key %u is not taken: %u bytes, larger than the bound of %u", shown_key,
                        static_cast<unsigned>(length), static_cast<unsigned>(bound));
            return nullptr;
        }
        auto db = new_handle(length);
        if (board::copy_last_result(db->text.get(), length)) return db.release();
        userlog_err(__func__, __LINE__, "the service took the result under key %u back", shown_key);
        return nullptr;
    } catch (...) {
        return no_memory(length);
    }
}

db_handle *db_from_string(const char *text)
{
    if (!text) return nullptr;
    const auto length = static_cast<uint32_t>(std::strlen(text));
    try {
        auto db = new_handle(length);
        std::memcpy(db->text.get(), text, length);
        return db.release();
    } catch (...) {
        return no_memory(length);
    }
}

db_handle *db_create_fromfile(const char *file)
{
    const board::NotCancelled whole;
    uint32_t length = 0;
    try {
        const board::ResultFile found(file);
        if (!found) {
            userlog_err(__func__, __LINE__, "no result in %s: %s", file, found.problem());
            return nullptr;
        }
        length = found.length();
        auto db = new_handle(length);
        if (found.read(db->text.get(), length) == 0) return db.release();
        userlog_err(__func__, __LINE__, "no result in %s: it cannot be read", file);
        return nullptr;
    } catch (...) {
        return no_memory(length);
    }
}

void db_free(db_handle *db)
{
    delete db;
}

const char *db_text(const db_handle *db, uint32_t *length)
{
    if (length) *length = db ? db->length : 0;
    return db ? db->text.get() : "";
}

uint32_t db_rows(const db_handle *db)
{
    return table_of(db).rows();
}

uint32_t db_columns(const db_handle *db)
{
    return static_cast<uint32_t>(table_of(db).columns().size());
}

const char *db_column_name(const db_handle *db, uint32_t column)
{
    const auto &names = table_of(db).columns();
    return column < names.size() ? names[column] : nullptr;
}

db_type db_get_type(const db_handle *db, uint32_t row, const char *column)
{
    const board::Cell *cell = cell_of(db, row, column);
    return cell ? cell->type() : DB_NONE;
}

int db_get_integer(const db_handle *db, uint32_t row, const char *column, int64_t *value)
{
    const board::Cell *cell = cell_of(db, row, column);
    if (!cell || cell->type() != DB_INTEGER) return -1;
    *value = *text::to_number<int64_t>({cell->text, cell->text_length});
    return 0;
}

int db_get_real(const db_handle *db, uint32_t row, const char *column, double *value)
{
    const board::Cell *cell = cell_of(db, row, column);
    if (!cell || cell->kind != DB_REAL) return -1;
    // The table refuses a number that is too large, so a number that was not stored here is too small.
    double number = 0;
    std::from_chars(cell->text, cell->text + cell->text_length, number);
    *value = number;
    return 0;
}

int db_get_bool(const db_handle *db, uint32_t row, const char *column, int *value)
{
    const board::Cell *cell = cell_of(db, row, column);
    if (!cell || cell->kind != DB_BOOL) return -1;
    *value = *cell->text == 't';
    return 0;
}

const char *db_get_text(const db_handle *db, uint32_t row, const char *column)
{
    const board::Cell *cell = cell_of(db, row, column);
    return cell ? cell->text : nullptr;
}
