// These tests check what is kept, and what survives.
#include <csignal>
#include <fstream>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "database.h"
#include "optics.h"
#include "support.h"

namespace ponsim
{
namespace
{

std::string error_of(const std::string &file, const WantedSettings &wanted = {}, bool fresh = false)
{
    try {
        ServiceFixture fixture(wanted, file, fresh);
    } catch (const StoreError &error) {
        return error.what();
    }
    return {};
}

bsp_pon_msg batch(uint32_t command, uint32_t pon_port, uint32_t first_word)
{
    bsp_pon_msg record = record_of(command, pon_port);
    put(record, layout::onu_batch::onu_set, layout::IdSet{first_word});
    return record;
}

// Makes one change of each kind.
void change_everything(ServiceFixture &fixture)
{
    const auto arrived = [&](size_t index) { return fixture.simulator.olt().port(1)->arrivals.at(index).mac; };
    bsp_pon_msg bind = record_of(BSP_CMD_ONU_BIND, 1, 2, arrived(5));
    bind.arg_value = 0xfffffffe;
    strcpy(bind.text237, "über \"alles\"");
    strcpy(bind.text173, "b");
    strcpy(bind.text365, "c");
    EXPECT_EQ(fixture.send(bind), BSP_OK);
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 3, arrived(1))), BSP_OK);
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 4, stranger(4))), BSP_OK);
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_RELEASE, 1, 4)), BSP_OK);
    EXPECT_EQ(fixture.send(batch(BSP_CMD_ONU_REBOOT_BATCH, 1, 0b1100)), BSP_OK);
    EXPECT_EQ(fixture.send(batch(BSP_CMD_ONU_SORT_BATCH, 1, 0b1100)), BSP_OK);
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_SUPPORT_SET, 16, 0, stranger(9))), BSP_OK);
    bsp_pon_msg limits = record_of(BSP_CMD_OPT_RANGE_SET, 2);
    put(limits, layout::opt_range::min_distance, 1000);
    put(limits, layout::opt_range::max_distance, 9000);
    EXPECT_EQ(fixture.send(limits), BSP_OK);

    bsp_pon_msg description = record_of(BSP_CMD_ONU_DESCRIPTION_SET, 1, 2);
    strcpy(description.text237, "Träger");
    EXPECT_EQ(fixture.send(description), BSP_OK);
    for (uint8_t index : {1, 2, 3})
        EXPECT_EQ(fixture.send(record_of(BSP_CMD_BLACKLIST_ADD_AUTO, 3, 0, fixture.port(3).arrivals[index].mac)),
                  BSP_OK);
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_BLACKLIST_REMOVE, 3, 0, fixture.port(3).arrivals[2].mac)), BSP_OK);
    bsp_pon_msg auth = record_of(BSP_CMD_AUTH_SET, 4);
    auth.arg_word12 = 2;
    for (const char *loid : {"gone", "kept"}) {
        strcpy(auth.text45, loid);
        strcpy(auth.text109, "secret");
        EXPECT_EQ(fixture.send(auth), BSP_OK);
    }
    strcpy(auth.text45, "gone");
    put(auth, layout::auth_record::remove, 1);
    EXPECT_EQ(fixture.send(auth), BSP_OK);
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_CONFIRM, 4, 0, fixture.port(4).arrivals[0].mac)), BSP_OK);
    bsp_pon_msg clear = record_of(BSP_CMD_ONU_ALARM_CLEAR, 4, 1);
    EXPECT_EQ(fixture.send(clear), BSP_OK);
}

// Returns all views of the OLT and of its ports.
std::string all_views(ServiceFixture &fixture)
{
    std::string text;
    for (uint32_t command :
         {BSP_CMD_VIEW_ONU_INFO_SNMP, BSP_CMD_VIEW_BASE_INFO_WEB, BSP_CMD_BLACKLIST_GET, BSP_CMD_VIEW_ONU_ALARM})
        text += fixture.view(command);
    for (uint32_t pon_port = 0; pon_port <= max_ports; ++pon_port)
        text += fixture.view(BSP_CMD_AUTH_LIST, pon_port);
    return text;
}

TEST(Store, AReopenedOltIsTheSame)
{
    Folder folder;
    const WantedSettings wanted{.seed = 5, .ports = {}, .arrivals = {}, .silent = 0};
    std::string views;
    {
        ServiceFixture fixture(wanted, folder.file("olt.db"));
        change_everything(fixture);
        views = all_views(fixture);
    }
    ServiceFixture fixture({}, folder.file("olt.db"));
    EXPECT_EQ(all_views(fixture), views);
    EXPECT_TRUE(fixture.port(4).bindings[1].value().exempt);
    EXPECT_EQ(fixture.port(4).authentication.records, (std::map<std::string, std::string>{{"kept", "secret"}}));
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_BIND_AUTO, 3, 0, fixture.port(3).arrivals[1].mac)),
              PON_ERR_BLACKLISTED);
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_BIND, 16, 1, stranger(9))), PON_ERR_UNSUPPORTED);
}

// Returns the n-th of the bindings that the killed process makes.
bsp_pon_msg nth_bind(uint32_t n)
{
    const auto byte = [](uint32_t value) { return static_cast<uint8_t>(value); };
    return record_of(BSP_CMD_ONU_BIND, n / 128 + 1, n % 128, stranger(byte(n), byte(n >> 8)));
}

TEST(Store, WhatWasAcknowledgedSurvivesAKill)
{
    Folder folder;
    int acknowledged[2];
    ASSERT_EQ(pipe(acknowledged), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        ServiceFixture fixture({}, folder.file("olt.db"));
        for (uint32_t n = 0; n < 2048; ++n)
            if (fixture.send(nth_bind(n)) != BSP_OK || write(acknowledged[1], "", 1) != 1) _exit(1);
        pause();
        _exit(1);
    }
    close(acknowledged[1]);
    uint32_t count = 0;
    char byte;
    while (count < 200 && read(acknowledged[0], &byte, 1) == 1)
        ++count;
    kill(child, SIGKILL);
    while (read(acknowledged[0], &byte, 1) == 1)
        ++count;
    close(acknowledged[0]);
    int status;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_GE(count, 200u);

    ServiceFixture fixture({}, folder.file("olt.db"));
    for (uint32_t n = 0; n < count; ++n)
        EXPECT_EQ(fixture.simulator.olt().find(std::to_array(nth_bind(n).onu_mac)), (OnuKey{n / 128 + 1, n % 128}));
}

// As long as this exists, no file can grow.
class FullDisk
{
public:
    FullDisk() : before(signal(SIGXFSZ, SIG_IGN))
    {
        EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
        const rlimit full{0, limit.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &full), 0);
    }
    ~FullDisk()
    {
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
        signal(SIGXFSZ, before);
    }
    FullDisk(const FullDisk &) = delete;

private:
    rlimit limit{};
    const sighandler_t before;
};

TEST(Store, AChangeThatCannotBeStoredIsNotMade)
{
    Folder folder;
    ServiceFixture fixture({}, folder.file("olt.db"));
    const std::string before = fixture.view(BSP_CMD_VIEW_ONU_INFO_SNMP);
    const Reply reply = [&fixture] {
        const FullDisk full;
        return fixture.simulator.handle(message_of(record_of(BSP_CMD_ONU_BIND, 1, 1, stranger(1))));
    }();

    EXPECT_EQ(reply.status, PON_ERR_STORE);
    EXPECT_FALSE(reply.problem.empty());
    EXPECT_EQ(fixture.view(BSP_CMD_VIEW_ONU_INFO_SNMP), before);
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 1, stranger(1))), BSP_OK);
}

TEST(Store, WhatHappenedAndCannotBeStoredIsKeptBeforeTheNextChange)
{
    Folder folder;
    const bsp_pon_msg bind = record_of(BSP_CMD_ONU_BIND, 1, 100, stranger(1));
    std::string happened;
    {
        ServiceFixture fixture(lively(), folder.file("olt.db"));
        bind_arrival(fixture, 5);
        const std::string onu = text::mac_text(fixture.port(1).arrivals[0].mac);
        control_line(fixture, "power 1 " + onu + " off");
        control_line(fixture, "power 1 " + onu + " on");
        const std::string off = fixture.view(BSP_CMD_VIEW_ONU_INFO_SNMP);
        {
            const FullDisk full;
            EXPECT_THROW(pass(fixture, 120000), StoreError);
            EXPECT_EQ(fixture.send(bind), PON_ERR_STORE) << "it must not be kept without what happened before";
        }
        EXPECT_EQ(fixture.send(bind), BSP_OK);
        happened = fixture.view(BSP_CMD_VIEW_ONU_INFO_SNMP);
        EXPECT_NE(happened, off);
        EXPECT_TRUE(fixture.simulator.olt().registrations().empty()) << "the ONU is there again";
    }
    EXPECT_EQ(ServiceFixture({}, folder.file("olt.db")).view(BSP_CMD_VIEW_ONU_INFO_SNMP), happened);
}

TEST(Store, KeepsItsSettings)
{
    Folder folder;
    const Settings settings{.seed = 0xffffffffffffffff, .ports = 3, .arrivals = 128, .silent = 100};
    {
        ServiceFixture fixture({settings.seed, settings.ports, settings.arrivals, settings.silent},
                               folder.file("olt.db"));
    }
    EXPECT_EQ(ServiceFixture({}, folder.file("olt.db")).simulator.settings(), settings);
}

TEST(Store, OtherSettingsAreRefusedWithAdvice)
{
    Folder folder;
    {
        ServiceFixture fixture({.seed = 5, .ports = {}, .arrivals = {}, .silent = {}}, folder.file("olt.db"));
    }
    const std::string error = error_of(folder.file("olt.db"), {.seed = 6, .ports = {}, .arrivals = {}, .silent = {}});
    EXPECT_NE(error.find("--seed 5"), std::string::npos) << error;
    EXPECT_NE(error.find("--fresh"), std::string::npos) << error;
    EXPECT_EQ(error_of(folder.file("olt.db"), {.seed = 5, .ports = {}, .arrivals = {}, .silent = {}}), "");
}

TEST(Store, FreshStartsOver)
{
    Folder folder;
    const WantedSettings other{.seed = 6, .ports = {}, .arrivals = {}, .silent = {}};
    {
        ServiceFixture fixture({}, folder.file("olt.db"));
        change_everything(fixture);
    }
    ServiceFixture fixture(other, folder.file("olt.db"), true);
    EXPECT_EQ(fixture.view(BSP_CMD_VIEW_ONU_INFO_SNMP), ServiceFixture(other).view(BSP_CMD_VIEW_ONU_INFO_SNMP));
}

TEST(Store, AForeignFileIsLeftAlone)
{
    Folder folder;
    const std::string text(5000, 'x');
    std::ofstream(folder.file("letter.txt")) << text;
    EXPECT_NE(error_of(folder.file("letter.txt"), {}, true).find("not a state file of ponsim"), std::string::npos);
    std::ifstream file(folder.file("letter.txt"));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), text);
}

TEST(Store, AForeignDatabaseIsLeftAlone)
{
    Folder folder;
    sqlite3 *db;
    ASSERT_EQ(sqlite3_open(folder.file("other.db").c_str(), &db), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(db, "CREATE TABLE setting(x); INSERT INTO setting VALUES(1)", 0, 0, 0), SQLITE_OK);
    EXPECT_NE(error_of(folder.file("other.db"), {}, true).find("not a state file of ponsim"), std::string::npos);
    EXPECT_EQ(sqlite3_exec(db, "DELETE FROM setting WHERE x = 1", 0, 0, 0), SQLITE_OK);
    EXPECT_EQ(sqlite3_changes(db), 1);
    sqlite3_close(db);
}

TEST(Store, AnotherVersionsFileNeedsFresh)
{
    Folder folder;
    {
        ServiceFixture fixture({}, folder.file("olt.db"));
    }
    sqlite3 *db;
    ASSERT_EQ(sqlite3_open(folder.file("olt.db").c_str(), &db), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(db, "PRAGMA user_version = 99; CREATE TABLE later(x)", 0, 0, 0), SQLITE_OK);
    sqlite3_close(db);
    EXPECT_NE(error_of(folder.file("olt.db")).find("--fresh"), std::string::npos);
    EXPECT_EQ(error_of(folder.file("olt.db"), {}, true), "");
    EXPECT_EQ(error_of(folder.file("olt.db")), "");
}

// Returns the error of opening a file of that version. The file must stay as it is.
std::string error_of_version(int64_t version)
{
    Folder folder;
    const std::string file = folder.file("olt.db");
    {
        ServiceFixture fixture({}, file);
    }
    Database(file).run("PRAGMA user_version = " + std::to_string(version));
    const std::string before = Database(file).dump(), error = error_of(file);
    EXPECT_EQ(Database(file).dump(), before);
    EXPECT_TRUE(error.starts_with(file + ": ")) << error;
    return error.substr(file.size() + 2);
}

TEST(Store, ALaterVersionsFileIsRefusedWithBothVersions)
{
    const std::string here = std::to_string(Store::version());
    EXPECT_EQ(error_of_version(99), "its version is 99, and this ponsim has version " + here +
                                        "; go on with it in a newer ponsim, start over with --fresh, or name another "
                                        "file");
}

TEST(Store, AFileFromBeforeTheFirstVersionIsRefusedWithBothVersions)
{
    const std::string here = std::to_string(Store::version());
    EXPECT_EQ(error_of_version(6), "its version is 6, and this ponsim has version " + here +
                                       " and carries over files from version 7 on; start over with --fresh, or name "
                                       "another file");
}

TEST(Store, HasOneUser)
{
    Folder folder;
    ServiceFixture fixture({}, folder.file("olt.db"));
    EXPECT_NE(error_of(folder.file("olt.db")).find("in use by another process"), std::string::npos);
}

TEST(Store, AFileThatCannotBeMadeIsNamed)
{
    EXPECT_NE(error_of("/nowhere/olt.db").find("/nowhere/olt.db"), std::string::npos);
}

} // namespace
} // namespace ponsim
