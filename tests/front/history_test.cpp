// These tests check what is there again after a restart.
#include <filesystem>
#include <fstream>

#include <sqlite3.h>
#include <sys/stat.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "history/history.h"

namespace
{

using namespace front;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class Histories : public testing::Test
{
protected:
    Histories()
    {
        char path[] = "/tmp/ponfront_test_XXXXXX";
        folder = mkdtemp(path);
        file = folder + "/history.db";
    }
    ~Histories() override { std::filesystem::remove_all(folder); }

    static Event event(uint32_t port)
    {
        return {.at = 1'700'000'000'000,
                .olt = "north",
                .kind = EventKind::light_low,
                .port = port,
                .count = 2,
                .onu_id = 5,
                .mac = "02:00:00:00:00:05",
                .onus = "5-6",
                .detail = "olt",
                .cause = "fibre",
                .place = "drop-1",
                .measure = -27.5};
    }
    static void keep(History &history, std::vector<Event> events)
    {
        Watcher::Found found{.events = std::move(events), .changes = {}};
        history.keep("north", {}, found);
    }
    std::string error() const
    {
        try {
            History(file, {10});
        } catch (const storage::Error &error) {
            return error.what();
        }
        return "no error";
    }

    std::string folder, file;
};

TEST_F(Histories, HaveTheirEventsAgain)
{
    Event kept = event(3);
    {
        History history(file, {10});
        Watcher::Found found{.events = {kept}, .changes = {}};
        history.keep("north", {}, found);
        EXPECT_EQ(found.events[0].id, 1u);
    }
    kept.id = 1;
    EXPECT_THAT(History(file, {10}).events(0, 100), ElementsAre(kept));
}

TEST_F(Histories, GiveTheEventsBehindOneOrTheLast)
{
    History history({}, {100});
    keep(history, {event(1), event(2), event(3), event(4)});
    const auto ports = [](const std::vector<Event> &events) {
        std::vector<uint32_t> found;
        for (const Event &each : events)
            found.push_back(each.port);
        return found;
    };
    EXPECT_THAT(ports(history.events(1, 2)), ElementsAre(2, 3));
    EXPECT_THAT(ports(history.events(0, 2, true)), ElementsAre(3, 4));
    EXPECT_THAT(history.events(4, 10), IsEmpty());
    EXPECT_THAT(history.events(UINT64_MAX, 10), IsEmpty());
}

TEST_F(Histories, KeepNoMoreThanTheirBound)
{
    History history(file, {10});
    for (uint32_t port = 1; port <= 25; ++port)
        keep(history, {event(port)});
    const std::vector<Event> events = history.events(0, 100);
    ASSERT_THAT(events, SizeIs(10));
    EXPECT_EQ(events.front().id, 16u);
    EXPECT_EQ(events.back().id, 25u);
}

TEST_F(Histories, KnowWhatWasKnown)
{
    const FactKey stays{FactKind::onu, 1, "02:00:00:00:00:05", {}}, goes{FactKind::alarm, 1, {}, "rogue"};
    const Fact fact{.value = "online", .onu_id = 5, .cause = "c", .place = "p", .since = 17};
    Known known;
    known.kinds.set(static_cast<size_t>(FactKind::onu));
    {
        History history(file, {10});
        Watcher::Found first{.events = {}, .changes = {{stays, fact}, {goes, fact}}};
        history.keep("north", known, first);
        Watcher::Found second{.events = {}, .changes = {{goes, std::nullopt}}};
        history.keep("north", known, second);
    }
    const History history(file, {10});
    EXPECT_EQ(history.known("north").facts, (Facts{{stays, fact}}));
    EXPECT_EQ(history.known("north").kinds, known.kinds);
    EXPECT_TRUE(history.known("south").facts.empty());
}

TEST_F(Histories, AreForTheirUserOnly)
{
    const History history(file, {10});
    for (const auto &entry : std::filesystem::directory_iterator(folder)) {
        struct stat status {
        };
        ASSERT_EQ(stat(entry.path().c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777, 0600u) << entry.path();
    }
}

TEST_F(Histories, AreRefusedWhenTheyAreNone)
{
    std::ofstream(file) << std::string(4096, 'x');
    EXPECT_THAT(error(), HasSubstr("no history, or a damaged one"));
}

TEST_F(Histories, AreUsedByOneProcessOnly)
{
    const History history(file, {10});
    EXPECT_THAT(error(), HasSubstr("in use by another process"));
}

TEST_F(Histories, TakesOverOneThatHasNoLight)
{
    {
        History history(file, {10});
        keep(history, {event(1)});
    }
    sqlite3 *db = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &db), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(db, "DROP TABLE light; PRAGMA user_version = 1", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(db);
    History history(file, {10});
    EXPECT_THAT(history.events(0, 10), SizeIs(1));
    view::onu_optics_table row{};
    row.rx_power = -20;
    history.keep_light("north", 1, {&row, 1});
    EXPECT_THAT(history.light_of("north", 0, row.mac, 0, 1), SizeIs(1));
}

} // namespace
