// These tests check bandwidth: SLAs of ONUs, and how much of it a port has.
#include "model/port/sla.h"

#include "model/olt/demand.h"

#include "forwarding.h"
#include "rows.h"
#include "views/forwarding.h"

namespace ponsim
{
namespace
{

uint32_t store(ServiceFixture &fixture, uint32_t pon_port, uint32_t onu_id, const Sla &sla)
{
    return send(fixture, PlatRecord(BSP_CMD_SLA_SET, pon_port, onu_id)
                             .put(layout::sla::fixed, sla.fixed)
                             .put(layout::sla::assured, sla.assured)
                             .put(layout::sla::maximum, sla.maximum)
                             .put(layout::sla::priority, sla.priority)
                             .put(layout::sla::weight, sla.weight));
}

uint32_t store_down(ServiceFixture &fixture, uint32_t pon_port, uint32_t onu_id, uint32_t maximum)
{
    return send(fixture, PlatRecord(BSP_CMD_SLA_DOWN_SET, pon_port, onu_id).put(layout::sla_down::maximum, maximum));
}

Sla read(ServiceFixture &fixture, uint32_t pon_port, uint32_t onu_id, uint32_t channel = BSP_MSG_PLAT)
{
    const Reply reply = ask(fixture, PlatRecord(BSP_CMD_SLA_GET, pon_port, onu_id), channel);
    EXPECT_EQ(reply.status, BSP_OK);
    return {number_at(reply, layout::At<uint32_t>{124}), number_at(reply, layout::At<uint32_t>{128}),
            number_at(reply, layout::At<uint32_t>{132}), number_at(reply, layout::At<uint32_t>{136}),
            number_at(reply, layout::At<uint32_t>{140})};
}

uint32_t read_down(ServiceFixture &fixture, uint32_t pon_port, uint32_t onu_id)
{
    const Reply reply = ask(fixture, PlatRecord(BSP_CMD_SLA_DOWN_GET, pon_port, onu_id));
    EXPECT_EQ(reply.status, BSP_OK);
    return number_at(reply, layout::At<uint32_t>{124});
}

constexpr Sla some_sla{.fixed = 1000, .assured = 20000, .maximum = 300000, .priority = 5, .weight = 60};

// This OLT has ONUs bound to 3 and 9 of port 1.
struct Bound : ServiceFixture {
    explicit Bound(const std::string &file = {}) : ServiceFixture(everyone_online(), file)
    {
        bind_arrived(*this, 1, 3, 1);
        bind_arrived(*this, 1, 9, 0);
    }
};

TEST(Sla, WhatIsStoredIsReadBackOnBothChannels)
{
    Bound fixture;
    EXPECT_EQ(store(fixture, 1, 3, some_sla), BSP_OK);
    EXPECT_EQ(read(fixture, 1, 3), some_sla);
    EXPECT_EQ(read(fixture, 1, 3, BSP_MSG_DEBUG), some_sla);
    EXPECT_EQ(store_down(fixture, 1, 3, 70000), BSP_OK);
    EXPECT_EQ(read_down(fixture, 1, 3), 70000u);
}

TEST(Sla, OfAnOnuWithoutOneIsTheDefault)
{
    Bound fixture;
    EXPECT_EQ(read(fixture, 1, 9), (Sla{0, 0, 1000000, 0, 1}));
    EXPECT_EQ(read_down(fixture, 1, 9), 1000000u);
}

TEST(Sla, ZerosTakeItAway)
{
    Bound fixture;
    store(fixture, 1, 3, some_sla);
    store_down(fixture, 1, 3, 70000);
    EXPECT_EQ(store(fixture, 1, 3, {}), BSP_OK);
    EXPECT_EQ(store_down(fixture, 1, 3, 0), BSP_OK);
    EXPECT_EQ(read(fixture, 1, 3), default_sla);
    EXPECT_EQ(read_down(fixture, 1, 3), 1000000u);
}

TEST(Sla, IsOfABoundOnu)
{
    Bound fixture;
    for (const auto &[pon_port, onu_id, status] : {std::tuple{0u, 3u, PON_ERR_NO_PORT},
                                                   {3u, 3u, PON_ERR_NO_PORT},
                                                   {1u, 128u, PON_ERR_BAD_ONU_ID},
                                                   {1u, 4u, PON_ERR_NOT_BOUND}}) {
        EXPECT_EQ(store(fixture, pon_port, onu_id, some_sla), status);
        EXPECT_EQ(store_down(fixture, pon_port, onu_id, 1), status);
        EXPECT_EQ(send(fixture, PlatRecord(BSP_CMD_SLA_GET, pon_port, onu_id)), status);
        EXPECT_EQ(send(fixture, PlatRecord(BSP_CMD_SLA_DOWN_GET, pon_port, onu_id)), status);
    }
}

TEST(Sla, HasToMakeSense)
{
    Bound fixture;
    for (const Sla &bad :
         {Sla{100, 201, 300, 0, 1}, Sla{301, 0, 300, 0, 1}, Sla{0xffffffff, 2, 300, 0, 1}, Sla{0, 0, 1000001, 0, 1},
          Sla{0, 0, 0, 0, 1}, Sla{0, 0, 300, 8, 1}, Sla{0, 0, 300, 0, 0}, Sla{0, 0, 300, 0, 101}})
        EXPECT_EQ(store(fixture, 1, 3, bad), PON_ERR_BAD_SLA);
    EXPECT_EQ(store_down(fixture, 1, 3, 1000001), PON_ERR_BAD_SLA);
    EXPECT_EQ(read(fixture, 1, 3), default_sla);
    EXPECT_EQ(store(fixture, 1, 3, {100, 200, 300, 7, 100}), BSP_OK);
    EXPECT_EQ(store_down(fixture, 1, 3, 1000000), BSP_OK);
}

TEST(Sla, APortGivesNoMoreThanItHas)
{
    Bound fixture;
    EXPECT_EQ(store(fixture, 1, 3, {400000, 300000, 1000000, 0, 1}), BSP_OK);
    const uint32_t left = admissible({}, 2) - 700000;
    EXPECT_EQ(store(fixture, 1, 9, {0, left + 1, 1000000, 0, 1}), PON_ERR_SLA_CAPACITY);
    EXPECT_EQ(store(fixture, 1, 9, {0, left, 1000000, 0, 1}), BSP_OK);
}

TEST(Sla, ANewOneTakesThePlaceOfTheOldOne)
{
    Bound fixture;
    store(fixture, 1, 3, {600000, 0, 1000000, 0, 1});
    EXPECT_EQ(store(fixture, 1, 3, {0, 900000, 1000000, 0, 1}), BSP_OK);
}

TEST(Sla, AnotherPortHasACapacityOfItsOwn)
{
    Bound fixture;
    bind_arrived(fixture, 2, 3, 0);
    EXPECT_EQ(store(fixture, 1, 3, {900000, 0, 1000000, 0, 1}), BSP_OK);
    EXPECT_EQ(store(fixture, 2, 3, {900000, 0, 1000000, 0, 1}), BSP_OK);
}

TEST(Sla, CanPromiseOnlyWhatGrantsLeaveOfTheLine)
{
    Mpcp mpcp;
    // Of 62500 quanta of a cycle, 29 grants take 128 each, and two REPORTs 42 each. 1518 of 1538 octets are frames.
    EXPECT_EQ(admissible(mpcp, 2), 1000000ull * (62500 - 29 * 128 - 2 * 42) / 62500 * 1518 / 1538);
    EXPECT_LT(admissible(mpcp, 128), admissible(mpcp, 2));
    mpcp.grant_cycle = 250;
    EXPECT_LT(admissible(mpcp, 128), admissible({}, 128)) << "more grants a second";
    mpcp = {.fec = 1};
    EXPECT_LT(admissible(mpcp, 2), admissible({}, 2));
}

TEST(Sla, ThatIsPromisedStaysWhenGrantsTakeMoreOfTheLine)
{
    Bound fixture;
    ASSERT_EQ(store(fixture, 1, 3, {900000, 0, 1000000, 0, 1}), BSP_OK);
    fixture.simulator.change(set_mpcp(fixture.simulator.olt(), 1, MpcpSet::grants, {.sync_time = 1000}).change);
    const Granted granted = granted_at(fixture.simulator.olt(), fixture.port(1));
    EXPECT_LT(granted.capacity, 900000u);
    EXPECT_EQ(granted.fixed, 900000u);
    EXPECT_EQ(granted.free(), 0u);
}

TEST(Sla, IsGoneWithTheRelease)
{
    Bound fixture;
    store(fixture, 1, 3, some_sla);
    store_down(fixture, 1, 3, 70000);
    fixture.send(record_of(BSP_CMD_ONU_RELEASE, 1, 3));
    bind_arrived(fixture, 1, 3, 1);
    EXPECT_EQ(read(fixture, 1, 3), default_sla);
    EXPECT_EQ(read_down(fixture, 1, 3), 1000000u);
}

TEST(Sla, StaysWhenTheOnuIsBoundAgain)
{
    Bound fixture;
    store(fixture, 1, 3, some_sla);
    bind_arrived(fixture, 1, 3, 1);
    EXPECT_EQ(read(fixture, 1, 3), some_sla);
}

TEST(Sla, FollowsItsOnuToAnotherId)
{
    Bound fixture;
    store(fixture, 1, 3, some_sla);
    store_down(fixture, 1, 3, 70000);
    bsp_pon_msg sort = record_of(BSP_CMD_ONU_SORT_BATCH, 1);
    put(sort, layout::onu_batch::onu_set, words_of(ids({3, 9})));
    ASSERT_EQ(fixture.send(sort), BSP_OK);
    EXPECT_EQ(read(fixture, 1, 9), some_sla);
    EXPECT_EQ(read_down(fixture, 1, 9), 70000u);
    EXPECT_EQ(read(fixture, 1, 3), default_sla);
}

TEST(Sla, SurvivesARestart)
{
    Folder folder;
    {
        Bound fixture(folder.file("olt.db"));
        store(fixture, 1, 3, some_sla);
        store_down(fixture, 1, 9, 70000);
    }
    ServiceFixture fixture({}, folder.file("olt.db"));
    EXPECT_EQ(read(fixture, 1, 3), some_sla);
    EXPECT_EQ(read_down(fixture, 1, 3), 1000000u);
    EXPECT_EQ(read(fixture, 1, 9), default_sla);
    EXPECT_EQ(read_down(fixture, 1, 9), 70000u);
}

TEST(Sla, ThePortsSummaryAddsUp)
{
    Bound fixture;
    store(fixture, 1, 3, some_sla);
    store(fixture, 1, 9, {5, 6, 11, 0, 1});
    const Reply reply = ask(fixture, PlatRecord(BSP_CMD_SLA_PORT_GET, 1));
    EXPECT_EQ(number_at(reply, layout::sla_of_port::onus), 2u);
    EXPECT_EQ(number_at(reply, layout::sla_of_port::fixed), 1005u);
    EXPECT_EQ(number_at(reply, layout::sla_of_port::assured), 20006u);
    EXPECT_EQ(number_at(reply, layout::sla_of_port::capacity), admissible({}, 2));
    EXPECT_EQ(number_at(reply, layout::sla_of_port::free), admissible({}, 2) - 1005 - 20006);
    EXPECT_EQ(send(fixture, PlatRecord(BSP_CMD_SLA_PORT_GET, 3)), PON_ERR_NO_PORT);
}

TEST(SlaViews, HaveARowABoundOnu)
{
    Bound fixture;
    store(fixture, 1, 3, some_sla);
    store_down(fixture, 1, 9, 70000);
    EXPECT_EQ(ask(fixture, PlatRecord(BSP_CMD_VIEW_SLA_WEB, 1)).result,
              R"([{"onu_id":3,"fixed":1000,"assured":20000,"max":300000,"prio":5,"wt":60},)"
              R"({"onu_id":9,"fixed":null,"assured":null,"max":null,"prio":null,"wt":null}])");
    EXPECT_EQ(ask(fixture, PlatRecord(BSP_CMD_VIEW_SLA_DOWN_WEB, 1)).result,
              R"([{"onu_id":3,"max":null},{"onu_id":9,"max":70000}])");
    EXPECT_EQ(send(fixture, PlatRecord(BSP_CMD_VIEW_SLA_WEB, 0)), PON_ERR_NO_PORT);
    EXPECT_EQ(send(fixture, PlatRecord(BSP_CMD_VIEW_SLA_DOWN_WEB, 3)), PON_ERR_NO_PORT);
}

TEST(SlaViews, OfTheOltHaveARowAPort)
{
    Bound fixture;
    store(fixture, 1, 3, some_sla);
    store_down(fixture, 1, 9, 70000);
    const rapidjson::Document rows = parse(ask(fixture, PlatRecord(BSP_CMD_VIEW_SLA_SNMP, 0)).result.value());
    ASSERT_EQ(rows.Size(), 2u);
    EXPECT_EQ(rows[0]["bound"].GetUint(), 2u);
    EXPECT_EQ(rows[0]["slas"].GetUint(), 1u);
    EXPECT_EQ(rows[0]["down"].GetUint(), 1u);
    EXPECT_EQ(rows[0]["fixed"].GetUint(), 1000u);
    EXPECT_EQ(rows[0]["free"].GetUint(), admissible({}, 2) - 21000);
    EXPECT_EQ(rows[1]["bound"].GetUint(), 0u);
}

// Returns a port whose ONUs all have this SLA, even when no port could give that much.
PonPort port_of(const std::optional<Sla> &sla)
{
    PonPort port{max_ports, {}, {}};
    for (std::optional<Binding> &binding : port.bindings) {
        binding = binding_of(stranger(1));
        binding->sla = sla;
        if (sla) binding->sla_down = sla->maximum;
    }
    return port;
}

TEST(SlaViews, TheLongestStayWithin10240)
{
    // Two numbers whose sum is at most 1000000 have no more digits than two numbers of six digits.
    for (const std::optional<Sla> &sla : {std::optional(Sla{500000, 500000, 1000000, 7, 100}),
                                          std::optional(Sla{1000000, 0, 1000000, 7, 100}), std::optional<Sla>{}}) {
        const PonPort port = port_of(sla);
        EXPECT_LE(sla_table(port).size(), platform_result);
        EXPECT_LE(sla_down_table(port).size(), platform_result);
    }
    Olt olt({.seed = 1, .ports = max_ports, .arrivals = onus_per_port, .silent = 0});
    Change all;
    for (const PonPort &port : olt.ports())
        for (uint32_t id = 0; id < onus_per_port; ++id) {
            Binding binding = binding_of(port.arrivals[id].mac);
            binding.sla = Sla{3900, 3900, 1000000, 7, 100};
            binding.sla_down = 1000000;
            all.put<Binding>({port.number, id}, binding);
        }
    olt.apply(all);
    EXPECT_LE(sla_summary_table(olt).size(), platform_result);
}

} // namespace
} // namespace ponsim
