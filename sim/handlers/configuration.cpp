// These commands write out the OLT's configuration and take it back.
#include "generated/service_words.h"
#include "handlers/record.h"

namespace ponsim
{
namespace
{

Outcome write_for_platform(const Olt &, const Request &request)
{
    const auto record = request.read<bsp_plat_msg>();
    if (record.plat_port != 0 || record.plat_arg4 != 0) return {PON_ERR_BAD_RECORD};
    Outcome outcome = Answer(head_of(record)).outcome();
    outcome.configuration =
        WriteConfiguration{layout::config_written::size.offset, layout::config_written::file.offset};
    return outcome;
}

Outcome write_for_profile(const Olt &, const Request &request)
{
    Outcome outcome = Answer(request.read<std::array<char, offsetof(bsp_profile_msg, data)>>()).outcome();
    outcome.configuration = WriteConfiguration{layout::config_read::size.offset, layout::config_read::file.offset};
    return outcome;
}

Outcome receive(const Olt &, const Request &request)
{
    namespace at = layout::config_part;
    constexpr uint32_t head = at::bytes.offset - offsetof(bsp_profile_msg, data);
    const std::string_view payload = request.payload();
    if (payload.size() < head) return {PON_ERR_BAD_RECORD};
    const auto offset = request.get(at::offset), total = request.get(at::total), length = request.get(at::length);
    const bool fits = length >= 1 && length <= payload.size() - head && total <= longest_upload && offset <= total &&
                      length <= total - offset;
    if (!fits) return {PON_ERR_BAD_RECORD};
    Outcome outcome{BSP_OK};
    outcome.configuration =
        ReceiveConfiguration{request.get(at::digest), offset, total, std::string(payload.substr(head, length))};
    return outcome;
}

Outcome load(const Olt &, const Request &request)
{
    if (request.payload().size() != sizeof(text::Sha256)) return {PON_ERR_BAD_RECORD};
    Outcome outcome{BSP_OK};
    outcome.configuration = LoadConfiguration{request.get(layout::config_load::digest)};
    return outcome;
}

constexpr Handler handlers[] = {
    {BSP_MSG_CFGWR, BSP_CMD_CONFIG_WRITE, write_for_platform},
    {BSP_MSG_PROFILE, BSP_CMD_CONFIG_READ, write_for_profile, catalogue::Call::dgram_get},
    {BSP_MSG_PROFILE, BSP_CMD_CONFIG_LOAD_PART, receive, catalogue::Call::dgram_set},
    {BSP_MSG_PROFILE, BSP_CMD_CONFIG_LOAD, load, catalogue::Call::dgram_set},
};

} // namespace

std::span<const Handler> configuration_handlers()
{
    return handlers;
}

} // namespace ponsim
