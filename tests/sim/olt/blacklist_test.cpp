// These tests check the blacklist of a port.
#include "rows.h"
#include "support.h"

namespace ponsim
{
namespace
{

std::string text_at(const OltFixture &fixture, uint32_t pon_port, uint32_t id)
{
    return fixture.port(pon_port).blacklist[id].value().text;
}

bsp_pon_msg add_record(uint32_t pon_port, const Mac &mac, const std::string &text = {})
{
    bsp_pon_msg record = record_of(BSP_CMD_BLACKLIST_ADD_AUTO, pon_port, 0, mac);
    put(record, layout::blacklist_text::text, text);
    return record;
}

bsp_pon_msg batch_record(uint32_t command, uint32_t pon_port, const OnuIds &ids)
{
    bsp_pon_msg record = record_of(command, pon_port);
    put(record, layout::blacklist_batch::id_set, words_of(ids));
    return record;
}

TEST(Blacklist, AWaitingOnuOnItNoLongerWaits)
{
    OltFixture fixture;
    EXPECT_EQ(fixture.reject(1, fixture.arrived(1)), BSP_OK);
    EXPECT_FALSE(fixture.waits(1, fixture.arrived(1)));
    EXPECT_TRUE(fixture.waits(1, fixture.arrived(1, 1)));
}

TEST(Blacklist, ABoundOnuIsReleasedByIt)
{
    OltFixture fixture;
    fixture.bind(1, 5, fixture.arrived(1));
    EXPECT_EQ(fixture.reject(1, fixture.arrived(1)), BSP_OK);
    EXPECT_EQ(fixture.bound(1, 5), Mac{});
    EXPECT_FALSE(fixture.waits(1, fixture.arrived(1)));
}

TEST(Blacklist, OneThatIsOnItIsNeitherBoundNorConfirmed)
{
    OltFixture fixture;
    const Mac mac = fixture.arrived(1);
    fixture.reject(1, mac);
    EXPECT_EQ(fixture.bind(1, mac), PON_ERR_BLACKLISTED);
    EXPECT_EQ(fixture.bind(1, 5, mac), PON_ERR_BLACKLISTED);
    EXPECT_EQ(fixture.confirm(1, 0, mac), PON_ERR_BLACKLISTED);
}

TEST(Blacklist, OneThatIsOnItStaysOutWhateverElseChanges)
{
    OltFixture fixture;
    const Arrival onu = fixture.arrival(1);
    fixture.reject(1, onu.mac);
    fixture.range(1, 0, 0);
    fixture.range(1, 0, max_distance);
    fixture.set_mode(1, AuthMode::loid);
    fixture.accept(1, onu.loid);
    EXPECT_FALSE(fixture.waits(1, onu.mac));
    EXPECT_EQ(fixture.olt.find(onu.mac), std::nullopt);
}

TEST(Blacklist, OneThatIsTakenOffWaitsAgain)
{
    OltFixture fixture;
    fixture.reject(1, fixture.arrived(1));
    EXPECT_EQ(fixture.done(remove_from_blacklist(fixture.olt, 1, fixture.arrived(1))), BSP_OK);
    EXPECT_TRUE(fixture.waits(1, fixture.arrived(1)));
    EXPECT_EQ(fixture.bind(1, fixture.arrived(1)), BSP_OK);
}

TEST(Blacklist, OneThatIsTakenOffIsLetInByItsLoid)
{
    OltFixture fixture;
    const Arrival onu = fixture.arrival(1);
    fixture.reject(1, onu.mac);
    fixture.set_mode(1, AuthMode::mac_or_loid);
    fixture.accept(1, onu.loid);
    EXPECT_EQ(fixture.done(remove_from_blacklist(fixture.olt, 1, onu.mac)), BSP_OK);
    EXPECT_EQ(fixture.bound(1, 1), onu.mac);
    EXPECT_TRUE(fixture.online(1, 1));
}

TEST(Blacklist, ConcernsItsPortAlone)
{
    OltFixture fixture;
    fixture.bind(2, 5, stranger(1));
    EXPECT_EQ(fixture.reject(1, stranger(1)), BSP_OK);
    EXPECT_EQ(fixture.bound(2, 5), stranger(1));
    EXPECT_EQ(fixture.bind(2, 5, stranger(1)), BSP_OK);
}

TEST(Blacklist, IdsAreTheLowestFreeOnesFrom1AndThen0)
{
    OltFixture fixture;
    for (uint8_t index = 0; index < onus_per_port; ++index)
        ASSERT_EQ(fixture.reject(1, stranger(index)), BSP_OK);
    EXPECT_EQ(fixture.port(1).blacklist[1].value().mac, stranger(0));
    EXPECT_EQ(fixture.port(1).blacklist[127].value().mac, stranger(126));
    EXPECT_EQ(fixture.port(1).blacklist[0].value().mac, stranger(127));
    fixture.done(remove_from_blacklist(fixture.olt, 1, stranger(6)));
    EXPECT_EQ(fixture.reject(1, stranger(200)), BSP_OK);
    EXPECT_EQ(fixture.port(1).blacklist[7].value().mac, stranger(200));
}

TEST(Blacklist, Holds128)
{
    OltFixture fixture;
    for (uint8_t index = 0; index < onus_per_port; ++index)
        ASSERT_EQ(fixture.reject(1, stranger(index)), BSP_OK);
    fixture.bind(1, 5, stranger(200));
    EXPECT_EQ(fixture.reject(1, stranger(200)), PON_ERR_TABLE_FULL);
    EXPECT_EQ(fixture.bound(1, 5), stranger(200));
    EXPECT_EQ(fixture.reject(2, stranger(200)), BSP_OK);
}

TEST(Blacklist, AgainReplacesTheTextAndKeepsTheId)
{
    OltFixture fixture;
    fixture.reject(1, stranger(1));
    fixture.reject(1, stranger(2));
    EXPECT_EQ(fixture.done(add_to_blacklist(fixture.olt, 1, stranger(2), "stolen")), BSP_OK);
    EXPECT_EQ(text_at(fixture, 1, 2), "stolen");
    EXPECT_EQ(ids_of(fixture.port(1).blacklist), ids({1, 2}));
}

TEST(Blacklist, NeedsAPortAndAStation)
{
    OltFixture fixture;
    EXPECT_EQ(fixture.reject(3, stranger(1)), PON_ERR_NO_PORT);
    EXPECT_EQ(fixture.reject(1, Mac{}), PON_ERR_BAD_MAC);
    EXPECT_EQ(fixture.reject(1, Mac{0x01, 0, 0x5e, 0, 0, 1}), PON_ERR_BAD_MAC);
}

TEST(Blacklist, WhatIsNotOnItIsSaid)
{
    OltFixture fixture;
    fixture.reject(2, stranger(1));
    EXPECT_EQ(fixture.done(remove_from_blacklist(fixture.olt, 1, stranger(1))), PON_ERR_NOT_LISTED);
    EXPECT_EQ(fixture.done(remove_from_blacklist(fixture.olt, 3, stranger(1))), PON_ERR_NO_PORT);
}

TEST(Reject, PutsTheOnuOfAnIdOnTheList)
{
    OltFixture fixture;
    fixture.bind(1, 0, stranger(1));
    EXPECT_EQ(fixture.done(reject_onu(fixture.olt, 1, 0)), BSP_OK);
    EXPECT_EQ(fixture.port(1).blacklist[1].value().mac, stranger(1));
    EXPECT_EQ(fixture.bound(1, 0), Mac{});
}

TEST(Reject, NeedsABoundOnu)
{
    OltFixture fixture;
    EXPECT_EQ(fixture.done(reject_onu(fixture.olt, 1, 5)), PON_ERR_NOT_BOUND);
    EXPECT_EQ(fixture.done(reject_onu(fixture.olt, 1, 128)), PON_ERR_BAD_ONU_ID);
    EXPECT_EQ(fixture.done(reject_onu(fixture.olt, 3, 5)), PON_ERR_NO_PORT);
}

TEST(Reject, ABatchIsAllOrNone)
{
    OltFixture fixture;
    fixture.bind(1, 1, stranger(1));
    fixture.bind(1, 2, stranger(2));
    EXPECT_EQ(fixture.done(reject_onus(fixture.olt, 1, ids({1, 2, 3}))), PON_ERR_NOT_BOUND);
    EXPECT_EQ(fixture.done(reject_onus(fixture.olt, 1, ids({}))), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.bound(1, 1), stranger(1));
    EXPECT_EQ(fixture.done(reject_onus(fixture.olt, 1, ids({1, 2}))), BSP_OK);
    EXPECT_EQ(ids_of(fixture.port(1).blacklist), ids({1, 2}));
    EXPECT_EQ(ids_of(fixture.port(1).bindings), ids({}));
}

TEST(Reject, ABatchThatDoesNotFitRejectsNothing)
{
    OltFixture fixture;
    for (uint8_t index = 1; index < onus_per_port; ++index)
        fixture.reject(1, stranger(index));
    fixture.bind(1, 1, stranger(201));
    fixture.bind(1, 2, stranger(202));
    EXPECT_EQ(fixture.done(reject_onus(fixture.olt, 1, ids({1, 2}))), PON_ERR_TABLE_FULL);
    EXPECT_EQ(ids_of(fixture.port(1).bindings), ids({1, 2}));
    EXPECT_EQ(fixture.port(1).blacklist[0], std::nullopt);
}

TEST(Unlist, ABatchIsAllOrNone)
{
    OltFixture fixture;
    for (uint8_t index : {1, 2, 3})
        fixture.reject(1, stranger(index));
    const auto unlist = [&](const OnuIds &members) {
        return fixture.done(remove_from_blacklist(fixture.olt, 1, members));
    };
    EXPECT_EQ(unlist(ids({1, 4})), PON_ERR_NOT_LISTED);
    EXPECT_EQ(unlist(ids({})), PON_ERR_BAD_RECORD);
    EXPECT_EQ(ids_of(fixture.port(1).blacklist), ids({1, 2, 3}));
    EXPECT_EQ(unlist(ids({1, 3})), BSP_OK);
    EXPECT_EQ(ids_of(fixture.port(1).blacklist), ids({2}));
    EXPECT_FALSE(fixture.port(1).refuses(stranger(3)));
    EXPECT_EQ(fixture.done(remove_from_blacklist(fixture.olt, 3, ids({2}))), PON_ERR_NO_PORT);
}

TEST(Unlist, ABatchLetsEachInByItsLoid)
{
    OltFixture fixture;
    fixture.set_mode(1, AuthMode::loid);
    for (size_t index : {0, 1}) {
        fixture.reject(1, fixture.arrived(1, index));
        fixture.accept(1, fixture.arrival(1, index).loid);
    }
    fixture.done(remove_from_blacklist(fixture.olt, 1, ids({1, 2})));
    EXPECT_EQ(fixture.bound(1, 1), fixture.arrived(1, 0));
    EXPECT_EQ(fixture.bound(1, 2), fixture.arrived(1, 1));
}

TEST(BlacklistRecord, ATextHasUpTo200Bytes)
{
    ServiceFixture fixture;
    EXPECT_EQ(fixture.send(add_record(1, stranger(1), std::string(201, 'x'))), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.send(add_record(1, stranger(1), "\xff")), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.send(add_record(1, stranger(1), std::string(200, 'x'))), BSP_OK);
    EXPECT_EQ(fixture.port(1).blacklist[1].value().text, std::string(200, 'x'));
}

TEST(BlacklistRecord, RejectsOneAndABatchAndTakesThemOff)
{
    ServiceFixture fixture;
    for (uint8_t onu_id : {1, 33, 127})
        fixture.send(record_of(BSP_CMD_ONU_BIND, 1, onu_id, stranger(onu_id)));
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_BLACKLIST_REJECT, 1, 33)), BSP_OK);
    EXPECT_EQ(fixture.send(batch_record(BSP_CMD_BLACKLIST_REJECT_BATCH, 1, ids({1, 127}))), BSP_OK);
    EXPECT_EQ(ids_of(fixture.port(1).blacklist), ids({1, 2, 3}));
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_BLACKLIST_REMOVE, 1, 0, stranger(1))), BSP_OK);
    EXPECT_EQ(fixture.send(batch_record(BSP_CMD_BLACKLIST_REMOVE_BATCH, 1, ids({1, 3}))), BSP_OK);
    EXPECT_EQ(ids_of(fixture.port(1).blacklist), ids({}));
}

TEST(BlacklistView, ShowsAnEntry)
{
    ServiceFixture fixture({.seed = 1, .ports = 1, .arrivals = 1, .silent = 0});
    const Mac mac = fixture.port(1).arrivals[0].mac;
    fixture.send(add_record(1, stranger(9), "not here"));
    fixture.send(add_record(1, mac, "\"lost\""));
    EXPECT_EQ(fixture.view(BSP_CMD_VIEW_BLACKLIST_SNMP),
              R"([{"pon_port":1,"id":1,"mac":")" + text::mac_text(stranger(9)) +
                  R"(","text":"not here","registering":false},{"pon_port":1,"id":2,"mac":")" + text::mac_text(mac) +
                  R"(","text":"\"lost\"","registering":true}])");
}

TEST(BlacklistView, IsOfOnePortOrForPort0OfAll)
{
    ServiceFixture fixture;
    fixture.send(add_record(1, stranger(1)));
    fixture.send(add_record(16, stranger(2)));
    for (uint32_t command : {BSP_CMD_BLACKLIST_GET, BSP_CMD_VIEW_BLACKLIST_WEB}) {
        EXPECT_EQ(fixture.view(command), fixture.view(BSP_CMD_VIEW_BLACKLIST_SNMP));
        const rapidjson::Document rows = parse(fixture.view(command, 16));
        ASSERT_EQ(rows.Size(), 1u);
        EXPECT_EQ(rows[0]["mac"].GetString(), text::mac_text(stranger(2)));
        EXPECT_EQ(fixture.ask(record_of(command, 17)).status, PON_ERR_NO_PORT);
    }
}

TEST(BlacklistView, CanBeNarrowedToAnIdOrAnAddress)
{
    ServiceFixture fixture;
    for (uint8_t index : {1, 2})
        for (uint32_t pon_port : {1, 2})
            fixture.send(add_record(pon_port, stranger(index)));
    const auto rows = [&](uint32_t pon_port, uint32_t id, const Mac &mac) {
        const Reply reply = fixture.ask(record_of(BSP_CMD_BLACKLIST_GET, pon_port, id, mac));
        EXPECT_EQ(reply.status, BSP_OK);
        return parse(reply.result.value()).Size();
    };
    EXPECT_EQ(rows(1, 2, {}), 1u);
    EXPECT_EQ(rows(0, 2, {}), 2u);
    EXPECT_EQ(rows(2, 0, stranger(1)), 1u);
    EXPECT_EQ(rows(2, 1, stranger(1)), 1u);
}

TEST(BlacklistView, WhatIsNotOnItGivesAnEmptyTable)
{
    ServiceFixture fixture;
    fixture.send(add_record(1, stranger(1)));
    for (const bsp_pon_msg &record :
         {record_of(BSP_CMD_BLACKLIST_GET, 1, 2), record_of(BSP_CMD_BLACKLIST_GET, 0, 0, stranger(2)),
          record_of(BSP_CMD_BLACKLIST_GET, 1, 2, stranger(1))}) {
        const Reply reply = fixture.ask(record);
        EXPECT_EQ(reply.status, PON_ERR_NOT_LISTED);
        EXPECT_EQ(reply.result, "[]");
    }
    EXPECT_EQ(fixture.ask(record_of(BSP_CMD_BLACKLIST_GET, 1, 128)).status, PON_ERR_BAD_ONU_ID);
}

TEST(BlacklistView, Of2048EntriesWithTheLongestTextsFits)
{
    const Settings settings{.seed = 1, .ports = 16, .arrivals = 0, .silent = 0};
    ServiceFixture fixture(settings, {});
    for (uint32_t pon_port = 1; pon_port <= max_ports; ++pon_port)
        for (uint8_t index = 0; index < onus_per_port; ++index)
            ASSERT_EQ(fixture.send(add_record(pon_port, stranger(index), std::string(200, '"'))), BSP_OK);
    const std::string text = fixture.view(BSP_CMD_VIEW_BLACKLIST_SNMP);
    EXPECT_LE(text.size(), max_result);
    EXPECT_EQ(parse(text).Size(), 2048u);
}

} // namespace
} // namespace ponsim
