#include "engine/message.h"

#include "bsp_pon.h"

namespace ponsim
{

bool is_get(const Message &message)
{
    return message.call == catalogue::Call::get || message.call == catalogue::Call::dgram_get;
}

bool only_reads(const Message &message)
{
    const std::optional<uint32_t> code = is_get(message) ? command_of(message) : std::nullopt;
    const catalogue::Command *command =
        code ? catalogue::find_command(command_channel(message), *code, message.call) : nullptr;
    return command && command->impact == catalogue::Class::read;
}

uint32_t command_channel(const Message &message)
{
    const bool pon_setting = message.channel == BSP_MSG_PLAT && message.length == sizeof(bsp_pon_msg);
    return pon_setting ? BSP_MSG_PON : message.channel;
}

std::optional<uint32_t> command_of(const Message &message)
{
    const catalogue::Channel *channel = catalogue::find_channel(command_channel(message));
    if (!channel) return std::nullopt;
    const catalogue::Record &record = *channel->record;
    const bool fits = record.payload ? message.length >= payload_header && message.length <= record.size
                                     : message.length == record.size;
    if (!record.command || !fits) return std::nullopt;
    return Request{message.data, message.length}.read<uint32_t>(record.command->offset);
}

} // namespace ponsim
