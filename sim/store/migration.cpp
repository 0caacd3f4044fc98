#include "store/migration.h"

#include <sqlite3.h>

#include <string>

#include "store/stored.h"

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
    // with its first port. A PON port knows how many frames are not heard. Light has two directions: an ONU whose
    // light was lost was off the fibre at once, and now it waits for light there. How weak the degraded light was, and
    // what ONUs receive, is decided at once when the OLT goes on.
    {9, "UPDATE ledger SET frames = CAST(frames || zeroblob(80) AS BLOB),"
        " at_period = CAST(at_period || zeroblob(80) AS BLOB),"
        " at_last_period = CAST(at_last_period || zeroblob(80) AS BLOB);"
        "UPDATE traffic SET frames = CAST(frames || zeroblob(128) AS BLOB);"
        "ALTER TABLE alarm RENAME TO alarm_before;"
        "CREATE TABLE alarm(pon_port INTEGER NOT NULL, mac BLOB NOT NULL CHECK(length(mac) = 6),"
        " alarm INTEGER NOT NULL CHECK(alarm BETWEEN 1 AND 15), count INTEGER NOT NULL,"
        " PRIMARY KEY(pon_port, mac, alarm)) STRICT, WITHOUT ROWID;"
        "INSERT INTO alarm SELECT * FROM alarm_before;"
        "DROP TABLE alarm_before;"
        "ALTER TABLE module RENAME TO module_before;"
        "CREATE TABLE module(cage INTEGER PRIMARY KEY, added_hours INTEGER NOT NULL, tx_disabled INTEGER NOT NULL,"
        " always_on INTEGER NOT NULL, own_loss_level INTEGER NOT NULL, loss_level INTEGER NOT NULL,"
        " raised INTEGER NOT NULL, user BLOB NOT NULL CHECK(length(user) = 120),"
        " dimmed INTEGER NOT NULL CHECK(dimmed BETWEEN 0 AND 6000)) STRICT;"
        "INSERT INTO module SELECT *, 0 FROM module_before;"
        "DROP TABLE module_before;"
        "ALTER TABLE onu RENAME TO onu_before;"
        "CREATE TABLE onu(pon_port INTEGER NOT NULL, mac BLOB NOT NULL CHECK(length(mac) = 6),"
        " supported INTEGER NOT NULL, reboots INTEGER NOT NULL, software TEXT NOT NULL CHECK(length(software) < 17),"
        " upgrade_type TEXT NOT NULL, bad_image INTEGER NOT NULL, powered INTEGER NOT NULL,"
        " phase INTEGER NOT NULL CHECK(phase BETWEEN 0 AND 5), phase_ends INTEGER NOT NULL,"
        " light INTEGER NOT NULL CHECK(light BETWEEN 0 AND 4),"
        " light_steps INTEGER NOT NULL CHECK(light_steps BETWEEN 0 AND 40), light_since INTEGER NOT NULL,"
        " down_light INTEGER NOT NULL CHECK(down_light BETWEEN 0 AND 4),"
        " down_steps INTEGER NOT NULL CHECK(down_steps BETWEEN 0 AND 40), down_since INTEGER NOT NULL,"
        " added_hours INTEGER NOT NULL, rogue INTEGER NOT NULL, load_up INTEGER NOT NULL, load_down INTEGER NOT NULL,"
        " flood INTEGER NOT NULL, PRIMARY KEY(pon_port, mac)) STRICT, WITHOUT ROWID;"
        "INSERT INTO onu SELECT pon_port, mac, supported, reboots, software, upgrade_type, bad_image, powered,"
        " iif(light = 2 AND powered AND phase = 0, 2, phase), phase_ends, light, iif(light = 1, 1, 0),"
        " iif(light = 0, 0, (SELECT now FROM clock)), 0, 0, 0, added_hours, rogue, load_up, load_down, flood"
        " FROM onu_before;"
        "DROP TABLE onu_before"},
    // Alarms have a state, times, a cause and a history. Those of before are active, and when and why they were raised
    // is not known. Where the cause has ended, the alarm is cleared as soon as the OLT goes on.
    // Nothing had been plugged in or taken away before.
    {10, "ALTER TABLE alarm RENAME TO alarm_before;"
         "CREATE TABLE alarm(pon_port INTEGER NOT NULL, mac BLOB NOT NULL CHECK(length(mac) = 6),"
         " alarm INTEGER NOT NULL CHECK(alarm BETWEEN 1 AND 22), unit INTEGER NOT NULL, count INTEGER NOT NULL,"
         " raised INTEGER NOT NULL, cleared INTEGER NOT NULL, cause INTEGER NOT NULL CHECK(cause BETWEEN 0 AND 19),"
         " branch INTEGER NOT NULL, other BLOB NOT NULL CHECK(length(other) = 6), other_port INTEGER NOT NULL,"
         " PRIMARY KEY(pon_port, mac, alarm, unit)) STRICT, WITHOUT ROWID;"
         "INSERT INTO alarm SELECT pon_port, mac, alarm, 0, count, -1, -1, 0, -1, zeroblob(6), 0 FROM alarm_before;"
         "DROP TABLE alarm_before;"
         "CREATE TABLE alarm_event(number INTEGER PRIMARY KEY, at INTEGER NOT NULL, pon_port INTEGER NOT NULL,"
         " mac BLOB NOT NULL CHECK(length(mac) = 6), alarm INTEGER NOT NULL CHECK(alarm BETWEEN 1 AND 22),"
         " unit INTEGER NOT NULL, onu_id INTEGER NOT NULL, active INTEGER NOT NULL,"
         " cause INTEGER NOT NULL CHECK(cause BETWEEN 0 AND 19), branch INTEGER NOT NULL,"
         " other BLOB NOT NULL CHECK(length(other) = 6), other_port INTEGER NOT NULL) STRICT;"
         "CREATE TABLE plugged_onu(pon_port INTEGER NOT NULL, mac BLOB NOT NULL CHECK(length(mac) = 6),"
         " state INTEGER NOT NULL CHECK(state BETWEEN 0 AND 2), branch INTEGER NOT NULL,"
         " fibre INTEGER NOT NULL CHECK(fibre BETWEEN 0 AND 4095),"
         " length INTEGER NOT NULL CHECK(length BETWEEN 0 AND 20000), name TEXT NOT NULL, loid TEXT NOT NULL,"
         " password TEXT NOT NULL, kind TEXT NOT NULL, silent INTEGER NOT NULL, in_use INTEGER NOT NULL,"
         " load_up INTEGER NOT NULL, load_down INTEGER NOT NULL, PRIMARY KEY(pon_port, mac)) STRICT, WITHOUT ROWID;"
         "CREATE TABLE plugged_device(pon_port INTEGER NOT NULL, mac BLOB NOT NULL CHECK(length(mac) = 6),"
         " uni INTEGER NOT NULL, speed INTEGER NOT NULL, full_duplex INTEGER NOT NULL,"
         " PRIMARY KEY(pon_port, mac, uni)) STRICT, WITHOUT ROWID"},
    // What values there can be is said by the families alone, and no longer by the tables.
    {11, "ALTER TABLE alarm RENAME TO alarm_before;"
         "CREATE TABLE alarm(pon_port INTEGER NOT NULL, mac BLOB NOT NULL, alarm INTEGER NOT NULL, unit"
         " INTEGER NOT NULL, count INTEGER NOT NULL, raised INTEGER NOT NULL, cleared INTEGER NOT NULL, cause"
         " INTEGER NOT NULL, branch INTEGER NOT NULL, other BLOB NOT NULL, other_port INTEGER NOT NULL, PRIMARY"
         " KEY(pon_port, mac, alarm, unit)) STRICT, WITHOUT ROWID;"
         "INSERT INTO alarm SELECT * FROM alarm_before;"
         "DROP TABLE alarm_before;"
         "ALTER TABLE alarm_event RENAME TO alarm_event_before;"
         "CREATE TABLE alarm_event(number INTEGER PRIMARY KEY, at INTEGER NOT NULL, pon_port INTEGER NOT NULL,"
         " mac BLOB NOT NULL, alarm INTEGER NOT NULL, unit INTEGER NOT NULL, onu_id INTEGER NOT NULL, active"
         " INTEGER NOT NULL, cause INTEGER NOT NULL, branch INTEGER NOT NULL, other BLOB NOT NULL, other_port"
         " INTEGER NOT NULL) STRICT;"
         "INSERT INTO alarm_event SELECT * FROM alarm_event_before;"
         "DROP TABLE alarm_event_before;"
         "ALTER TABLE binding RENAME TO binding_before;"
         "CREATE TABLE binding(pon_port INTEGER NOT NULL, onu_id INTEGER NOT NULL, mac BLOB NOT NULL, mode"
         " INTEGER NOT NULL, text_a TEXT NOT NULL, text_b TEXT NOT NULL, text_c TEXT NOT NULL, description TEXT"
         " NOT NULL, exempt INTEGER NOT NULL, sla_fixed INTEGER NOT NULL, sla_assured INTEGER NOT NULL,"
         " sla_maximum INTEGER NOT NULL, sla_priority INTEGER NOT NULL, sla_weight INTEGER NOT NULL, sla_down"
         " INTEGER NOT NULL, p2p INTEGER NOT NULL, PRIMARY KEY(pon_port, onu_id)) STRICT, WITHOUT ROWID;"
         "INSERT INTO binding SELECT * FROM binding_before;"
         "DROP TABLE binding_before;"
         "ALTER TABLE blacklist RENAME TO blacklist_before;"
         "CREATE TABLE blacklist(pon_port INTEGER NOT NULL, id INTEGER NOT NULL, mac BLOB NOT NULL, text TEXT"
         " NOT NULL, PRIMARY KEY(pon_port, id)) STRICT, WITHOUT ROWID;"
         "INSERT INTO blacklist SELECT * FROM blacklist_before;"
         "DROP TABLE blacklist_before;"
         "ALTER TABLE clock RENAME TO clock_before;"
         "CREATE TABLE clock(one INTEGER PRIMARY KEY, now INTEGER NOT NULL) STRICT;"
         "INSERT INTO clock SELECT * FROM clock_before;"
         "DROP TABLE clock_before;"
         "ALTER TABLE ledger RENAME TO ledger_before;"
         "CREATE TABLE ledger(pon_port INTEGER NOT NULL, mac BLOB NOT NULL, since INTEGER NOT NULL, until"
         " INTEGER NOT NULL, frames BLOB NOT NULL, at_period BLOB NOT NULL, at_last_period BLOB NOT NULL,"
         " PRIMARY KEY(pon_port, mac)) STRICT, WITHOUT ROWID;"
         "INSERT INTO ledger SELECT * FROM ledger_before;"
         "DROP TABLE ledger_before;"
         "ALTER TABLE loop RENAME TO loop_before;"
         "CREATE TABLE loop(pon_port INTEGER NOT NULL, mac BLOB NOT NULL, uni INTEGER NOT NULL, looped INTEGER"
         " NOT NULL, shut INTEGER NOT NULL, detected INTEGER NOT NULL, since INTEGER NOT NULL, watched INTEGER"
         " NOT NULL, watched_from INTEGER NOT NULL, PRIMARY KEY(pon_port, mac, uni)) STRICT, WITHOUT ROWID;"
         "INSERT INTO loop SELECT * FROM loop_before;"
         "DROP TABLE loop_before;"
         "ALTER TABLE loop_detection RENAME TO loop_detection_before;"
         "CREATE TABLE loop_detection(one INTEGER PRIMARY KEY, switched_on INTEGER NOT NULL, manual INTEGER"
         " NOT NULL, recovery_time INTEGER NOT NULL, interval INTEGER NOT NULL, detected INTEGER NOT NULL,"
         " recovered INTEGER NOT NULL) STRICT;"
         "INSERT INTO loop_detection SELECT * FROM loop_detection_before;"
         "DROP TABLE loop_detection_before;"
         "ALTER TABLE measured RENAME TO measured_before;"
         "CREATE TABLE measured(cage INTEGER PRIMARY KEY, mac BLOB NOT NULL, taken INTEGER NOT NULL, samples"
         " INTEGER NOT NULL, average INTEGER NOT NULL, least INTEGER NOT NULL, greatest INTEGER NOT NULL)"
         " STRICT;"
         "INSERT INTO measured SELECT * FROM measured_before;"
         "DROP TABLE measured_before;"
         "ALTER TABLE measurement RENAME TO measurement_before;"
         "CREATE TABLE measurement(cage INTEGER PRIMARY KEY, mac BLOB NOT NULL, ends INTEGER NOT NULL, samples"
         " INTEGER NOT NULL, interval INTEGER NOT NULL) STRICT;"
         "INSERT INTO measurement SELECT * FROM measurement_before;"
         "DROP TABLE measurement_before;"
         "ALTER TABLE module RENAME TO module_before;"
         "CREATE TABLE module(cage INTEGER PRIMARY KEY, added_hours INTEGER NOT NULL, tx_disabled INTEGER NOT"
         " NULL, always_on INTEGER NOT NULL, own_loss_level INTEGER NOT NULL, loss_level INTEGER NOT NULL,"
         " raised INTEGER NOT NULL, user BLOB NOT NULL, dimmed INTEGER NOT NULL) STRICT;"
         "INSERT INTO module SELECT * FROM module_before;"
         "DROP TABLE module_before;"
         "ALTER TABLE onu RENAME TO onu_before;"
         "CREATE TABLE onu(pon_port INTEGER NOT NULL, mac BLOB NOT NULL, supported INTEGER NOT NULL, reboots"
         " INTEGER NOT NULL, software TEXT NOT NULL, upgrade_type TEXT NOT NULL, bad_image INTEGER NOT NULL,"
         " powered INTEGER NOT NULL, phase INTEGER NOT NULL, phase_ends INTEGER NOT NULL, light INTEGER NOT"
         " NULL, light_steps INTEGER NOT NULL, light_since INTEGER NOT NULL, down_light INTEGER NOT NULL,"
         " down_steps INTEGER NOT NULL, down_since INTEGER NOT NULL, added_hours INTEGER NOT NULL, rogue"
         " INTEGER NOT NULL, load_up INTEGER NOT NULL, load_down INTEGER NOT NULL, flood INTEGER NOT NULL,"
         " PRIMARY KEY(pon_port, mac)) STRICT, WITHOUT ROWID;"
         "INSERT INTO onu SELECT * FROM onu_before;"
         "DROP TABLE onu_before;"
         "ALTER TABLE onu_setting RENAME TO onu_setting_before;"
         "CREATE TABLE onu_setting(pon_port INTEGER NOT NULL, mac BLOB NOT NULL, command INTEGER NOT NULL, uni"
         " INTEGER NOT NULL, told BLOB NOT NULL, before BLOB NOT NULL, arrives INTEGER NOT NULL, PRIMARY"
         " KEY(pon_port, mac, command, uni)) STRICT, WITHOUT ROWID;"
         "INSERT INTO onu_setting SELECT * FROM onu_setting_before;"
         "DROP TABLE onu_setting_before;"
         "ALTER TABLE plugged_device RENAME TO plugged_device_before;"
         "CREATE TABLE plugged_device(pon_port INTEGER NOT NULL, mac BLOB NOT NULL, uni INTEGER NOT NULL,"
         " speed INTEGER NOT NULL, full_duplex INTEGER NOT NULL, PRIMARY KEY(pon_port, mac, uni)) STRICT,"
         " WITHOUT ROWID;"
         "INSERT INTO plugged_device SELECT * FROM plugged_device_before;"
         "DROP TABLE plugged_device_before;"
         "ALTER TABLE plugged_onu RENAME TO plugged_onu_before;"
         "CREATE TABLE plugged_onu(pon_port INTEGER NOT NULL, mac BLOB NOT NULL, state INTEGER NOT NULL,"
         " branch INTEGER NOT NULL, fibre INTEGER NOT NULL, length INTEGER NOT NULL, name TEXT NOT NULL, loid"
         " TEXT NOT NULL, password TEXT NOT NULL, kind TEXT NOT NULL, silent INTEGER NOT NULL, in_use INTEGER"
         " NOT NULL, load_up INTEGER NOT NULL, load_down INTEGER NOT NULL, PRIMARY KEY(pon_port, mac)) STRICT,"
         " WITHOUT ROWID;"
         "INSERT INTO plugged_onu SELECT * FROM plugged_onu_before;"
         "DROP TABLE plugged_onu_before;"
         "ALTER TABLE port RENAME TO port_before;"
         "CREATE TABLE port(pon_port INTEGER PRIMARY KEY, min_distance INTEGER NOT NULL, max_distance INTEGER"
         " NOT NULL, auth_mode INTEGER NOT NULL) STRICT;"
         "INSERT INTO port SELECT * FROM port_before;"
         "DROP TABLE port_before;"
         "ALTER TABLE timeline RENAME TO timeline_before;"
         "CREATE TABLE timeline(one INTEGER PRIMARY KEY, done INTEGER NOT NULL) STRICT;"
         "INSERT INTO timeline SELECT * FROM timeline_before;"
         "DROP TABLE timeline_before;"
         "ALTER TABLE upgrade_run RENAME TO upgrade_run_before;"
         "CREATE TABLE upgrade_run(pon_port INTEGER NOT NULL, mac BLOB NOT NULL, type TEXT NOT NULL, version"
         " TEXT NOT NULL, size INTEGER NOT NULL, state INTEGER NOT NULL, since INTEGER NOT NULL, reason INTEGER"
         " NOT NULL, PRIMARY KEY(pon_port, mac)) STRICT, WITHOUT ROWID;"
         "INSERT INTO upgrade_run SELECT * FROM upgrade_run_before;"
         "DROP TABLE upgrade_run_before"},
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
