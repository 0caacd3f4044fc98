// These tests check upgrade types, what they are bound to, and upgrade runs.
#include <filesystem>
#include <fstream>

#include <sys/stat.h>
#include <unistd.h>

#include "optics.h"
#include "rows.h"
#include "upgrade.h"
#include "views/upgrade.h"

namespace ponsim
{
namespace
{

constexpr uint32_t one_mib = 1024 * 1024;
constexpr ModelTime download = 10240; // ms for 1 MiB at 100 KiB/s
constexpr ModelTime to_verify = 5 * ms_per_second;
constexpr ModelTime to_reboot = 30 * ms_per_second;

// At port 1 of this OLT, `size` ONUs of one kind are online, bound to the ids from 1 on. The type "new" is for this
// kind.
struct Fleet : ServiceFixture {
    explicit Fleet(uint32_t size, const std::string &file = {})
        : ServiceFixture({.seed = 1, .ports = 2, .arrivals = 128, .silent = 0}, file)
    {
        for (const Arrival &arrival : port(1).arrivals)
            if (onus() < size && device_of(1, arrival.mac).type == kind())
                send(record_of(BSP_CMD_ONU_BIND_AUTO, 1, 0, arrival.mac));
        EXPECT_EQ(onus(), size);
        EXPECT_EQ(add_type(*this, "new", *kind(), "9.9", one_mib), BSP_OK);
    }

    const DeviceType *kind() const { return device_of(1, port(1).arrivals[0].mac).type; }
    uint32_t onus() const { return static_cast<uint32_t>(ids_of(port(1).bindings).count()); }
    Mac mac(uint32_t onu_id) const { return port(1).bindings[onu_id]->mac; }

    rapidjson::Document rows() { return parse(view(BSP_CMD_VIEW_UPGRADE_BASE_INFO_WEB, 1)); }
    // Returns a cell of the ONU's row as JSON.
    std::string cell(uint32_t onu_id, const char *column)
    {
        const rapidjson::Document all = rows();
        for (const auto &row : all.GetArray()) {
            if (row["onu_id"].GetUint() != onu_id) continue;
            const rapidjson::Value &value = row[column];
            if (value.IsString()) return value.GetString();
            return value.IsNull() ? "null" : std::to_string(value.GetUint());
        }
        return "no row";
    }
    std::string run(uint32_t onu_id) { return cell(onu_id, "run"); }
    size_t in_state(const std::string &state)
    {
        const rapidjson::Document shown = rows();
        return static_cast<size_t>(std::ranges::count_if(shown.GetArray(), [&](const auto &row) {
            return row["run"].IsString() && row["run"].GetString() == state;
        }));
    }
    void bind_port() { EXPECT_EQ(bind_to_port(*this, 1, "new"), BSP_OK); }
};

std::string types(ServiceFixture &fixture)
{
    return ask(fixture, UpgradeRecord(BSP_CMD_UPGRADE_TYPE_LIST)).result.value_or("no result");
}

TEST(UpgradeTypes, AreListedByName)
{
    ServiceFixture fixture;
    EXPECT_EQ(types(fixture), "[]");
    EXPECT_EQ(add_type(fixture, "b", "SIMA", "S100", "2.0", 7, "b.img"), BSP_OK);
    EXPECT_EQ(add_type(fixture, "a", "SIMB", "E020", "3.0", 8), BSP_OK);
    EXPECT_EQ(types(fixture),
              R"([{"name":"a","vendor":"SIMB","model":"E020","version":"3.0","size":8,"file":""},)"
              R"({"name":"b","vendor":"SIMA","model":"S100","version":"2.0","size":7,"file":"b.img"}])");
}

TEST(UpgradeTypes, OneOfTheSameNameTakesTheOthersPlace)
{
    ServiceFixture fixture;
    add_type(fixture, "a", "SIMA", "S100", "2.0", 7);
    EXPECT_EQ(add_type(fixture, "a", "SIMA", "S100", "2.1", 7), BSP_OK);
    const rapidjson::Document rows = parse(types(fixture));
    ASSERT_EQ(rows.Size(), 1u);
    EXPECT_STREQ(rows[0]["version"].GetString(), "2.1");
}

TEST(UpgradeTypes, NeedWordsAndASize)
{
    ServiceFixture fixture;
    EXPECT_EQ(add_type(fixture, "", "SIMA", "S100", "2.0", 7), PON_ERR_BAD_RECORD);
    EXPECT_EQ(add_type(fixture, "a", "", "S100", "2.0", 7), PON_ERR_BAD_RECORD);
    EXPECT_EQ(add_type(fixture, "a", "SIMA", "", "2.0", 7), PON_ERR_BAD_RECORD);
    EXPECT_EQ(add_type(fixture, "a", "SIMA", "S100", "", 7), PON_ERR_BAD_RECORD);
    EXPECT_EQ(add_type(fixture, "a", "SIMA", "S100", "2.0", 0), PON_ERR_BAD_RECORD);
    EXPECT_EQ(add_type(fixture, "a b", "SIMA", "S100", "2.0", 7), PON_ERR_BAD_RECORD);
    EXPECT_EQ(add_type(fixture, "a", "SIMA", "S100", "2\"0", 7), PON_ERR_BAD_RECORD);
    EXPECT_EQ(add_type(fixture, std::string(32, 'a'), "SIMA", "S100", "2.0", 7), PON_ERR_BAD_RECORD);
    EXPECT_EQ(types(fixture), "[]");
}

TEST(UpgradeTypes, AreAtMost32)
{
    ServiceFixture fixture;
    for (int index = 0; index < 32; ++index)
        EXPECT_EQ(add_type(fixture, "t" + std::to_string(index), "SIMA", "S100", "2.0", 7), BSP_OK);
    EXPECT_EQ(add_type(fixture, "one-more", "SIMA", "S100", "2.0", 7), PON_ERR_TABLE_FULL);
    EXPECT_EQ(add_type(fixture, "t0", "SIMA", "S100", "2.1", 7), BSP_OK);
}

TEST(UpgradeTypes, TheLongestOnesFit10240Bytes)
{
    ServiceFixture fixture;
    for (char last = '@'; last < '@' + 32; ++last) {
        const char fill = last == '\\' ? '!' : last; // each type has a different name, and no name has a backslash
        EXPECT_EQ(add_type(fixture, std::string(31, fill), "VVVV", std::string(15, 'M'), std::string(16, 'v'),
                           0xffffffff, std::string(63, '"')),
                  BSP_OK);
    }
    EXPECT_EQ(parse(types(fixture)).Size(), 32u);
    EXPECT_LE(types(fixture).size(), 10240u);
}

TEST(UpgradeTypes, OneThatIsDeletedIsBoundNoMore)
{
    Fleet fixture(1);
    fixture.bind_port();
    bind_to_onus(fixture, 1, ids({1}), "new");
    EXPECT_EQ(delete_type(fixture, "new"), BSP_OK);
    EXPECT_EQ(fixture.cell(1, "type"), "null");
    EXPECT_EQ(upgrade_one(fixture, 1, 1), PON_ERR_NO_UPGRADE_TYPE);
    EXPECT_EQ(delete_type(fixture, "new"), PON_ERR_NO_UPGRADE_TYPE);
}

TEST(UpgradeTypes, OneThatARunUsesStaysAsItIs)
{
    Fleet fixture(1);
    fixture.bind_port();
    ASSERT_EQ(upgrade_one(fixture, 1, 1), BSP_OK);
    EXPECT_EQ(delete_type(fixture, "new"), PON_ERR_UPGRADE_TYPE_IN_USE);
    EXPECT_EQ(add_type(fixture, "new", *fixture.kind(), "9.8", one_mib), PON_ERR_UPGRADE_TYPE_IN_USE);
    pass(fixture, download + to_verify + to_reboot);
    EXPECT_EQ(delete_type(fixture, "new"), BSP_OK);
}

uint32_t load(ServiceFixture &fixture, const std::string &contents, std::string *problem = nullptr)
{
    const Folder folder;
    fixture.simulator.use_upgrade_folder(folder.file(""));
    std::ofstream(folder.file("types")) << contents;
    const Reply reply = load_types(fixture, folder.file("types"));
    if (problem) *problem = reply.problem;
    return reply.status;
}

TEST(UpgradeFiles, AddTypes)
{
    ServiceFixture fixture;
    add_type(fixture, "old", "SIMA", "S100", "1.0", 7);
    EXPECT_EQ(load(fixture, "# types\n\n  a SIMA\tS100 2.0 5 # the first\nb SIMB E020 3.0 6"), BSP_OK);
    const rapidjson::Document rows = parse(types(fixture));
    ASSERT_EQ(rows.Size(), 3u);
    EXPECT_STREQ(rows[1]["model"].GetString(), "E020");
    EXPECT_EQ(rows[1]["size"].GetUint(), 6u);
}

TEST(UpgradeFiles, AWrongLineChangesNothingAndIsNamed)
{
    for (const char *wrong :
         {"a SIMA S100 2.0", "a SIMA S100 2.0 0", "a SIMA S100 2.0 5x", "a SIMA S100 2.0 4294967296",
          "a SIMAX S100 2.0 5", "good SIMA S100 2.0 5", "a SIMA S100 2.0 5 6"}) {
        ServiceFixture fixture;
        std::string problem;
        EXPECT_EQ(load(fixture, std::string("good SIMA S100 2.0 5\n") + wrong, &problem), PON_ERR_BAD_RECORD) << wrong;
        EXPECT_NE(problem.find("/types:2: "), std::string::npos) << problem;
        EXPECT_EQ(types(fixture), "[]");
    }
}

TEST(UpgradeFiles, HaveAtMost32TypesAnd64KiB)
{
    ServiceFixture fixture;
    std::string lines;
    for (int index = 0; index < 32; ++index)
        lines += "t" + std::to_string(index) + " SIMA S100 2.0 5\n";
    EXPECT_EQ(load(fixture, lines + "t32 SIMA S100 2.0 5\n"), PON_ERR_BAD_RECORD);
    lines.resize(64 * 1024, '\n');
    EXPECT_EQ(load(fixture, lines + '\n'), PON_ERR_BAD_RECORD);
    EXPECT_EQ(types(fixture), "[]");
    EXPECT_EQ(load(fixture, lines), BSP_OK);
    EXPECT_EQ(parse(types(fixture)).Size(), 32u);
    EXPECT_EQ(load(fixture, "another SIMA S100 2.0 5"), PON_ERR_TABLE_FULL);
}

// A Shelf is an OLT with a folder of upgrade files, beside which there are others.
struct Shelf {
    Shelf()
    {
        std::filesystem::create_directories(folder.file("shelf/sub"));
        for (const char *name : {"shelf/types", "shelf/sub/types", "other", "shelf-other"})
            std::ofstream(folder.file(name)) << "a SIMA S100 2.0 5\n";
        fixture.simulator.use_upgrade_folder(folder.file("shelf"));
    }
    Reply load(const std::string &name) { return load_types(fixture, folder.file(name)); }
    // Checks that a file is refused as one that is not there is, and that the log says why.
    void expect_refusal(const std::string &name, const std::string &why)
    {
        const Reply reply = load(name);
        EXPECT_EQ(reply.status, PON_ERR_NO_FILE) << name;
        EXPECT_NE(reply.problem.find(why), std::string::npos) << reply.problem;
        EXPECT_EQ(types(fixture), "[]");
    }

    const Folder folder;
    ServiceFixture fixture;
};

TEST(UpgradeFiles, AreReadBelowTheirFolder)
{
    for (const char *name : {"shelf/types", "shelf/sub/types", "shelf/sub/../types", "shelf//types"})
        EXPECT_EQ(Shelf().load(name).status, BSP_OK) << name;
}

TEST(UpgradeFiles, ElsewhereAreRefusedWhetherTheyExistOrNot)
{
    Shelf shelf;
    for (const char *name : {"other", "none", "shelf-other", "shelf/../other", ".", "shelf", "shelf/."})
        shelf.expect_refusal(name, "");
    ServiceFixture without_folder;
    EXPECT_EQ(load_types(without_folder, shelf.folder.file("shelf/types")).status, PON_ERR_NO_FILE);
    EXPECT_EQ(load_types(without_folder, "/proc/kmsg").status, PON_ERR_NO_FILE);
}

TEST(UpgradeFiles, AreReachedByNoLink)
{
    Shelf shelf;
    const std::string file = shelf.folder.file("other"), folder = shelf.folder.file("");
    ASSERT_EQ(symlink(file.c_str(), shelf.folder.file("shelf/link").c_str()), 0);
    ASSERT_EQ(symlink("types", shelf.folder.file("shelf/near").c_str()), 0);
    ASSERT_EQ(symlink(folder.c_str(), shelf.folder.file("shelf/folder").c_str()), 0);
    for (const char *name : {"shelf/link", "shelf/near", "shelf/folder/other"})
        shelf.expect_refusal(name, "symbolic link");
}

// Nobody writes into the FIFO, so that opening or reading it would take for ever.
TEST(UpgradeFiles, ThatAreNoFilesAreNotWaitedFor)
{
    Shelf shelf;
    ASSERT_EQ(mkfifo(shelf.folder.file("shelf/fifo").c_str(), 0666), 0);
    shelf.expect_refusal("shelf/fifo", "not a regular file");
    shelf.expect_refusal("shelf/sub", "not a regular file");
}

TEST(UpgradeFiles, OfAnotherUserAreRefused)
{
    if (geteuid() != 0) GTEST_SKIP() << "only root can give a file away";
    Shelf shelf;
    constexpr uid_t somebody = 65534;
    ASSERT_EQ(chown(shelf.folder.file("shelf/types").c_str(), somebody, somebody), 0);
    shelf.expect_refusal("shelf/types", "of the user of the service");
    ASSERT_EQ(chown(shelf.folder.file("shelf").c_str(), somebody, somebody), 0);
    EXPECT_EQ(shelf.load("shelf/types").status, BSP_OK) << "the folder is that user's";
}

TEST(UpgradeFiles, OneThatCannotBeReadIsSaid)
{
    ServiceFixture fixture;
    const Folder folder;
    fixture.simulator.use_upgrade_folder(folder.file(""));
    EXPECT_EQ(load_types(fixture, folder.file("none")).status, PON_ERR_NO_FILE);
    EXPECT_EQ(load_types(fixture, folder.file(".")).status, PON_ERR_NO_FILE);
    const Reply relative = load_types(fixture, "types");
    EXPECT_EQ(relative.status, PON_ERR_BAD_RECORD);
    EXPECT_NE(relative.problem, "");
}

TEST(UpgradeBinding, TheOnusOwnTypeGoesBeforeThatOfThePort)
{
    Fleet fixture(2);
    add_type(fixture, "own", *fixture.kind(), "8.8", 1);
    fixture.bind_port();
    EXPECT_EQ(bind_to_onus(fixture, 1, ids({2}), "own"), BSP_OK);
    EXPECT_EQ(fixture.cell(1, "type"), "new");
    EXPECT_EQ(fixture.cell(2, "type"), "own");
    EXPECT_EQ(bind_to_onus(fixture, 1, ids({2}), ""), BSP_OK);
    EXPECT_EQ(fixture.cell(2, "type"), "new");
    EXPECT_EQ(bind_to_port(fixture, 1, ""), BSP_OK);
    EXPECT_EQ(fixture.cell(2, "type"), "null");
}

TEST(UpgradeBinding, IsOfAllTheIdsOrNone)
{
    Fleet fixture(2);
    EXPECT_EQ(bind_to_onus(fixture, 1, ids({1, 3}), "new"), PON_ERR_NOT_BOUND);
    EXPECT_EQ(bind_to_onus(fixture, 1, {}, "new"), PON_ERR_BAD_RECORD);
    EXPECT_EQ(bind_to_onus(fixture, 3, ids({1}), "new"), PON_ERR_NO_PORT);
    EXPECT_EQ(bind_to_onus(fixture, 1, ids({1}), "none"), PON_ERR_NO_UPGRADE_TYPE);
    EXPECT_EQ(bind_to_port(fixture, 3, "new"), PON_ERR_NO_PORT);
    EXPECT_EQ(bind_to_port(fixture, 1, "none"), PON_ERR_NO_UPGRADE_TYPE);
    EXPECT_EQ(fixture.cell(1, "type"), "null");
}

TEST(UpgradeRuns, DownloadVerifyRebootAndAreDone)
{
    Fleet fixture(1);
    fixture.bind_port();
    EXPECT_EQ(fixture.run(1), "null");
    ASSERT_EQ(upgrade_one(fixture, 1, 1), BSP_OK);
    EXPECT_EQ(fixture.run(1) + fixture.cell(1, "progress"), "downloading0");
    pass(fixture, download / 2);
    EXPECT_EQ(fixture.run(1) + fixture.cell(1, "progress"), "downloading50");
    pass(fixture, download / 2 - 1);
    EXPECT_EQ(fixture.run(1) + fixture.cell(1, "progress"), "downloading99");
    pass(fixture, 1);
    EXPECT_EQ(fixture.run(1) + fixture.cell(1, "progress"), "verifying100");
    EXPECT_EQ(fixture.cell(1, "state"), "online");
    pass(fixture, to_verify);
    EXPECT_EQ(fixture.run(1) + fixture.cell(1, "state"), "rebootingoffline");
    EXPECT_NE(fixture.cell(1, "software"), "9.9");
    pass(fixture, to_reboot);
    EXPECT_EQ(fixture.run(1) + fixture.cell(1, "state"), "doneoffline") << "it has still to register";
    fixture.settle();
    EXPECT_EQ(fixture.cell(1, "state"), "online");
    EXPECT_EQ(fixture.cell(1, "reason"), "null");
    EXPECT_EQ(fixture.cell(1, "software"), "9.9");
}

TEST(UpgradeRuns, TheNewVersionShowsInTheConfigurationAndTheRebootIsCounted)
{
    Fleet fixture(1);
    fixture.bind_port();
    upgrade_one(fixture, 1, 1);
    pass(fixture, hours);
    const bsp_onu_msg record = onu_record_of(BSP_CMD_VIEW_ONU_CONFIG, 1, 1);
    const Reply reply = fixture.simulator.handle(message_of(BSP_MSG_ONU_CFG, record));
    EXPECT_STREQ(parse(reply.result.value())[0]["software"].GetString(), "9.9");
    EXPECT_EQ(fixture.port(1).record(fixture.mac(1)).reboots, 1u);
}

TEST(UpgradeRuns, AnOnuThatCannotBeUpgradedIsSaid)
{
    Fleet fixture(1);
    const DeviceType &kind = *fixture.kind();
    EXPECT_EQ(upgrade_one(fixture, 3, 1), PON_ERR_NO_PORT);
    EXPECT_EQ(upgrade_one(fixture, 1, 128), PON_ERR_BAD_ONU_ID);
    EXPECT_EQ(upgrade_one(fixture, 1, 2), PON_ERR_NOT_BOUND);
    EXPECT_EQ(upgrade_one(fixture, 1, 1), PON_ERR_NO_UPGRADE_TYPE);
    add_type(fixture, "vendor", "SIMX", std::string(kind.model), "9.9", 1);
    add_type(fixture, "model", std::string(kind.vendor), "X", "9.9", 1);
    add_type(fixture, "same", kind, std::string(device_of(1, fixture.mac(1)).software), 1);
    for (const auto &[name, status] :
         {std::pair{"vendor", PON_ERR_WRONG_UPGRADE_TYPE}, std::pair{"model", PON_ERR_WRONG_UPGRADE_TYPE},
          std::pair{"same", PON_ERR_UP_TO_DATE}}) {
        bind_to_port(fixture, 1, name);
        EXPECT_EQ(upgrade_one(fixture, 1, 1), uint32_t{status}) << name;
        EXPECT_EQ(upgrade_all(fixture, 1), PON_ERR_NOTHING_TO_UPGRADE) << name;
    }
    fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1)));
    EXPECT_EQ(upgrade_one(fixture, 1, 5), PON_ERR_OFFLINE);
    EXPECT_EQ(upgrade_all(fixture, 3), PON_ERR_NO_PORT);
    EXPECT_EQ(fixture.run(1), "null");
}

TEST(UpgradeRuns, AnOnuHasOneAtATime)
{
    Fleet fixture(1);
    fixture.bind_port();
    for (ModelTime time : {ModelTime{0}, download, to_verify}) {
        pass(fixture, time);
        EXPECT_EQ(upgrade_one(fixture, 1, 1), time ? PON_ERR_UPGRADING : BSP_OK);
    }
    pass(fixture, to_reboot);
    fixture.settle();
    EXPECT_EQ(upgrade_one(fixture, 1, 1), PON_ERR_UP_TO_DATE);
}

TEST(UpgradeRuns, ThoseOfAPortDownloadFourAtATime)
{
    Fleet fixture(6);
    fixture.bind_port();
    ASSERT_EQ(upgrade_all(fixture, 1), BSP_OK);
    EXPECT_EQ(fixture.in_state("downloading"), 4u);
    EXPECT_EQ(fixture.in_state("queued"), 2u);
    EXPECT_EQ(upgrade_all(fixture, 1), PON_ERR_NOTHING_TO_UPGRADE);
    pass(fixture, download);
    EXPECT_EQ(fixture.in_state("downloading"), 2u);
    EXPECT_EQ(fixture.in_state("verifying"), 4u);
    pass(fixture, download + to_verify + to_reboot);
    EXPECT_EQ(fixture.in_state("done"), 6u);
}

TEST(UpgradeRuns, AFifthOneWaitsForADownloadToEnd)
{
    Fleet fixture(5);
    fixture.bind_port();
    for (uint32_t onu_id = 1; onu_id <= 5; ++onu_id) {
        EXPECT_EQ(upgrade_one(fixture, 1, onu_id), BSP_OK);
        pass(fixture, ms_per_second);
    }
    EXPECT_EQ(fixture.run(5) + fixture.cell(5, "progress"), "queued0");
    pass(fixture, download - 5 * ms_per_second);
    EXPECT_EQ(fixture.run(5), "downloading");
    EXPECT_EQ(fixture.in_state("downloading"), 4u);
}

TEST(UpgradeRuns, OfAPortLeaveAsideWhatCannotBeUpgraded)
{
    Fleet fixture(2);
    fixture.bind_port();
    fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1)));
    upgrade_one(fixture, 1, 1);
    pass(fixture, hours);
    ASSERT_EQ(upgrade_all(fixture, 1), BSP_OK);
    EXPECT_EQ(fixture.run(1) + fixture.run(2) + fixture.run(5), "donedownloadingnull");
}

TEST(UpgradeRuns, OneWhoseOnuGoesOfflineFailsWhenItsStepIsDue)
{
    // These times are in the middle of the download, of verification, and of the reboot.
    for (ModelTime until : {download / 2, download + to_verify / 2, download + to_verify + to_reboot / 2}) {
        Fleet fixture(1);
        fixture.bind_port();
        upgrade_one(fixture, 1, 1);
        pass(fixture, until);
        bsp_pon_msg limits = record_of(BSP_CMD_OPT_RANGE_SET, 1);
        put(limits, layout::opt_range::max_distance, 0);
        ASSERT_EQ(fixture.send(limits), BSP_OK);
        EXPECT_NE(fixture.run(1), "failed");
        pass(fixture, hours);
        EXPECT_EQ(fixture.run(1) + fixture.cell(1, "reason"), "failedoffline");
        EXPECT_EQ(fixture.cell(1, "progress"), "null");
        EXPECT_EQ(fixture.cell(1, "software"), device_of(1, fixture.mac(1)).software);
    }
}

TEST(UpgradeRuns, OneWhoseOnuIsReleasedOrRejectedFails)
{
    for (const auto &[command, reason] :
         {std::pair{BSP_CMD_ONU_RELEASE, "released"}, std::pair{BSP_CMD_BLACKLIST_ADD_AUTO, "rejected"}}) {
        Fleet fixture(1);
        fixture.bind_port();
        upgrade_one(fixture, 1, 1);
        const Mac mac = fixture.mac(1);
        fixture.send(record_of(command, 1, command == BSP_CMD_ONU_RELEASE ? 1 : 0, mac));
        ASSERT_FALSE(fixture.port(1).bindings[1]);
        pass(fixture, hours);
        const UpgradeProgress shown = upgrade_progress(fixture.simulator.olt(), fixture.port(1), mac);
        EXPECT_EQ(shown.state, "failed");
        EXPECT_EQ(shown.reason, reason);
    }
}

TEST(UpgradeRuns, OneThatWaitsAndCannotGoOnGivesItsTurnToTheNext)
{
    Fleet fixture(6);
    fixture.bind_port();
    for (uint32_t onu_id = 1; onu_id <= 6; ++onu_id) {
        upgrade_one(fixture, 1, onu_id);
        pass(fixture, 1);
    }
    const Mac mac = fixture.mac(5);
    fixture.send(record_of(BSP_CMD_ONU_RELEASE, 1, 5, mac));
    pass(fixture, download - 6);
    EXPECT_EQ(upgrade_progress(fixture.simulator.olt(), fixture.port(1), mac).reason, "released");
    EXPECT_EQ(fixture.run(6), "downloading");
}

TEST(UpgradeRuns, ABadImageFailsVerificationUntilTheFaultIsGone)
{
    Fleet fixture(1);
    fixture.bind_port();
    const std::string fault = "upgrade-fault 1 " + text::mac_text(fixture.mac(1));
    control_line(fixture, fault + " on");
    upgrade_one(fixture, 1, 1);
    pass(fixture, hours);
    EXPECT_EQ(fixture.run(1) + fixture.cell(1, "reason"), "failedverification");
    EXPECT_NE(fixture.cell(1, "software"), "9.9");
    control_line(fixture, fault + " off");
    EXPECT_EQ(upgrade_one(fixture, 1, 1), BSP_OK);
    pass(fixture, hours);
    EXPECT_EQ(fixture.run(1), "done");
}

TEST(UpgradeRuns, TheFaultNeedsAPortAMacAddressAndASwitch)
{
    ServiceFixture fixture;
    EXPECT_THROW(control_line(fixture, "upgrade-fault 1 02:00:00:00:00:01"), ControlError);
    EXPECT_THROW(control_line(fixture, "upgrade-fault 17 02:00:00:00:00:01 on"), ControlError);
    EXPECT_THROW(control_line(fixture, "upgrade-fault 1 00:00:00:00:00:00 on"), ControlError);
    EXPECT_THROW(control_line(fixture, "upgrade-fault 1 02:00:00:00:00:01 maybe"), ControlError);
}

TEST(UpgradeRuns, ALongStepGoesThroughAllOfTheirStates)
{
    Fleet small_steps(6), large_step(6);
    for (Fleet *fixture : {&small_steps, &large_step}) {
        fixture->bind_port();
        EXPECT_EQ(upgrade_all(*fixture, 1), BSP_OK);
    }
    for (int second = 0; second < 60; ++second)
        pass(small_steps, ms_per_second);
    pass(large_step, 60 * ms_per_second);
    EXPECT_EQ(small_steps.view(BSP_CMD_VIEW_UPGRADE_BASE_INFO_WEB, 1),
              large_step.view(BSP_CMD_VIEW_UPGRADE_BASE_INFO_WEB, 1));
}

TEST(UpgradeRuns, ARestartInTheMiddleOfThemChangesNothing)
{
    const Folder folder;
    const std::string file = folder.file("state");
    std::string shown, listed;
    {
        Fleet fixture(10, file);
        add_type(fixture, "large", *fixture.kind(), "9.9", 10 * one_mib);
        fixture.bind_port();
        bind_to_onus(fixture, 1, ids({6, 7, 8, 9}), "large");
        for (uint32_t onu_id : {2u, 6u}) // the run of one ONU fails before the restart, that of the other after it
            control_line(fixture, "upgrade-fault 1 " + text::mac_text(fixture.mac(onu_id)) + " on");
        upgrade_all(fixture, 1);
        pass(fixture, download + to_verify + to_reboot + ms_per_second);
        fixture.simulator.keep_time();
        EXPECT_EQ(fixture.in_state("done"), 3u);
        EXPECT_EQ(fixture.in_state("failed"), 1u);
        EXPECT_EQ(fixture.in_state("rebooting"), 1u);
        EXPECT_EQ(fixture.in_state("downloading"), 4u);
        EXPECT_EQ(fixture.in_state("queued"), 1u);
        shown = fixture.view(BSP_CMD_VIEW_UPGRADE_BASE_INFO_WEB, 1);
        listed = types(fixture);
    }
    ServiceFixture again({}, file);
    EXPECT_EQ(again.view(BSP_CMD_VIEW_UPGRADE_BASE_INFO_WEB, 1), shown);
    EXPECT_EQ(types(again), listed);
    EXPECT_EQ(delete_type(again, "new"), PON_ERR_UPGRADE_TYPE_IN_USE);
    pass(again, hours);
    const rapidjson::Document rows = parse(again.view(BSP_CMD_VIEW_UPGRADE_BASE_INFO_WEB, 1));
    ASSERT_EQ(rows.Size(), 10u);
    for (const auto &row : rows.GetArray()) {
        const bool faulty = row["onu_id"].GetUint() == 2 || row["onu_id"].GetUint() == 6;
        EXPECT_STREQ(row["run"].GetString(), faulty ? "failed" : "done");
        EXPECT_EQ(std::string(row["software"].GetString()) == "9.9", !faulty);
    }
    EXPECT_EQ(delete_type(again, "new"), BSP_OK);
}

} // namespace
} // namespace ponsim
