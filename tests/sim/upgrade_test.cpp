// These tests check upgrade types, what they are bound to, and upgrade runs.
#include <fstream>

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
struct Fleet : Desk {
    explicit Fleet(uint32_t size, const std::string &file = {})
        : Desk({.seed = 1, .ports = 2, .arrivals = 128, .silent = 0}, file)
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

std::string types(Desk &desk)
{
    return ask(desk, UpgradeRecord(BSP_CMD_UPGRADE_TYPE_LIST)).result.value_or("no result");
}

TEST(UpgradeTypes, AreListedByName)
{
    Desk desk;
    EXPECT_EQ(types(desk), "[]");
    EXPECT_EQ(add_type(desk, "b", "SIMA", "S100", "2.0", 7, "b.img"), BSP_OK);
    EXPECT_EQ(add_type(desk, "a", "SIMB", "E020", "3.0", 8), BSP_OK);
    EXPECT_EQ(types(desk), R"([{"name":"a","vendor":"SIMB","model":"E020","version":"3.0","size":8,"file":""},)"
                           R"({"name":"b","vendor":"SIMA","model":"S100","version":"2.0","size":7,"file":"b.img"}])");
}

TEST(UpgradeTypes, OneOfTheSameNameTakesTheOthersPlace)
{
    Desk desk;
    add_type(desk, "a", "SIMA", "S100", "2.0", 7);
    EXPECT_EQ(add_type(desk, "a", "SIMA", "S100", "2.1", 7), BSP_OK);
    const rapidjson::Document rows = parse(types(desk));
    ASSERT_EQ(rows.Size(), 1u);
    EXPECT_STREQ(rows[0]["version"].GetString(), "2.1");
}

TEST(UpgradeTypes, NeedWordsAndASize)
{
    Desk desk;
    EXPECT_EQ(add_type(desk, "", "SIMA", "S100", "2.0", 7), PON_ERR_BAD_RECORD);
    EXPECT_EQ(add_type(desk, "a", "", "S100", "2.0", 7), PON_ERR_BAD_RECORD);
    EXPECT_EQ(add_type(desk, "a", "SIMA", "", "2.0", 7), PON_ERR_BAD_RECORD);
    EXPECT_EQ(add_type(desk, "a", "SIMA", "S100", "", 7), PON_ERR_BAD_RECORD);
    EXPECT_EQ(add_type(desk, "a", "SIMA", "S100", "2.0", 0), PON_ERR_BAD_RECORD);
    EXPECT_EQ(add_type(desk, "a b", "SIMA", "S100", "2.0", 7), PON_ERR_BAD_RECORD);
    EXPECT_EQ(add_type(desk, "a", "SIMA", "S100", "2\"0", 7), PON_ERR_BAD_RECORD);
    EXPECT_EQ(add_type(desk, std::string(32, 'a'), "SIMA", "S100", "2.0", 7), PON_ERR_BAD_RECORD);
    EXPECT_EQ(types(desk), "[]");
}

TEST(UpgradeTypes, AreAtMost32)
{
    Desk desk;
    for (int index = 0; index < 32; ++index)
        EXPECT_EQ(add_type(desk, "t" + std::to_string(index), "SIMA", "S100", "2.0", 7), BSP_OK);
    EXPECT_EQ(add_type(desk, "one-more", "SIMA", "S100", "2.0", 7), PON_ERR_TABLE_FULL);
    EXPECT_EQ(add_type(desk, "t0", "SIMA", "S100", "2.1", 7), BSP_OK);
}

TEST(UpgradeTypes, TheLongestOnesFit10240Bytes)
{
    Desk desk;
    for (char last = '@'; last < '@' + 32; ++last) {
        const char fill = last == '\\' ? '!' : last; // each type has a different name, and no name has a backslash
        EXPECT_EQ(add_type(desk, std::string(31, fill), "VVVV", std::string(15, 'M'), std::string(16, 'v'), 0xffffffff,
                           std::string(63, '"')),
                  BSP_OK);
    }
    EXPECT_EQ(parse(types(desk)).Size(), 32u);
    EXPECT_LE(types(desk).size(), 10240u);
}

TEST(UpgradeTypes, OneThatIsDeletedIsBoundNoMore)
{
    Fleet desk(1);
    desk.bind_port();
    bind_to_onus(desk, 1, ids({1}), "new");
    EXPECT_EQ(delete_type(desk, "new"), BSP_OK);
    EXPECT_EQ(desk.cell(1, "type"), "null");
    EXPECT_EQ(upgrade_one(desk, 1, 1), PON_ERR_NO_UPGRADE_TYPE);
    EXPECT_EQ(delete_type(desk, "new"), PON_ERR_NO_UPGRADE_TYPE);
}

TEST(UpgradeTypes, OneThatARunUsesStaysAsItIs)
{
    Fleet desk(1);
    desk.bind_port();
    ASSERT_EQ(upgrade_one(desk, 1, 1), BSP_OK);
    EXPECT_EQ(delete_type(desk, "new"), PON_ERR_UPGRADE_TYPE_IN_USE);
    EXPECT_EQ(add_type(desk, "new", *desk.kind(), "9.8", one_mib), PON_ERR_UPGRADE_TYPE_IN_USE);
    pass(desk, download + to_verify + to_reboot);
    EXPECT_EQ(delete_type(desk, "new"), BSP_OK);
}

uint32_t load(Desk &desk, const std::string &contents, std::string *problem = nullptr)
{
    const Folder folder;
    std::ofstream(folder.file("types")) << contents;
    const Reply reply = load_types(desk, folder.file("types"));
    if (problem) *problem = reply.problem;
    return reply.status;
}

TEST(UpgradeFiles, AddTypes)
{
    Desk desk;
    add_type(desk, "old", "SIMA", "S100", "1.0", 7);
    EXPECT_EQ(load(desk, "# types\n\n  a SIMA\tS100 2.0 5 # the first\nb SIMB E020 3.0 6"), BSP_OK);
    const rapidjson::Document rows = parse(types(desk));
    ASSERT_EQ(rows.Size(), 3u);
    EXPECT_STREQ(rows[1]["model"].GetString(), "E020");
    EXPECT_EQ(rows[1]["size"].GetUint(), 6u);
}

TEST(UpgradeFiles, AWrongLineChangesNothingAndIsNamed)
{
    for (const char *wrong :
         {"a SIMA S100 2.0", "a SIMA S100 2.0 0", "a SIMA S100 2.0 5x", "a SIMA S100 2.0 4294967296",
          "a SIMAX S100 2.0 5", "good SIMA S100 2.0 5", "a SIMA S100 2.0 5 6"}) {
        Desk desk;
        std::string problem;
        EXPECT_EQ(load(desk, std::string("good SIMA S100 2.0 5\n") + wrong, &problem), PON_ERR_BAD_RECORD) << wrong;
        EXPECT_NE(problem.find("/types:2: "), std::string::npos) << problem;
        EXPECT_EQ(types(desk), "[]");
    }
}

TEST(UpgradeFiles, HaveAtMost32TypesAnd64KiB)
{
    Desk desk;
    std::string lines;
    for (int index = 0; index < 32; ++index)
        lines += "t" + std::to_string(index) + " SIMA S100 2.0 5\n";
    EXPECT_EQ(load(desk, lines + "t32 SIMA S100 2.0 5\n"), PON_ERR_BAD_RECORD);
    lines.resize(64 * 1024, '\n');
    EXPECT_EQ(load(desk, lines + '\n'), PON_ERR_BAD_RECORD);
    EXPECT_EQ(types(desk), "[]");
    EXPECT_EQ(load(desk, lines), BSP_OK);
    EXPECT_EQ(parse(types(desk)).Size(), 32u);
    EXPECT_EQ(load(desk, "another SIMA S100 2.0 5"), PON_ERR_TABLE_FULL);
}

TEST(UpgradeFiles, OneThatCannotBeReadIsSaid)
{
    Desk desk;
    const Folder folder;
    EXPECT_EQ(load_types(desk, folder.file("none")).status, PON_ERR_NO_FILE);
    EXPECT_EQ(load_types(desk, folder.file(".")).status, PON_ERR_NO_FILE);
    const Reply relative = load_types(desk, "types");
    EXPECT_EQ(relative.status, PON_ERR_BAD_RECORD);
    EXPECT_NE(relative.problem, "");
}

TEST(UpgradeBinding, TheOnusOwnTypeGoesBeforeThatOfThePort)
{
    Fleet desk(2);
    add_type(desk, "own", *desk.kind(), "8.8", 1);
    desk.bind_port();
    EXPECT_EQ(bind_to_onus(desk, 1, ids({2}), "own"), BSP_OK);
    EXPECT_EQ(desk.cell(1, "type"), "new");
    EXPECT_EQ(desk.cell(2, "type"), "own");
    EXPECT_EQ(bind_to_onus(desk, 1, ids({2}), ""), BSP_OK);
    EXPECT_EQ(desk.cell(2, "type"), "new");
    EXPECT_EQ(bind_to_port(desk, 1, ""), BSP_OK);
    EXPECT_EQ(desk.cell(2, "type"), "null");
}

TEST(UpgradeBinding, IsOfAllTheIdsOrNone)
{
    Fleet desk(2);
    EXPECT_EQ(bind_to_onus(desk, 1, ids({1, 3}), "new"), PON_ERR_NOT_BOUND);
    EXPECT_EQ(bind_to_onus(desk, 1, {}, "new"), PON_ERR_BAD_RECORD);
    EXPECT_EQ(bind_to_onus(desk, 3, ids({1}), "new"), PON_ERR_NO_PORT);
    EXPECT_EQ(bind_to_onus(desk, 1, ids({1}), "none"), PON_ERR_NO_UPGRADE_TYPE);
    EXPECT_EQ(bind_to_port(desk, 3, "new"), PON_ERR_NO_PORT);
    EXPECT_EQ(bind_to_port(desk, 1, "none"), PON_ERR_NO_UPGRADE_TYPE);
    EXPECT_EQ(desk.cell(1, "type"), "null");
}

TEST(UpgradeRuns, DownloadVerifyRebootAndAreDone)
{
    Fleet desk(1);
    desk.bind_port();
    EXPECT_EQ(desk.run(1), "null");
    ASSERT_EQ(upgrade_one(desk, 1, 1), BSP_OK);
    EXPECT_EQ(desk.run(1) + desk.cell(1, "progress"), "downloading0");
    pass(desk, download / 2);
    EXPECT_EQ(desk.run(1) + desk.cell(1, "progress"), "downloading50");
    pass(desk, download / 2 - 1);
    EXPECT_EQ(desk.run(1) + desk.cell(1, "progress"), "downloading99");
    pass(desk, 1);
    EXPECT_EQ(desk.run(1) + desk.cell(1, "progress"), "verifying100");
    EXPECT_EQ(desk.cell(1, "state"), "online");
    pass(desk, to_verify);
    EXPECT_EQ(desk.run(1) + desk.cell(1, "state"), "rebootingoffline");
    EXPECT_NE(desk.cell(1, "software"), "9.9");
    pass(desk, to_reboot);
    EXPECT_EQ(desk.run(1) + desk.cell(1, "state"), "doneoffline") << "it has still to register";
    desk.settle();
    EXPECT_EQ(desk.cell(1, "state"), "online");
    EXPECT_EQ(desk.cell(1, "reason"), "null");
    EXPECT_EQ(desk.cell(1, "software"), "9.9");
}

TEST(UpgradeRuns, TheNewVersionShowsInTheConfigurationAndTheRebootIsCounted)
{
    Fleet desk(1);
    desk.bind_port();
    upgrade_one(desk, 1, 1);
    pass(desk, hours);
    const bsp_onu_msg record = onu_record_of(BSP_CMD_VIEW_ONU_CONFIG, 1, 1);
    const Reply reply = desk.simulator.handle(message_of(BSP_MSG_ONU_CFG, record));
    EXPECT_STREQ(parse(reply.result.value())[0]["software"].GetString(), "9.9");
    EXPECT_EQ(desk.port(1).record(desk.mac(1)).reboots, 1u);
}

TEST(UpgradeRuns, AnOnuThatCannotBeUpgradedIsSaid)
{
    Fleet desk(1);
    const DeviceType &kind = *desk.kind();
    EXPECT_EQ(upgrade_one(desk, 3, 1), PON_ERR_NO_PORT);
    EXPECT_EQ(upgrade_one(desk, 1, 128), PON_ERR_BAD_ONU_ID);
    EXPECT_EQ(upgrade_one(desk, 1, 2), PON_ERR_NOT_BOUND);
    EXPECT_EQ(upgrade_one(desk, 1, 1), PON_ERR_NO_UPGRADE_TYPE);
    add_type(desk, "vendor", "SIMX", std::string(kind.model), "9.9", 1);
    add_type(desk, "model", std::string(kind.vendor), "X", "9.9", 1);
    add_type(desk, "same", kind, std::string(device_of(1, desk.mac(1)).software), 1);
    for (const auto &[name, status] :
         {std::pair{"vendor", PON_ERR_WRONG_UPGRADE_TYPE}, std::pair{"model", PON_ERR_WRONG_UPGRADE_TYPE},
          std::pair{"same", PON_ERR_UP_TO_DATE}}) {
        bind_to_port(desk, 1, name);
        EXPECT_EQ(upgrade_one(desk, 1, 1), uint32_t{status}) << name;
        EXPECT_EQ(upgrade_all(desk, 1), PON_ERR_NOTHING_TO_UPGRADE) << name;
    }
    desk.send(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1)));
    EXPECT_EQ(upgrade_one(desk, 1, 5), PON_ERR_OFFLINE);
    EXPECT_EQ(upgrade_all(desk, 3), PON_ERR_NO_PORT);
    EXPECT_EQ(desk.run(1), "null");
}

TEST(UpgradeRuns, AnOnuHasOneAtATime)
{
    Fleet desk(1);
    desk.bind_port();
    for (ModelTime time : {ModelTime{0}, download, to_verify}) {
        pass(desk, time);
        EXPECT_EQ(upgrade_one(desk, 1, 1), time ? PON_ERR_UPGRADING : BSP_OK);
    }
    pass(desk, to_reboot);
    desk.settle();
    EXPECT_EQ(upgrade_one(desk, 1, 1), PON_ERR_UP_TO_DATE);
}

TEST(UpgradeRuns, ThoseOfAPortDownloadFourAtATime)
{
    Fleet desk(6);
    desk.bind_port();
    ASSERT_EQ(upgrade_all(desk, 1), BSP_OK);
    EXPECT_EQ(desk.in_state("downloading"), 4u);
    EXPECT_EQ(desk.in_state("queued"), 2u);
    EXPECT_EQ(upgrade_all(desk, 1), PON_ERR_NOTHING_TO_UPGRADE);
    pass(desk, download);
    EXPECT_EQ(desk.in_state("downloading"), 2u);
    EXPECT_EQ(desk.in_state("verifying"), 4u);
    pass(desk, download + to_verify + to_reboot);
    EXPECT_EQ(desk.in_state("done"), 6u);
}

TEST(UpgradeRuns, AFifthOneWaitsForADownloadToEnd)
{
    Fleet desk(5);
    desk.bind_port();
    for (uint32_t onu_id = 1; onu_id <= 5; ++onu_id) {
        EXPECT_EQ(upgrade_one(desk, 1, onu_id), BSP_OK);
        pass(desk, ms_per_second);
    }
    EXPECT_EQ(desk.run(5) + desk.cell(5, "progress"), "queued0");
    pass(desk, download - 5 * ms_per_second);
    EXPECT_EQ(desk.run(5), "downloading");
    EXPECT_EQ(desk.in_state("downloading"), 4u);
}

TEST(UpgradeRuns, OfAPortLeaveAsideWhatCannotBeUpgraded)
{
    Fleet desk(2);
    desk.bind_port();
    desk.send(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1)));
    upgrade_one(desk, 1, 1);
    pass(desk, hours);
    ASSERT_EQ(upgrade_all(desk, 1), BSP_OK);
    EXPECT_EQ(desk.run(1) + desk.run(2) + desk.run(5), "donedownloadingnull");
}

TEST(UpgradeRuns, OneWhoseOnuGoesOfflineFailsWhenItsStepIsDue)
{
    // These times are in the middle of the download, of verification, and of the reboot.
    for (ModelTime until : {download / 2, download + to_verify / 2, download + to_verify + to_reboot / 2}) {
        Fleet desk(1);
        desk.bind_port();
        upgrade_one(desk, 1, 1);
        pass(desk, until);
        bsp_pon_msg limits = record_of(BSP_CMD_OPT_RANGE_SET, 1);
        put(limits, layout::opt_range::max_distance, 0);
        ASSERT_EQ(desk.send(limits), BSP_OK);
        EXPECT_NE(desk.run(1), "failed");
        pass(desk, hours);
        EXPECT_EQ(desk.run(1) + desk.cell(1, "reason"), "failedoffline");
        EXPECT_EQ(desk.cell(1, "progress"), "null");
        EXPECT_EQ(desk.cell(1, "software"), device_of(1, desk.mac(1)).software);
    }
}

TEST(UpgradeRuns, OneWhoseOnuIsReleasedOrRejectedFails)
{
    for (const auto &[command, reason] :
         {std::pair{BSP_CMD_ONU_RELEASE, "released"}, std::pair{BSP_CMD_BLACKLIST_ADD_AUTO, "rejected"}}) {
        Fleet desk(1);
        desk.bind_port();
        upgrade_one(desk, 1, 1);
        const Mac mac = desk.mac(1);
        desk.send(record_of(command, 1, command == BSP_CMD_ONU_RELEASE ? 1 : 0, mac));
        ASSERT_FALSE(desk.port(1).bindings[1]);
        pass(desk, hours);
        const UpgradeProgress shown = upgrade_progress(desk.simulator.olt(), desk.port(1), mac);
        EXPECT_EQ(shown.state, "failed");
        EXPECT_EQ(shown.reason, reason);
    }
}

TEST(UpgradeRuns, OneThatWaitsAndCannotGoOnGivesItsTurnToTheNext)
{
    Fleet desk(6);
    desk.bind_port();
    for (uint32_t onu_id = 1; onu_id <= 6; ++onu_id) {
        upgrade_one(desk, 1, onu_id);
        pass(desk, 1);
    }
    const Mac mac = desk.mac(5);
    desk.send(record_of(BSP_CMD_ONU_RELEASE, 1, 5, mac));
    pass(desk, download - 6);
    EXPECT_EQ(upgrade_progress(desk.simulator.olt(), desk.port(1), mac).reason, "released");
    EXPECT_EQ(desk.run(6), "downloading");
}

TEST(UpgradeRuns, ABadImageFailsVerificationUntilTheFaultIsGone)
{
    Fleet desk(1);
    desk.bind_port();
    const std::string fault = "upgrade-fault 1 " + text::mac_text(desk.mac(1));
    control_line(desk, fault + " on");
    upgrade_one(desk, 1, 1);
    pass(desk, hours);
    EXPECT_EQ(desk.run(1) + desk.cell(1, "reason"), "failedverification");
    EXPECT_NE(desk.cell(1, "software"), "9.9");
    control_line(desk, fault + " off");
    EXPECT_EQ(upgrade_one(desk, 1, 1), BSP_OK);
    pass(desk, hours);
    EXPECT_EQ(desk.run(1), "done");
}

TEST(UpgradeRuns, TheFaultNeedsAPortAMacAddressAndASwitch)
{
    Desk desk;
    EXPECT_THROW(control_line(desk, "upgrade-fault 1 02:00:00:00:00:01"), ControlError);
    EXPECT_THROW(control_line(desk, "upgrade-fault 17 02:00:00:00:00:01 on"), ControlError);
    EXPECT_THROW(control_line(desk, "upgrade-fault 1 00:00:00:00:00:00 on"), ControlError);
    EXPECT_THROW(control_line(desk, "upgrade-fault 1 02:00:00:00:00:01 maybe"), ControlError);
}

TEST(UpgradeRuns, ALongStepGoesThroughAllOfTheirStates)
{
    Fleet small_steps(6), large_step(6);
    for (Fleet *desk : {&small_steps, &large_step}) {
        desk->bind_port();
        EXPECT_EQ(upgrade_all(*desk, 1), BSP_OK);
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
        Fleet desk(10, file);
        add_type(desk, "large", *desk.kind(), "9.9", 10 * one_mib);
        desk.bind_port();
        bind_to_onus(desk, 1, ids({6, 7, 8, 9}), "large");
        for (uint32_t onu_id : {2u, 6u}) // the run of one ONU fails before the restart, that of the other after it
            control_line(desk, "upgrade-fault 1 " + text::mac_text(desk.mac(onu_id)) + " on");
        upgrade_all(desk, 1);
        pass(desk, download + to_verify + to_reboot + ms_per_second);
        desk.simulator.keep_time();
        EXPECT_EQ(desk.in_state("done"), 3u);
        EXPECT_EQ(desk.in_state("failed"), 1u);
        EXPECT_EQ(desk.in_state("rebooting"), 1u);
        EXPECT_EQ(desk.in_state("downloading"), 4u);
        EXPECT_EQ(desk.in_state("queued"), 1u);
        shown = desk.view(BSP_CMD_VIEW_UPGRADE_BASE_INFO_WEB, 1);
        listed = types(desk);
    }
    Desk again({}, file);
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
