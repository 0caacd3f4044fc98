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
struct Pushing : ServiceFixture {
    explicit Pushing(uint32_t size = 1, const std::string &file = {})
        : ServiceFixture({.seed = 1, .ports = 1, .arrivals = 8, .silent = 0}, file)
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

    uint32_t send_onu(uint32_t channel, const bsp_onu_msg &record)
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
        return send_onu(BSP_MSG_ONU_INFO, record);
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
        return send_onu(BSP_MSG_ONU_INFO, onu_record_of(BSP_CMD_ONU_IMAGE_COMMIT, 1, onu_id));
    }
    uint32_t update(const std::string &file, uint32_t bank = 0, uint32_t onu_id = 1)
    {
        namespace at = layout::onu_image_update;
        bsp_onu_msg record = onu_record_of(BSP_CMD_ONU_IMAGE_UPDATE, 1, onu_id);
        put(record, at::bank, bank);
        file.copy(reinterpret_cast<char *>(&record) + at::file.offset, 256);
        return send_onu(BSP_MSG_ONU_CFG, record);
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
        const auto times = [&](const auto &key, char mark) {
            return std::string(layout::load(answer.data(), key[index - 1]), mark);
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
    Pushing fixture;
    EXPECT_EQ(fixture.banks(), fixture.own_software() + "+*! ");
    EXPECT_GT(fixture.number(BSP_CMD_ONU_BANKS_GET, layout::onu_banks::size[0]), 0u);
    EXPECT_EQ(fixture.query(BSP_CMD_ONU_IMAGE_STATUS_GET).answer->substr(352, 20), std::string(20, '\0'));
    EXPECT_EQ(fixture.cell("running") + fixture.cell("committed"), fixture.own_software() + fixture.own_software());
    EXPECT_EQ(fixture.cell("bank") + fixture.cell("run") + fixture.cell("pushed"), "1nullnull");
}

TEST(OnuImages, OneThatIsPushedAndCommittedRunsAfterTheNextReboot)
{
    Pushing fixture;
    fixture.push(std::string(4000, 'i'), "3.1");
    EXPECT_EQ(fixture.banks(), fixture.own_software() + "+*! 3.1+");
    ASSERT_EQ(fixture.commit(), BSP_OK);
    EXPECT_EQ(fixture.banks(), fixture.own_software() + "+* 3.1+!");
    EXPECT_EQ(fixture.software(), fixture.own_software());
    EXPECT_EQ(fixture.cell("running") + fixture.cell("committed"), fixture.own_software() + "3.1");
    ASSERT_EQ(fixture.reboot(ids({1})), BSP_OK);
    EXPECT_EQ(fixture.banks(), fixture.own_software() + "+ 3.1+*!");
    EXPECT_EQ(fixture.software(), "3.1");
    EXPECT_EQ(fixture.cell("bank") + fixture.cell("running") + fixture.cell("pushed"), "23.1started");
    EXPECT_EQ(fixture.port(1).record(fixture.mac()).reboots, 1u);
}

TEST(OnuImages, OneThatIsNotCommittedDoesNotRun)
{
    Pushing fixture;
    fixture.push("image", "3.1");
    ASSERT_EQ(fixture.reboot(ids({1})), BSP_OK);
    EXPECT_EQ(fixture.software(), fixture.own_software());
    EXPECT_EQ(fixture.commit(), BSP_OK);
}

TEST(OnuImages, PowerThatComesBackStartsTheCommittedOne)
{
    Pushing fixture;
    fixture.push("image", "3.1");
    fixture.commit();
    fixture.power("off");
    EXPECT_EQ(fixture.software(), fixture.own_software());
    fixture.power("on");
    EXPECT_EQ(fixture.software(), "3.1");
}

TEST(OnuImages, TheSecondOneGoesToTheFirstBank)
{
    Pushing fixture;
    for (const char *version : {"3.1", "3.2"}) {
        fixture.push("image", version);
        fixture.commit();
        fixture.reboot(ids({1}));
    }
    EXPECT_EQ(fixture.banks(), "3.2+*! 3.1+");
}

TEST(OnuImages, TheStatusFollowsTheParts)
{
    Pushing fixture;
    ASSERT_EQ(fixture.write(0, "123", 9, "3.1"), BSP_OK);
    EXPECT_EQ(fixture.status(state::state), 1u);
    EXPECT_EQ(fixture.status(state::received), 3u);
    EXPECT_EQ(fixture.status(state::size), 9u);
    EXPECT_EQ(fixture.number(BSP_CMD_ONU_IMAGE_STATUS_GET, state::bank), 2u);
    EXPECT_EQ(fixture.number(BSP_CMD_ONU_IMAGE_STATUS_GET, state::progress), 33u);
    EXPECT_EQ(fixture.cell("pushed") + fixture.cell("version") + fixture.cell("received"), "receiving3.133");
    ASSERT_EQ(fixture.write(3, "456789", 9), BSP_OK);
    EXPECT_EQ(fixture.status(state::state), 2u);
    EXPECT_EQ(fixture.status(state::crc), 0xcbf43926u);
    EXPECT_EQ(fixture.number(BSP_CMD_ONU_BANKS_GET, layout::onu_banks::crc[1]), 0xcbf43926u);
    fixture.commit();
    EXPECT_EQ(fixture.status(state::state), 3u);
    fixture.reboot(ids({1}));
    EXPECT_EQ(fixture.status(state::state), 4u);
}

TEST(OnuImages, APartThatDoesNotGoOnWhereTheImageHasGotToIsRefused)
{
    Pushing fixture;
    EXPECT_EQ(fixture.write(3, "456", 9), PON_ERR_BAD_IMAGE);
    ASSERT_EQ(fixture.write(0, "123", 9, "3.1"), BSP_OK);
    EXPECT_EQ(fixture.write(4, "56", 9), PON_ERR_BAD_IMAGE);
    EXPECT_EQ(fixture.write(2, "34", 9), PON_ERR_BAD_IMAGE);
    EXPECT_EQ(fixture.write(3, "456", 8), PON_ERR_BAD_IMAGE);
    EXPECT_EQ(fixture.write(3, "4567890", 9), PON_ERR_BAD_IMAGE);
    EXPECT_EQ(fixture.status(state::received), 3u);
    ASSERT_EQ(fixture.write(3, "456789", 9), BSP_OK);
    EXPECT_EQ(fixture.write(9, "0", 9), PON_ERR_BAD_IMAGE);
}

TEST(OnuImages, APartHasBytesAndTheFirstOneASizeAndAVersion)
{
    Pushing fixture;
    EXPECT_EQ(fixture.write(0, "", 9, "3.1"), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.write(0, std::string(part_size + 1, 'i'), 9999, "3.1"), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.write(0, "123", 9, ""), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.write(0, "123", 9, "3 1"), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.write(0, "123", 9, "a.version.too.lon"), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.write(0, "123", 0, "3.1"), PON_ERR_BAD_IMAGE);
    EXPECT_EQ(fixture.write(0, "123", max_image_size + 1, "3.1"), PON_ERR_BAD_IMAGE);
    EXPECT_EQ(fixture.write(0, "123", max_image_size, "a.version.of.16c"), BSP_OK);
    EXPECT_EQ(fixture.bank(2), "a.version.of.16c");
}

TEST(OnuImages, TheFirstPartStartsAnewAndTheBankIsCommittedNoMore)
{
    Pushing fixture;
    fixture.push("image", "3.1");
    fixture.commit();
    ASSERT_EQ(fixture.write(0, "123", 9, "3.2"), BSP_OK);
    EXPECT_EQ(fixture.banks(), fixture.own_software() + "+*! 3.2");
    EXPECT_EQ(fixture.status(state::received), 3u);
}

TEST(OnuImages, OnlyACompleteOneIsCommitted)
{
    Pushing fixture;
    EXPECT_EQ(fixture.commit(), PON_ERR_NO_IMAGE);
    fixture.write(0, "123", 9, "3.1");
    EXPECT_EQ(fixture.commit(), PON_ERR_NO_IMAGE);
    fixture.write(3, "456789", 9);
    EXPECT_EQ(fixture.commit(), BSP_OK);
    EXPECT_EQ(fixture.commit(), BSP_OK);
    fixture.reboot(ids({1}));
    EXPECT_EQ(fixture.commit(), PON_ERR_NO_IMAGE);
}

TEST(OnuImages, ARebootLosesOneThatIsNotComplete)
{
    Pushing fixture;
    fixture.write(0, "123", 9, "3.1");
    fixture.reboot(ids({1}));
    EXPECT_EQ(fixture.banks(), fixture.own_software() + "+*! ");
    EXPECT_EQ(fixture.write(3, "456", 9), PON_ERR_BAD_IMAGE);
}

TEST(OnuImages, ABadOneFailsVerificationAndIsNotCommitted)
{
    Pushing fixture;
    control_line(fixture, "upgrade-fault 1 " + text::mac_text(fixture.mac()) + " on");
    fixture.push("image", "3.1");
    EXPECT_EQ(fixture.status(state::state), 5u);
    EXPECT_EQ(fixture.cell("pushed"), "failed");
    EXPECT_EQ(fixture.bank(2), "3.1");
    EXPECT_EQ(fixture.commit(), PON_ERR_NO_IMAGE);
}

TEST(OnuImages, AnOnuThatIsOfflineOrNotThereIsSaid)
{
    Pushing fixture;
    EXPECT_EQ(fixture.write(0, "123", 9, "3.1", 2), PON_ERR_NOT_BOUND);
    EXPECT_EQ(fixture.commit(2), PON_ERR_NOT_BOUND);
    EXPECT_EQ(fixture.update("onu.img", 0, 2), PON_ERR_NOT_BOUND);
    EXPECT_EQ(fixture.table(2).status, PON_ERR_NOT_BOUND);
    EXPECT_EQ(fixture.table(2).result, std::nullopt);
    EXPECT_EQ(fixture.table(128).status, PON_ERR_BAD_ONU_ID);
    fixture.power("off");
    EXPECT_EQ(fixture.write(0, "123", 9, "3.1"), PON_ERR_OFFLINE);
    EXPECT_EQ(fixture.commit(), PON_ERR_OFFLINE);
    EXPECT_EQ(fixture.update("onu.img"), PON_ERR_OFFLINE);
    EXPECT_EQ(fixture.query(BSP_CMD_ONU_BANKS_GET).status, PON_ERR_OFFLINE);
    EXPECT_EQ(fixture.query(BSP_CMD_ONU_IMAGE_STATUS_GET).status, PON_ERR_OFFLINE);
    EXPECT_EQ(fixture.cell("state"), "offline");
}

TEST(OnuImages, TheirStateIsKept)
{
    const Folder folder;
    {
        Pushing fixture(1, folder.file("olt.db"));
        fixture.push("image", "3.1");
        fixture.commit();
    }
    Pushing fixture(1, folder.file("olt.db"));
    EXPECT_EQ(fixture.bank(2), "3.1+!");
    fixture.reboot(ids({1}));
    EXPECT_EQ(fixture.software(), "3.1");
}

TEST(OnuImages, AnUpgradeRunStartsItsImageFromTheOtherBank)
{
    Pushing fixture;
    fixture.add_image(fixture.kind());
    ASSERT_EQ(fixture.update("onu.img"), BSP_OK);
    EXPECT_EQ(fixture.cell("run"), "downloading");
    pass(fixture, hours);
    EXPECT_EQ(fixture.cell("run"), "done");
    EXPECT_EQ(fixture.software(), "9.9");
    EXPECT_EQ(fixture.banks(), fixture.own_software() + "+ 9.9+*!");
    namespace at = layout::onu_banks;
    EXPECT_EQ(fixture.number(BSP_CMD_ONU_BANKS_GET, at::size[1]), 1024u * 1024);
}

TEST(OnuImages, AnUpgradeRunTakesThePlaceOfOneThatWasCommitted)
{
    Pushing fixture;
    fixture.push("image", "3.1");
    fixture.commit();
    fixture.add_image(fixture.kind());
    fixture.update("onu.img");
    pass(fixture, hours);
    EXPECT_EQ(fixture.banks(), fixture.own_software() + "+ 9.9+*!");
    EXPECT_EQ(fixture.status(state::state), 0u);
}

TEST(OnuImages, NoneIsPushedOrCommittedDuringAnUpgradeRun)
{
    Pushing fixture;
    fixture.push("image", "3.1");
    fixture.add_image(fixture.kind());
    fixture.update("onu.img");
    EXPECT_EQ(fixture.write(0, "123", 9, "3.2"), PON_ERR_UPGRADING);
    EXPECT_EQ(fixture.commit(), PON_ERR_UPGRADING);
    EXPECT_EQ(fixture.update("onu.img"), PON_ERR_UPGRADING);
}

TEST(OnuImages, AnUpdateNeedsAFileThatFitsAndTheOtherBank)
{
    Pushing fixture;
    EXPECT_EQ(fixture.update("onu.img"), PON_ERR_NO_UPGRADE_TYPE);
    DeviceType other = fixture.kind();
    other.model = "X";
    fixture.add_image(other, "9.9", "a");
    EXPECT_EQ(fixture.update("onu.img"), PON_ERR_WRONG_UPGRADE_TYPE);
    fixture.add_image(fixture.kind(), "9.8", "b");
    fixture.add_image(other, "9.7", "c");
    EXPECT_EQ(fixture.update(""), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.update("onu.img", 1), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.update("onu.img", 3), PON_ERR_BAD_RECORD);
    ASSERT_EQ(fixture.update("onu.img", 2), BSP_OK);
    pass(fixture, hours);
    EXPECT_EQ(fixture.software(), "9.8");
    EXPECT_EQ(fixture.update("onu.img"), PON_ERR_UP_TO_DATE);
}

TEST(OnuImages, ARunWhoseOnuIsRebootedWhileItDownloadsOrVerifiesFails)
{
    for (ModelTime until : {in_download, in_verification}) {
        Pushing fixture;
        fixture.add_image(fixture.kind());
        fixture.update("onu.img");
        pass(fixture, until);
        ASSERT_EQ(fixture.reboot(ids({1})), BSP_OK);
        EXPECT_EQ(fixture.cell("run") + fixture.cell("reason"), "failedrebooted");
        pass(fixture, hours);
        EXPECT_EQ(fixture.software(), fixture.own_software());
    }
}

TEST(OnuImages, ARunWhoseOnuHasPowerAgainFails)
{
    Pushing fixture;
    fixture.add_image(fixture.kind());
    fixture.update("onu.img");
    pass(fixture, in_download);
    fixture.power("off");
    EXPECT_EQ(fixture.cell("run"), "downloading");
    fixture.power("on");
    EXPECT_EQ(fixture.cell("run") + fixture.cell("reason"), "failedrebooted");
}

TEST(OnuImages, DownloadsThatAreLostGiveTheirPlacesToRunsThatWait)
{
    Pushing fixture(8);
    for (uint32_t onu_id = 1; onu_id <= 8; ++onu_id) {
        const std::string name = "t" + std::to_string(onu_id);
        add_type(fixture, name, std::string(fixture.kind(onu_id).vendor), std::string(fixture.kind(onu_id).model),
                 "9.9", 1024 * 1024, name);
        ASSERT_EQ(fixture.update(name, 0, onu_id), BSP_OK);
        pass(fixture, 1);
    }
    // The sixth ONU waits, and has nothing to lose.
    ASSERT_EQ(fixture.begin_reboot(ids({1, 2, 6})), BSP_OK);
    std::string runs;
    for (uint32_t onu_id = 1; onu_id <= 8; ++onu_id)
        runs += fixture.cell("run", onu_id)[0];
    EXPECT_EQ(runs, "ffddddqq");
}

TEST(OnuImages, TheTableIsOfOneOnuOfAPortOrOfAll)
{
    Pushing fixture(3);
    EXPECT_EQ(parse(fixture.table(0).result.value()).Size(), 3u);
    EXPECT_EQ(fixture.cell("onu_id", 2), "2");
    EXPECT_EQ(parse(fixture.view(BSP_CMD_VIEW_ONU_UPGRADE_STATUS, 0)).Size(), 3u);
    EXPECT_EQ(fixture.ask(record_of(BSP_CMD_VIEW_ONU_UPGRADE_STATUS, 2)).status, PON_ERR_NO_PORT);
}

TEST(OnuImages, TheLongestTableIsWithin1MiB)
{
    const Mac mac = ServiceFixture().port(16).arrivals[0].mac;
    Change kept;
    kept.put<Binding>({16, 127}, binding_of(mac));
    kept.put<PortRecord>(16, {{}, static_cast<uint32_t>(AuthMode::loid)}); // the ONU is unauthenticated
    OnuRecord record;
    record.software = std::string(16, 'v');
    kept.put<OnuRecord>({16, mac}, record);
    kept.put<UpgradeRun>({16, mac}, {"t", "9.9", 1, UpgradeRun::State::failed, 0, UpgradeRun::Reason::verification});
    ServiceFixture fixture({.seed = 1, .ports = 16, .arrivals = 8, .silent = 0}, kept);
    const std::string row = fixture.view(BSP_CMD_VIEW_ONU_UPGRADE_STATUS, 16);
    ASSERT_NE(row.find("unauthenticated"), std::string::npos);
    ASSERT_NE(row.find("verification"), std::string::npos);
    // These are the lengths of what is null here: states, a version and numbers of three digits.
    const size_t more = std::string_view("downloading").size() + std::string_view("committed").size() + 16 + 3 + 3;
    EXPECT_LT((row.size() + more) * 16 * onus_per_port, max_result);
}

} // namespace
} // namespace ponsim
