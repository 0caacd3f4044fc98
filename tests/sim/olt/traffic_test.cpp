// These tests check statistics that grow with modelled traffic, and ONUs that are deregistered.
#include "model/port/counters.h"
#include "plat.h"

namespace ponsim
{
namespace
{

constexpr ModelTime minute = 60 * ms_per_second;

// This OLT has four ONUs bound at each of its ports. Two ports share each uplink.
struct Busy : ServiceFixture {
    Busy() : ServiceFixture({.seed = 1, .ports = 8, .arrivals = 4, .silent = 0})
    {
        for (uint32_t pon_port = 1; pon_port <= 8; ++pon_port)
            for (uint32_t index = 0; index < 4; ++index)
                EXPECT_EQ(send(record_of(BSP_CMD_ONU_BIND, pon_port, index + 1, port(pon_port).arrivals[index].mac)),
                          BSP_OK);
    }

    const Olt &olt() const { return simulator.olt(); }
    Counters pon(uint32_t pon_port) const { return pon_counters(olt(), *olt().port(pon_port)); }
    Counters ge(uint32_t uplink) const { return uplink_counters(olt(), uplink); }
    void pass(ModelTime time) { simulator.advance(olt().now() + time); }

    uint32_t deregister(uint32_t pon_port, uint32_t onu_id)
    {
        return PlatAnswer(*this, BSP_MSG_PLAT, PlatRecord(BSP_CMD_ONU_DEREGISTER, pon_port, onu_id)).status();
    }
    OnuState state(uint32_t pon_port, uint32_t onu_id) const
    {
        const PonPort &port = *olt().port(pon_port);
        return port.state(*port.bindings[onu_id]);
    }
};

void expect_sums(const Busy &busy)
{
    for (uint32_t uplink = 1; uplink <= ge_uplinks; ++uplink) {
        uint64_t from_onus = 0;
        uint64_t to_onus = 0;
        for (uint32_t pon_port = 1; pon_port <= 8; ++pon_port) {
            if (uplink_of(pon_port) != uplink) continue;
            const Counters pon = busy.pon(pon_port);
            from_onus += pon.in_frames() - pon.in_discards;
            to_onus += pon.out_frames() + pon.out_discards;
        }
        const Counters ge = busy.ge(uplink);
        EXPECT_EQ(ge.out_frames() + ge.out_discards, from_onus) << uplink;
        EXPECT_EQ(ge.in_frames() - ge.in_discards, to_onus) << uplink;
    }
}

// Returns what the ONUs of a port have sent so far, in frames.
uint64_t sent_by_onus(const Busy &busy, uint32_t pon_port)
{
    const Offered offered = busy.olt().port(pon_port)->traffic.offered(busy.olt().now());
    uint64_t frames = 0;
    for (uint64_t count : offered.frames.up)
        frames += count / count_unit;
    return frames;
}

TEST(Traffic, OfAPortIsWhatItsOnusSentLessWhatWasBroken)
{
    Busy busy;
    for (const ModelTime time : {ms_per_second, minute, 60 * minute}) {
        busy.pass(time);
        for (uint32_t pon_port = 1; pon_port <= 8; ++pon_port) {
            const Counters pon = busy.pon(pon_port);
            EXPECT_GT(pon.in_frames(), 0u);
            EXPECT_EQ(pon.in_frames() + pon.in_fcs_errors, sent_by_onus(busy, pon_port));
        }
    }
}

TEST(Traffic, OfUplinksIsThatOfTheirPortsLessWhatWasDropped)
{
    Busy busy;
    expect_sums(busy);
    busy.pass(minute);
    expect_sums(busy);
    ASSERT_EQ(busy.send(record_of(BSP_CMD_ONU_RELEASE, 1, 2)), BSP_OK);
    busy.pass(minute);
    expect_sums(busy);
    ASSERT_EQ(busy.deregister(2, 1), BSP_OK);
    busy.pass(minute + 7);
    expect_sums(busy);
}

TEST(Traffic, StandsStillWithoutOnus)
{
    Busy busy;
    busy.pass(minute);
    ASSERT_EQ(busy.send(record_of(BSP_CMD_ONU_RELEASE_ALL, 3)), BSP_OK);
    const uint64_t before = busy.pon(3).in_octets;
    busy.pass(10 * minute);
    EXPECT_EQ(busy.pon(3).in_octets, before);
    EXPECT_GT(busy.pon(4).in_octets, 0u);
}

TEST(Traffic, OfAnOnuEndsWithItsLight)
{
    Busy busy;
    busy.pass(minute);
    const uint64_t online = busy.olt().port(1)->traffic.online();
    ModuleRecord dark = busy.olt().module(1)->record();
    dark.tx_disabled = true;
    busy.simulator.change(change_of<ModuleRecord>(1, dark));
    EXPECT_EQ(online, 4u);
    busy.pass(50); // which the GATE time-out takes
    EXPECT_EQ(busy.olt().port(1)->traffic.online(), 0u);
    dark.tx_disabled = false;
    busy.simulator.change(change_of<ModuleRecord>(1, dark));
    busy.pass(minute);
    EXPECT_EQ(busy.olt().port(1)->traffic.online(), 4u);
}

TEST(Traffic, NeverGoesBackwards)
{
    Busy busy;
    uint64_t before = 0;
    for (int second = 0; second < 50; ++second) {
        busy.pass(ms_per_second + 13);
        if (second % 10 == 5) busy.deregister(1, 1);
        const uint64_t now = busy.pon(1).in_frames();
        EXPECT_GE(now, before);
        before = now;
    }
}

TEST(Traffic, IsToldByTheAnswer)
{
    Busy busy;
    busy.pass(minute);
    const Counters pon = busy.pon(5);
    const PlatAnswer answer(busy, BSP_MSG_DEBUG, PlatRecord(BSP_CMD_DEBUG_PON_STATS, 5));
    EXPECT_EQ(answer.get(layout::port_stats::in_octets), pon.in_octets);
    EXPECT_EQ(answer.get(layout::port_stats::out_unicast), pon.out_unicast);
    EXPECT_EQ(PlatAnswer(busy, BSP_MSG_DEBUG, PlatRecord(BSP_CMD_DEBUG_PON_STATS, 9)).status(), PON_ERR_NO_PORT);
    EXPECT_EQ(PlatAnswer(busy, BSP_MSG_DEBUG, PlatRecord(BSP_CMD_DEBUG_GE_STATS, 5)).status(), PON_ERR_NO_INTERFACE);
}

TEST(Traffic, IsKeptWithTheStore)
{
    const Folder folder;
    const WantedSettings wanted{.seed = 1, .ports = 1, .arrivals = 1, .silent = 0};
    uint64_t before = 0;
    {
        ServiceFixture fixture(wanted, folder.file("olt.db"));
        fixture.send(record_of(BSP_CMD_ONU_BIND, 1, 1, fixture.port(1).arrivals[0].mac));
        fixture.simulator.advance(minute);
        fixture.simulator.keep_time();
        before = pon_counters(fixture.simulator.olt(), fixture.port(1)).in_frames();
    }
    ServiceFixture fixture(wanted, folder.file("olt.db"));
    EXPECT_EQ(pon_counters(fixture.simulator.olt(), fixture.port(1)).in_frames(), before);
    EXPECT_GT(before, 0u);
}

TEST(Deregistration, IsSeenAndEndsByItself)
{
    Busy busy;
    ASSERT_EQ(busy.deregister(1, 1), BSP_OK);
    EXPECT_EQ(busy.state(1, 1), OnuState::offline);
    EXPECT_EQ(busy.state(1, 2), OnuState::online);
    EXPECT_EQ(busy.olt().port(1)->alarms.size(), 1u);
    EXPECT_EQ(busy.deregister(1, 1), PON_ERR_OFFLINE);
    busy.pass(10 * ms_per_second);
    EXPECT_EQ(busy.state(1, 1), OnuState::online);
}

TEST(Deregistration, OfAPortIsOfAllItsOnus)
{
    Busy busy;
    EXPECT_EQ(PlatAnswer(busy, BSP_MSG_PLAT, PlatRecord(BSP_CMD_PORT_REREGISTER, 1)).status(), BSP_OK);
    for (uint32_t onu_id = 1; onu_id <= 4; ++onu_id)
        EXPECT_EQ(busy.state(1, onu_id), OnuState::offline);
    EXPECT_EQ(busy.state(2, 1), OnuState::online);
    busy.pass(10 * ms_per_second);
    for (uint32_t onu_id = 1; onu_id <= 4; ++onu_id)
        EXPECT_EQ(busy.state(1, onu_id), OnuState::online);
}

TEST(Deregistration, OfWhatIsNotThereIsRefused)
{
    Busy busy;
    EXPECT_EQ(busy.deregister(9, 1), PON_ERR_NO_PORT);
    EXPECT_EQ(busy.deregister(1, 128), PON_ERR_BAD_ONU_ID);
    EXPECT_EQ(busy.deregister(1, 9), PON_ERR_NOT_BOUND);
}

TEST(Deregistration, DoesNotBringABlackListedOnuBack)
{
    Busy busy;
    ASSERT_EQ(busy.deregister(1, 1), BSP_OK);
    ASSERT_EQ(busy.send(record_of(BSP_CMD_BLACKLIST_REJECT, 1, 1)), BSP_OK);
    busy.pass(minute);
    EXPECT_FALSE(busy.olt().port(1)->bindings[1]);
    EXPECT_TRUE(busy.olt().waiting(*busy.olt().port(1)).empty());
}

TEST(Mpcp, SetsWhatIsNamedAndTheMacShowsIt)
{
    Busy busy;
    const auto set = [&](uint32_t which, uint32_t interval, uint32_t window) {
        return PlatAnswer(busy, BSP_MSG_PLAT,
                          PlatRecord(BSP_CMD_MPCP_SET, 1)
                              .put(word_at(offsetof(bsp_plat_msg, plat_arg108)), which)
                              .put(layout::mpcp::discovery_interval, interval)
                              .put(layout::mpcp::discovery_window, window))
            .status();
    };
    EXPECT_EQ(set(1, 2000, 20000), BSP_OK);
    const PlatAnswer mac(busy, BSP_MSG_DEBUG, PlatRecord(BSP_CMD_DEBUG_PON_MAC_GET, 1));
    EXPECT_EQ(mac.get(layout::pon_mac::discovery_interval), 2000u);
    EXPECT_EQ(mac.get(layout::pon_mac::discovery_window), 20000u);
    EXPECT_EQ(mac.get(layout::pon_mac::registered), 4u);
    EXPECT_EQ(set(9, 2000, 20000), PON_ERR_BAD_RECORD);
}

TEST(Mpcp, LeavesTheOpticalStatusOfTheSameCodeAlone)
{
    Busy busy;
    const auto mpcp = [&](uint32_t which) {
        return PlatAnswer(busy, BSP_MSG_PLAT,
                          PlatRecord(BSP_CMD_MPCP_SET, 1)
                              .put(word_at(offsetof(bsp_plat_msg, plat_arg108)), which)
                              .put(layout::mpcp::discovery_interval, 2000u)
                              .put(layout::mpcp::discovery_window, 20000u))
            .status();
    };
    ASSERT_EQ(mpcp(1), BSP_OK);
    ASSERT_EQ(PlatAnswer(busy, BSP_MSG_PLAT, PlatRecord(BSP_CMD_OPTICS_STATUS_SET, 1)).status(), BSP_OK);
    const PlatAnswer mac(busy, BSP_MSG_DEBUG, PlatRecord(BSP_CMD_DEBUG_PON_MAC_GET, 1));
    EXPECT_EQ(mac.get(layout::pon_mac::discovery_interval), 2000u);
}

TEST(GePhy, ThatIsPoweredDownTakesItsTrafficWithIt)
{
    Busy busy;
    const auto set = [&](uint8_t control) {
        return PlatAnswer(busy, BSP_MSG_DEBUG,
                          PlatRecord(BSP_CMD_DEBUG_GE_PHY_SET, 1).put(layout::ge_phy_control::control, control))
            .status();
    };
    busy.pass(minute);
    ASSERT_EQ(set(PhyControl::autoneg | PhyControl::full_duplex | PhyControl::power_down), BSP_OK);
    const PlatAnswer phy(busy, BSP_MSG_DEBUG, PlatRecord(BSP_CMD_DEBUG_GE_PHY_GET, 1));
    EXPECT_EQ(phy.get(layout::ge_phy::control) >> 8 & PhyControl::power_down, PhyControl::power_down);
    const uint64_t before = busy.ge(1).out_octets;
    busy.pass(minute);
    EXPECT_EQ(busy.ge(1).out_octets, before);
    ASSERT_EQ(set(PhyControl::autoneg | PhyControl::full_duplex), BSP_OK);
    busy.pass(minute);
    EXPECT_GT(busy.ge(1).out_octets, before);
}

// Tests every register view of the chip, with the bytes that its operation copies.
TEST(Chip, AnswersForEachInterfaceAndNoOther)
{
    Busy busy;
    for (const auto &[command, last] : {std::pair{BSP_CMD_DEBUG_GE_PHY_GET, 4u},
                                        {BSP_CMD_DEBUG_GE_MAC_GET, 4u},
                                        {BSP_CMD_DEBUG_XAUI_MAC_GET, 2u},
                                        {BSP_CMD_DEBUG_XAUI_PHY_GET, 2u},
                                        {BSP_CMD_DEBUG_MGMT_CFG_GET, 1u},
                                        {BSP_CMD_DEBUG_PON_MAC_GET, 8u},
                                        {BSP_CMD_DEBUG_INGRESS_GET, 8u},
                                        {BSP_CMD_DEBUG_EGRESS_GET, 8u}}) {
        for (uint32_t port = 1; port <= last; ++port)
            EXPECT_EQ(PlatAnswer(busy, BSP_MSG_DEBUG, PlatRecord(command, port)).status(), BSP_OK)
                << command << ' ' << port;
        for (uint32_t port : {0u, last + 1})
            EXPECT_NE(PlatAnswer(busy, BSP_MSG_DEBUG, PlatRecord(command, port)).status(), BSP_OK)
                << command << ' ' << port;
    }
}

} // namespace
} // namespace ponsim
