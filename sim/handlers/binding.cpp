// These commands bind ONUs to ONU ids and release them.
#include "bsp_pon.h"
#include "generated/service_words.h"
#include "handlers/record.h"
#include "model/lifecycle/admission.h"

namespace ponsim
{
namespace
{

OnuIds onu_set_of(const Request &request)
{
    return id_set(request, layout::onu_batch::onu_set);
}

Outcome bind_to(const Olt &olt, const bsp_pon_msg &record, std::optional<uint32_t> onu_id)
{
    Binding binding{.mac = mac_of(record), .mode = record.arg_value, .text_a = {}, .text_b = {}, .text_c = {}};
    const bool texts_are_good = get_text(record.text237, binding.text_a) && get_text(record.text173, binding.text_b) &&
                                get_text(record.text365, binding.text_c);
    if (!texts_are_good) return {PON_ERR_BAD_RECORD};
    return to_outcome(bind_onu(olt, record.pon_port, onu_id, binding));
}

Outcome bind_auto(const Olt &olt, const Request &request)
{
    return bind_to(olt, request.read<bsp_pon_msg>(), std::nullopt);
}

Outcome bind_to_id(const Olt &olt, const Request &request)
{
    const auto record = request.read<bsp_pon_msg>();
    return bind_to(olt, record, record.onu_id);
}

Outcome release_one(const Olt &olt, const Request &request)
{
    const auto record = request.read<bsp_pon_msg>();
    return to_outcome(release_onu(olt, record.pon_port, record.onu_id, mac_of(record)));
}

Outcome release_batch(const Olt &olt, const Request &request)
{
    return to_outcome(release_onus(olt, request.read<bsp_pon_msg>().pon_port, onu_set_of(request)));
}

Outcome reboot_batch(const Olt &olt, const Request &request)
{
    return to_outcome(reboot_onus(olt, request.read<bsp_pon_msg>().pon_port, onu_set_of(request)));
}

Outcome release_whole_port(const Olt &olt, const Request &request)
{
    return to_outcome(release_all(olt, request.read<bsp_pon_msg>().pon_port));
}

Outcome release_offline_onus(const Olt &olt, const Request &request)
{
    return to_outcome(release_offline(olt, request.read<bsp_pon_msg>().pon_port));
}

Outcome sort_batch(const Olt &olt, const Request &request)
{
    return to_outcome(sort_onus(olt, request.read<bsp_pon_msg>().pon_port, onu_set_of(request)));
}

Outcome set_opt_range(const Olt &olt, const Request &request)
{
    const RangingLimits limits{request.get(layout::opt_range::min_distance),
                               request.get(layout::opt_range::max_distance)};
    return to_outcome(set_ranging_limits(olt, request.read<bsp_pon_msg>().pon_port, limits));
}

Outcome set_support(const Olt &olt, const Request &request)
{
    const auto record = request.read<bsp_pon_msg>();
    if (record.arg_value > 1) return {PON_ERR_BAD_RECORD};
    return to_outcome(set_supported(olt, record.pon_port, mac_of(record), record.arg_value == 1));
}

constexpr Handler handlers[] = {
    {BSP_MSG_PON, BSP_CMD_ONU_BIND_AUTO, bind_auto},
    {BSP_MSG_PON, BSP_CMD_ONU_BIND, bind_to_id},
    {BSP_MSG_PON, BSP_CMD_ONU_RELEASE, release_one},
    {BSP_MSG_PON, BSP_CMD_ONU_RELEASE_BATCH, release_batch},
    {BSP_MSG_PON, BSP_CMD_ONU_REBOOT_BATCH, reboot_batch},
    {BSP_MSG_PON, BSP_CMD_ONU_RELEASE_ALL, release_whole_port},
    {BSP_MSG_PON, BSP_CMD_ONU_RELEASE_OFFLINE, release_offline_onus},
    {BSP_MSG_PON, BSP_CMD_ONU_SORT_BATCH, sort_batch},
    {BSP_MSG_PON, BSP_CMD_OPT_RANGE_SET, set_opt_range},
    {BSP_MSG_PON, BSP_CMD_ONU_SUPPORT_SET, set_support},
};

} // namespace

std::span<const Handler> binding_handlers()
{
    return handlers;
}

} // namespace ponsim
