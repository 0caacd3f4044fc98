// These commands concern counters and registers of the PON chip and of the board's interfaces, MPCP, deregistration,
// and debug output.
#include "handlers/chip.h"

#include <algorithm>
#include <array>
#include <limits>

#include "generated/service_words.h"
#include "handlers/record.h"
#include "model/base/block.h"
#include "model/lifecycle/debug.h"
#include "model/lifecycle/deregistration.h"
#include "model/olt/interfaces.h"
#include "model/olt/mpcp.h"
#include "model/port/counters.h"

namespace ponsim
{
namespace
{

constexpr uint16_t max_frame = 2000;
constexpr uint16_t pause_quanta = 0xffff;
constexpr uint32_t line_rate = 1000000; // kbit/s, of a PON port and of a GE port
constexpr uint16_t laser_time = 32;     // TQ: 512 ns

bool is_one_of(uint32_t number, uint32_t count)
{
    return number >= 1 && number <= count;
}

// Returns an answer whose data block is empty.
Answer answer_to(const Request &request)
{
    return Answer(head_of(request.read<bsp_plat_msg>()));
}

Outcome stats(const Request &request, const Counters &counters)
{
    namespace at = layout::port_stats;
    Answer answer = answer_to(request);
    answer.put(at::in_octets, counters.in_octets);
    answer.put(at::in_unicast, counters.in_unicast);
    answer.put(at::in_multicast, counters.in_multicast);
    answer.put(at::in_broadcast, counters.in_broadcast);
    answer.put(at::in_fcs_errors, counters.in_fcs_errors);
    answer.put(at::in_code_errors, counters.in_code_errors);
    answer.put(at::in_discards, counters.in_discards);
    answer.put(at::in_discard_octets, counters.in_discard_octets);
    answer.put(at::out_octets, counters.out_octets);
    answer.put(at::out_unicast, counters.out_unicast);
    answer.put(at::out_multicast, counters.out_multicast);
    answer.put(at::out_broadcast, counters.out_broadcast);
    answer.put(at::out_discards, counters.out_discards);
    answer.put(at::out_discard_octets, counters.out_discard_octets);
    constexpr std::array sizes{at::frames_64,      at::frames_65_127,   at::frames_128_255,
                               at::frames_256_511, at::frames_512_1023, at::frames_1024_1518};
    for (size_t size = 0; size < sizes.size(); ++size)
        answer.put(sizes[size], counters.sizes.at(size));
    return answer.outcome();
}

Outcome pon_stats(const Olt &olt, const Request &request)
{
    const PonPort *port = olt.port(request.read<bsp_plat_msg>().plat_port);
    if (!port) return {PON_ERR_NO_PORT};
    return stats(request, pon_counters(olt, *port));
}

Outcome ge_stats(const Olt &olt, const Request &request)
{
    const uint32_t uplink = request.read<bsp_plat_msg>().plat_port;
    if (!is_one_of(uplink, ge_uplinks)) return {PON_ERR_NO_INTERFACE};
    return stats(request, uplink_counters(olt, uplink));
}

Outcome ge_phy(const Olt &olt, const Request &request)
{
    namespace at = layout::ge_phy;
    constexpr uint16_t gigabit = 0x0040;
    constexpr uint16_t abilities = 0x0149;
    constexpr uint16_t autoneg_complete = 0x0020;
    constexpr uint16_t link = 0x0004;
    constexpr uint16_t advertised = 0x01a0; // full duplex, both kinds of pause
    constexpr uint16_t acknowledged = 0x4000;
    constexpr uint16_t page_received = 0x0002;
    constexpr uint16_t full_and_half = 0xc000;

    const uint32_t uplink = request.read<bsp_plat_msg>().plat_port;
    if (!is_one_of(uplink, ge_uplinks)) return {PON_ERR_NO_INTERFACE};
    const PhyControl phy = phy_control(olt, uplink);
    const bool negotiated = phy.link_up() && phy.has(PhyControl::autoneg);
    Answer answer = answer_to(request);
    answer.put(at::control, phy.bits << 8 | gigabit);
    answer.put(at::status, abilities | (phy.link_up() ? link : 0) | (negotiated ? autoneg_complete : 0));
    answer.put(at::phy_id_high, 0x0801); // of no manufacturer, because the OUI is a local one
    answer.put(at::phy_id_low, 0x0011);
    answer.put(at::advertised, advertised);
    answer.put(at::partner, negotiated ? advertised | acknowledged : 0);
    answer.put(at::expansion, negotiated ? page_received : 0);
    answer.put(at::extended_status, full_and_half);
    return answer.outcome();
}

Outcome set_ge_phy(const Olt &, const Request &request)
{
    const uint32_t uplink = request.read<bsp_plat_msg>().plat_port;
    if (!is_one_of(uplink, ge_uplinks)) return {PON_ERR_NO_INTERFACE};
    PhyControl phy{request.get(layout::ge_phy_control::control)};
    if (phy.has(PhyControl::reset)) phy = {};
    if (phy.has(PhyControl::speed)) return {PON_ERR_BAD_RECORD};
    phy.bits &= static_cast<uint8_t>(~PhyControl::restart_autoneg);
    return {BSP_OK, change_of(block_at({BSP_MSG_DEBUG, BSP_CMD_DEBUG_GE_PHY_SET, uplink, 0}, to_block(phy.bits)))};
}

// A Side says whose behaviour is asked for.
struct Side {
    uint32_t status;
    Interface interface;
    uint32_t number;
};

Side side_of(const Olt &olt, const Request &request)
{
    const uint32_t number = request.read<bsp_plat_msg>().plat_port;
    switch (request.get(layout::behavior_view::selector)) {
    case 0:
        return {olt.port(number) ? BSP_OK : PON_ERR_NO_PORT, Interface::pon, number};
    case 1:
        return {is_one_of(number, ge_uplinks) ? BSP_OK : PON_ERR_NO_INTERFACE, Interface::ge, number};
    default:
        return {PON_ERR_BAD_RECORD, Interface::pon, number};
    }
}

Counters counters_of(const Olt &olt, const Side &side)
{
    return side.interface == Interface::pon ? pon_counters(olt, *olt.port(side.number))
                                            : uplink_counters(olt, side.number);
}

// Returns a part of the frames, of a million.
uint64_t share_of(uint64_t part, uint64_t frames)
{
    return frames == 0 ? 0 : part * 1000000 / frames;
}

Outcome ingress(const Olt &olt, const Request &request)
{
    namespace at = layout::ingress;
    constexpr uint32_t burst = 65536;
    constexpr std::array<uint8_t, 8> queue_of{0, 1, 2, 3, 4, 5, 6, 7};
    const Side side = side_of(olt, request);
    if (side.status != BSP_OK) return {side.status};
    // The traffic of the greatest possible number of ONUs does not reach these limits.
    const uint32_t storm_limit = side.interface == Interface::pon ? 1000 : 10000;
    Answer answer = answer_to(request);
    answer.put(at::pvid, 1);
    answer.put(at::tpid, 0x8100);
    answer.put(at::max_frame, max_frame);
    answer.put(at::trust, 1);
    answer.put(at::learning, 1);
    answer.put(at::committed_rate, line_rate);
    answer.put(at::committed_burst, burst);
    answer.put(at::peak_rate, line_rate);
    answer.put(at::peak_burst, burst);
    for (const auto limit : {at::broadcast_limit, at::multicast_limit, at::unknown_limit})
        answer.put(limit, storm_limit);
    const Counters counters = counters_of(olt, side);
    answer.put(at::policed_share, share_of(counters.in_discards, counters.in_frames()));
    answer.put(at::queue_of, queue_of);
    answer.put(at::queues, queue_of.size());
    answer.put(at::policing, 1);
    return answer.outcome();
}

Outcome egress(const Olt &olt, const Request &request)
{
    namespace at = layout::egress;
    const Side side = side_of(olt, request);
    if (side.status != BSP_OK) return {side.status};
    const Counters counters = counters_of(olt, side);
    constexpr uint64_t most = std::numeric_limits<uint16_t>::max();
    Answer answer = answer_to(request);
    answer.put(at::discard_share,
               std::min(share_of(counters.out_discards, counters.out_frames() + counters.out_discards), most));
    answer.put(at::shaping_rate, line_rate);
    return answer.outcome();
}

Outcome pon_mac(const Olt &olt, const Request &request)
{
    namespace at = layout::pon_mac;
    const PonPort *port = olt.port(request.read<bsp_plat_msg>().plat_port);
    if (!port) return {PON_ERR_NO_PORT};
    const Mpcp mpcp = mpcp_of(olt, port->number);
    Answer answer = answer_to(request);
    answer.put(at::registered, port->traffic.online());
    answer.put(at::discovery_interval, mpcp.discovery_interval);
    answer.put(at::discovery_window, mpcp.discovery_window);
    answer.put(at::report_timeout, mpcp.report_timeout);
    answer.put(at::gate_timeout, mpcp.gate_timeout);
    answer.put(at::grant_length, mpcp.grant_length);
    answer.put(at::grant_cycle, mpcp.grant_cycle);
    answer.put(at::sync_time, mpcp.sync_time);
    answer.put(at::laser_on, laser_time);
    answer.put(at::laser_off, laser_time);
    answer.put(at::fec, mpcp.fec);
    answer.put(at::uplink, uplink_of(port->number));
    return answer.outcome();
}

Outcome ge_mac(const Olt &olt, const Request &request)
{
    namespace at = layout::ge_mac;
    const uint32_t uplink = request.read<bsp_plat_msg>().plat_port;
    if (!is_one_of(uplink, ge_uplinks)) return {PON_ERR_NO_INTERFACE};
    const PhyControl phy = phy_control(olt, uplink);
    const bool enabled = !phy.has(PhyControl::power_down | PhyControl::isolate);
    Answer answer = answer_to(request);
    answer.put(at::mac, interface_address(olt.seed(), Interface::ge, uplink));
    answer.put(at::max_frame, max_frame);
    answer.put(at::speed, phy.link_up() ? 1000 : 0);
    answer.put(at::full_duplex, phy.link_up());
    answer.put(at::link, phy.link_up());
    answer.put(at::tx_enabled, enabled);
    answer.put(at::rx_enabled, enabled);
    answer.put(at::pause_tx, 1);
    answer.put(at::pause_rx, 1);
    answer.put(at::pause_quanta, pause_quanta);
    answer.put(at::inter_frame_gap, 96);
    answer.put(at::loopback, phy.has(PhyControl::loopback));
    answer.put(at::promiscuous, 1);
    return answer.outcome();
}

Outcome xaui_mac(const Olt &olt, const Request &request)
{
    namespace at = layout::xaui_mac;
    constexpr uint64_t kilobit = 1000;
    const uint32_t xaui = request.read<bsp_plat_msg>().plat_port;
    if (!is_one_of(xaui, xaui_ports)) return {PON_ERR_NO_INTERFACE};
    const Load load = xaui_load(olt, xaui);
    Answer answer = answer_to(request);
    answer.put(at::mac, interface_address(olt.seed(), Interface::xaui, xaui));
    answer.put(at::max_frame, max_frame);
    answer.put(at::speed, 10000);
    answer.put(at::full_duplex, 1);
    answer.put(at::link, 1);
    answer.put(at::pause_tx, 1);
    answer.put(at::pause_rx, 1);
    answer.put(at::pause_quanta, pause_quanta);
    answer.put(at::in_load, load.in / kilobit);
    answer.put(at::out_load, load.out / kilobit);
    return answer.outcome();
}

Outcome xaui_phy(const Olt &, const Request &request)
{
    namespace at = layout::xaui_phy;
    if (!is_one_of(request.read<bsp_plat_msg>().plat_port, xaui_ports)) return {PON_ERR_NO_INTERFACE};
    Answer answer = answer_to(request);
    answer.put(at::control, 0x2040);
    answer.put(at::status, 0x0006);
    answer.put(at::speed, 0x0001);
    answer.put(at::status_2, 0x8000);
    answer.put(at::lane_status, 0x180f);
    return answer.outcome();
}

Outcome mgmt_cfg(const Olt &, const Request &request)
{
    namespace at = layout::mgmt_cfg;
    if (!is_one_of(request.read<bsp_plat_msg>().plat_port, management_ports)) return {PON_ERR_NO_INTERFACE};
    Answer answer = answer_to(request);
    answer.put(at::enabled, 1);
    answer.put(at::full_duplex, 1);
    answer.put(at::speed, 1000);
    return answer.outcome();
}

Outcome fdb_dump(const Olt &olt, const Request &request)
{
    constexpr std::array<std::string_view, 3> kinds{"all", "dynamic", "static"};
    const uint32_t pon_port = request.read<bsp_plat_msg>().plat_port;
    const auto selector = request.get(layout::fdb_dump::selector);
    if (pon_port != 0 && !olt.port(pon_port)) return {PON_ERR_NO_PORT};
    if (selector >= kinds.size()) return {PON_ERR_BAD_RECORD};
    Outcome outcome{BSP_OK};
    for (const PonPort &port : olt.ports())
        if (pon_port == 0 || pon_port == port.number)
            outcome.change.log.push_back("FDB: port " + std::to_string(port.number) + ", " +
                                         std::string(kinds[selector]) + " entries, " +
                                         std::to_string(port.traffic.online()) + " ONUs online");
    return outcome;
}

Outcome debug_switch(const Olt &olt, const Request &request)
{
    const auto on = request.get(layout::debug_switch::on);
    if (on > 1) return {PON_ERR_BAD_RECORD};
    return to_outcome(set_debug(olt, DebugSwitch{request.read<bsp_plat_msg>().plat_cmd},
                                request.get(layout::debug_switch::pon_port), on == 1));
}

Outcome deregister_one(const Olt &olt, const Request &request)
{
    const auto record = request.read<bsp_plat_msg>();
    return to_outcome(deregister_onu(olt, record.plat_port, record.plat_arg4));
}

Outcome deregister_whole_port(const Olt &olt, const Request &request)
{
    return to_outcome(deregister_all(olt, request.read<bsp_plat_msg>().plat_port));
}

constexpr Handler handlers[] = {
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_PON_STATS, pon_stats},
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_GE_STATS, ge_stats},
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_GE_PHY_GET, ge_phy},
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_GE_PHY_SET, set_ge_phy},
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_INGRESS_GET, ingress},
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_EGRESS_GET, egress},
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_PON_MAC_GET, pon_mac},
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_GE_MAC_GET, ge_mac},
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_XAUI_MAC_GET, xaui_mac},
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_XAUI_PHY_GET, xaui_phy},
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_FDB_DUMP, fdb_dump},
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_MGMT_CFG_GET, mgmt_cfg},
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_CTC_OAM, debug_switch},
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_ONU, debug_switch},
    {BSP_MSG_PLAT, BSP_CMD_ONU_DEREGISTER, deregister_one},
    {BSP_MSG_PLAT, BSP_CMD_PORT_REREGISTER, deregister_whole_port},
};

} // namespace

Outcome mpcp_set(const Olt &olt, const Request &request)
{
    namespace at = layout::mpcp;
    const auto record = request.read<bsp_plat_msg>();
    const Mpcp wanted{.discovery_interval = request.get(at::discovery_interval),
                      .discovery_window = request.get(at::discovery_window),
                      .report_timeout = request.get(at::report_timeout),
                      .gate_timeout = request.get(at::gate_timeout),
                      .grant_length = request.get(at::grant_length),
                      .grant_cycle = request.get(at::grant_cycle),
                      .sync_time = request.get(at::sync_time),
                      .fec = request.get(at::fec)};
    return to_outcome(set_mpcp(olt, record.plat_port, MpcpSet{record.plat_arg108}, wanted));
}

std::span<const Handler> chip_handlers()
{
    return handlers;
}

} // namespace ponsim
