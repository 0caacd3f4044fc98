#include "model/olt/mpcp.h"

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/base/block.h"

namespace ponsim
{
namespace
{

constexpr uint32_t longest_time = 65535;        // greatest time in a GATE or a REGISTER
constexpr uint32_t farthest_round_trip = 12500; // 20 km there and back

bool in(uint32_t value, uint32_t least, uint32_t greatest)
{
    return value >= least && value <= greatest;
}

} // namespace

bool is_good(const Mpcp &mpcp)
{
    return in(mpcp.discovery_interval, 100, 10000) && in(mpcp.discovery_window, farthest_round_trip, longest_time) &&
           in(mpcp.report_timeout, 50, 10000) && in(mpcp.gate_timeout, 10, 1000) &&
           in(mpcp.grant_length, 64, longest_time) && in(mpcp.grant_cycle, 250, 10000) &&
           in(mpcp.sync_time, 1, mpcp.grant_length - 1) && mpcp.fec <= 1;
}

Mpcp mpcp_of(const Olt &olt, uint32_t pon_port)
{
    return from_block(olt.block(BSP_MSG_PLAT, BSP_CMD_MPCP_SET, pon_port, mpcp_index), Mpcp{});
}

bool is_mpcp(const BlockKey &key)
{
    return key.channel == BSP_MSG_PLAT && key.command == BSP_CMD_MPCP_SET;
}

Plan set_mpcp(const Olt &olt, uint32_t pon_port, MpcpSet which, const Mpcp &wanted)
{
    if (!olt.port(pon_port)) return {PON_ERR_NO_PORT};
    Mpcp mpcp = mpcp_of(olt, pon_port);
    switch (which) {
    case MpcpSet::discovery:
        mpcp.discovery_interval = wanted.discovery_interval;
        mpcp.discovery_window = wanted.discovery_window;
        break;
    case MpcpSet::timeouts:
        mpcp.report_timeout = wanted.report_timeout;
        mpcp.gate_timeout = wanted.gate_timeout;
        break;
    case MpcpSet::grants:
        mpcp.grant_length = wanted.grant_length;
        mpcp.grant_cycle = wanted.grant_cycle;
        mpcp.sync_time = wanted.sync_time;
        mpcp.fec = wanted.fec;
        break;
    default:
        return {PON_ERR_BAD_RECORD};
    }
    if (!is_good(mpcp)) return {PON_ERR_BAD_RECORD};
    return {BSP_OK, change_of(block_at({BSP_MSG_PLAT, BSP_CMD_MPCP_SET, pon_port, mpcp_index}, to_block(mpcp)))};
}

} // namespace ponsim
