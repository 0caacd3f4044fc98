// Binding ONUs to ONU ids and releasing them.
#include <rapidjson/encodings.h>
#include <rapidjson/memorystream.h>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "handlers/handler.h"
#include "model/admission.h"

namespace ponsim
{
namespace
{

struct NoOutput {
    void Put(char) {}
};

// Texts are kept as they come and go out in JSON: they must be UTF-8 without control characters, and end in their
// field.
template <size_t size>
bool get_text(const char (&field)[size], std::string &out)
{
    out.assign(field, strnlen(field, size));
    if (out.size() == size) return false;
    rapidjson::MemoryStream in(out.data(), out.size());
    NoOutput none;
    while (in.Tell() < out.size()) {
        const auto byte = static_cast<unsigned char>(in.Peek());
        if (byte < 0x20 || byte == 0x7f || !rapidjson::UTF8<>::Validate(in, none)) return false;
    }
    return true;
}

Outcome to_outcome(Plan &&plan)
{
    return {plan.status, std::move(plan.change)};
}

Mac mac_of(const bsp_pon_msg &record)
{
    return std::to_array(record.onu_mac);
}

OnuIds onu_set_of(const Request &request)
{
    const auto words = request.read<std::array<uint32_t, onus_per_port / 32>>(layout::onu_batch::onu_set);
    OnuIds onu_ids;
    for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id)
        onu_ids[onu_id] = words[onu_id / 32] >> onu_id % 32 & 1;
    return onu_ids;
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
    const RangingLimits limits{request.read<uint32_t>(layout::opt_range::min_distance),
                               request.read<uint32_t>(layout::opt_range::max_distance)};
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
