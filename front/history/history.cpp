#include "history/history.h"

#include <sqlite3.h>

#include <algorithm>

#include "storage/database.h"
#include "storage/private.h"

namespace front
{
namespace
{

using storage::Statement;

constexpr int64_t application_id = 0x706f6e66; // "ponf"
constexpr int64_t version = 2;

constexpr char schema[] =
    "CREATE TABLE event(id INTEGER PRIMARY KEY AUTOINCREMENT, at INTEGER NOT NULL, olt TEXT NOT NULL,"
    " kind TEXT NOT NULL, port INTEGER NOT NULL, count INTEGER NOT NULL, onu_id INTEGER, mac TEXT NOT NULL,"
    " onus TEXT NOT NULL, detail TEXT NOT NULL, cause TEXT NOT NULL, place TEXT NOT NULL, measure REAL) STRICT;"
    "CREATE TABLE fact(olt TEXT NOT NULL, kind INTEGER NOT NULL, port INTEGER NOT NULL, mac TEXT NOT NULL,"
    " detail TEXT NOT NULL, value TEXT NOT NULL, onu_id INTEGER, cause TEXT NOT NULL, place TEXT NOT NULL,"
    " since INTEGER NOT NULL, PRIMARY KEY(olt, kind, port, mac, detail)) STRICT, WITHOUT ROWID;"
    "CREATE TABLE looked(olt TEXT NOT NULL, kind INTEGER NOT NULL, PRIMARY KEY(olt, kind)) STRICT, WITHOUT ROWID;";

// Version 1 had no light.
constexpr char schema_of_light[] =
    "CREATE TABLE light(olt TEXT NOT NULL, at INTEGER NOT NULL, hourly INTEGER NOT NULL, block BLOB NOT NULL,"
    " PRIMARY KEY(olt, at)) STRICT;";

std::optional<uint32_t> number_or_null(const Statement &row, int column)
{
    if (row.is_null(column)) return std::nullopt;
    return static_cast<uint32_t>(row.number(column));
}

Statement &bind_optional(Statement &statement, const std::optional<uint32_t> &number)
{
    return number ? statement.bind(int64_t{*number}) : statement.bind_null();
}

} // namespace

struct History::Statements {
    explicit Statements(sqlite3 *db)
        : begin(db, "BEGIN IMMEDIATE"),
          commit(db, "COMMIT"),
          rollback(db, "ROLLBACK"),
          add_event(db,
                    "INSERT INTO event(at, olt, kind, port, count, onu_id, mac, onus, detail, cause, place, measure)"
                    " VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
          drop_events(db, "DELETE FROM event WHERE id <= (SELECT max(id) FROM event) - ?"),
          keep_fact(db, "INSERT OR REPLACE INTO fact VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
          drop_fact(db, "DELETE FROM fact WHERE olt = ? AND kind = ? AND port = ? AND mac = ? AND detail = ?"),
          keep_looked(db, "INSERT OR IGNORE INTO looked VALUES(?, ?)")
    {
    }

    Statement begin, commit, rollback, add_event, drop_events, keep_fact, drop_fact, keep_looked;
};

void History::Close::operator()(sqlite3 *database) const
{
    sqlite3_close(database);
}

void History::Delete::operator()(Statements *prepared) const
{
    delete prepared;
}

History::History(const std::string &file, const HistoryLimits &limits) : most(limits)
{
    const auto fail = [&](const std::string &reason) {
        throw storage::Error((file.empty() ? "the history" : file) + ": " + reason);
    };
    if (!file.empty()) storage::make_private_file(file);
    for (const std::string &each : storage::files_of(file))
        if (storage::is_of_another_user(each)) fail("belongs to another user; name another file");
    sqlite3 *opened = nullptr;
    constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    const int result = sqlite3_open_v2(file.empty() ? ":memory:" : file.c_str(), &opened, flags, nullptr);
    db.reset(opened);
    try {
        if (result != SQLITE_OK) throw storage::Error(opened ? sqlite3_errmsg(opened) : "no memory");
        storage::trust_nothing(opened);
        prepare(file);
        statements.reset(new Statements(opened));
    } catch (const storage::Error &error) {
        const int code = opened ? sqlite3_errcode(opened) : SQLITE_NOMEM;
        if (code == SQLITE_BUSY) fail("in use by another process");
        if (code == SQLITE_NOTADB || code == SQLITE_CORRUPT)
            fail(std::string("no history, or a damaged one (") + error.what() + "); remove it, or name another file");
        fail(error.what());
    }
}

void History::execute(const char *sql) const
{
    if (sqlite3_exec(db.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw storage::Error(sqlite3_errmsg(db.get()));
}

void History::prepare(const std::string &file)
{
    const auto number = [this](const char *sql) {
        Statement statement(db.get(), sql);
        return statement.row() ? statement.number(0) : 0;
    };
    execute("PRAGMA locking_mode = EXCLUSIVE; PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL;");
    const auto make = [this](const std::string &tables) {
        execute(("BEGIN IMMEDIATE; " + tables + schema_of_light + "PRAGMA application_id = " +
                 std::to_string(application_id) + "; PRAGMA user_version = " + std::to_string(version) + "; COMMIT;")
                    .c_str());
    };
    if (number("SELECT count(*) FROM sqlite_schema") == 0) {
        make(schema);
    } else if (number("PRAGMA application_id") != application_id) {
        throw storage::Error("no history of ponfront; name another file");
    } else if (const int64_t found = number("PRAGMA user_version"); found == 1) {
        make({});
    } else if (found != version) {
        throw storage::Error("its version is " + std::to_string(found) + ", and this ponfront has version " +
                             std::to_string(version) + "; name another file");
    }
    for (const std::string &each : storage::files_of(file))
        storage::make_private(each);
}

void History::keep_at_most(const HistoryLimits &limits)
{
    const std::lock_guard lock(guard);
    most = limits;
}

Known History::known(const std::string &olt) const
{
    const std::lock_guard lock(guard);
    Known known;
    Statement looked(db.get(), "SELECT kind FROM looked WHERE olt = ?");
    looked.bind(olt);
    while (looked.row())
        if (const int64_t kind = looked.number(0); kind >= 0 && kind < int64_t{fact_kind_count})
            known.kinds.set(static_cast<size_t>(kind));
    Statement facts(db.get(), "SELECT kind, port, mac, detail, value, onu_id, cause, place, since FROM fact"
                              " WHERE olt = ?");
    facts.bind(olt);
    while (facts.row()) {
        const int64_t kind = facts.number(0);
        if (kind < 0 || kind >= int64_t{fact_kind_count}) continue;
        known.facts[{static_cast<FactKind>(kind), static_cast<uint32_t>(facts.number(1)), facts.text(2),
                     facts.text(3)}] = {.value = facts.text(4),
                                        .onu_id = number_or_null(facts, 5),
                                        .cause = facts.text(6),
                                        .place = facts.text(7),
                                        .since = facts.number(8)};
    }
    return known;
}

void History::write(const std::string &olt, const Known &known, Watcher::Found &found)
{
    for (size_t kind = 0; kind < fact_kind_count; ++kind)
        if (known.kinds.test(kind)) statements->keep_looked.bind(olt).bind(static_cast<int64_t>(kind)).run();
    for (const auto &[key, fact] : found.changes) {
        Statement &change = fact ? statements->keep_fact : statements->drop_fact;
        change.bind(olt).bind(static_cast<int64_t>(key.kind)).bind(int64_t{key.port}).bind(key.mac).bind(key.detail);
        if (fact)
            bind_optional(change.bind(fact->value), fact->onu_id).bind(fact->cause).bind(fact->place).bind(fact->since);
        change.run();
    }
    for (Event &event : found.events) {
        Statement &add = statements->add_event;
        add.bind(event.at)
            .bind(event.olt)
            .bind(name_of(event.kind))
            .bind(int64_t{event.port})
            .bind(int64_t{event.count});
        bind_optional(add, event.onu_id).bind(event.mac).bind(event.onus).bind(event.detail).bind(event.cause);
        add.bind(event.place);
        event.measure ? add.bind_real(*event.measure) : add.bind_null();
        add.run();
        event.id = static_cast<uint64_t>(sqlite3_last_insert_rowid(db.get()));
    }
    if (!found.events.empty()) statements->drop_events.bind(static_cast<int64_t>(most.events)).run();
}

void History::keep(const std::string &olt, const Known &known, Watcher::Found &found)
{
    if (found.events.empty() && found.changes.empty()) return;
    const std::lock_guard lock(guard);
    statements->begin.run();
    try {
        write(olt, known, found);
        statements->commit.run();
    } catch (const storage::Error &) {
        for (Event &event : found.events)
            event.id = 0;
        // A failure may have rolled back already.
        if (sqlite3_get_autocommit(db.get()) == 0) statements->rollback.run();
        throw;
    }
}

const char *const History::event_columns =
    "SELECT id, at, olt, kind, port, count, onu_id, mac, onus, detail, cause, place, measure FROM event";

std::optional<Event> History::event_in(const Statement &row)
{
    const std::optional<EventKind> kind = event_kind(row.text(3));
    if (!kind) return std::nullopt;
    Event event{.id = static_cast<uint64_t>(row.number(0)),
                .at = row.number(1),
                .olt = row.text(2),
                .kind = *kind,
                .port = static_cast<uint32_t>(row.number(4)),
                .count = static_cast<uint32_t>(row.number(5)),
                .onu_id = number_or_null(row, 6),
                .mac = row.text(7),
                .onus = row.text(8),
                .detail = row.text(9),
                .cause = row.text(10),
                .place = row.text(11)};
    if (!row.is_null(12)) event.measure = row.real(12);
    return event;
}

std::vector<Event> History::events(uint64_t behind, size_t most_events, bool last) const
{
    const std::lock_guard lock(guard);
    std::vector<Event> found;
    Statement select(db.get(),
                     std::string(event_columns) + " WHERE id > ? ORDER BY id" + (last ? " DESC" : "") + " LIMIT ?");
    select.bind(static_cast<int64_t>(std::min<uint64_t>(behind, INT64_MAX))).bind(static_cast<int64_t>(most_events));
    while (select.row())
        if (std::optional<Event> event = event_in(select)) found.push_back(std::move(*event));
    if (last) std::ranges::reverse(found);
    return found;
}

} // namespace front
