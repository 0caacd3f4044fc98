// These tests check P2P forwarding.
#include "model/port/p2p.h"

#include "forwarding.h"
#include "rows.h"
#include "views/forwarding.h"

namespace ponsim
{
namespace
{

constexpr size_t longest_answer_text = 1023;

uint32_t switch_p2p(ServiceFixture &fixture, uint32_t pon_port, uint32_t onu, uint32_t on)
{
    return send(fixture, PlatRecord(BSP_CMD_P2P_STATE_SET, 0)
                             .put(layout::p2p_switch::port, pon_port)
                             .put(layout::p2p_switch::onu, onu)
                             .put(layout::p2p_switch::on, on));
}

PlatRecord entry(uint32_t pon_port, uint32_t number, uint32_t traffic, const P2pEntry &wanted)
{
    PlatRecord request(BSP_CMD_P2P_ENTRY_SET, pon_port);
    request.record.plat_arg104 = number;
    request.record.plat_arg108 = traffic;
    return std::move(request)
        .put(layout::p2p_entry::action, wanted.action)
        .put(layout::p2p_entry::from_onu, wanted.from_onu)
        .put(layout::p2p_entry::to_port, wanted.to_port)
        .put(layout::p2p_entry::to_onu, wanted.to_onu)
        .put(layout::p2p_entry::rate, wanted.rate);
}

constexpr P2pEntry drop_all{0, P2pAction::drop, any_onu, 1, any_onu, 0};

PlatRecord config(uint32_t pon_port, const P2pConfig &wanted)
{
    PlatRecord request(BSP_CMD_P2P_CFG_SET, pon_port);
    request.record.plat_arg108 = wanted.rest;
    return std::move(request)
        .put(layout::p2p_config::rate, wanted.rate)
        .put(layout::p2p_config::first_vlan, wanted.first_vlan)
        .put(layout::p2p_config::last_vlan, wanted.last_vlan)
        .put(layout::p2p_config::broadcast, wanted.broadcast)
        .put(layout::p2p_config::multicast, wanted.multicast);
}

Reply of_port(ServiceFixture &fixture, uint32_t pon_port)
{
    return ask(fixture, PlatRecord(BSP_CMD_P2P_OWN_PORT_GET, pon_port));
}

std::string state(ServiceFixture &fixture)
{
    const Reply reply = ask(fixture, PlatRecord(BSP_CMD_P2P_STATE_GET, 0));
    return reply.answer ? reply.answer->c_str() + offsetof(bsp_plat_msg, plat_data) : "no answer";
}

TEST(P2p, ThePortsSwitchIsOffAtFirst)
{
    ServiceFixture fixture(everyone_online());
    EXPECT_EQ(state(fixture), R"([{"pon_port":1,"on":false,"own":null,"onus":0,"entries":0},)"
                              R"({"pon_port":2,"on":false,"own":null,"onus":0,"entries":0}])");
}

TEST(P2p, TheStateComesAsATextAndAsAResult)
{
    ServiceFixture fixture(everyone_online());
    EXPECT_EQ(ask(fixture, PlatRecord(BSP_CMD_P2P_STATE_GET, 0)).result, state(fixture));
}

TEST(P2p, IsSwitchedForAPortOrForAll)
{
    ServiceFixture fixture(everyone_online());
    EXPECT_EQ(switch_p2p(fixture, 2, whole_p2p_port, 1), BSP_OK);
    EXPECT_FALSE(p2p_on(fixture.simulator.olt(), 1));
    EXPECT_TRUE(p2p_on(fixture.simulator.olt(), 2));
    EXPECT_EQ(switch_p2p(fixture, 0, whole_p2p_port, 1), BSP_OK);
    EXPECT_TRUE(p2p_on(fixture.simulator.olt(), 1));
    EXPECT_EQ(switch_p2p(fixture, 0, whole_p2p_port, 0), BSP_OK);
    EXPECT_FALSE(p2p_on(fixture.simulator.olt(), 2));
}

TEST(P2p, ConcernsOnlineOnusThatAreNotSwitchedOff)
{
    ServiceFixture fixture(everyone_online());
    for (uint32_t onu_id : {0, 1, 2})
        bind_arrived(fixture, 1, onu_id, onu_id);
    fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 5, stranger(5)));
    switch_p2p(fixture, 1, whole_p2p_port, 1);
    EXPECT_EQ(parse(state(fixture))[0]["onus"].GetUint(), 3u);
    EXPECT_EQ(switch_p2p(fixture, 1, 0, 0), BSP_OK);
    EXPECT_EQ(parse(state(fixture))[0]["onus"].GetUint(), 2u);
    EXPECT_EQ(send(fixture, PlatRecord(BSP_CMD_LLID_BEHAVIOR_SET, 1, 2).put(layout::llid_behavior::isolated, 1)),
              BSP_OK);
    EXPECT_EQ(parse(state(fixture))[0]["onus"].GetUint(), 1u);
}

TEST(P2p, TheOnusOfThePortAreASet)
{
    ServiceFixture fixture(everyone_online());
    for (uint32_t onu_id : {0, 1, 2})
        bind_arrived(fixture, 1, onu_id, onu_id);
    switch_p2p(fixture, 1, 1, 0);
    EXPECT_EQ(number_at(of_port(fixture, 1), layout::p2p_of_port::onu_set), (layout::IdSet{0b101, 0, 0, 0}));
}

TEST(P2p, ASwitchHasToMakeSense)
{
    ServiceFixture fixture(everyone_online());
    EXPECT_EQ(switch_p2p(fixture, 1, whole_p2p_port, 2), PON_ERR_BAD_RECORD);
    EXPECT_EQ(switch_p2p(fixture, 3, whole_p2p_port, 1), PON_ERR_NO_PORT);
    EXPECT_EQ(switch_p2p(fixture, 0, 1, 1), PON_ERR_NO_PORT);
    EXPECT_EQ(switch_p2p(fixture, 1, 129, 1), PON_ERR_BAD_ONU_ID);
    EXPECT_EQ(switch_p2p(fixture, 1, 1, 1), PON_ERR_NOT_BOUND);
}

TEST(P2p, TheOwnPortIsReadBack)
{
    ServiceFixture fixture(everyone_online());
    const auto set = [&](uint32_t pon_port, uint32_t own_port) {
        return send(fixture,
                    PlatRecord(BSP_CMD_P2P_OWN_PORT_SET, pon_port).put(layout::p2p_own_port::own_port, own_port));
    };
    EXPECT_EQ(set(1, 4), BSP_OK);
    EXPECT_EQ(number_at(of_port(fixture, 1), layout::p2p_of_port::own_port), 4u);
    EXPECT_EQ(number_at(of_port(fixture, 2), layout::p2p_of_port::own_port), 0u);
    EXPECT_EQ(set(1, 5), PON_ERR_BAD_RECORD);
    EXPECT_EQ(set(3, 1), PON_ERR_NO_PORT);
    EXPECT_EQ(of_port(fixture, 3).status, PON_ERR_NO_PORT);
}

TEST(P2p, TheConfigurationIsReadBackWithTheOwnPort)
{
    ServiceFixture fixture(everyone_online());
    EXPECT_EQ(send(fixture, config(2, {1, 50000, 10, 20, 1, 0})), BSP_OK);
    const Reply reply = of_port(fixture, 2);
    EXPECT_EQ(number_at(reply, layout::p2p_of_port::rest), 1u);
    EXPECT_EQ(number_at(reply, layout::p2p_of_port::rate), 50000u);
    EXPECT_EQ(number_at<uint16_t>(reply, layout::p2p_of_port::first_vlan), 10);
    EXPECT_EQ(number_at<uint16_t>(reply, layout::p2p_of_port::last_vlan), 20);
    EXPECT_EQ(number_at<uint8_t>(reply, layout::p2p_of_port::broadcast), 1);
    EXPECT_EQ(number_at<uint8_t>(reply, layout::p2p_of_port::multicast), 0);
}

TEST(P2p, AConfigurationHasToMakeSense)
{
    ServiceFixture fixture(everyone_online());
    for (const P2pConfig &bad :
         {P2pConfig{2, 0, 0, 0, 0, 0}, P2pConfig{0, 1000001, 0, 0, 0, 0}, P2pConfig{0, 0, 0, 5, 0, 0},
          P2pConfig{0, 0, 20, 10, 0, 0}, P2pConfig{0, 0, 1, 4095, 0, 0}, P2pConfig{0, 0, 0, 0, 2, 0},
          P2pConfig{0, 0, 0, 0, 0, 2}})
        EXPECT_EQ(send(fixture, config(1, bad)), PON_ERR_BAD_RECORD);
    EXPECT_EQ(send(fixture, config(3, {})), PON_ERR_NO_PORT);
}

TEST(P2p, EntriesAreShownWithTheOwnPort)
{
    ServiceFixture fixture(everyone_online());
    EXPECT_EQ(send(fixture, entry(1, 31, 0, drop_all)), BSP_OK);
    EXPECT_EQ(send(fixture, entry(1, 0, 0x800, {0, P2pAction::forward, 3, 2, 127, 64000})), BSP_OK);
    EXPECT_EQ(of_port(fixture, 1).result,
              R"([{"entry":0,"traffic":2048,"action":"forward","from_onu":3,"to_port":2,"to_onu":127,"rate":64000},)"
              R"({"entry":31,"traffic":null,"action":"drop","from_onu":null,"to_port":1,"to_onu":null,"rate":null}])");
    EXPECT_EQ(parse(state(fixture))[0]["entries"].GetUint(), 2u);
}

TEST(P2p, AnEntryIsReplacedAndRemoved)
{
    ServiceFixture fixture(everyone_online());
    send(fixture, entry(1, 7, 0, drop_all));
    send(fixture, entry(1, 7, 0x806, drop_all));
    EXPECT_EQ(p2p_entry(fixture.simulator.olt(), 1, 7)->traffic, 0x806u);
    EXPECT_EQ(send(fixture, entry(1, 7, 0, {})), BSP_OK);
    EXPECT_EQ(of_port(fixture, 1).result, "[]");
}

TEST(P2p, AnEntryHasToMakeSense)
{
    ServiceFixture fixture(everyone_online());
    EXPECT_EQ(send(fixture, entry(3, 0, 0, drop_all)), PON_ERR_NO_PORT);
    EXPECT_EQ(send(fixture, entry(1, 32, 0, drop_all)), PON_ERR_BAD_RECORD);
    for (uint32_t traffic : {1u, 0x5ffu, 0x10000u})
        EXPECT_EQ(send(fixture, entry(1, 0, traffic, drop_all)), PON_ERR_BAD_RECORD) << traffic;
    EXPECT_EQ(send(fixture, entry(1, 0, 0, {0, P2pAction{3}, 0, 1, 0, 0})), PON_ERR_BAD_RECORD);
    EXPECT_EQ(send(fixture, entry(1, 0, 0, {0, P2pAction::drop, 129, 1, 0, 0})), PON_ERR_BAD_ONU_ID);
    EXPECT_EQ(send(fixture, entry(1, 0, 0, {0, P2pAction::drop, 0, 1, 129, 0})), PON_ERR_BAD_ONU_ID);
    EXPECT_EQ(send(fixture, entry(1, 0, 0, {0, P2pAction::drop, 0, 0, 0, 0})), PON_ERR_NO_PORT);
    EXPECT_EQ(send(fixture, entry(1, 0, 0, {0, P2pAction::drop, 0, 1, 0, 1000001})), PON_ERR_BAD_RECORD);
}

TEST(P2p, SurvivesARestart)
{
    Folder folder;
    std::string before;
    {
        ServiceFixture fixture(everyone_online(), folder.file("olt.db"));
        for (uint32_t onu_id : {1, 2})
            bind_arrived(fixture, 2, onu_id, onu_id);
        switch_p2p(fixture, 2, whole_p2p_port, 1);
        switch_p2p(fixture, 2, 1, 0);
        send(fixture, config(2, {1, 50000, 10, 20, 1, 0}));
        send(fixture, entry(2, 3, 0, drop_all));
        before = state(fixture) + of_port(fixture, 2).answer.value() + of_port(fixture, 2).result.value();
        EXPECT_EQ(parse(state(fixture))[1]["onus"].GetUint(), 1u);
    }
    ServiceFixture fixture({}, folder.file("olt.db"));
    EXPECT_EQ(state(fixture) + of_port(fixture, 2).answer.value() + of_port(fixture, 2).result.value(), before);
}

TEST(P2p, TheLongestStateFitsTheAnswer)
{
    for (uint32_t own_port : {0u, 4u})
        for (bool on : {false, true}) {
            std::vector<P2pState> ports;
            for (uint32_t pon_port = 1; pon_port <= max_ports; ++pon_port)
                ports.push_back({pon_port, on, own_port, onus_per_port, max_p2p_entries});
            EXPECT_LE(p2p_table(ports).size(), longest_answer_text);
        }
}

TEST(P2p, TheLongestEntriesStayWithin10240)
{
    const std::vector<std::optional<P2pEntry>> entries(
        max_p2p_entries, P2pEntry{0xffff, P2pAction::forward, 127, max_ports, 127, 1000000});
    EXPECT_LE(p2p_entries_table(entries).size(), platform_result);
}

} // namespace
} // namespace ponsim
