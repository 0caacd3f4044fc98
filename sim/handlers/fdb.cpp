// The forwarding database, and what logical links may put into it.
#include "model/olt/fdb.h"

#include <algorithm>

#include "generated/service_words.h"
#include "handlers/record.h"
#include "model/olt/llid.h"
#include "views/forwarding.h"

namespace ponsim
{
namespace
{

Outcome behavior_set(const Olt &olt, const Request &request)
{
    namespace block = layout::llid_behavior;
    const auto record = request.read<bsp_plat_msg>();
    return to_outcome(set_llid_behavior(olt, record.plat_port, record.plat_arg4,
                                        {.frames = Frames{record.plat_arg108},
                                         .mac_limit = request.read<uint32_t>(block::mac_limit),
                                         .broadcast_rate = request.read<uint32_t>(block::broadcast_rate),
                                         .multicast_rate = request.read<uint32_t>(block::multicast_rate),
                                         .unknown_rate = request.read<uint32_t>(block::unknown_rate),
                                         .over_limit = request.read<uint32_t>(block::over_limit),
                                         .isolated = request.read<uint32_t>(block::isolated)}));
}

Outcome config_set(const Olt &, const Request &request)
{
    namespace block = layout::fdb_config;
    return to_outcome(set_fdb_config({.ageing = request.read<uint32_t>(block::ageing),
                                      .learning = request.read<uint32_t>(block::learning),
                                      .port_limit = request.read<uint32_t>(block::port_limit)}));
}

enum Side : uint16_t { both = 0, pon_side = 1, network_side = 2 };

Outcome flush(const Olt &olt, const Request &request)
{
    namespace block = layout::fdb_flush;
    const auto side = request.read<uint16_t>(block::side);
    if (side > network_side) return {PON_ERR_BAD_RECORD};
    return to_outcome(flush_fdb(olt, {.pon = side != network_side,
                                      .network = side != pon_side,
                                      .port = request.read<uint16_t>(block::port),
                                      .llid = request.read<uint16_t>(block::llid),
                                      .uni = 0,
                                      .vlan = request.read<uint16_t>(block::vlan),
                                      .mac = request.read<Mac>(block::mac)}));
}

Outcome ageing_get(const Olt &olt, const Request &request)
{
    Answer answer(head_of(request.read<bsp_plat_msg>()));
    answer.put(layout::mac_ageing::entries, static_cast<uint32_t>(olt.fdb().entries({}, olt.now()).size()));
    answer.put(layout::mac_ageing::ageing, fdb_config(olt).ageing);
    return answer.outcome();
}

Outcome query(const Olt &olt, const Request &request, Side side,
              std::string (*table)(std::span<const FdbEntry>, ModelTime))
{
    namespace block = layout::mac_query;
    const FdbFilter filter{.pon = side == pon_side,
                           .network = side == network_side,
                           .port = request.read<uint32_t>(block::port),
                           .llid = request.read<uint32_t>(block::llid),
                           .uni = request.read<uint32_t>(block::uni),
                           .vlan = request.read<uint32_t>(block::vlan),
                           .mac = request.read<Mac>(block::mac)};
    const auto count = request.read<uint32_t>(block::count);
    if (count > max_shown) return {PON_ERR_BAD_RECORD};
    if (const uint32_t status = check_filter(olt, filter)) return {status};

    const std::vector<FdbEntry> entries = olt.fdb().entries(filter, olt.now());
    const size_t from = std::min<size_t>(request.read<uint32_t>(block::from), entries.size());
    const size_t shown = std::min<size_t>(count == 0 ? max_shown : count, entries.size() - from);
    Answer answer(head_of(request.read<bsp_plat_msg>()));
    answer.put(layout::mac_count::matching, static_cast<uint32_t>(entries.size()));
    Outcome outcome = answer.outcome();
    outcome.result = table(std::span(entries).subspan(from, shown), olt.now());
    return outcome;
}

Outcome mac_get(const Olt &olt, const Request &request)
{
    return query(olt, request, pon_side, mac_table);
}

Outcome mac_nni_get(const Olt &olt, const Request &request)
{
    return query(olt, request, network_side, network_mac_table);
}

constexpr Handler handlers[] = {
    {BSP_MSG_PLAT, BSP_CMD_LLID_BEHAVIOR_SET, behavior_set},
    {BSP_MSG_PLAT, BSP_CMD_FDB_CFG_SET, config_set},
    {BSP_MSG_PLAT, BSP_CMD_FDB_FLUSH, flush},
    {BSP_MSG_PLAT, BSP_CMD_MAC_AGE_GET, ageing_get},
    {BSP_MSG_PLAT, BSP_CMD_MAC_GET, mac_get},
    {BSP_MSG_PLAT, BSP_CMD_MAC_NNI_GET, mac_nni_get},
};

} // namespace

std::span<const Handler> fdb_handlers()
{
    return handlers;
}

} // namespace ponsim
