#include "handlers/remote.h"

#include <cstddef>

#include "generated/service_words.h"

namespace ponsim
{
namespace
{

constexpr uint32_t data_offset = offsetof(bsp_onu_msg, onu_data);

uint32_t uni_of(const Request &request, const BlockSetting &setting)
{
    return setting.of_uni ? request.read<bsp_onu_msg>().onu_uni_port : 0;
}

FoundOnu onu_of(const Olt &olt, const Request &request, const BlockSetting &setting, bool must_be_online)
{
    return setting.of_uni ? onu_and_uni_of(olt, request, must_be_online) : onu_of(olt, request, must_be_online);
}

} // namespace

FoundOnu onu_of(const Olt &olt, const Request &request, bool must_be_online)
{
    const auto record = request.read<bsp_onu_msg>();
    FoundOnu found = find_onu(olt, record.onu_pon_port, record.onu_onu_id);
    if (found.status == BSP_OK && must_be_online && !found.onu.online()) found.status = PON_ERR_OFFLINE;
    return found;
}

FoundOnu onu_and_uni_of(const Olt &olt, const Request &request, bool must_be_online)
{
    FoundOnu found = onu_of(olt, request, must_be_online);
    if (found.status == BSP_OK && !found.onu.has_uni(request.read<bsp_onu_msg>().onu_uni_port))
        found.status = PON_ERR_NO_UNI;
    return found;
}

OnuBlock data_of(const Request &request, size_t size)
{
    const auto record = request.read<bsp_onu_msg>();
    return OnuBlock(std::string(reinterpret_cast<const char *>(record.onu_data), size));
}

Outcome answer_with(const Request &request, std::string_view data)
{
    const auto record = request.read<bsp_onu_msg>();
    bsp_onu_msg head{};
    head.onu_pon_port = record.onu_pon_port;
    head.onu_onu_id = record.onu_onu_id;
    head.onu_uni_port = record.onu_uni_port;
    head.onu_cmd = record.onu_cmd;
    data.copy(reinterpret_cast<char *>(head.onu_data), sizeof head.onu_data);
    return Answer(head).outcome();
}

OnuBlock setting_of(const Olt &olt, const RemoteOnu &onu, uint32_t uni, Side side, const BlockSetting &setting)
{
    return setting_of(olt, onu.key(setting.command, uni), side, setting.otherwise(olt, onu, uni));
}

Outcome get_setting(const Olt &olt, const Request &request, const BlockSetting &setting, Side side)
{
    const FoundOnu found = onu_of(olt, request, setting, side == Side::remote);
    if (found.status != BSP_OK) return {found.status};
    return answer_with(request, setting_of(olt, found.onu, uni_of(request, setting), side, setting));
}

Outcome set_setting(const Olt &olt, const Request &request, const BlockSetting &setting)
{
    const FoundOnu found = onu_of(olt, request, setting, true);
    if (found.status != BSP_OK) return {found.status};
    return set_setting(olt, request, found.onu, uni_of(request, setting), setting);
}

Outcome set_setting(const Olt &olt, const Request &request, const RemoteOnu &onu, uint32_t number,
                    const BlockSetting &setting)
{
    return to_outcome(send_setting(olt, onu, number, data_of(request, setting.size), setting));
}

Plan send_setting(const Olt &olt, const RemoteOnu &onu, uint32_t number, const OnuBlock &block,
                  const BlockSetting &setting)
{
    if (const uint32_t status = setting.check(onu, number, block)) return {status};
    return send_setting(olt, onu, onu.key(setting.command, number), block, setting.otherwise(olt, onu, number));
}

} // namespace ponsim
