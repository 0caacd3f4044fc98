#include "store/store.h"

#include <sqlite3.h>

#include <algorithm>
#include <span>
#include <utility>

#include "storage/database.h"
#include "storage/private.h"
#include "store/migration.h"
#include "store/records.h"
#include "store/table.h"

namespace ponsim
{
namespace
{

// What is wrong with a file is followed by what can be done. Nothing of the file is changed before it is known to be
// good.
constexpr char advice[] = "; start over with --fresh, or name another file with --state";

constexpr int64_t application_id = 0x706f6e73; // "pons"
// Pages are small because a change of a row writes whole pages.
constexpr char pragmas[] = "PRAGMA page_size = 1024;"
                           "PRAGMA journal_mode = WAL;"
                           "PRAGMA synchronous = NORMAL;"
                           "PRAGMA temp_store = MEMORY;";

constexpr char setting_table[] =
    "CREATE TABLE setting(seed INTEGER NOT NULL, ports INTEGER NOT NULL, arrivals INTEGER NOT NULL,"
    " silent INTEGER NOT NULL, scenario TEXT NOT NULL, olt TEXT NOT NULL) STRICT;";

// Returns the SQL of all tables, in the order of their names.
std::string schema()
{
    std::vector<std::pair<std::string_view, std::string>> tables;
    tables.emplace_back("setting", setting_table);
    Kept::each_family([&]<class Record>() { add_tables<Record>(tables); });
    std::ranges::sort(tables);
    std::string sql;
    for (const auto &[table, create] : tables)
        sql += create;
    return sql;
}

// Without memory there may have been no way to roll back what was begun before.
void roll_back(sqlite3 *db)
{
    if (sqlite3_get_autocommit(db) != 0) return;
    if (sqlite3_exec(db, "ROLLBACK", nullptr, nullptr, nullptr) != SQLITE_OK) throw StoreError(sqlite3_errmsg(db));
}

void check_version(int64_t version)
{
    if (version >= first_version && version <= current_version()) return;
    const std::string both = "its version is " + std::to_string(version) + ", and this ponsim has version " +
                             std::to_string(current_version());
    const std::string what_to_do = "start over with --fresh, or name another file";
    if (version > current_version()) throw StoreError(both + "; go on with it in a newer ponsim, " + what_to_do);
    throw StoreError(both + " and carries over files from version " + std::to_string(first_version) + " on; " +
                     what_to_do);
}

} // namespace

struct Store::Statements {
    explicit Statements(sqlite3 *db)
        : begin(db, "BEGIN IMMEDIATE"),
          commit(db, "COMMIT"),
          rollback(db, "ROLLBACK"),
          writers(Kept::make_each<Writer>(db))
    {
    }

    Statement begin;
    Statement commit;
    Statement rollback; // prepared, because it is also needed when there is no memory
    Kept::OfEach<Writer> writers;
};

void Store::Close::operator()(sqlite3 *db) const
{
    sqlite3_close(db);
}

void Store::Delete::operator()(Statements *statements) const
{
    delete statements;
}

Store::Store(const std::string &file, bool fresh)
{
    open(file, fresh, nullptr);
}

Store::Store(const StoreImage &image)
{
    open({}, false, &image);
}

StoreImage Store::image() const
{
    // The pages of this store also follow from its past. Those of a copy follow from the rows alone.
    Store copy({}, false);
    if (const auto own = settings()) copy.set_settings(*own, load());
    sqlite3_int64 size = 0;
    const std::unique_ptr<unsigned char, void (*)(void *)> bytes(sqlite3_serialize(copy.db.get(), "main", &size, 0),
                                                                 sqlite3_free);
    if (!bytes) throw StoreError("no memory");
    return {std::string(bytes.get(), bytes.get() + size)};
}

void Store::open(const std::string &file, bool fresh, const StoreImage *image)
{
    name = file;
    if (!file.empty()) storage::make_private_file(file);
    for (const std::string &each : storage::files_of(file))
        if (storage::is_of_another_user(each)) throw StoreError(each + ": belongs to another user; name another file");
    sqlite3 *opened = nullptr;
    // Only one thread at a time uses the store.
    constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    const int result = sqlite3_open_v2(file.empty() ? ":memory:" : file.c_str(), &opened, flags, nullptr);
    db.reset(opened);
    try {
        if (result != SQLITE_OK) throw StoreError(opened ? sqlite3_errmsg(opened) : "no memory");
        storage::trust_nothing(opened);
        if (image) take(*image);
        prepare_schema(file, fresh);
        statements.reset(new Statements(opened));
    } catch (const StoreError &error) {
        const int code = opened ? sqlite3_errcode(opened) : SQLITE_NOMEM;
        std::string reason = error.what();
        if (code == SQLITE_BUSY || code == SQLITE_LOCKED) reason = "in use by another process";
        if (code == SQLITE_NOTADB) reason = "not a state file of ponsim; name another file";
        if (code == SQLITE_CORRUPT) reason = std::string("the file is damaged: ") + error.what() + advice;
        throw StoreError((image ? "the image" : file) + ": " + reason);
    }
}

void Store::take(const StoreImage &image) const
{
    const auto size = static_cast<sqlite3_int64>(image.bytes.size());
    auto *const bytes = static_cast<unsigned char *>(sqlite3_malloc64(std::max<size_t>(image.bytes.size(), 1)));
    if (!bytes) throw StoreError("no memory");
    std::ranges::copy(image.bytes, bytes);
    // SQLite frees the bytes, also when it does not take them.
    constexpr unsigned flags = SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_RESIZEABLE;
    if (sqlite3_deserialize(db.get(), "main", bytes, size, size, flags) != SQLITE_OK)
        throw StoreError(sqlite3_errmsg(db.get()));
}

void Store::execute(const std::string &sql) const
{
    if (sqlite3_exec(db.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        throw StoreError(sqlite3_errmsg(db.get()));
}

int64_t Store::number(const char *sql) const
{
    Statement statement(db.get(), sql);
    return statement.row() ? statement.number(0) : 0;
}

// PRAGMA quick_check would be faster, but it does not hold the indices against their tables: a row that a search by key
// does not find, or finds twice, goes unnoticed.
void Store::check_integrity() const
{
    Statement check(db.get(), "PRAGMA integrity_check(1)");
    if (!check.row()) throw StoreError("its integrity cannot be checked");
    if (const std::string found = check.text(0); found != "ok")
        throw StoreError("the file is damaged: " + found + advice);
}

// A file from a stranger can have other columns, triggers, or views with the names of tables.
void Store::check_tables() const
{
    std::string found;
    Statement select(db.get(), "SELECT sql FROM sqlite_schema WHERE sql IS NOT NULL ORDER BY name");
    while (select.row())
        found += select.text(0) + ';';
    if (found != schema()) throw StoreError(std::string("its tables are not those that ponsim makes") + advice);
}

// Empties the file, also when it is damaged.
void Store::empty_file()
{
    const auto reset = [this](int on) { sqlite3_db_config(db.get(), SQLITE_DBCONFIG_RESET_DATABASE, on, nullptr); };
    reset(1);
    const int result = sqlite3_exec(db.get(), "VACUUM", nullptr, nullptr, nullptr);
    reset(0);
    if (result != SQLITE_OK) throw StoreError(sqlite3_errmsg(db.get()));
}

// Carries a copy in memory over to this version, and reads it. So the file of an earlier version stays as it is, and
// the earlier ponsim can go on with it, unless this one can.
void Store::try_migration(int64_t version) const
{
    Store copy;
    copy.name = name;
    sqlite3 *memory = nullptr;
    const int opened = sqlite3_open_v2(":memory:", &memory, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    copy.db.reset(memory);
    if (opened != SQLITE_OK) throw StoreError(memory ? sqlite3_errmsg(memory) : "no memory");
    storage::trust_nothing(memory);
    sqlite3_backup *const backup = sqlite3_backup_init(memory, "main", db.get(), "main");
    if (!backup) throw StoreError(sqlite3_errmsg(memory));
    const int copied = sqlite3_backup_step(backup, -1);
    sqlite3_backup_finish(backup);
    if (copied != SQLITE_DONE) throw StoreError(sqlite3_errstr(copied));
    migrate(memory, version, migrations());
    copy.check_tables();
    copy.load();
}

void Store::prepare_schema(const std::string &file, bool fresh)
{
    // Only one process uses the file, so that requests need neither locks nor shared memory.
    execute("PRAGMA locking_mode = EXCLUSIVE");
    bool empty = number("SELECT count(*) FROM sqlite_schema") == 0;
    if (!empty && number("PRAGMA application_id") != application_id)
        throw StoreError("not a state file of ponsim; name another file");
    // Only now is it known to be ours. Files that SQLite makes from here on get the permissions of this one.
    for (const std::string &each : storage::files_of(file))
        storage::make_private(each);
    if (fresh && !empty) empty_file();
    empty = empty || fresh;
    const int64_t version = number("PRAGMA user_version");
    if (!empty) {
        check_version(version);
        check_integrity();
        if (version == current_version())
            check_tables();
        else
            try_migration(version);
    }
    execute(pragmas);
    std::string changes;
    if (empty)
        changes = "PRAGMA application_id = " + std::to_string(application_id) +
                  "; PRAGMA user_version = " + std::to_string(current_version()) + ";" + schema();
    // There is a transaction even when nothing changes. It shows now whether another process uses the file.
    execute("BEGIN IMMEDIATE;" + changes + "COMMIT;");
    if (!empty) migrate(db.get(), version, migrations());
}

void Store::write_rows(const auto &entries)
{
    entries.each([this]<class Record>(const Entry<Record> &entry) {
        std::get<Writer<Record>>(statements->writers).write(entry);
    });
}

std::optional<Settings> Store::settings() const
{
    Statement select(db.get(), "SELECT seed, ports, arrivals, silent, scenario, olt FROM setting");
    if (!select.row()) return std::nullopt;
    const auto word = [&](int column) {
        const int64_t number_found = select.number(column);
        return number_found >= 0 && number_found <= UINT32_MAX ? static_cast<uint32_t>(number_found) : UINT32_MAX;
    };
    const Settings found{.seed = static_cast<uint64_t>(select.number(0)),
                         .ports = word(1),
                         .arrivals = word(2),
                         .silent = word(3),
                         .scenario = select.text(4),
                         .olt = select.text(5)};
    if (const std::string wrong = problem_of(found); !wrong.empty()) refuse("table setting: " + wrong);
    if (select.row()) refuse("table setting: there is more than one row");
    return found;
}

void Store::set_settings(const Settings &settings, const Change &first)
{
    in_transaction([&] {
        Statement(db.get(), "INSERT INTO setting VALUES(?, ?, ?, ?, ?, ?)")
            .bind(static_cast<int64_t>(settings.seed))
            .bind(settings.ports)
            .bind(settings.arrivals)
            .bind(settings.silent)
            .bind(settings.scenario)
            .bind(settings.olt)
            .run();
        write_rows(first);
    });
}

Change Store::load() const
{
    roll_back(db.get());
    Records records(settings().value_or(Settings{}).ports);
    try {
        each_row([&](const Row &row) { records.take(row); });
        return records.finish();
    } catch (const StoreError &error) {
        refuse(error.what());
    }
}

void Store::refuse(const std::string &problem) const
{
    throw StoreError((name.empty() ? "the state" : name) + ": " + problem + advice);
}

void Store::in_transaction(const std::function<void()> &work)
{
    roll_back(db.get());
    statements->begin.run();
    try {
        work();
        statements->commit.run();
    } catch (...) {
        try {
            statements->rollback.run();
        } catch (...) {
            // It is rolled back before the store is used again.
        }
        throw;
    }
}

void Store::write(const Change &change)
{
    in_transaction([&] { write_rows(change); });
}

void Store::write(const Kept::Merged &changes)
{
    in_transaction([&] { write_rows(changes); });
}

int64_t Store::version()
{
    return current_version();
}

// Returns the names of the tables without that of the settings.
std::vector<std::string> Store::tables() const
{
    Statement select(db.get(), "SELECT name FROM sqlite_schema WHERE type = 'table' AND name <> 'setting' ORDER BY 1");
    std::vector<std::string> names;
    while (select.row())
        names.push_back(select.text(0));
    return names;
}

void Store::each_row(const std::function<void(const Row &)> &visit) const
{
    for (const std::string &table : tables()) {
        Statement select(db.get(), "SELECT * FROM \"" + table + "\"");
        while (select.row())
            visit({table, select.cells()});
    }
}

std::vector<Row> Store::rows() const
{
    std::vector<Row> rows;
    each_row([&](const Row &row) { rows.push_back(row); });
    // A row begins with its key, because keys are the first columns of their tables.
    std::ranges::sort(rows);
    return rows;
}

void Store::replace(const Change &change, const Kept::Merged &since)
{
    in_transaction([&] {
        for (const std::string &table : tables())
            Statement(db.get(), "DELETE FROM \"" + table + "\"").run();
        write_rows(change);
        write_rows(since);
    });
}

} // namespace ponsim
