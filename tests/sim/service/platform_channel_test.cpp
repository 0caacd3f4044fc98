// These tests check what the platform channel carries beside its own commands: PON settings, in records of the PON
// channel.
#include <cstddef>

#include "daemon/access.h"
#include "forwarding.h"

namespace ponsim
{
namespace
{

Message pon_setting(const bsp_pon_msg &record)
{
    return {BSP_MSG_PLAT, &record, sizeof record};
}

TEST(PonSettings, ByThePlatformChannelDoAsThoseByThePonChannel)
{
    ServiceFixture fixture(everyone_online());
    EXPECT_EQ(fixture.simulator.handle(pon_setting(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1)))).status, BSP_OK);
    EXPECT_EQ(fixture.simulator.olt().find(stranger(1)), (OnuKey{1, 5}));
    const Reply reply = fixture.simulator.handle(pon_setting(record_of(BSP_CMD_WHITELIST_GET, 1, 5)));
    EXPECT_EQ(reply.answer, fixture.ask(record_of(BSP_CMD_WHITELIST_GET, 1, 5)).answer);
}

TEST(PonSettings, TheirCommandStandsWhereThePonChannelHasIt)
{
    EXPECT_EQ(command_of(pon_setting(record_of(BSP_CMD_ONU_BIND))), BSP_CMD_ONU_BIND);
    const PlatRecord get(BSP_CMD_SLA_GET, 0);
    EXPECT_EQ(command_of({BSP_MSG_PLAT, &get.record, sizeof get.record}), BSP_CMD_SLA_GET);
}

TEST(PonSettings, AreNotCommandsOfThePlatformChannel)
{
    ServiceFixture fixture(everyone_online());
    EXPECT_EQ(fixture.simulator.handle(pon_setting(record_of(BSP_CMD_SLA_PORT_GET, 1))).status,
              PON_ERR_UNKNOWN_COMMAND);
    EXPECT_EQ(send(fixture, PlatRecord(BSP_CMD_ONU_BIND, 1, 5)), PON_ERR_UNKNOWN_COMMAND);
}

TEST(PonSettings, GoByNoOtherChannel)
{
    ServiceFixture fixture(everyone_online());
    const bsp_pon_msg record = record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1));
    EXPECT_EQ(fixture.simulator.handle({BSP_MSG_DEBUG, &record, sizeof record}).status, PON_ERR_BAD_RECORD);
}

TEST(PonSettings, NeedTheAccessOfTheirCommand)
{
    Access access;
    ASSERT_EQ(access.grant("*=write"), "");
    const bsp_pon_msg release = record_of(BSP_CMD_ONU_RELEASE_ALL, 1);
    const bsp_pon_msg range = record_of(BSP_CMD_OPT_RANGE_SET, 1);
    EXPECT_EQ(access.refuse(7, pon_setting(release)),
              "user 7 has write access; command 369 on channel 239 is service-affecting");
    EXPECT_EQ(access.refuse(7, pon_setting(range)), "");
}

TEST(PlatformFunctions, AGetAnswersInARecordThatNamesItsCommand)
{
    ServiceFixture fixture(everyone_online());
    const Reply reply = ask(fixture, PlatRecord(BSP_CMD_SLA_PORT_GET, 2));
    EXPECT_EQ(number_at(reply, word_at(offsetof(bsp_plat_msg, plat_cmd))), BSP_CMD_SLA_PORT_GET);
    EXPECT_EQ(number_at(reply, word_at(offsetof(bsp_plat_msg, plat_port))), 2u);
}

TEST(PlatformFunctions, ASetStores)
{
    ServiceFixture fixture(everyone_online());
    const PlatRecord set = PlatRecord(BSP_CMD_P2P_OWN_PORT_SET, 2).put(layout::p2p_own_port::own_port, 3);
    const Message message{BSP_MSG_PLAT, &set.record, sizeof set.record, catalogue::Call::set};
    EXPECT_EQ(fixture.simulator.handle(message).status, BSP_OK);
    EXPECT_EQ(number_at(ask(fixture, PlatRecord(BSP_CMD_P2P_OWN_PORT_GET, 2)), layout::p2p_own_port::own_port), 3u);
}

TEST(PlatformFunctions, AQueryHasAResultBesideItsAnswer)
{
    ServiceFixture fixture(everyone_online());
    const Reply reply = ask(fixture, PlatRecord(BSP_CMD_MAC_GET, 0));
    EXPECT_EQ(reply.result, "[]");
    EXPECT_EQ(number_at(reply, word_at(offsetof(bsp_plat_msg, plat_cmd))), BSP_CMD_MAC_GET);
}

TEST(PonSettings, OfThePonChannelHaveResults)
{
    ServiceFixture fixture(everyone_online());
    const Reply reply = fixture.ask(record_of(BSP_CMD_AUTH_LIST, 0));
    EXPECT_TRUE(reply.understood);
    EXPECT_LE(reply.result.value().size(), platform_result);
}

} // namespace
} // namespace ponsim
