// These commands concern the forwarding database, and what logical links may put into it.
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
                                         .mac_limit = request.get(block::mac_limit),
                                         .broadcast_rate = request.get(block::broadcast_rate),
                                         .multicast_rate = request.get(block::multicast_rate),
                                         .unknown_rate = request.get(block::unknown_rate),
                                         .over_limit = request.get(block::over_limit),
                                         .isolated = request.get(block::isolated)}));
}

Outcome config_set(const Olt &, const Request &request)
{
    namespace block = layout::fdb_config;
    return to_outcome(set_fdb_config({.ageing = request.get(block::ageing),
                                      .learning = request.get(block::learning),
                                      .port_limit = request.get(block::port_limit)}));
}

enum Side : uint16_t { both = 0, pon_side = 1, network_side = 2 };

Outcome flush(const Olt &olt, const Request &request)
{
    namespace block = layout::fdb_flush;
    const auto side = request.get(block::side);
    if (side > network_side) return {PON_ERR_BAD_RECORD};
    return to_outcome(flush_fdb(olt, {.pon = side != network_side,
                                      .network = side != pon_side,
                                      .port = request.get(block::port),
                                      .llid = request.get(block::llid),
                                      .uni = 0,
                                      .vlan = request.get(block::vlan),
                                      .mac = request.get(block::mac)}));
}

Outcome ageing_get(const Olt &olt, const Request &request)
{
    Answer answer(head_of(request.read<bsp_plat_msg>()));
    answer.put(layout::mac_ageing::entries, olt.fdb().entries({}, olt.now()).size());
    answer.put(layout::mac_ageing::ageing, fdb_config(olt).ageing);
    return answer.outcome();
}

Outcome query(const Olt &olt, const Request &request, Side side,
              std::string (*table)(std::span<const FdbEntry>, ModelTime))
{
    namespace block = layout::mac_query;
    const FdbFilter filter{.pon = side == pon_side,
                           .network = side == network_side,
                           .port = request.get(block::port),
                           .llid = request.get(block::llid),
                           .uni = request.get(block::uni),
                           .vlan = request.get(block::vlan),
                           .mac = request.get(block::mac)};
    const auto count = request.get(block::count);
    if (count > max_shown) return {PON_ERR_BAD_RECORD};
    if (const uint32_t status = check_filter(olt, filter)) return {status};

    const std::vector<FdbEntry> entries = olt.fdb().entries(filter, olt.now());
    const size_t from = std::min<size_t>(request.get(block::from), entries.size());
    const size_t shown = std::min<size_t>(count == 0 ? max_shown : count, entries.size() - from);
    Answer answer(head_of(request.read<bsp_plat_msg>()));
    answer.put(layout::mac_count::matching, entries.size());
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
