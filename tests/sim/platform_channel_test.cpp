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
    Desk desk(everyone_online());
    EXPECT_EQ(desk.simulator.handle(pon_setting(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1)))).status, BSP_OK);
    EXPECT_EQ(desk.simulator.olt().find(stranger(1)), (Olt::Place{1, 5}));
    const Reply reply = desk.simulator.handle(pon_setting(record_of(BSP_CMD_WHITELIST_GET, 1, 5)));
    EXPECT_EQ(reply.answer, desk.ask(record_of(BSP_CMD_WHITELIST_GET, 1, 5)).answer);
}

TEST(PonSettings, TheirCommandStandsWhereThePonChannelHasIt)
{
    EXPECT_EQ(command_of(pon_setting(record_of(BSP_CMD_ONU_BIND))), BSP_CMD_ONU_BIND);
    const PlatRecord get(BSP_CMD_SLA_GET, 0);
    EXPECT_EQ(command_of({BSP_MSG_PLAT, &get.record, sizeof get.record}), BSP_CMD_SLA_GET);
}

TEST(PonSettings, AreNotCommandsOfThePlatformChannel)
{
    Desk desk(everyone_online());
    EXPECT_EQ(desk.simulator.handle(pon_setting(record_of(BSP_CMD_SLA_PORT_GET, 1))).status, PON_ERR_UNKNOWN_COMMAND);
    EXPECT_EQ(send(desk, PlatRecord(BSP_CMD_ONU_BIND, 1, 5)), PON_ERR_UNKNOWN_COMMAND);
}

TEST(PonSettings, GoByNoOtherChannel)
{
    Desk desk(everyone_online());
    const bsp_pon_msg record = record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(1));
    EXPECT_EQ(desk.simulator.handle({BSP_MSG_DEBUG, &record, sizeof record}).status, PON_ERR_BAD_RECORD);
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
    Desk desk(everyone_online());
    const Reply reply = ask(desk, PlatRecord(BSP_CMD_SLA_PORT_GET, 2));
    EXPECT_EQ(number_at(reply, word_at(offsetof(bsp_plat_msg, plat_cmd))), BSP_CMD_SLA_PORT_GET);
    EXPECT_EQ(number_at(reply, word_at(offsetof(bsp_plat_msg, plat_port))), 2u);
}

TEST(PlatformFunctions, ASetStores)
{
    Desk desk(everyone_online());
    const PlatRecord set = PlatRecord(BSP_CMD_P2P_OWN_PORT_SET, 2).put(layout::p2p_own_port::own_port, 3);
    const Message message{BSP_MSG_PLAT, &set.record, sizeof set.record, catalogue::Call::set};
    EXPECT_EQ(desk.simulator.handle(message).status, BSP_OK);
    EXPECT_EQ(number_at(ask(desk, PlatRecord(BSP_CMD_P2P_OWN_PORT_GET, 2)), layout::p2p_own_port::own_port), 3u);
}

TEST(PlatformFunctions, AQueryHasAResultBesideItsAnswer)
{
    Desk desk(everyone_online());
    const Reply reply = ask(desk, PlatRecord(BSP_CMD_MAC_GET, 0));
    EXPECT_EQ(reply.result, "[]");
    EXPECT_EQ(number_at(reply, word_at(offsetof(bsp_plat_msg, plat_cmd))), BSP_CMD_MAC_GET);
}

TEST(PonSettings, OfThePonChannelHaveResults)
{
    Desk desk(everyone_online());
    const Reply reply = desk.ask(record_of(BSP_CMD_AUTH_LIST, 0));
    EXPECT_TRUE(reply.understood);
    EXPECT_LE(reply.result.value().size(), platform_result);
}

} // namespace
} // namespace ponsim
