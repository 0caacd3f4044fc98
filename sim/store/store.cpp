#include "store/store.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <set>
#include <utility>

#include "model/onu/profiles.h"
#include "model/plant/module.h"

namespace ponsim
{
namespace
{

constexpr int64_t application_id = 0x706f6e73; // "pons"
constexpr int64_t schema_version = 7;

// Small pages, because a change of a row writes whole pages.
constexpr char pragmas[] = "PRAGMA page_size = 1024;"
                           "PRAGMA journal_mode = WAL;"
                           "PRAGMA synchronous = NORMAL;"
                           "PRAGMA temp_store = MEMORY;";

constexpr char schema[] =
    "CREATE TABLE setting(seed INTEGER NOT NULL, ports INTEGER NOT NULL, arrivals INTEGER NOT NULL,"
    " silent INTEGER NOT NULL, scenario TEXT NOT NULL, olt TEXT NOT NULL) STRICT;"
    "CREATE TABLE binding(pon_port INTEGER NOT NULL, onu_id INTEGER NOT NULL CHECK(onu_id BETWEEN 0 AND 127),"
    " mac BLOB NOT NULL CHECK(length(mac) = 6), mode INTEGER NOT NULL,"
    // Texts have room in the records that they go out in.
    " text_a TEXT NOT NULL CHECK(length(CAST(text_a AS BLOB)) < 128),"
    " text_b TEXT NOT NULL CHECK(length(CAST(text_b AS BLOB)) < 64),"
    " text_c TEXT NOT NULL CHECK(length(CAST(text_c AS BLOB)) < 64),"
    " description TEXT NOT NULL CHECK(length(CAST(description AS BLOB)) < 128), exempt INTEGER NOT NULL,"
    // An SLA with a maximum of 0 is none.
    " sla_fixed INTEGER NOT NULL, sla_assured INTEGER NOT NULL, sla_maximum INTEGER NOT NULL,"
    " sla_priority INTEGER NOT NULL, sla_weight INTEGER NOT NULL, sla_down INTEGER NOT NULL, p2p INTEGER NOT NULL,"
    " PRIMARY KEY(pon_port, onu_id)) STRICT, "
    "WITHOUT ROWID;"
    "CREATE TABLE onu(pon_port INTEGER NOT NULL, mac BLOB NOT NULL CHECK(length(mac) = 6),"
    " supported INTEGER NOT NULL, reboots INTEGER NOT NULL, software TEXT NOT NULL CHECK(length(software) < 17), "
    "upgrade_type TEXT NOT NULL,"
    " bad_image INTEGER NOT NULL, powered INTEGER NOT NULL, phase INTEGER NOT NULL CHECK(phase BETWEEN 0 AND 5),"
    " phase_ends INTEGER NOT NULL, light INTEGER NOT NULL CHECK(light BETWEEN 0 AND 2), added_hours INTEGER NOT NULL,"
    // A load below 0 is none.
    " rogue INTEGER NOT NULL, load_up INTEGER NOT NULL, load_down INTEGER NOT NULL, flood INTEGER NOT NULL,"
    " PRIMARY KEY(pon_port, mac)) STRICT, WITHOUT ROWID;"
    "CREATE TABLE fibre(pon_port INTEGER NOT NULL, branch INTEGER NOT NULL, loss INTEGER NOT NULL,"
    " PRIMARY KEY(pon_port, branch)) STRICT, WITHOUT ROWID;"
    "CREATE TABLE port(pon_port INTEGER PRIMARY KEY, min_distance INTEGER NOT NULL, max_distance INTEGER NOT NULL,"
    " auth_mode INTEGER NOT NULL CHECK(auth_mode BETWEEN 0 AND 3)) STRICT;"
    "CREATE TABLE blacklist(pon_port INTEGER NOT NULL, id INTEGER NOT NULL CHECK(id BETWEEN 0 AND 127),"
    " mac BLOB NOT NULL CHECK(length(mac) = 6), text TEXT NOT NULL, PRIMARY KEY(pon_port, id)) STRICT, WITHOUT ROWID;"
    "CREATE TABLE auth(pon_port INTEGER NOT NULL, loid TEXT NOT NULL, password TEXT NOT NULL,"
    " PRIMARY KEY(pon_port, loid)) STRICT, WITHOUT ROWID;"
    "CREATE TABLE alarm(pon_port INTEGER NOT NULL, mac BLOB NOT NULL CHECK(length(mac) = 6), alarm INTEGER NOT NULL "
    "CHECK(alarm BETWEEN 1 AND 10),"
    " count INTEGER NOT NULL, PRIMARY KEY(pon_port, mac, alarm)) STRICT, WITHOUT ROWID;"
    "CREATE TABLE block(channel INTEGER NOT NULL, command INTEGER NOT NULL, pon_port INTEGER NOT NULL,"
    " idx INTEGER NOT NULL, bytes BLOB NOT NULL, PRIMARY KEY(channel, command, pon_port, idx)) STRICT, WITHOUT ROWID;"
    "CREATE TABLE module(cage INTEGER PRIMARY KEY, added_hours INTEGER NOT NULL, tx_disabled INTEGER NOT NULL,"
    " always_on INTEGER NOT NULL, own_loss_level INTEGER NOT NULL, loss_level INTEGER NOT NULL, raised INTEGER NOT "
    "NULL,"
    " user BLOB NOT NULL CHECK(length(user) = 120)) STRICT;"
    "CREATE TABLE measurement(cage INTEGER PRIMARY KEY, mac BLOB NOT NULL CHECK(length(mac) = 6),"
    " ends INTEGER NOT NULL, samples INTEGER NOT NULL, interval INTEGER NOT NULL) STRICT;"
    "CREATE TABLE measured(cage INTEGER PRIMARY KEY, mac BLOB NOT NULL CHECK(length(mac) = 6),"
    " taken INTEGER NOT NULL, samples INTEGER NOT NULL, average INTEGER NOT NULL, least INTEGER NOT NULL,"
    " greatest INTEGER NOT NULL) STRICT;"
    "CREATE TABLE upgrade_type(name TEXT PRIMARY KEY, vendor TEXT NOT NULL, model TEXT NOT NULL,"
    " version TEXT NOT NULL, size INTEGER NOT NULL, file TEXT NOT NULL) STRICT, WITHOUT ROWID;"
    "CREATE TABLE upgrade_run(pon_port INTEGER NOT NULL, mac BLOB NOT NULL CHECK(length(mac) = 6),"
    " type TEXT NOT NULL, version TEXT NOT NULL, size INTEGER NOT NULL,"
    " state INTEGER NOT NULL CHECK(state BETWEEN 0 AND 5), since INTEGER NOT NULL,"
    " reason INTEGER NOT NULL CHECK(reason BETWEEN 0 AND 5), PRIMARY KEY(pon_port, mac)) STRICT, WITHOUT ROWID;"
    "CREATE TABLE loop(pon_port INTEGER NOT NULL, mac BLOB NOT NULL CHECK(length(mac) = 6), uni INTEGER NOT NULL,"
    " looped INTEGER NOT NULL, shut INTEGER NOT NULL, detected INTEGER NOT NULL, since INTEGER NOT NULL,"
    " watched INTEGER NOT NULL, watched_from INTEGER NOT NULL, PRIMARY KEY(pon_port, mac, uni)) STRICT, WITHOUT ROWID;"
    "CREATE TABLE onu_setting(pon_port INTEGER NOT NULL, mac BLOB NOT NULL CHECK(length(mac) = 6),"
    " command INTEGER NOT NULL, uni INTEGER NOT NULL, told BLOB NOT NULL, before BLOB NOT NULL,"
    " arrives INTEGER NOT NULL, PRIMARY KEY(pon_port, mac, command, uni)) STRICT, WITHOUT ROWID;"
    "CREATE TABLE profile(kind INTEGER NOT NULL, id INTEGER NOT NULL, name TEXT NOT NULL, fields BLOB NOT NULL,"
    " PRIMARY KEY(kind, id), UNIQUE(kind, name)) STRICT, WITHOUT ROWID;"
    "CREATE TABLE loop_detection(one INTEGER PRIMARY KEY CHECK(one = 1), switched_on INTEGER NOT NULL,"
    " manual INTEGER NOT NULL, recovery_time INTEGER NOT NULL, interval INTEGER NOT NULL, detected INTEGER NOT NULL,"
    " recovered INTEGER NOT NULL) STRICT;"
    "CREATE TABLE timeline(one INTEGER PRIMARY KEY CHECK(one = 1), done INTEGER NOT NULL) STRICT;"
    "CREATE TABLE traffic(pon_port INTEGER PRIMARY KEY, until INTEGER NOT NULL, frames BLOB NOT NULL) STRICT;"
    "CREATE TABLE clock(one INTEGER PRIMARY KEY CHECK(one = 1),"
    // At most ten thousand years, which leaves room for what is to happen after.
    " now INTEGER NOT NULL CHECK(now BETWEEN 0 AND 315360000000000)) STRICT;";

uint32_t word(const Statement &statement, int column)
{
    return static_cast<uint32_t>(statement.number(column));
}

std::string bytes(const Statement &statement, int column)
{
    const std::span<const uint8_t> found = statement.bytes(column);
    return {found.begin(), found.end()};
}

Streams frames(const Statement &statement, int column)
{
    const std::span<const uint8_t> found = statement.bytes(column);
    Streams frames;
    if (found.size() != sizeof frames) throw StoreError("a count of frames in it is damaged");
    std::memcpy(&frames, found.data(), sizeof frames);
    return frames;
}

std::span<const uint8_t> bytes(const std::string &text)
{
    return {reinterpret_cast<const uint8_t *>(text.data()), text.size()};
}

std::span<const uint8_t> bytes(const std::vector<int32_t> &values)
{
    return {reinterpret_cast<const uint8_t *>(values.data()), values.size() * sizeof values[0]};
}

std::span<const uint8_t> bytes(const Streams &frames)
{
    return {reinterpret_cast<const uint8_t *>(&frames), sizeof frames};
}

Mac mac(const Statement &statement, int column)
{
    const std::span<const uint8_t> bytes = statement.bytes(column);
    Mac mac;
    if (bytes.size() != mac.size()) throw StoreError("a MAC address in it is damaged");
    std::ranges::copy(bytes, mac.begin());
    return mac;
}

// Of a row of its table.
Binding binding(const Statement &row)
{
    Binding binding{mac(row, 2), word(row, 3), row.text(4), row.text(5), row.text(6), row.text(7), row.number(8) != 0};
    const Sla sla{word(row, 9), word(row, 10), word(row, 11), word(row, 12), word(row, 13)};
    if (sla.maximum != 0) binding.sla = sla;
    if (word(row, 14) != 0) binding.sla_down = word(row, 14);
    binding.p2p = row.number(15) != 0;
    return binding;
}

// Of a row of its table.
OnuRecord onu(const Statement &row)
{
    OnuRecord record{.supported = row.number(2) != 0,
                     .reboots = word(row, 3),
                     .software = row.text(4),
                     .upgrade_type = row.text(5),
                     .bad_image = row.number(6) != 0,
                     .powered = row.number(7) != 0,
                     .phase = Phase{word(row, 8)},
                     .phase_ends = static_cast<ModelTime>(row.number(9)),
                     .light = Light{word(row, 10)},
                     .added_hours = word(row, 11),
                     .rogue = row.number(12) != 0,
                     .flood = word(row, 15)};
    if (row.number(13) >= 0) record.load_up = word(row, 13);
    if (row.number(14) >= 0) record.load_down = word(row, 14);
    return record;
}

// Of a row of its table.
Change::ProfileRow profile(const Statement &row)
{
    const ProfileKind kind{word(row, 0)};
    const uint32_t id = word(row, 1);
    const std::span<const uint8_t> found = row.bytes(3);
    const bool known = kind >= ProfileKind::line && kind <= ProfileKind::alarm && id >= 1 && id <= max_profiles;
    Profile profile{row.text(2), std::vector<int32_t>(found.size() / sizeof(int32_t))};
    if (!known || found.size() % sizeof(int32_t) != 0) throw StoreError("a profile in it is damaged");
    std::ranges::copy(found, reinterpret_cast<uint8_t *>(profile.values.data()));
    if (!is_good(kind, profile)) throw StoreError("a profile in it is damaged");
    return {kind, id, profile};
}

} // namespace

struct Store::Statements {
    explicit Statements(sqlite3 *db)
        : begin(db, "BEGIN IMMEDIATE"),
          commit(db, "COMMIT"),
          put_binding(db, "REPLACE INTO binding VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
          drop_binding(db, "DELETE FROM binding WHERE pon_port = ? AND onu_id = ?"),
          put_onu(db, "REPLACE INTO onu VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
          drop_onu(db, "DELETE FROM onu WHERE pon_port = ? AND mac = ?"),
          put_port(db, "REPLACE INTO port VALUES(?, ?, ?, ?)"),
          put_blacklist(db, "REPLACE INTO blacklist VALUES(?, ?, ?, ?)"),
          drop_blacklist(db, "DELETE FROM blacklist WHERE pon_port = ? AND id = ?"),
          put_auth(db, "REPLACE INTO auth VALUES(?, ?, ?)"),
          drop_auth(db, "DELETE FROM auth WHERE pon_port = ? AND loid = ?"),
          put_alarm(db, "REPLACE INTO alarm VALUES(?, ?, ?, ?)"),
          drop_alarm(db, "DELETE FROM alarm WHERE pon_port = ? AND mac = ? AND alarm = ?"),
          put_block(db, "REPLACE INTO block VALUES(?, ?, ?, ?, ?)"),
          drop_block(db, "DELETE FROM block WHERE channel = ? AND command = ? AND pon_port = ? AND idx = ?"),
          put_module(db, "REPLACE INTO module VALUES(?, ?, ?, ?, ?, ?, ?, ?)"),
          put_measurement(db, "REPLACE INTO measurement VALUES(?, ?, ?, ?, ?)"),
          drop_measurement(db, "DELETE FROM measurement WHERE cage = ?"),
          put_measured(db, "REPLACE INTO measured VALUES(?, ?, ?, ?, ?, ?, ?)"),
          drop_measured(db, "DELETE FROM measured WHERE cage = ?"),
          put_upgrade_type(db, "REPLACE INTO upgrade_type VALUES(?, ?, ?, ?, ?, ?)"),
          drop_upgrade_type(db, "DELETE FROM upgrade_type WHERE name = ?"),
          put_upgrade_run(db, "REPLACE INTO upgrade_run VALUES(?, ?, ?, ?, ?, ?, ?, ?)"),
          put_fibre(db, "REPLACE INTO fibre VALUES(?, ?, ?)"),
          drop_fibre(db, "DELETE FROM fibre WHERE pon_port = ? AND branch = ?"),
          put_loop(db, "REPLACE INTO loop VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?)"),
          drop_loop(db, "DELETE FROM loop WHERE pon_port = ? AND mac = ? AND uni = ?"),
          put_onu_setting(db, "REPLACE INTO onu_setting VALUES(?, ?, ?, ?, ?, ?, ?)"),
          put_profile(db, "REPLACE INTO profile VALUES(?, ?, ?, ?)"),
          drop_profile(db, "DELETE FROM profile WHERE kind = ? AND id = ?"),
          put_loop_detection(db, "REPLACE INTO loop_detection VALUES(1, ?, ?, ?, ?, ?, ?)"),
          put_timeline(db, "REPLACE INTO timeline VALUES(1, ?)"),
          put_traffic(db, "REPLACE INTO traffic VALUES(?, ?, ?)"),
          put_clock(db, "REPLACE INTO clock VALUES(1, ?)")
    {
    }

    Statement begin;
    Statement commit;
    Statement put_binding;
    Statement drop_binding;
    Statement put_onu;
    Statement drop_onu;
    Statement put_port;
    Statement put_blacklist;
    Statement drop_blacklist;
    Statement put_auth;
    Statement drop_auth;
    Statement put_alarm;
    Statement drop_alarm;
    Statement put_block;
    Statement drop_block;
    Statement put_module;
    Statement put_measurement;
    Statement drop_measurement;
    Statement put_measured;
    Statement drop_measured;
    Statement put_upgrade_type;
    Statement drop_upgrade_type;
    Statement put_upgrade_run;
    Statement put_fibre;
    Statement drop_fibre;
    Statement put_loop;
    Statement drop_loop;
    Statement put_onu_setting;
    Statement put_profile;
    Statement drop_profile;
    Statement put_loop_detection;
    Statement put_timeline;
    Statement put_traffic;
    Statement put_clock;
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
    sqlite3 *opened = nullptr;
    // One thread at a time uses the store.
    constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    const int result = sqlite3_open_v2(file.empty() ? ":memory:" : file.c_str(), &opened, flags, nullptr);
    db.reset(opened);
    try {
        if (result != SQLITE_OK) throw StoreError(opened ? sqlite3_errmsg(opened) : "no memory");
        prepare_schema(fresh);
        statements.reset(new Statements(opened));
    } catch (const StoreError &error) {
        const int code = opened ? sqlite3_errcode(opened) : SQLITE_NOMEM;
        std::string reason = error.what();
        if (code == SQLITE_BUSY || code == SQLITE_LOCKED) reason = "in use by another process";
        if (code == SQLITE_NOTADB) reason = "not a state file of ponsim; name another file";
        throw StoreError(file + ": " + reason);
    }
}

void Store::execute(const std::string &sql) const
{
    if (sqlite3_exec(db.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        throw StoreError(sqlite3_errmsg(db.get()));
}

void Store::prepare_schema(bool fresh)
{
    const auto number = [this](const char *sql) {
        Statement statement(db.get(), sql);
        return statement.row() ? statement.number(0) : 0;
    };
    // One process only: requests need neither locks nor shared memory.
    execute("PRAGMA locking_mode = EXCLUSIVE");
    const bool empty = number("SELECT count(*) FROM sqlite_schema") == 0;
    if (!empty && number("PRAGMA application_id") != application_id)
        throw StoreError("not a state file of ponsim; name another file");
    if (!empty && !fresh && number("PRAGMA user_version") != schema_version)
        throw StoreError("written by another version of ponsim; start over with --fresh, or name another file");
    execute(pragmas);
    std::string changes;
    if (fresh) {
        Statement names(db.get(), "SELECT name FROM sqlite_schema WHERE type = 'table'");
        while (names.row())
            changes += "DROP TABLE \"" + names.text(0) + "\";";
    }
    if (empty || fresh)
        changes += "PRAGMA application_id = " + std::to_string(application_id) +
                   "; PRAGMA user_version = " + std::to_string(schema_version) + ";" + schema;
    // A transaction even when there is nothing to change: it finds out now whether another process uses the file.
    execute("BEGIN IMMEDIATE;" + changes + "COMMIT;");
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
    const auto port = [ports](const Statement &statement) {
        const uint32_t number = word(statement, 0);
        if (number < 1 || number > ports) throw StoreError("a port in it is damaged");
        return number;
    };
    Statement bindings(db.get(), "SELECT * FROM binding ORDER BY pon_port, onu_id");
    std::set<Mac> bound;
    while (bindings.row()) {
        change.bindings.push_back({port(bindings), word(bindings, 1), binding(bindings)});
        if (!bound.insert(mac(bindings, 2)).second) throw StoreError("an ONU in it is bound twice");
    }
    Statement onus(db.get(), "SELECT * FROM onu ORDER BY pon_port, mac");
    while (onus.row())
        change.onus.push_back({port(onus), mac(onus, 1), onu(onus)});
    Statement fibre(db.get(), "SELECT * FROM fibre ORDER BY pon_port, branch");
    while (fibre.row())
        change.fibre.push_back({port(fibre), word(fibre, 1), static_cast<int32_t>(fibre.number(2))});
    Statement port_rows(db.get(), "SELECT * FROM port ORDER BY pon_port");
    while (port_rows.row())
        change.ports.push_back({port(port_rows), {word(port_rows, 1), word(port_rows, 2)}, word(port_rows, 3)});
    Statement blacklist(db.get(), "SELECT * FROM blacklist ORDER BY pon_port, id");
    std::set<std::pair<uint32_t, Mac>> listed;
    while (blacklist.row()) {
        change.blacklist.push_back(
            {port(blacklist), word(blacklist, 1), BlacklistEntry{mac(blacklist, 2), blacklist.text(3)}});
        if (!listed.insert({port(blacklist), mac(blacklist, 2)}).second)
            throw StoreError("an ONU in it is twice on the black list of a port");
    }
    Statement auth(db.get(), "SELECT * FROM auth ORDER BY pon_port, loid");
    while (auth.row())
        change.auth.push_back({port(auth), auth.text(1), auth.text(2)});
    Statement alarms(db.get(), "SELECT * FROM alarm ORDER BY pon_port, mac, alarm");
    while (alarms.row())
        change.alarms.push_back({port(alarms), mac(alarms, 1), word(alarms, 2), word(alarms, 3)});
    Statement blocks(db.get(), "SELECT * FROM block ORDER BY channel, command, pon_port, idx");
    while (blocks.row())
        change.blocks.push_back({word(blocks, 0), word(blocks, 1), word(blocks, 2), word(blocks, 3), bytes(blocks, 4)});
    load_modules(change, ports);
    Statement types(db.get(), "SELECT * FROM upgrade_type ORDER BY name");
    while (types.row())
        change.upgrade_types.push_back(
            {types.text(0), UpgradeType{types.text(1), types.text(2), types.text(3), word(types, 4), types.text(5)}});
    Statement runs(db.get(), "SELECT * FROM upgrade_run ORDER BY pon_port, mac");
    while (runs.row())
        change.upgrade_runs.push_back(
            {port(runs), mac(runs, 1),
             UpgradeRun{runs.text(2), runs.text(3), word(runs, 4), UpgradeRun::State{word(runs, 5)},
                        static_cast<ModelTime>(runs.number(6)), UpgradeRun::Reason{word(runs, 7)}}});
    Statement loops(db.get(), "SELECT * FROM loop ORDER BY pon_port, mac, uni");
    while (loops.row()) {
        LoopRecord record{loops.number(3) != 0, loops.number(4) != 0, word(loops, 5),
                          static_cast<ModelTime>(loops.number(6))};
        if (loops.number(7)) record.watched_from = static_cast<ModelTime>(loops.number(8));
        change.loops.push_back({{port(loops), mac(loops, 1), word(loops, 2)}, record});
    }
    Statement settings(db.get(), "SELECT * FROM onu_setting ORDER BY pon_port, mac, command, uni");
    while (settings.row())
        change.onu_settings.push_back(
            {{port(settings), mac(settings, 1), word(settings, 2), word(settings, 3)},
             {bytes(settings, 4), bytes(settings, 5), static_cast<ModelTime>(settings.number(6))}});
    Statement profiles(db.get(), "SELECT * FROM profile ORDER BY kind, id");
    while (profiles.row())
        change.profiles.push_back(profile(profiles));
    Statement detection(db.get(), "SELECT * FROM loop_detection");
    if (detection.row())
        change.loop_detection = {detection.number(1) != 0, detection.number(2) != 0, word(detection, 3),
                                 word(detection, 4),       word(detection, 5),       word(detection, 6)};
    Statement timeline(db.get(), "SELECT done FROM timeline");
    if (timeline.row()) change.events_done = word(timeline, 0);
    Statement traffic(db.get(), "SELECT * FROM traffic ORDER BY pon_port");
    while (traffic.row())
        change.traffic.push_back({port(traffic), {static_cast<ModelTime>(traffic.number(1)), frames(traffic, 2)}});
    Statement clock(db.get(), "SELECT now FROM clock");
    if (clock.row()) change.now = static_cast<ModelTime>(clock.number(0));
    return change;
}

void Store::load_modules(Change &change, uint32_t ports) const
{
    Statement modules(db.get(), "SELECT module.*, measurement.*, measured.* FROM module"
                                " LEFT JOIN measurement USING(cage) LEFT JOIN measured USING(cage) ORDER BY cage");
    while (modules.row()) {
        const uint32_t cage = word(modules, 0);
        const std::span<const uint8_t> user = modules.bytes(7);
        ModuleRecord record{.added_hours = word(modules, 1),
                            .tx_disabled = modules.number(2) != 0,
                            .always_on = modules.number(3) != 0,
                            .raised = word(modules, 6)};
        if (cage < 1 || cage > ports + ge_uplinks || user.size() != record.user.size())
            throw StoreError("an optical module in it is damaged");
        if (modules.number(4)) record.loss_level = static_cast<int32_t>(modules.number(5));
        std::ranges::copy(user, record.user.begin());
        if (modules.number(8))
            record.measurement = {mac(modules, 9), static_cast<ModelTime>(modules.number(10)), word(modules, 11),
                                  word(modules, 12)};
        if (modules.number(13))
            record.result = {mac(modules, 14),  static_cast<ModelTime>(modules.number(15)),
                             word(modules, 16), word(modules, 17),
                             word(modules, 18), word(modules, 19)};
        change.modules.push_back({cage, record});
    }
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

int64_t Store::version()
{
    return schema_version;
}

// But the settings.
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
    // Keys are the first columns of their tables.
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

void Store::write_rows(const Change &change)
{
    for (const auto &[pon_port, onu_id, binding] : change.bindings) {
        Statement &statement = binding ? statements->put_binding : statements->drop_binding;
        statement.bind(pon_port).bind(onu_id);
        if (binding) {
            const Sla sla = binding->sla.value_or(Sla{});
            statement.bind(binding->mac)
                .bind(binding->mode)
                .bind(binding->text_a)
                .bind(binding->text_b)
                .bind(binding->text_c)
                .bind(binding->description)
                .bind(binding->exempt)
                .bind(sla.fixed)
                .bind(sla.assured)
                .bind(sla.maximum)
                .bind(sla.priority)
                .bind(sla.weight)
                .bind(binding->sla_down.value_or(0))
                .bind(binding->p2p);
        }
        statement.run();
    }
    for (const auto &[pon_port, mac, record] : change.onus) {
        Statement &statement = record == OnuRecord{} ? statements->drop_onu : statements->put_onu;
        statement.bind(pon_port).bind(mac);
        if (record != OnuRecord{})
            statement.bind(record.supported)
                .bind(record.reboots)
                .bind(record.software)
                .bind(record.upgrade_type)
                .bind(record.bad_image)
                .bind(record.powered)
                .bind(static_cast<uint32_t>(record.phase))
                .bind(static_cast<int64_t>(record.phase_ends))
                .bind(static_cast<uint32_t>(record.light))
                .bind(record.added_hours)
                .bind(record.rogue)
                .bind(record.load_up ? int64_t{*record.load_up} : -1)
                .bind(record.load_down ? int64_t{*record.load_down} : -1)
                .bind(record.flood);
        statement.run();
    }
    for (const auto &[pon_port, branch, loss] : change.fibre) {
        Statement &statement = loss ? statements->put_fibre : statements->drop_fibre;
        statement.bind(pon_port).bind(branch);
        if (loss) statement.bind(int64_t{loss});
        statement.run();
    }
    for (const auto &[pon_port, limits, auth_mode] : change.ports)
        statements->put_port.bind(pon_port).bind(limits.min).bind(limits.max).bind(auth_mode).run();
    for (const auto &[pon_port, id, entry] : change.blacklist) {
        Statement &statement = entry ? statements->put_blacklist : statements->drop_blacklist;
        statement.bind(pon_port).bind(id);
        if (entry) statement.bind(entry->mac).bind(entry->text);
        statement.run();
    }
    for (const auto &[pon_port, loid, password] : change.auth) {
        Statement &statement = password ? statements->put_auth : statements->drop_auth;
        statement.bind(pon_port).bind(loid);
        if (password) statement.bind(*password);
        statement.run();
    }
    for (const auto &[pon_port, mac, alarm, count] : change.alarms) {
        Statement &statement = count ? statements->put_alarm : statements->drop_alarm;
        statement.bind(pon_port).bind(mac).bind(alarm);
        if (count) statement.bind(count);
        statement.run();
    }
    for (const auto &[channel, command, pon_port, index, bytes] : change.blocks) {
        Statement &statement = bytes ? statements->put_block : statements->drop_block;
        statement.bind(channel).bind(command).bind(pon_port).bind(index);
        if (bytes) statement.bind(ponsim::bytes(*bytes));
        statement.run();
    }
    for (const auto &[cage, record] : change.modules) {
        statements->put_module.bind(cage)
            .bind(record.added_hours)
            .bind(record.tx_disabled)
            .bind(record.always_on)
            .bind(record.loss_level.has_value())
            .bind(record.loss_level.value_or(0))
            .bind(record.raised)
            .bind(record.user)
            .run();
        Statement &measurement = record.measurement ? statements->put_measurement : statements->drop_measurement;
        measurement.bind(cage);
        if (const auto &under_way = record.measurement)
            measurement.bind(under_way->mac)
                .bind(static_cast<int64_t>(under_way->end))
                .bind(under_way->samples)
                .bind(under_way->interval);
        measurement.run();
        Statement &measured = record.result ? statements->put_measured : statements->drop_measured;
        measured.bind(cage);
        if (const auto &result = record.result)
            measured.bind(result->mac)
                .bind(static_cast<int64_t>(result->at))
                .bind(result->samples)
                .bind(result->average)
                .bind(result->least)
                .bind(result->greatest);
        measured.run();
    }
    for (const auto &[name, type] : change.upgrade_types) {
        Statement &statement = type ? statements->put_upgrade_type : statements->drop_upgrade_type;
        statement.bind(name);
        if (type) statement.bind(type->vendor).bind(type->model).bind(type->version).bind(type->size).bind(type->file);
        statement.run();
    }
    for (const auto &[pon_port, mac, run] : change.upgrade_runs)
        statements->put_upgrade_run.bind(pon_port)
            .bind(mac)
            .bind(run.type)
            .bind(run.version)
            .bind(run.size)
            .bind(static_cast<uint32_t>(run.state))
            .bind(static_cast<int64_t>(run.since))
            .bind(static_cast<uint32_t>(run.reason))
            .run();
    for (const auto &[place, record] : change.loops) {
        Statement &statement = record ? statements->put_loop : statements->drop_loop;
        statement.bind(place.pon_port).bind(place.mac).bind(place.uni);
        if (record)
            statement.bind(record->looped)
                .bind(record->shut)
                .bind(record->detected)
                .bind(static_cast<int64_t>(record->since))
                .bind(record->watched_from.has_value())
                .bind(static_cast<int64_t>(record->watched_from.value_or(0)));
        statement.run();
    }
    for (const auto &[place, setting] : change.onu_settings)
        statements->put_onu_setting.bind(place.pon_port)
            .bind(place.mac)
            .bind(place.command)
            .bind(place.uni)
            .bind(bytes(setting.told))
            .bind(bytes(setting.before))
            .bind(static_cast<int64_t>(setting.arrives))
            .run();
    for (const auto &[kind, id, profile] : change.profiles) {
        Statement &statement = profile ? statements->put_profile : statements->drop_profile;
        statement.bind(static_cast<uint32_t>(kind)).bind(id);
        if (profile) statement.bind(profile->name).bind(bytes(profile->values));
        statement.run();
    }
    if (const auto &detection = change.loop_detection)
        statements->put_loop_detection.bind(detection->on)
            .bind(detection->manual)
            .bind(detection->recovery_time)
            .bind(detection->interval)
            .bind(detection->detected)
            .bind(detection->recovered)
            .run();
    if (change.events_done) statements->put_timeline.bind(*change.events_done).run();
    for (const auto &[pon_port, offered] : change.traffic)
        statements->put_traffic.bind(pon_port)
            .bind(static_cast<int64_t>(offered.until))
            .bind(bytes(offered.frames))
            .run();
    if (change.now) statements->put_clock.bind(static_cast<int64_t>(*change.now)).run();
}

} // namespace ponsim
