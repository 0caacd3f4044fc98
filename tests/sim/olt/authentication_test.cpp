// These tests check who is let in at a port, and how others are confirmed.
#include "rows.h"
#include "support.h"

namespace ponsim
{
namespace
{

bsp_pon_msg auth_record(uint32_t pon_port, uint32_t mode, const std::string &loid = {},
                        const std::string &password = {})
{
    bsp_pon_msg record = record_of(BSP_CMD_AUTH_SET, pon_port);
    record.arg_word12 = mode;
    loid.copy(record.text45, sizeof record.text45);
    password.copy(record.text109, sizeof record.text109);
    return record;
}

bsp_pon_msg removal_record(uint32_t pon_port, uint32_t mode, const std::string &loid)
{
    bsp_pon_msg record = auth_record(pon_port, mode, loid);
    put(record, layout::auth_record::remove, 1);
    return record;
}

std::string nth_loid(uint32_t n)
{
    return "loid-" + std::to_string(n);
}

TEST(AuthMode, ByMacABoundOnuIsOnlineWhateverItsLoid)
{
    OltFixture fixture;
    fixture.bind(1, 5, fixture.arrived(1));
    fixture.accept(1, "another");
    EXPECT_EQ(fixture.state(1, 5), OnuState::online);
}

TEST(AuthMode, ByMacALoidLetsNobodyIn)
{
    OltFixture fixture;
    fixture.accept(1, fixture.arrival(1).loid);
    EXPECT_TRUE(fixture.waits(1, fixture.arrived(1)));
}

TEST(AuthMode, ByLoidABoundOnuNeedsARecord)
{
    OltFixture fixture;
    fixture.bind(1, 5, fixture.arrived(1));
    fixture.set_mode(1, AuthMode::loid);
    EXPECT_EQ(fixture.state(1, 5), OnuState::unauthenticated);
    fixture.accept(1, fixture.arrival(1).loid, "any");
    EXPECT_EQ(fixture.state(1, 5), OnuState::online);
}

TEST(AuthMode, ByLoidAndPasswordBothMustBeRight)
{
    OltFixture fixture;
    const Arrival onu = fixture.arrival(1);
    fixture.bind(1, 5, onu.mac);
    fixture.set_mode(1, AuthMode::loid_and_password);
    fixture.accept(1, onu.loid);
    EXPECT_EQ(fixture.state(1, 5), OnuState::unauthenticated);
    fixture.accept(1, onu.loid, onu.password);
    EXPECT_EQ(fixture.state(1, 5), OnuState::online);
}

TEST(AuthMode, ByMacOrLoidABoundOnuIsOnlineWithoutARecord)
{
    OltFixture fixture;
    fixture.bind(1, 5, fixture.arrived(1));
    fixture.set_mode(1, AuthMode::mac_or_loid);
    EXPECT_EQ(fixture.state(1, 5), OnuState::online);
}

TEST(AuthMode, BackToMacLetsTheBoundInAgain)
{
    OltFixture fixture;
    fixture.bind(1, 5, fixture.arrived(1));
    fixture.set_mode(1, AuthMode::loid);
    fixture.set_mode(1, AuthMode::mac);
    EXPECT_EQ(fixture.state(1, 5), OnuState::online);
}

TEST(AuthMode, ConcernsItsPortAlone)
{
    OltFixture fixture;
    fixture.bind(2, 5, fixture.arrived(2));
    fixture.set_mode(1, AuthMode::loid);
    EXPECT_EQ(fixture.state(2, 5), OnuState::online);
}

TEST(AuthMode, ASilentOrAbsentOnuIsOfflineAllTheSame)
{
    OltFixture fixture{{.seed = 1, .ports = 1, .arrivals = 1, .silent = 100}};
    fixture.bind(1, 5, fixture.arrived(1));
    fixture.bind(1, 6, stranger(1));
    fixture.set_mode(1, AuthMode::loid);
    EXPECT_EQ(fixture.state(1, 5), OnuState::offline);
    EXPECT_EQ(fixture.state(1, 6), OnuState::offline);
}

TEST(AuthMode, AnUnauthenticatedOnuIsNeitherRebootedNorReleasedAsOffline)
{
    OltFixture fixture;
    fixture.bind(1, 5, fixture.arrived(1));
    fixture.set_mode(1, AuthMode::loid);
    EXPECT_EQ(fixture.done(reboot_onus(fixture.olt, 1, ids({5}))), PON_ERR_OFFLINE);
    fixture.done(release_offline(fixture.olt, 1));
    EXPECT_EQ(fixture.bound(1, 5), fixture.arrived(1));
}

TEST(Loid, LetsInAnOnuThatWaits)
{
    for (AuthMode mode : {AuthMode::loid, AuthMode::loid_and_password, AuthMode::mac_or_loid}) {
        OltFixture fixture;
        const Arrival onu = fixture.arrival(1, 2);
        fixture.set_mode(1, mode);
        fixture.accept(1, onu.loid, onu.password);
        EXPECT_EQ(fixture.port(1).bindings[1], binding_of(onu.mac));
        EXPECT_EQ(fixture.state(1, 1), OnuState::online);
        EXPECT_TRUE(fixture.waits(1, fixture.arrived(1, 1)));
    }
}

TEST(Loid, WithTheWrongPasswordTheOnuWaitsWhereItCounts)
{
    OltFixture fixture;
    fixture.set_mode(1, AuthMode::loid_and_password);
    fixture.accept(1, fixture.arrival(1).loid, "wrong");
    EXPECT_TRUE(fixture.waits(1, fixture.arrived(1)));
}

TEST(Loid, RecordsMadeBeforehandCountWhenTheModeIsSet)
{
    OltFixture fixture;
    for (size_t index : {0, 1, 2, 3})
        fixture.accept(1, fixture.arrival(1, index).loid);
    fixture.bind(1, 2, fixture.arrived(1, 3));
    fixture.set_mode(1, AuthMode::loid);
    EXPECT_EQ(fixture.bound(1, 1), fixture.arrived(1, 0));
    EXPECT_EQ(fixture.bound(1, 3), fixture.arrived(1, 1));
    EXPECT_EQ(fixture.bound(1, 4), fixture.arrived(1, 2));
}

TEST(Loid, AReleasedOnuWaitsUntilItRegistersAgain)
{
    OltFixture fixture;
    fixture.set_mode(1, AuthMode::loid);
    fixture.accept(1, fixture.arrival(1).loid);
    fixture.done(release_onu(fixture.olt, 1, 1, {}));
    EXPECT_TRUE(fixture.waits(1, fixture.arrived(1)));
    fixture.range(1, 0, 0);
    fixture.range(1, 0, max_distance);
    EXPECT_EQ(fixture.bound(1, 1), fixture.arrived(1));
}

TEST(Loid, AnOnuOutOfReachIsLetInWhenItComesIntoReach)
{
    OltFixture fixture;
    fixture.range(1, 0, 0);
    fixture.set_mode(1, AuthMode::loid);
    fixture.accept(1, fixture.arrival(1).loid);
    EXPECT_EQ(fixture.bound(1, 1), Mac{});
    fixture.range(1, 0, max_distance);
    EXPECT_EQ(fixture.bound(1, 1), fixture.arrived(1));
}

TEST(Loid, AnOnuThatIsNotSupportedOrBoundElsewhereWaits)
{
    OltFixture fixture;
    fixture.done(set_supported(fixture.olt, 1, fixture.arrived(1, 0), false));
    fixture.bind(2, 9, fixture.arrived(1, 1));
    fixture.set_mode(1, AuthMode::loid);
    fixture.accept(1, fixture.arrival(1, 0).loid);
    fixture.accept(1, fixture.arrival(1, 1).loid);
    EXPECT_EQ(ids_of(fixture.port(1).bindings), ids({}));
    EXPECT_EQ(fixture.bound(2, 9), fixture.arrived(1, 1));
}

TEST(Loid, AFullPortLetsNobodyIn)
{
    OltFixture fixture;
    for (uint8_t index = 0; index < onus_per_port; ++index)
        fixture.bind(1, stranger(index));
    fixture.set_mode(1, AuthMode::loid);
    EXPECT_EQ(fixture.accept(1, fixture.arrival(1).loid), BSP_OK);
    EXPECT_TRUE(fixture.waits(1, fixture.arrived(1)));
}

TEST(Loid, ARemovedRecordNoLongerLetsIn)
{
    OltFixture fixture;
    const Arrival onu = fixture.arrival(1);
    fixture.set_mode(1, AuthMode::loid);
    fixture.accept(1, onu.loid);
    EXPECT_EQ(fixture.done(set_authentication(fixture.olt, 1, {1, onu.loid, {}, true})), BSP_OK);
    EXPECT_EQ(fixture.state(1, 1), OnuState::unauthenticated);
    EXPECT_EQ(fixture.done(set_authentication(fixture.olt, 1, {1, onu.loid, {}, true})), PON_ERR_NOT_LISTED);
}

TEST(Loid, APortHas128Records)
{
    OltFixture fixture;
    for (uint32_t n = 0; n < 128; ++n)
        ASSERT_EQ(fixture.accept(1, nth_loid(n)), BSP_OK);
    EXPECT_EQ(fixture.accept(1, "one more"), PON_ERR_TABLE_FULL);
    EXPECT_EQ(fixture.accept(1, nth_loid(7), "new"), BSP_OK);
    EXPECT_EQ(fixture.port(1).authentication.records.at(nth_loid(7)), "new");
    EXPECT_EQ(fixture.accept(2, "one more"), BSP_OK);
}

TEST(Loid, ARefusedRecordLeavesTheModeAlone)
{
    OltFixture fixture;
    EXPECT_EQ(fixture.done(set_authentication(fixture.olt, 1, {1, "unknown", {}, true})), PON_ERR_NOT_LISTED);
    EXPECT_EQ(fixture.port(1).authentication.mode, AuthMode::mac);
}

TEST(Confirm, ByIdAnUnauthenticatedOnuIsLetIn)
{
    OltFixture fixture;
    fixture.bind(1, 5, fixture.arrived(1));
    fixture.set_mode(1, AuthMode::loid);
    EXPECT_EQ(fixture.confirm(1, 5, {}), BSP_OK);
    EXPECT_EQ(fixture.state(1, 5), OnuState::online);
    fixture.set_mode(1, AuthMode::loid_and_password);
    EXPECT_EQ(fixture.state(1, 5), OnuState::online);
}

TEST(Confirm, AsTheModeSaysLeavesAnUnauthenticatedOnuSo)
{
    OltFixture fixture;
    fixture.bind(1, 5, fixture.arrived(1));
    fixture.set_mode(1, AuthMode::loid);
    EXPECT_EQ(fixture.confirm(1, 5, {}, false), BSP_OK);
    EXPECT_EQ(fixture.state(1, 5), OnuState::unauthenticated);
}

TEST(Confirm, ChangesNothingForAnOnlineOnu)
{
    OltFixture fixture;
    fixture.bind(1, 5, fixture.arrived(1));
    EXPECT_TRUE(confirm_onu(fixture.olt, 1, 5, {}, {.exempt = true, .mode = 0}).change.empty());
    EXPECT_EQ(fixture.confirm(1, 5, {}), BSP_OK);
}

TEST(Confirm, AnOfflineOnuIsRefused)
{
    OltFixture fixture;
    fixture.bind(1, 5, stranger(1));
    EXPECT_EQ(fixture.confirm(1, 5, {}), PON_ERR_OFFLINE);
    EXPECT_EQ(fixture.confirm(1, 0, stranger(1)), PON_ERR_OFFLINE);
}

TEST(Confirm, ByAddressAnOnuThatWaitsIsBoundAndLetIn)
{
    OltFixture fixture;
    fixture.bind(1, 1, stranger(1));
    fixture.set_mode(1, AuthMode::loid);
    EXPECT_EQ(fixture.done(confirm_onu(fixture.olt, 1, 0, fixture.arrived(1), {.exempt = true, .mode = 9})), BSP_OK);
    EXPECT_EQ(fixture.bound(1, 2), fixture.arrived(1));
    EXPECT_EQ(fixture.port(1).bindings[2]->mode, 9u);
    EXPECT_EQ(fixture.state(1, 2), OnuState::online);
}

TEST(Confirm, ByAddressAsTheModeSaysTheOnuIsBoundOnly)
{
    OltFixture fixture;
    fixture.set_mode(1, AuthMode::loid);
    EXPECT_EQ(fixture.confirm(1, 0, fixture.arrived(1), false), BSP_OK);
    EXPECT_EQ(fixture.state(1, 1), OnuState::unauthenticated);
}

TEST(Confirm, ByAddressABoundOnuIsTheOneOfItsId)
{
    OltFixture fixture;
    fixture.bind(1, 0, fixture.arrived(1));
    fixture.set_mode(1, AuthMode::loid);
    EXPECT_EQ(fixture.confirm(1, 0, fixture.arrived(1)), BSP_OK);
    EXPECT_EQ(fixture.state(1, 0), OnuState::online);
}

TEST(Confirm, WithNeitherIsTheOnuOnId0)
{
    OltFixture fixture;
    EXPECT_EQ(fixture.confirm(1, 0, {}), PON_ERR_NOT_BOUND);
    fixture.bind(1, 0, fixture.arrived(1));
    fixture.set_mode(1, AuthMode::loid);
    EXPECT_EQ(fixture.confirm(1, 0, {}), BSP_OK);
    EXPECT_EQ(fixture.state(1, 0), OnuState::online);
}

TEST(Confirm, NeedsAnOnuThatWaits)
{
    OltFixture fixture;
    EXPECT_EQ(fixture.confirm(1, 0, stranger(1)), PON_ERR_NOT_WAITING);
    EXPECT_EQ(fixture.confirm(1, 0, fixture.arrived(2)), PON_ERR_NOT_WAITING);
    fixture.bind(2, 5, fixture.arrived(1, 0));
    EXPECT_EQ(fixture.confirm(1, 0, fixture.arrived(1, 0)), PON_ERR_ALREADY_BOUND);
    fixture.done(set_supported(fixture.olt, 1, fixture.arrived(1, 1), false));
    EXPECT_EQ(fixture.confirm(1, 0, fixture.arrived(1, 1)), PON_ERR_UNSUPPORTED);
    fixture.range(1, 0, 0);
    EXPECT_EQ(fixture.confirm(1, 0, fixture.arrived(1, 2)), PON_ERR_NOT_WAITING);
}

TEST(Confirm, NeedsPortAndId)
{
    OltFixture fixture;
    EXPECT_EQ(fixture.confirm(3, 5, {}), PON_ERR_NO_PORT);
    EXPECT_EQ(fixture.confirm(1, 128, {}), PON_ERR_BAD_ONU_ID);
    EXPECT_EQ(fixture.confirm(1, 5, {}), PON_ERR_NOT_BOUND);
}

TEST(Confirm, TheExemptionGoesWithTheBinding)
{
    OltFixture fixture;
    fixture.set_mode(1, AuthMode::loid);
    fixture.confirm(1, 0, fixture.arrived(1));
    fixture.bind(1, 1, fixture.arrived(1));
    EXPECT_EQ(fixture.state(1, 1), OnuState::online);
    fixture.done(release_onu(fixture.olt, 1, 1, {}));
    fixture.bind(1, 1, fixture.arrived(1));
    EXPECT_EQ(fixture.state(1, 1), OnuState::unauthenticated);
}

TEST(AuthRecord, HasTheSizesOfLoidAndPassword)
{
    ServiceFixture fixture;
    const std::string loid(24, '~'), password(12, ' ');
    EXPECT_EQ(fixture.send(auth_record(1, 1, loid + "~")), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.send(auth_record(1, 1, loid, password + " ")), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.send(auth_record(1, 1, std::string(64, 'x'))), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.send(auth_record(1, 1, "ü")), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.send(auth_record(1, 1, "x", "\x1f")), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.send(auth_record(1, 1, "", "password")), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.port(1).authentication.records.size(), 0u);
    EXPECT_EQ(fixture.send(auth_record(1, 1, loid, password)), BSP_OK);
    EXPECT_EQ(fixture.port(1).authentication.records.at(loid), password);
}

TEST(AuthRecord, ModesAre0To3OfAPort)
{
    ServiceFixture fixture;
    EXPECT_EQ(fixture.send(auth_record(1, 3)), BSP_OK);
    EXPECT_EQ(fixture.send(auth_record(1, 4)), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.send(auth_record(0, 1)), PON_ERR_NO_PORT);
    EXPECT_EQ(fixture.send(auth_record(17, 1)), PON_ERR_NO_PORT);
}

TEST(AuthRecord, CanBeRemoved)
{
    ServiceFixture fixture;
    fixture.send(auth_record(1, 1, "one"));
    EXPECT_EQ(fixture.send(removal_record(1, 1, "two")), PON_ERR_NOT_LISTED);
    EXPECT_EQ(fixture.send(removal_record(1, 1, "")), PON_ERR_BAD_RECORD);
    EXPECT_EQ(fixture.send(removal_record(1, 1, "one")), BSP_OK);
    EXPECT_EQ(fixture.port(1).authentication.records.size(), 0u);
    bsp_pon_msg record = auth_record(1, 1, "one");
    put(record, layout::auth_record::remove, 2);
    EXPECT_EQ(fixture.send(record), PON_ERR_BAD_RECORD);
}

TEST(ConfirmRecord, HasTheExemptionInAByteAndTheModeInAWord)
{
    ServiceFixture fixture({.seed = 1, .ports = 1, .arrivals = 2, .silent = 0});
    fixture.send(auth_record(1, 1));
    bsp_pon_msg record = record_of(BSP_CMD_ONU_CONFIRM, 1, 0, fixture.port(1).arrivals[0].mac);
    record.arg_byte16 = 2;
    EXPECT_EQ(fixture.send(record), PON_ERR_BAD_RECORD);
    record.arg_byte16 = 1;
    record.arg_word36 = 0x01020304;
    EXPECT_EQ(fixture.send(record), BSP_OK);
    EXPECT_EQ(fixture.port(1).bindings[1]->mode, 0x01020304u);
    EXPECT_FALSE(fixture.port(1).bindings[1]->exempt);
    EXPECT_EQ(fixture.send(record_of(BSP_CMD_ONU_CONFIRM, 1, 1)), BSP_OK);
    EXPECT_TRUE(fixture.port(1).bindings[1]->exempt);
}

// This fixture has one ONU in each state, and two records.
struct MixedFixture : ServiceFixture {
    MixedFixture() : ServiceFixture({.seed = 1, .ports = 2, .arrivals = 4, .silent = 0})
    {
        const auto &arrivals = port(1).arrivals;
        send(record_of(BSP_CMD_ONU_BIND, 1, 9, arrivals[1].mac));
        send(record_of(BSP_CMD_BLACKLIST_ADD_AUTO, 1, 0, arrivals[2].mac));
        send(record_of(BSP_CMD_BLACKLIST_ADD_AUTO, 1, 0, stranger(1)));
        send(auth_record(1, 1, arrivals[0].loid, "secret"));
        send(auth_record(1, 1, "absent"));
    }
};

TEST(AuthGet, TellsModeAndCounts)
{
    MixedFixture fixture;
    const AnswerRecord answer(fixture.ask(record_of(BSP_CMD_AUTH_GET, 1)));
    EXPECT_EQ(answer.record.pon_port, 1u);
    EXPECT_EQ(answer.record.arg_word12, 1u);
    EXPECT_EQ(answer.get(layout::auth_counts::records), 2u);
    EXPECT_EQ(answer.get(layout::auth_counts::admitted), 1u);
    EXPECT_EQ(answer.get(layout::auth_counts::unauthenticated), 1u);
    EXPECT_EQ(answer.get(layout::auth_counts::waiting), 1u);
    EXPECT_EQ(answer.get(layout::auth_counts::rejected), 1u);
    EXPECT_EQ(fixture.ask(record_of(BSP_CMD_AUTH_GET, 0)).status, PON_ERR_NO_PORT);
}

TEST(AuthList, ForPort0IsARowAPort)
{
    MixedFixture fixture;
    EXPECT_EQ(fixture.view(BSP_CMD_AUTH_LIST),
              R"([{"pon_port":1,"mode":1,"records":2,"admitted":1,"unauthenticated":1,"waiting":1,"rejected":1,)"
              R"("loid":null,"has_password":null,"mac":null,"onu_id":null},)"
              R"({"pon_port":2,"mode":0,"records":0,"admitted":0,"unauthenticated":0,"waiting":4,"rejected":0,)"
              R"("loid":null,"has_password":null,"mac":null,"onu_id":null}])");
}

TEST(AuthList, ForAPortIsARowARecord)
{
    MixedFixture fixture;
    const Arrival &onu = fixture.port(1).arrivals[0];
    const std::string nulls = R"("mode":null,"records":null,"admitted":null,"unauthenticated":null,)"
                              R"("waiting":null,"rejected":null,)";
    EXPECT_EQ(fixture.view(BSP_CMD_AUTH_LIST, 1),
              R"([{"pon_port":1,)" + nulls +
                  R"("loid":"absent","has_password":false,"mac":null,"onu_id":null},)"
                  R"({"pon_port":1,)" +
                  nulls + R"("loid":")" + onu.loid + R"(","has_password":true,"mac":")" + text::mac_text(onu.mac) +
                  R"(","onu_id":1}])");
    EXPECT_EQ(fixture.view(BSP_CMD_AUTH_LIST, 2), "[]");
    EXPECT_EQ(fixture.ask(record_of(BSP_CMD_AUTH_LIST, 3)).status, PON_ERR_NO_PORT);
}

TEST(AuthList, ForPort0FitsTheSmallBound)
{
    ServiceFixture fixture({.seed = 1, .ports = 16, .arrivals = 128, .silent = 0});
    for (uint32_t pon_port = 1; pon_port <= max_ports; ++pon_port) {
        for (uint32_t n = 0; n < 128; ++n)
            fixture.send(auth_record(pon_port, 0, nth_loid(n)));
        for (const Arrival &arrival : fixture.port(pon_port).arrivals)
            fixture.send(record_of(BSP_CMD_ONU_BIND_AUTO, pon_port, 0, arrival.mac));
        fixture.send(auth_record(pon_port, 2));
    }
    const std::string text = fixture.view(BSP_CMD_AUTH_LIST);
    EXPECT_LE(text.size(), 10240u);
    const rapidjson::Document rows = parse(text);
    ASSERT_EQ(rows.Size(), 16u);
    EXPECT_EQ(rows[15]["unauthenticated"].GetUint(), 128u);
}

TEST(AuthList, OfAPortIsNeverCut)
{
    ServiceFixture fixture;
    for (uint32_t n = 0; n < 128; ++n)
        fixture.send(auth_record(1, 0, std::string(21, '"') + std::to_string(100 + n), "password"));
    const std::string text = fixture.view(BSP_CMD_AUTH_LIST, 1);
    EXPECT_LE(text.size(), max_result);
    EXPECT_EQ(parse(text).Size(), 128u);
}

TEST(OnuInfo, ShowsAnUnauthenticatedOnu)
{
    MixedFixture fixture;
    const rapidjson::Document rows = parse(fixture.view(BSP_CMD_VIEW_ONU_INFO_WEB, 1));
    ASSERT_EQ(rows.Size(), 3u);
    EXPECT_STREQ(rows[0]["state"].GetString(), "online");
    EXPECT_STREQ(rows[1]["state"].GetString(), "unauthenticated");
    EXPECT_EQ(rows[1]["distance"].GetUint(), fixture.port(1).arrivals[1].distance);
    EXPECT_STREQ(rows[2]["state"].GetString(), "waiting");
}

} // namespace
} // namespace ponsim
