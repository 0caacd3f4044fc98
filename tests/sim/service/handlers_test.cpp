// These tests send commands as records.
#include <cstring>
#include <set>

#include "catalogue.h"
#include "support.h"

namespace ponsim
{
namespace
{

bsp_pon_msg bind_record(const Mac &mac = stranger(1))
{
    return record_of(BSP_CMD_ONU_BIND, 1, 5, mac);
}

TEST(Handlers, EveryCommandOfTheCatalogueIsKnown)
{
    for (const catalogue::Command &command : catalogue::commands())
        EXPECT_NE(find_handler(command.channel->type, command.code, command.call.value_or(catalogue::Call::get)),
                  nullptr)
            << command.name;
}

TEST(Handlers, NoOtherCommandIsKnown)
{
    ServiceFixture fixture;
    for (uint32_t code = 0; code < 1100; ++code)
        if (!catalogue::find_command(BSP_MSG_PON, code)) {
            EXPECT_EQ(fixture.send(record_of(code)), PON_ERR_UNKNOWN_COMMAND) << code;
        }
    EXPECT_EQ(fixture.send(record_of(0xffffffff)), PON_ERR_UNKNOWN_COMMAND);
}

TEST(Handlers, ACommandBelongsToItsChannel)
{
    ServiceFixture fixture;
    const bsp_onu_msg record{.onu_pon_port = 1,
                             .onu_onu_id = 1,
                             .onu_uni_port = 0,
                             .reserved9 = {},
                             .onu_cmd = BSP_CMD_ONU_BIND,
                             .onu_word20 = {},
                             .onu_arg24 = 0,
                             .reserved28 = {},
                             .onu_data = {}};
    EXPECT_EQ(fixture.simulator.handle({BSP_MSG_ONU_CFG, &record, sizeof record}).status, PON_ERR_UNKNOWN_COMMAND);
}

TEST(Handlers, AChannelWithoutCommandsOrUnknownIsAnswered)
{
    ServiceFixture fixture;
    const bsp_profile_msg record{};
    EXPECT_EQ(fixture.simulator.handle({BSP_MSG_PROFILE, &record, sizeof record}).status, PON_ERR_UNKNOWN_COMMAND);
    EXPECT_EQ(fixture.simulator.handle({233, &record, sizeof record}).status, PON_ERR_UNKNOWN_COMMAND);
}

TEST(Handlers, ARecordHasTheLengthOfItsChannel)
{
    ServiceFixture fixture;
    char record[sizeof(bsp_pon_msg) + 1] = {};
    const bsp_pon_msg bind = bind_record();
    memcpy(record, &bind, sizeof bind);
    for (uint32_t length : {0u, 3u, 943u, 945u})
        EXPECT_EQ(fixture.simulator.handle({BSP_MSG_PON, record, length}).status, PON_ERR_BAD_RECORD) << length;
    EXPECT_EQ(fixture.simulator.handle({BSP_MSG_PON, record, 944}).status, BSP_OK);
}

TEST(Handlers, BindTakesTextsAndModeFromTheirFields)
{
    ServiceFixture fixture;
    bsp_pon_msg record = bind_record();
    record.arg_value = 0x01020304;
    strcpy(record.text237, "first");
    strcpy(record.text173, "second");
    strcpy(record.text365, "third");
    EXPECT_EQ(fixture.send(record), BSP_OK);
    const Binding wanted{stranger(1), 0x01020304, "first", "second", "third"};
    EXPECT_EQ(fixture.simulator.olt().port(1)->bindings[5], wanted);
}

TEST(Handlers, AutomaticBindIgnoresTheRecordsId)
{
    ServiceFixture fixture;
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_BIND_AUTO, 1, 77, stranger(1))), BSP_OK);
    EXPECT_EQ(fixture.simulator.olt().find(stranger(1)), (OnuKey{1, 1}));
}

TEST(Handlers, ATextMayFillItsFieldButForTheNul)
{
    ServiceFixture fixture;
    bsp_pon_msg record = bind_record();
    memset(record.text237, 'x', sizeof record.text237 - 1);
    EXPECT_EQ(fixture.send(record), BSP_OK);
    EXPECT_EQ(fixture.simulator.olt().port(1)->bindings[5]->text_a, std::string(127, 'x'));
}

TEST(Handlers, ATextThatDoesNotEndInItsFieldIsRefused)
{
    for (const auto &[offset, size] : {std::pair{237u, 128u}, {173u, 64u}, {365u, 64u}}) {
        ServiceFixture fixture;
        bsp_pon_msg record = bind_record();
        memset(reinterpret_cast<char *>(&record) + offset, 'x', size);
        EXPECT_EQ(fixture.send(record), PON_ERR_BAD_RECORD) << offset;
    }
}

TEST(Handlers, TextsAreUtf8WithoutControlCharacters)
{
    for (const char *bad : {"\x01", "tab\t", "\x7f", "\xff", "cut \xc3", "\xc0\x80", "\xed\xa0\x80"}) {
        ServiceFixture fixture;
        bsp_pon_msg record = bind_record();
        strcpy(record.text365, bad);
        EXPECT_EQ(fixture.send(record), PON_ERR_BAD_RECORD) << bad;
    }
    ServiceFixture fixture;
    bsp_pon_msg record = bind_record();
    strcpy(record.text365, "Gebäude 3 \"Süd\" \\ 光 😀");
    EXPECT_EQ(fixture.send(record), BSP_OK);
}

TEST(Handlers, ASetOfIdsIsFourWordsLowestBitFirst)
{
    ServiceFixture fixture;
    for (uint8_t onu_id : {0, 31, 32, 64, 96, 127})
        fixture.send(record_of(BSP_CMD_ONU_BIND, 1, onu_id, stranger(onu_id)));
    bsp_pon_msg record = record_of(BSP_CMD_ONU_RELEASE_BATCH, 1);
    put(record, layout::onu_batch::onu_set, layout::IdSet{0x80000000, 0x00000001, 0, 0x80000000});
    EXPECT_EQ(fixture.send(record), BSP_OK);
    std::set<uint32_t> left;
    for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id)
        if (fixture.simulator.olt().port(1)->bindings[onu_id]) left.insert(onu_id);
    EXPECT_EQ(left, (std::set<uint32_t>{0, 64, 96}));
}

TEST(Handlers, ReleaseByIdNeedsNoMac)
{
    ServiceFixture fixture;
    fixture.send(bind_record());
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_RELEASE, 1, 5)), BSP_OK);
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_RELEASE, 1, 5)), PON_ERR_NOT_BOUND);
}

TEST(Handlers, ReleaseAllAndOfflineReachTheirPort)
{
    ServiceFixture fixture;
    fixture.send(record_of(BSP_CMD_ONU_BIND, 2, 1, stranger(1)));
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_RELEASE_OFFLINE, 2)), BSP_OK);
    EXPECT_EQ(fixture.simulator.olt().find(stranger(1)), std::nullopt);
    fixture.send(record_of(BSP_CMD_ONU_BIND, 2, 1, stranger(1)));
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_RELEASE_ALL, 2)), BSP_OK);
    EXPECT_EQ(fixture.simulator.olt().find(stranger(1)), std::nullopt);
}

TEST(Handlers, SupportIs0Or1)
{
    ServiceFixture fixture;
    bsp_pon_msg record = record_of(BSP_CMD_ONU_SUPPORT_SET, 1, 0, stranger(1));
    record.arg_value = 2;
    EXPECT_EQ(fixture.send(record), PON_ERR_BAD_RECORD);
    record.arg_value = 0;
    EXPECT_EQ(fixture.send(record), BSP_OK);
    EXPECT_EQ(fixture.send(bind_record()), PON_ERR_UNSUPPORTED);
    record.arg_value = 1;
    EXPECT_EQ(fixture.send(record), BSP_OK);
    EXPECT_EQ(fixture.send(bind_record()), BSP_OK);
}

TEST(Handlers, OnlyAViewHasAResult)
{
    ServiceFixture fixture;
    EXPECT_EQ(fixture.simulator.handle(message_of(bind_record())).result, std::nullopt);
    EXPECT_TRUE(fixture.simulator.handle(message_of(record_of(BSP_CMD_VIEW_BASE_INFO_WEB))).result);
}

} // namespace
} // namespace ponsim
