// The whitelist is what is bound. These tests check looking ONUs up, ids in use, descriptions, and the information of
// some ONUs.
#include "rows.h"
#include "support.h"

namespace ponsim
{
namespace
{

namespace entry = layout::whitelist_entry;

constexpr uint32_t bytes_that_count = 776;

bsp_pon_msg describe_record(uint32_t pon_port, uint32_t onu_id, const std::string &text)
{
    bsp_pon_msg record = record_of(BSP_CMD_ONU_DESCRIPTION_SET, pon_port, onu_id);
    text.copy(record.text237, sizeof record.text237);
    return record;
}

AnswerRecord look_up(ServiceFixture &fixture, uint32_t pon_port, uint32_t onu_id, const Mac &mac = {})
{
    return AnswerRecord(fixture.ask(record_of(BSP_CMD_WHITELIST_GET, pon_port, onu_id, mac)));
}

TEST(WhiteList, TellsAllThatIsKeptOfABoundOnu)
{
    ServiceFixture fixture({.seed = 1, .ports = 1, .arrivals = 1, .silent = 0});
    const Arrival &onu = fixture.port(1).arrivals[0];
    bsp_pon_msg bind = record_of(BSP_CMD_ONU_BIND, 1, 5, onu.mac);
    bind.arg_value = 7;
    strcpy(bind.text237, "a");
    strcpy(bind.text173, "b");
    strcpy(bind.text365, "c");
    fixture.send(bind);
    fixture.send(describe_record(1, 5, "in the cellar"));
    bsp_pon_msg reboot = record_of(BSP_CMD_ONU_REBOOT_BATCH, 1);
    put(reboot, layout::onu_batch::onu_set, words_of(ids({5})));
    fixture.send(reboot);
    fixture.settle();

    const AnswerRecord answer = look_up(fixture, 1, 5);
    EXPECT_EQ(answer.status, BSP_OK);
    EXPECT_EQ(answer.record.cmd, uint32_t{BSP_CMD_WHITELIST_GET});
    EXPECT_EQ(answer.record.pon_port, 1u);
    EXPECT_EQ(answer.record.onu_id, 5u);
    EXPECT_EQ(std::to_array(answer.record.onu_mac), onu.mac);
    EXPECT_EQ(answer.record.arg_value, 7u);
    EXPECT_STREQ(answer.record.text237, "a");
    EXPECT_STREQ(answer.record.text173, "b");
    EXPECT_STREQ(answer.record.text365, "c");
    EXPECT_EQ(answer.get(entry::state), 1u);
    EXPECT_EQ(answer.get(entry::distance), onu.distance);
    EXPECT_EQ(answer.get(entry::authenticated), 1u);
    EXPECT_EQ(answer.get(entry::exempt), 0u);
    EXPECT_EQ(answer.get(entry::supported), 1u);
    EXPECT_EQ(answer.get(entry::reboots), 1u);
    EXPECT_EQ(answer.text(entry::description), "in the cellar");
    EXPECT_EQ(answer.text(entry::loid), onu.loid);
}

TEST(WhiteList, AllThatCountsIsWithin776Bytes)
{
    for (const catalogue::Field &field :
         catalogue::find_layout(*catalogue::find_command("BSP_CMD_WHITELIST_GET"), true)->fields)
        EXPECT_LE(field.offset + field.size, bytes_that_count) << field.name;
}

TEST(WhiteList, AnOfflineOnuHasNeitherDistanceNorLoid)
{
    ServiceFixture fixture;
    fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1)));
    const AnswerRecord answer = look_up(fixture, 1, 5);
    EXPECT_EQ(answer.get(entry::state), 0u);
    EXPECT_EQ(answer.get(entry::distance), 0u);
    EXPECT_EQ(answer.get(entry::authenticated), 0u);
    EXPECT_EQ(answer.text(entry::loid), "");
}

TEST(WhiteList, AnUnauthenticatedOnuIsOneUntilItIsConfirmed)
{
    ServiceFixture fixture({.seed = 1, .ports = 1, .arrivals = 1, .silent = 0});
    fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 5, fixture.port(1).arrivals[0].mac));
    bsp_pon_msg mode = record_of(BSP_CMD_AUTH_SET, 1);
    mode.arg_word12 = 1;
    fixture.send(mode);
    EXPECT_EQ(look_up(fixture, 1, 5).get(entry::state), 2u);
    EXPECT_EQ(look_up(fixture, 1, 5).get(entry::authenticated), 0u);
    fixture.send(record_of(BSP_CMD_ONU_CONFIRM, 1, 5));
    EXPECT_EQ(look_up(fixture, 1, 5).get(entry::state), 1u);
    EXPECT_EQ(look_up(fixture, 1, 5).get(entry::exempt), 1u);
}

TEST(WhiteList, FindsByIdByAddressOrByBoth)
{
    ServiceFixture fixture;
    fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 0, stranger(1)));
    fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(2)));
    EXPECT_EQ(look_up(fixture, 1, 5).record.onu_mac[5], 2);
    EXPECT_EQ(look_up(fixture, 1, 0, stranger(2)).record.onu_id, 5u);
    EXPECT_EQ(look_up(fixture, 1, 5, stranger(2)).record.onu_id, 5u);
    EXPECT_EQ(look_up(fixture, 1, 0).record.onu_mac[5], 1);
}

TEST(WhiteList, WhatIsNotBoundIsSaid)
{
    ServiceFixture fixture;
    fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1)));
    const auto status = [&](uint32_t pon_port, uint32_t onu_id, const Mac &mac) {
        return fixture.ask(record_of(BSP_CMD_WHITELIST_GET, pon_port, onu_id, mac)).status;
    };
    EXPECT_EQ(status(1, 6, {}), PON_ERR_NOT_BOUND);
    EXPECT_EQ(status(1, 0, {}), PON_ERR_NOT_BOUND);
    EXPECT_EQ(status(2, 0, stranger(1)), PON_ERR_NOT_BOUND);
    EXPECT_EQ(status(1, 5, stranger(2)), PON_ERR_MISMATCH);
    EXPECT_EQ(status(1, 128, {}), PON_ERR_BAD_ONU_ID);
    EXPECT_EQ(status(17, 5, {}), PON_ERR_NO_PORT);
}

TEST(WhiteList, ItsCodeByDatagramAsksForOnuInformation)
{
    ServiceFixture fixture;
    fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1)));
    EXPECT_EQ(fixture.ask(record_of(BSP_CMD_WHITELIST_GET, 1, 5)).result, std::nullopt);
    const Reply reply = fixture.ask(record_of(BSP_CMD_ONU_INFO_GET, 1, 5), catalogue::Call::dgram_get);
    EXPECT_TRUE(reply.result);
    EXPECT_FALSE(reply.answer);
}

TEST(IdUsage, TellsTheIdsInUseOnEachList)
{
    ServiceFixture fixture;
    for (uint8_t onu_id : {0, 31, 32, 127})
        fixture.send(record_of(BSP_CMD_ONU_BIND, 1, onu_id, stranger(onu_id)));
    for (uint8_t index : {200, 201})
        fixture.send(record_of(BSP_CMD_BLACKLIST_ADD_AUTO, 1, 0, stranger(index)));
    const AnswerRecord white(fixture.ask(record_of(BSP_CMD_WHITELIST_IDS, 1)));
    EXPECT_EQ(white.get(layout::id_usage::id_set), (std::array<uint32_t, 4>{0x80000001, 1, 0, 0x80000000}));
    EXPECT_EQ(white.get(layout::id_usage::count), 4u);
    const AnswerRecord black(fixture.ask(record_of(BSP_CMD_BLACKLIST_IDS, 1)));
    EXPECT_EQ(black.get(layout::id_usage::id_set), (std::array<uint32_t, 4>{0b110, 0, 0, 0}));
    EXPECT_EQ(black.get(layout::id_usage::count), 2u);
    EXPECT_EQ(AnswerRecord(fixture.ask(record_of(BSP_CMD_WHITELIST_IDS, 2))).get(layout::id_usage::count), 0u);
}

TEST(IdUsage, NeedsAPort)
{
    ServiceFixture fixture;
    for (uint32_t command : {BSP_CMD_WHITELIST_IDS, BSP_CMD_BLACKLIST_IDS})
        for (uint32_t pon_port : {0, 17})
            EXPECT_EQ(fixture.ask(record_of(command, pon_port)).status, PON_ERR_NO_PORT);
}

TEST(Description, GoesWithTheBinding)
{
    OltFixture fixture;
    fixture.bind(1, 5, stranger(1));
    EXPECT_EQ(fixture.done(describe_onu(fixture.olt, 1, 5, "roof")), BSP_OK);
    fixture.bind(1, 5, stranger(1));
    EXPECT_EQ(fixture.port(1).bindings[5]->description, "roof");
    fixture.bind(1, 3, stranger(2));
    fixture.done(sort_onus(fixture.olt, 1, ids({3, 5})));
    EXPECT_EQ(fixture.port(1).bindings[3]->description, "roof");
    EXPECT_EQ(fixture.port(1).bindings[5]->description, "");
    fixture.done(release_onu(fixture.olt, 1, 3, {}));
    fixture.bind(1, 3, stranger(1));
    EXPECT_EQ(fixture.port(1).bindings[3]->description, "");
}

TEST(Description, NeedsABoundOnu)
{
    OltFixture fixture;
    EXPECT_EQ(fixture.done(describe_onu(fixture.olt, 1, 5, "roof")), PON_ERR_NOT_BOUND);
    EXPECT_EQ(fixture.done(describe_onu(fixture.olt, 1, 128, "roof")), PON_ERR_BAD_ONU_ID);
    EXPECT_EQ(fixture.done(describe_onu(fixture.olt, 3, 5, "roof")), PON_ERR_NO_PORT);
}

TEST(Description, Is127BytesOfUtf8AtMost)
{
    ServiceFixture fixture;
    fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1)));
    EXPECT_EQ(fixture.send(describe_record(1, 5, std::string(128, 'x'))), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.send(describe_record(1, 5, "\xc3")), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.send(describe_record(1, 5, std::string(127, 'x'))), BSP_OK);
    EXPECT_EQ(fixture.port(1).bindings[5]->description, std::string(127, 'x'));
    EXPECT_EQ(fixture.send(describe_record(1, 5, "")), BSP_OK);
    EXPECT_EQ(fixture.port(1).bindings[5]->description, "");
}

TEST(OnuInfoGet, IsOfAllPortsOneOrOneOnu)
{
    ServiceFixture fixture({.seed = 1, .ports = 3, .arrivals = 4, .silent = 0});
    const Mac bound = fixture.port(2).arrivals[0].mac;
    const Mac waiting = fixture.port(2).arrivals[1].mac;
    fixture.send(record_of(BSP_CMD_ONU_BIND, 2, 5, bound));
    const auto macs = [&](uint32_t pon_port, uint32_t onu_id, const Mac &mac) {
        const Reply reply =
            fixture.ask(record_of(BSP_CMD_ONU_INFO_GET, pon_port, onu_id, mac), catalogue::Call::dgram_get);
        EXPECT_EQ(reply.status, BSP_OK);
        std::vector<std::string> found;
        const rapidjson::Document rows = parse(reply.result.value());
        for (const auto &row : rows.GetArray())
            found.push_back(row["mac"].GetString());
        return found;
    };
    EXPECT_EQ(macs(0, 0, {}).size(), 12u);
    EXPECT_EQ(macs(2, 0, {}).size(), 4u);
    EXPECT_EQ(macs(2, 5, {}), std::vector{text::mac_text(bound)});
    EXPECT_EQ(macs(0, 0, bound), std::vector{text::mac_text(bound)});
    EXPECT_EQ(macs(2, 5, bound), std::vector{text::mac_text(bound)});
    EXPECT_EQ(macs(0, 0, waiting), std::vector{text::mac_text(waiting)});
}

TEST(OnuInfoGet, AnOnuThatIsNotThereGivesAnEmptyTable)
{
    ServiceFixture fixture({.seed = 1, .ports = 3, .arrivals = 4, .silent = 0});
    fixture.send(record_of(BSP_CMD_ONU_BIND, 2, 5, stranger(1)));
    for (const bsp_pon_msg &record :
         {record_of(BSP_CMD_ONU_INFO_GET, 2, 6), record_of(BSP_CMD_ONU_INFO_GET, 1, 0, stranger(1)),
          record_of(BSP_CMD_ONU_INFO_GET, 2, 6, stranger(1)),
          record_of(BSP_CMD_ONU_INFO_GET, 2, 5, fixture.port(2).arrivals[0].mac)}) {
        const Reply reply = fixture.ask(record, catalogue::Call::dgram_get);
        EXPECT_EQ(reply.status, PON_ERR_NOT_BOUND);
        EXPECT_EQ(reply.result, "[]");
    }
    EXPECT_EQ(fixture.ask(record_of(BSP_CMD_ONU_INFO_GET, 4), catalogue::Call::dgram_get).status, PON_ERR_NO_PORT);
    EXPECT_EQ(fixture.ask(record_of(BSP_CMD_ONU_INFO_GET, 1, 128), catalogue::Call::dgram_get).status,
              PON_ERR_BAD_ONU_ID);
}

} // namespace
} // namespace ponsim
