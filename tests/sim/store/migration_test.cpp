// These tests turn state files of earlier versions into files of this version.
#include "store/migration.h"

#include <csignal>

#include <sys/wait.h>
#include <unistd.h>

#include "database.h"
#include "store/stored.h"
#include "support.h"

namespace ponsim
{
namespace
{

// Versions after 7 might do this: a table gets a column, and another table is added.
constexpr Migration later[] = {
    {8, "ALTER TABLE fibre RENAME TO before;"
        "CREATE TABLE fibre(pon_port INTEGER NOT NULL, branch INTEGER NOT NULL, loss INTEGER NOT NULL,"
        " since INTEGER NOT NULL, PRIMARY KEY(pon_port, branch)) STRICT, WITHOUT ROWID;"
        "INSERT INTO fibre SELECT *, 0 FROM before;"
        "DROP TABLE before"},
    {9, "CREATE TABLE note(pon_port INTEGER PRIMARY KEY, text TEXT NOT NULL) STRICT;"
        "INSERT INTO note SELECT pon_port, 'as it was' FROM port"},
};
constexpr Migration broken[] = {later[0], {9, "CREATE TABLE note(x); INSERT INTO nowhere VALUES(1)"}};

// This is the golden state of version 7 as a file.
struct State {
    Folder folder;
    std::string file = folder.file("olt.db");

    State() { restore(GOLDEN "/state-7.sql", file); }

    void migrate(int64_t version, std::span<const Migration> migrations) const
    {
        const Database database(file);
        ponsim::migrate(database.handle(), version, migrations);
    }
    std::string dump() const { return Database(file).dump(); }
    std::string version() const { return Database(file).column("PRAGMA user_version").at(0); }
};

std::string refusal(const State &state, std::span<const Migration> migrations)
{
    try {
        state.migrate(7, migrations);
    } catch (const StoreError &error) {
        return error.what();
    }
    return "not refused";
}

TEST(Migration, ChangesWhatItSaysAndLeavesTheRest)
{
    const State state, as_it_was;
    state.migrate(7, later);
    EXPECT_EQ(state.version(), "9");
    Database now(state.file), before(as_it_was.file);
    EXPECT_EQ(now.column("SELECT pon_port || ' ' || branch || ' ' || loss || ' ' || since FROM fibre"),
              std::vector<std::string>{"1 2 75 0"});
    EXPECT_EQ(now.column("SELECT text FROM note WHERE pon_port = 2"), std::vector<std::string>{"as it was"});
    for (const std::string &table : before.tables()) {
        if (table == "fibre") continue;
        EXPECT_EQ(now.rows(table), before.rows(table)) << table;
    }
}

TEST(Migration, OneStepAfterTheOtherGivesTheSameAsBothAtOnce)
{
    const State one_by_one, at_once;
    one_by_one.migrate(7, std::span(later).first(1));
    EXPECT_EQ(one_by_one.version(), "8");
    one_by_one.migrate(8, later);
    at_once.migrate(7, later);
    EXPECT_EQ(one_by_one.dump(), at_once.dump());
}

TEST(Migration, AFileOfTheLastVersionStaysAsItIs)
{
    const State state;
    state.migrate(7, later);
    const std::string before = state.dump();
    state.migrate(9, later);
    EXPECT_EQ(state.dump(), before);
}

TEST(Migration, AStepThatFailsLeavesTheFileAtTheVersionBefore)
{
    const State state, first_step;
    first_step.migrate(7, std::span(later).first(1));
    EXPECT_EQ(refusal(state, broken), "it could not be carried over to version 9: no such table: nowhere");
    EXPECT_EQ(state.dump(), first_step.dump());
    state.migrate(8, later);
    EXPECT_EQ(state.version(), "9");
}

TEST(Migration, AKillLeavesTheFileAtTheVersionBefore)
{
    const State state, as_it_was;
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const Database database(state.file);
        // At this time all of the first step has been done, and nothing of it is committed.
        sqlite3_commit_hook(
            database.handle(), [](void *) { return kill(getpid(), SIGKILL); }, nullptr);
        ponsim::migrate(database.handle(), 7, later);
        _exit(0);
    }
    int status;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(state.dump(), as_it_was.dump());
    state.migrate(7, later);
    EXPECT_EQ(state.version(), "9");
}

TEST(Migration, OnusOfVersion7ThatMonitorCountFromTheTimeOfTheFileOn)
{
    const State state;
    {
        Database before(state.file);
        before.run("INSERT INTO onu_setting VALUES(1, X'0245CE380100', 717, 0, X'7800000000000000', zeroblob(8), 120),"
                   "(1, X'0245CE2E0101', 717, 0, X'C81A370000000000', zeroblob(8), 3611080),"
                   "(1, X'0245CE5E0102', 717, 0, zeroblob(8), X'7800000000000000', 500)");
    }
    state.migrate(7, migrations());
    Database now(state.file);
    EXPECT_EQ(now.column("SELECT hex(mac) || ' ' || since || ' ' || until FROM ledger"),
              (std::vector<std::string>{"0245CE2E0101 3611080 3611080", "0245CE380100 3611000 3611000"}));
    EXPECT_EQ(now.column("SELECT count(*) FROM ledger WHERE frames <> zeroblob(272)"), std::vector<std::string>{"0"});
}

TEST(Migration, OnusOfVersion8WhoseLightWasLostWaitForIt)
{
    const State state;
    {
        Database before(state.file);
        before.run("UPDATE onu SET light = 2 WHERE mac IN (X'0245CECB0103', X'0245CEE50105', X'0245CE0D0104');"
                   "UPDATE onu SET light = 1 WHERE mac = X'0245CE5E0102'");
    }
    state.migrate(7, migrations());
    Database now(state.file);
    EXPECT_EQ(
        now.column("SELECT hex(mac) || ' ' || light || ' ' || light_steps || ' ' || light_since || ' ' || phase ||"
                   " ' ' || phase_ends FROM onu WHERE light <> 0"),
        (std::vector<std::string>{"0245CE0D0104 2 0 3611000 1 3640000", "0245CE5E0102 1 1 3611000 0 0",
                                  "0245CECB0103 2 0 3611000 2 0", "0245CEE50105 2 0 3611000 0 0"}))
        << "one boots, one has no power";
    EXPECT_EQ(now.column("SELECT count(*) FROM onu WHERE down_light <> 0"), std::vector<std::string>{"0"});
}

TEST(Migration, AlarmsOfVersion9AreActiveSinceAnUnknownTime)
{
    const State state, as_it_was;
    state.migrate(7, migrations());
    Database now(state.file), before(as_it_was.file);
    const std::string counted = "SELECT pon_port || ' ' || hex(mac) || ' ' || alarm || ' ' || count";
    const std::vector<std::string> alarms = before.column(counted + " FROM alarm");
    EXPECT_FALSE(alarms.empty());
    EXPECT_EQ(now.column(counted + " FROM alarm WHERE raised = -1 AND cleared = -1 AND cause = 0 AND unit = 0"),
              alarms);
    EXPECT_EQ(now.column("SELECT count(*) FROM alarm_event"), std::vector<std::string>{"0"});
}

TEST(Migration, EachVersionSinceTheFirstHasOne)
{
    int64_t version = first_version;
    for (const Migration &migration : migrations())
        EXPECT_EQ(migration.version, ++version);
    EXPECT_EQ(current_version(), version);
}

} // namespace
} // namespace ponsim
