// These tests check image banks of ONUs, images that are pushed to them, and what a restart makes of both.
#include "model/lifecycle/images.h"
#include "optics.h"
#include "rows.h"
#include "upgrade.h"

namespace ponsim
{
namespace
{

constexpr uint32_t part_size = 1504;
constexpr ModelTime in_download = 5 * ms_per_second;
constexpr ModelTime in_verification = 12 * ms_per_second;

// At the one port of this OLT `size` ONUs that have arrived are bound to the ids from 1 on. An upgrade type for the
// kind of the first one has an image file of 1 MiB, which takes 10.24 s to download and 5 s to verify.
struct Pushing : Desk {
    explicit Pushing(uint32_t size = 1, const std::string &file = {})
        : Desk({.seed = 1, .ports = 1, .arrivals = 8, .silent = 0}, file)
    {
        for (uint32_t onu_id = 1; onu_id <= size; ++onu_id)
            send(record_of(BSP_CMD_ONU_BIND, 1, onu_id, port(1).arrivals[onu_id - 1].mac));
    }

    const Mac &mac(uint32_t onu_id = 1) const { return port(1).bindings[onu_id]->mac; }
    DeviceType kind(uint32_t onu_id = 1) const { return *device_of(1, mac(onu_id)).type; }
    std::string own_software() const { return std::string(device_of(1, mac()).software); }
    void add_image(const DeviceType &type, const std::string &version = "9.9", const std::string &name = "new")
    {
        const uint32_t status =
            add_type(*this, name, std::string(type.vendor), std::string(type.model), version, 1024 * 1024, "onu.img");
        EXPECT_EQ(status, BSP_OK);
    }

    uint32_t tell(uint32_t channel, const bsp_onu_msg &record)
    {
        Message message = message_of(channel, record);
        message.call = catalogue::Call::set;
        return simulator.handle(message).status;
    }
    uint32_t write(uint32_t offset, const std::string &bytes, uint32_t size, const std::string &version = {},
                   uint32_t onu_id = 1)
    {
        namespace at = layout::onu_image_part;
        bsp_onu_msg record = onu_record_of(BSP_CMD_ONU_IMAGE_WRITE, 1, onu_id);
        put(record, at::offset, offset);
        put(record, at::size, size);
        put(record, at::length, bytes.size());
        auto *const start = reinterpret_cast<char *>(&record);
        version.copy(start + at::version.offset, 17);
        bytes.copy(start + at::data.offset, part_size);
        return tell(BSP_MSG_ONU_INFO, record);
    }
    // Pushes the whole image, part by part.
    void push(const std::string &image, const std::string &version, uint32_t onu_id = 1)
    {
        for (uint32_t offset = 0; offset < image.size(); offset += part_size)
            ASSERT_EQ(
                write(offset, image.substr(offset, part_size), static_cast<uint32_t>(image.size()), version, onu_id),
                BSP_OK);
    }
    uint32_t commit(uint32_t onu_id = 1)
    {
        return tell(BSP_MSG_ONU_INFO, onu_record_of(BSP_CMD_ONU_IMAGE_COMMIT, 1, onu_id));
    }
    uint32_t update(const std::string &file, uint32_t bank = 0, uint32_t onu_id = 1)
    {
        namespace at = layout::onu_image_update;
        bsp_onu_msg record = onu_record_of(BSP_CMD_ONU_IMAGE_UPDATE, 1, onu_id);
        put(record, at::bank, bank);
        file.copy(reinterpret_cast<char *>(&record) + at::file.offset, 256);
        return tell(BSP_MSG_ONU_CFG, record);
    }
    uint32_t begin_reboot(const OnuIds &onu_ids)
    {
        bsp_pon_msg record = record_of(BSP_CMD_ONU_REBOOT_BATCH, 1);
        put(record, layout::onu_batch::onu_set, words_of(onu_ids));
        return send(record);
    }
    uint32_t reboot(const OnuIds &onu_ids)
    {
        const uint32_t status = begin_reboot(onu_ids);
        settle();
        return status;
    }
    void power(const char *how)
    {
        control_line(*this, "power 1 " + text::mac_text(mac()) + ' ' + how);
        settle();
    }

    Reply query(uint32_t command)
    {
        const bsp_onu_msg record = onu_record_of(command, 1, 1);
        return simulator.handle(message_of(BSP_MSG_ONU_INFO, record));
    }
    template <class Field>
    Field number(uint32_t command, layout::At<Field> at)
    {
        const Reply reply = query(command);
        EXPECT_EQ(reply.status, BSP_OK);
        return reply.answer ? layout::load(reply.answer->data(), at) : Field{};
    }
    template <class Field>
    Field status(layout::At<Field> at)
    {
        return number(BSP_CMD_ONU_IMAGE_STATUS_GET, at);
    }
    // Returns the version of a bank, with a + when it is valid, an * when it is active and a ! when it is committed.
    std::string bank(uint32_t index)
    {
        namespace at = layout::onu_banks;
        const std::string answer = query(BSP_CMD_ONU_BANKS_GET).answer.value_or(std::string(sizeof(bsp_onu_msg), '?'));
        const auto times = [&](const auto &place, char mark) {
            return std::string(layout::load(answer.data(), place[index - 1]), mark);
        };
        return answer.c_str() + at::version[index - 1].offset + times(at::valid, '+') + times(at::active, '*') +
               times(at::committed, '!');
    }
    std::string banks() { return bank(1) + ' ' + bank(2); }
    std::string software(uint32_t onu_id = 1)
    {
        return std::string(device_at(simulator.olt(), port(1), mac(onu_id)).software);
    }

    Reply table(uint32_t onu_id) { return ask(record_of(BSP_CMD_VIEW_ONU_UPGRADE_STATUS, 1, onu_id)); }
    std::string cell(const char *column, uint32_t onu_id = 1)
    {
        const rapidjson::Document rows = parse(table(onu_id).result.value_or("[]"));
        if (rows.Size() != 1) return "no row";
        const rapidjson::Value &value = rows[0][column];
        if (value.IsString()) return value.GetString();
        return value.IsNull() ? "null" : std::to_string(value.GetUint());
    }
};

namespace state = layout::onu_image_status;

TEST(OnuImages, TheChecksumIsThatOfEthernet)
{
    EXPECT_EQ(crc32(0, "123456789"), 0xcbf43926u);
    EXPECT_EQ(crc32(crc32(0, "1234"), "56789"), 0xcbf43926u);
}

TEST(OnuImages, AnOnuComesWithOneImageInItsFirstBank)
{
    Pushing desk;
    EXPECT_EQ(desk.banks(), desk.own_software() + "+*! ");
    EXPECT_GT(desk.number(BSP_CMD_ONU_BANKS_GET, layout::onu_banks::size[0]), 0u);
    EXPECT_EQ(desk.query(BSP_CMD_ONU_IMAGE_STATUS_GET).answer->substr(352, 20), std::string(20, '\0'));
    EXPECT_EQ(desk.cell("running") + desk.cell("committed"), desk.own_software() + desk.own_software());
    EXPECT_EQ(desk.cell("bank") + desk.cell("run") + desk.cell("pushed"), "1nullnull");
}

TEST(OnuImages, OneThatIsPushedAndCommittedRunsAfterTheNextReboot)
{
    Pushing desk;
    desk.push(std::string(4000, 'i'), "3.1");
    EXPECT_EQ(desk.banks(), desk.own_software() + "+*! 3.1+");
    ASSERT_EQ(desk.commit(), BSP_OK);
    EXPECT_EQ(desk.banks(), desk.own_software() + "+* 3.1+!");
    EXPECT_EQ(desk.software(), desk.own_software());
    EXPECT_EQ(desk.cell("running") + desk.cell("committed"), desk.own_software() + "3.1");
    ASSERT_EQ(desk.reboot(ids({1})), BSP_OK);
    EXPECT_EQ(desk.banks(), desk.own_software() + "+ 3.1+*!");
    EXPECT_EQ(desk.software(), "3.1");
    EXPECT_EQ(desk.cell("bank") + desk.cell("running") + desk.cell("pushed"), "23.1started");
    EXPECT_EQ(desk.port(1).record(desk.mac()).reboots, 1u);
}

TEST(OnuImages, OneThatIsNotCommittedDoesNotRun)
{
    Pushing desk;
    desk.push("image", "3.1");
    ASSERT_EQ(desk.reboot(ids({1})), BSP_OK);
    EXPECT_EQ(desk.software(), desk.own_software());
    EXPECT_EQ(desk.commit(), BSP_OK);
}

TEST(OnuImages, PowerThatComesBackStartsTheCommittedOne)
{
    Pushing desk;
    desk.push("image", "3.1");
    desk.commit();
    desk.power("off");
    EXPECT_EQ(desk.software(), desk.own_software());
    desk.power("on");
    EXPECT_EQ(desk.software(), "3.1");
}

TEST(OnuImages, TheSecondOneGoesToTheFirstBank)
{
    Pushing desk;
    for (const char *version : {"3.1", "3.2"}) {
        desk.push("image", version);
        desk.commit();
        desk.reboot(ids({1}));
    }
    EXPECT_EQ(desk.banks(), "3.2+*! 3.1+");
}

TEST(OnuImages, TheStatusFollowsTheParts)
{
    Pushing desk;
    ASSERT_EQ(desk.write(0, "123", 9, "3.1"), BSP_OK);
    EXPECT_EQ(desk.status(state::state), 1u);
    EXPECT_EQ(desk.status(state::received), 3u);
    EXPECT_EQ(desk.status(state::size), 9u);
    EXPECT_EQ(desk.number(BSP_CMD_ONU_IMAGE_STATUS_GET, state::bank), 2u);
    EXPECT_EQ(desk.number(BSP_CMD_ONU_IMAGE_STATUS_GET, state::progress), 33u);
    EXPECT_EQ(desk.cell("pushed") + desk.cell("version") + desk.cell("received"), "receiving3.133");
    ASSERT_EQ(desk.write(3, "456789", 9), BSP_OK);
    EXPECT_EQ(desk.status(state::state), 2u);
    EXPECT_EQ(desk.status(state::crc), 0xcbf43926u);
    EXPECT_EQ(desk.number(BSP_CMD_ONU_BANKS_GET, layout::onu_banks::crc[1]), 0xcbf43926u);
    desk.commit();
    EXPECT_EQ(desk.status(state::state), 3u);
    desk.reboot(ids({1}));
    EXPECT_EQ(desk.status(state::state), 4u);
}

TEST(OnuImages, APartThatDoesNotGoOnWhereTheImageHasGotToIsRefused)
{
    Pushing desk;
    EXPECT_EQ(desk.write(3, "456", 9), PON_ERR_BAD_IMAGE);
    ASSERT_EQ(desk.write(0, "123", 9, "3.1"), BSP_OK);
    EXPECT_EQ(desk.write(4, "56", 9), PON_ERR_BAD_IMAGE);
    EXPECT_EQ(desk.write(2, "34", 9), PON_ERR_BAD_IMAGE);
    EXPECT_EQ(desk.write(3, "456", 8), PON_ERR_BAD_IMAGE);
    EXPECT_EQ(desk.write(3, "4567890", 9), PON_ERR_BAD_IMAGE);
    EXPECT_EQ(desk.status(state::received), 3u);
    ASSERT_EQ(desk.write(3, "456789", 9), BSP_OK);
    EXPECT_EQ(desk.write(9, "0", 9), PON_ERR_BAD_IMAGE);
}

TEST(OnuImages, APartHasBytesAndTheFirstOneASizeAndAVersion)
{
    Pushing desk;
    EXPECT_EQ(desk.write(0, "", 9, "3.1"), PON_ERR_BAD_RECORD);
    EXPECT_EQ(desk.write(0, std::string(part_size + 1, 'i'), 9999, "3.1"), PON_ERR_BAD_RECORD);
    EXPECT_EQ(desk.write(0, "123", 9, ""), PON_ERR_BAD_RECORD);
    EXPECT_EQ(desk.write(0, "123", 9, "3 1"), PON_ERR_BAD_RECORD);
    EXPECT_EQ(desk.write(0, "123", 9, "a.version.too.lon"), PON_ERR_BAD_RECORD);
    EXPECT_EQ(desk.write(0, "123", 0, "3.1"), PON_ERR_BAD_IMAGE);
    EXPECT_EQ(desk.write(0, "123", max_image_size + 1, "3.1"), PON_ERR_BAD_IMAGE);
    EXPECT_EQ(desk.write(0, "123", max_image_size, "a.version.of.16c"), BSP_OK);
    EXPECT_EQ(desk.bank(2), "a.version.of.16c");
}

TEST(OnuImages, TheFirstPartStartsAnewAndTheBankIsCommittedNoMore)
{
    Pushing desk;
    desk.push("image", "3.1");
    desk.commit();
    ASSERT_EQ(desk.write(0, "123", 9, "3.2"), BSP_OK);
    EXPECT_EQ(desk.banks(), desk.own_software() + "+*! 3.2");
    EXPECT_EQ(desk.status(state::received), 3u);
}

TEST(OnuImages, OnlyACompleteOneIsCommitted)
{
    Pushing desk;
    EXPECT_EQ(desk.commit(), PON_ERR_NO_IMAGE);
    desk.write(0, "123", 9, "3.1");
    EXPECT_EQ(desk.commit(), PON_ERR_NO_IMAGE);
    desk.write(3, "456789", 9);
    EXPECT_EQ(desk.commit(), BSP_OK);
    EXPECT_EQ(desk.commit(), BSP_OK);
    desk.reboot(ids({1}));
    EXPECT_EQ(desk.commit(), PON_ERR_NO_IMAGE);
}

TEST(OnuImages, ARebootLosesOneThatIsNotComplete)
{
    Pushing desk;
    desk.write(0, "123", 9, "3.1");
    desk.reboot(ids({1}));
    EXPECT_EQ(desk.banks(), desk.own_software() + "+*! ");
    EXPECT_EQ(desk.write(3, "456", 9), PON_ERR_BAD_IMAGE);
}

TEST(OnuImages, ABadOneFailsVerificationAndIsNotCommitted)
{
    Pushing desk;
    control_line(desk, "upgrade-fault 1 " + text::mac_text(desk.mac()) + " on");
    desk.push("image", "3.1");
    EXPECT_EQ(desk.status(state::state), 5u);
    EXPECT_EQ(desk.cell("pushed"), "failed");
    EXPECT_EQ(desk.bank(2), "3.1");
    EXPECT_EQ(desk.commit(), PON_ERR_NO_IMAGE);
}

TEST(OnuImages, AnOnuThatIsOfflineOrNotThereIsSaid)
{
    Pushing desk;
    EXPECT_EQ(desk.write(0, "123", 9, "3.1", 2), PON_ERR_NOT_BOUND);
    EXPECT_EQ(desk.commit(2), PON_ERR_NOT_BOUND);
    EXPECT_EQ(desk.update("onu.img", 0, 2), PON_ERR_NOT_BOUND);
    EXPECT_EQ(desk.table(2).status, PON_ERR_NOT_BOUND);
    EXPECT_EQ(desk.table(2).result, std::nullopt);
    EXPECT_EQ(desk.table(128).status, PON_ERR_BAD_ONU_ID);
    desk.power("off");
    EXPECT_EQ(desk.write(0, "123", 9, "3.1"), PON_ERR_OFFLINE);
    EXPECT_EQ(desk.commit(), PON_ERR_OFFLINE);
    EXPECT_EQ(desk.update("onu.img"), PON_ERR_OFFLINE);
    EXPECT_EQ(desk.query(BSP_CMD_ONU_BANKS_GET).status, PON_ERR_OFFLINE);
    EXPECT_EQ(desk.query(BSP_CMD_ONU_IMAGE_STATUS_GET).status, PON_ERR_OFFLINE);
    EXPECT_EQ(desk.cell("state"), "offline");
}

TEST(OnuImages, TheirStateIsKept)
{
    const Folder folder;
    {
        Pushing desk(1, folder.file("olt.db"));
        desk.push("image", "3.1");
        desk.commit();
    }
    Pushing desk(1, folder.file("olt.db"));
    EXPECT_EQ(desk.bank(2), "3.1+!");
    desk.reboot(ids({1}));
    EXPECT_EQ(desk.software(), "3.1");
}

TEST(OnuImages, AnUpgradeRunStartsItsImageFromTheOtherBank)
{
    Pushing desk;
    desk.add_image(desk.kind());
    ASSERT_EQ(desk.update("onu.img"), BSP_OK);
    EXPECT_EQ(desk.cell("run"), "downloading");
    pass(desk, hours);
    EXPECT_EQ(desk.cell("run"), "done");
    EXPECT_EQ(desk.software(), "9.9");
    EXPECT_EQ(desk.banks(), desk.own_software() + "+ 9.9+*!");
    namespace at = layout::onu_banks;
    EXPECT_EQ(desk.number(BSP_CMD_ONU_BANKS_GET, at::size[1]), 1024u * 1024);
}

TEST(OnuImages, AnUpgradeRunTakesThePlaceOfOneThatWasCommitted)
{
    Pushing desk;
    desk.push("image", "3.1");
    desk.commit();
    desk.add_image(desk.kind());
    desk.update("onu.img");
    pass(desk, hours);
    EXPECT_EQ(desk.banks(), desk.own_software() + "+ 9.9+*!");
    EXPECT_EQ(desk.status(state::state), 0u);
}

TEST(OnuImages, NoneIsPushedOrCommittedDuringAnUpgradeRun)
{
    Pushing desk;
    desk.push("image", "3.1");
    desk.add_image(desk.kind());
    desk.update("onu.img");
    EXPECT_EQ(desk.write(0, "123", 9, "3.2"), PON_ERR_UPGRADING);
    EXPECT_EQ(desk.commit(), PON_ERR_UPGRADING);
    EXPECT_EQ(desk.update("onu.img"), PON_ERR_UPGRADING);
}

TEST(OnuImages, AnUpdateNeedsAFileThatFitsAndTheOtherBank)
{
    Pushing desk;
    EXPECT_EQ(desk.update("onu.img"), PON_ERR_NO_UPGRADE_TYPE);
    DeviceType other = desk.kind();
    other.model = "X";
    desk.add_image(other, "9.9", "a");
    EXPECT_EQ(desk.update("onu.img"), PON_ERR_WRONG_UPGRADE_TYPE);
    desk.add_image(desk.kind(), "9.8", "b");
    desk.add_image(other, "9.7", "c");
    EXPECT_EQ(desk.update(""), PON_ERR_BAD_RECORD);
    EXPECT_EQ(desk.update("onu.img", 1), PON_ERR_BAD_RECORD);
    EXPECT_EQ(desk.update("onu.img", 3), PON_ERR_BAD_RECORD);
    ASSERT_EQ(desk.update("onu.img", 2), BSP_OK);
    pass(desk, hours);
    EXPECT_EQ(desk.software(), "9.8");
    EXPECT_EQ(desk.update("onu.img"), PON_ERR_UP_TO_DATE);
}

TEST(OnuImages, ARunWhoseOnuIsRebootedWhileItDownloadsOrVerifiesFails)
{
    for (ModelTime until : {in_download, in_verification}) {
        Pushing desk;
        desk.add_image(desk.kind());
        desk.update("onu.img");
        pass(desk, until);
        ASSERT_EQ(desk.reboot(ids({1})), BSP_OK);
        EXPECT_EQ(desk.cell("run") + desk.cell("reason"), "failedrebooted");
        pass(desk, hours);
        EXPECT_EQ(desk.software(), desk.own_software());
    }
}

TEST(OnuImages, ARunWhoseOnuHasPowerAgainFails)
{
    Pushing desk;
    desk.add_image(desk.kind());
    desk.update("onu.img");
    pass(desk, in_download);
    desk.power("off");
    EXPECT_EQ(desk.cell("run"), "downloading");
    desk.power("on");
    EXPECT_EQ(desk.cell("run") + desk.cell("reason"), "failedrebooted");
}

TEST(OnuImages, DownloadsThatAreLostGiveTheirPlacesToRunsThatWait)
{
    Pushing desk(8);
    for (uint32_t onu_id = 1; onu_id <= 8; ++onu_id) {
        const std::string name = "t" + std::to_string(onu_id);
        add_type(desk, name, std::string(desk.kind(onu_id).vendor), std::string(desk.kind(onu_id).model), "9.9",
                 1024 * 1024, name);
        ASSERT_EQ(desk.update(name, 0, onu_id), BSP_OK);
        pass(desk, 1);
    }
    // The sixth ONU waits, and has nothing to lose.
    ASSERT_EQ(desk.begin_reboot(ids({1, 2, 6})), BSP_OK);
    std::string runs;
    for (uint32_t onu_id = 1; onu_id <= 8; ++onu_id)
        runs += desk.cell("run", onu_id)[0];
    EXPECT_EQ(runs, "ffddddqq");
}

TEST(OnuImages, TheTableIsOfOneOnuOfAPortOrOfAll)
{
    Pushing desk(3);
    EXPECT_EQ(parse(desk.table(0).result.value()).Size(), 3u);
    EXPECT_EQ(desk.cell("onu_id", 2), "2");
    EXPECT_EQ(parse(desk.view(BSP_CMD_VIEW_ONU_UPGRADE_STATUS, 0)).Size(), 3u);
    EXPECT_EQ(desk.ask(record_of(BSP_CMD_VIEW_ONU_UPGRADE_STATUS, 2)).status, PON_ERR_NO_PORT);
}

TEST(OnuImages, TheLongestTableIsWithin1MiB)
{
    const Mac mac = Desk().port(16).arrivals[0].mac;
    Change kept;
    kept.put<Binding>({16, 127}, binding_of(mac));
    kept.put<PortRecord>(16, {{}, static_cast<uint32_t>(AuthMode::loid)}); // the ONU is unauthenticated
    OnuRecord record;
    record.software = std::string(16, 'v');
    kept.put<OnuRecord>({16, mac}, record);
    kept.put<UpgradeRun>({16, mac}, {"t", "9.9", 1, UpgradeRun::State::failed, 0, UpgradeRun::Reason::verification});
    Desk desk({.seed = 1, .ports = 16, .arrivals = 8, .silent = 0}, kept);
    const std::string row = desk.view(BSP_CMD_VIEW_ONU_UPGRADE_STATUS, 16);
    ASSERT_NE(row.find("unauthenticated"), std::string::npos);
    ASSERT_NE(row.find("verification"), std::string::npos);
    // These are the lengths of what is null here: states, a version and numbers of three digits.
    const size_t more = std::string_view("downloading").size() + std::string_view("committed").size() + 16 + 3 + 3;
    EXPECT_LT((row.size() + more) * 16 * onus_per_port, max_result);
}

} // namespace
} // namespace ponsim
