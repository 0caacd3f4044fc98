#include "store/store.h"

#include <sqlite3.h>

#include <algorithm>
#include <map>
#include <utility>

#include "store/migration.h"
#include "store/private.h"
#include "store/table.h"

namespace ponsim
{
namespace
{

// Returns the names of the file and of those that SQLite keeps beside it. There are none in memory.
std::vector<std::string> files_of(const std::string &file)
{
    if (file.empty()) return {};
    return {file, file + "-wal", file + "-journal", file + "-shm"};
}

constexpr int64_t application_id = 0x706f6e73; // "pons"
// Pages are small because a change of a row writes whole pages.
constexpr char pragmas[] = "PRAGMA page_size = 1024;"
                           "PRAGMA journal_mode = WAL;"
                           "PRAGMA synchronous = NORMAL;"
                           "PRAGMA temp_store = MEMORY;";

constexpr char setting_table[] =
    "CREATE TABLE setting(seed INTEGER NOT NULL, ports INTEGER NOT NULL, arrivals INTEGER NOT NULL,"
    " silent INTEGER NOT NULL, scenario TEXT NOT NULL, olt TEXT NOT NULL) STRICT;";

std::string schema()
{
    std::string sql = setting_table;
    Kept::each_family([&]<class Record>() { sql += create_tables<Record>(); });
    return sql;
}

uint32_t word(const Statement &statement, int column)
{
    return static_cast<uint32_t>(statement.number(column));
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
        : begin(db, "BEGIN IMMEDIATE"), commit(db, "COMMIT"), writers(Kept::make_each<Writer>(db))
    {
    }

    Statement begin;
    Statement commit;
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
    if (const auto own = settings()) copy.set_settings(*own);
    copy.in_transaction([&] { copy.insert(rows()); });
    sqlite3_int64 size = 0;
    const std::unique_ptr<unsigned char, void (*)(void *)> bytes(sqlite3_serialize(copy.db.get(), "main", &size, 0),
                                                                 sqlite3_free);
    if (!bytes) throw StoreError("no memory");
    return {std::string(bytes.get(), bytes.get() + size)};
}

void Store::open(const std::string &file, bool fresh, const StoreImage *image)
{
    if (!file.empty()) make_private_file(file);
    for (const std::string &each : files_of(file))
        if (is_of_another_user(each)) throw StoreError(each + ": belongs to another user; name another file");
    sqlite3 *opened = nullptr;
    // Only one thread at a time uses the store.
    constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    const int result = sqlite3_open_v2(file.empty() ? ":memory:" : file.c_str(), &opened, flags, nullptr);
    db.reset(opened);
    try {
        if (result != SQLITE_OK) throw StoreError(opened ? sqlite3_errmsg(opened) : "no memory");
        if (image) take(*image);
        prepare_schema(file, fresh);
        statements.reset(new Statements(opened));
    } catch (const StoreError &error) {
        const int code = opened ? sqlite3_errcode(opened) : SQLITE_NOMEM;
        std::string reason = error.what();
        if (code == SQLITE_BUSY || code == SQLITE_LOCKED) reason = "in use by another process";
        if (code == SQLITE_NOTADB) reason = "not a state file of ponsim; name another file";
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

void Store::prepare_schema(const std::string &file, bool fresh)
{
    const auto number = [this](const char *sql) {
        Statement statement(db.get(), sql);
        return statement.row() ? statement.number(0) : 0;
    };
    // Only one process uses the file, so that requests need neither locks nor shared memory.
    execute("PRAGMA locking_mode = EXCLUSIVE");
    const bool empty = number("SELECT count(*) FROM sqlite_schema") == 0;
    if (!empty && number("PRAGMA application_id") != application_id)
        throw StoreError("not a state file of ponsim; name another file");
    // Only now is it known to be ours. Files that SQLite makes from here on get the permissions of this one.
    for (const std::string &each : files_of(file))
        make_private(each);
    const int64_t version = number("PRAGMA user_version");
    if (!empty && !fresh) check_version(version);
    execute(pragmas);
    std::string changes;
    if (fresh) {
        Statement names(db.get(), "SELECT name FROM sqlite_schema WHERE type = 'table'");
        while (names.row())
            changes += "DROP TABLE \"" + names.text(0) + "\";";
    }
    if (empty || fresh)
        changes += "PRAGMA application_id = " + std::to_string(application_id) +
                   "; PRAGMA user_version = " + std::to_string(current_version()) + ";" + schema();
    // There is a transaction even when nothing changes. It shows now whether another process uses the file.
    execute("BEGIN IMMEDIATE;" + changes + "COMMIT;");
    if (!empty && !fresh) migrate(db.get(), version, migrations());
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
    return Settings{.seed = static_cast<uint64_t>(select.number(0)),
                    .ports = word(select, 1),
                    .arrivals = word(select, 2),
                    .silent = word(select, 3),
                    .scenario = select.text(4),
                    .olt = select.text(5)};
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
    Change change;
    const uint32_t ports = settings().value_or(Settings{}).ports;
    Kept::each_family([&]<class Record>() {
        read_records<Record>(db.get(), ports, [&](Entry<Record> &&entry) { change.add(std::move(entry)); });
    });
    return change;
}

void Store::in_transaction(const std::function<void()> &work)
{
    statements->begin.run();
    try {
        work();
        statements->commit.run();
    } catch (const StoreError &) {
        sqlite3_exec(db.get(), "ROLLBACK", nullptr, nullptr, nullptr);
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

std::vector<Row> Store::rows() const
{
    std::vector<Row> rows;
    for (const std::string &table : tables()) {
        Statement select(db.get(), "SELECT * FROM \"" + table + "\"");
        while (select.row())
            rows.push_back({table, select.cells()});
    }
    // A row begins with its key, because keys are the first columns of their tables.
    std::ranges::sort(rows);
    return rows;
}

void Store::insert(std::span<const Row> rows)
{
    const std::vector<std::string> known = tables();
    std::map<std::string, Statement> inserts; // by their SQL
    for (const Row &row : rows) {
        if (std::ranges::count(known, row.table) == 0) throw StoreError("there is no table " + row.table);
        std::string sql = "INSERT INTO \"" + row.table + "\" VALUES(";
        for (size_t column = 0; column < row.cells.size(); ++column)
            sql += column == 0 ? "?" : ", ?";
        sql += ')';
        Statement &insert = inserts.try_emplace(sql, db.get(), sql).first->second;
        for (const Cell &cell : row.cells)
            insert.bind_cell(cell);
        insert.run();
    }
}

void Store::replace(std::span<const Row> rows)
{
    in_transaction([&] {
        for (const std::string &table : tables())
            Statement(db.get(), "DELETE FROM \"" + table + "\"").run();
        insert(rows);
    });
}

} // namespace ponsim
