#include "handlers/record.h"

#include <array>
#include <cstddef>
#include <stdexcept>

#include "catalogue.h"
#include "generated/service_words.h"

namespace ponsim
{
namespace
{

} // namespace

OnuIds id_set(const Request &request, layout::At<layout::IdSet> at)
{
    const layout::IdSet words = request.get(at);
    OnuIds ids;
    for (uint32_t id = 0; id < onus_per_port; ++id)
        ids[id] = words[id / 32] >> id % 32 & 1;
    return ids;
}

void Answer::put(layout::At<layout::IdSet> at, const OnuIds &ids)
{
    layout::IdSet words{};
    for (uint32_t id = 0; id < onus_per_port; ++id)
        words[id / 32] |= uint32_t{ids[id]} << id % 32;
    put(at, words);
}

std::string text_answer(uint32_t command, std::string_view text)
{
    constexpr size_t start = offsetof(bsp_pon_msg_ext, ext_payload);
    std::string answer(sizeof(bsp_pon_msg_ext), '\0');
    if (start + text.size() >= answer.size()) throw std::logic_error("a text is too long for the answer");
    std::memcpy(answer.data(), &command, sizeof command);
    text.copy(answer.data() + start, text.size());
    return answer;
}

bsp_plat_msg head_of(const bsp_plat_msg &request)
{
    bsp_plat_msg head{};
    head.plat_port = request.plat_port;
    head.plat_arg4 = request.plat_arg4;
    head.plat_cmd = request.plat_cmd;
    return head;
}

Selection selection_of(const Olt &olt, const Request &request)
{
    Selection selection = port_selection_of(olt, request);
    const auto record = request.read<bsp_pon_msg>();
    selection.id = record.onu_id;
    selection.mac = mac_of(record);
    if (selection.status == BSP_OK && record.onu_id >= onus_per_port) selection.status = PON_ERR_BAD_ONU_ID;
    return selection;
}

Selection port_selection_of(const Olt &olt, const Request &request)
{
    const uint32_t pon_port = request.read<bsp_pon_msg>().pon_port;
    if (pon_port == 0) return {BSP_OK, olt.ports(), 0, {}, true};
    const PonPort *port = olt.port(pon_port);
    if (!port) return {PON_ERR_NO_PORT, {}, 0, {}};
    return {BSP_OK, {port, 1}, 0, {}};
}

} // namespace ponsim
