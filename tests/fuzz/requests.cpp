// Requests to the service, as they come out of its sockets, with time between them.
#include <rapidjson/document.h>

#include "board/ipc.h"
#include "olt.h"
#include "packets.h"
#include "target.h"

namespace
{

using namespace ponsim;

void check(const Outcome &outcome)
{
    fuzz::require(outcome.status == BSP_OK || outcome.change.empty(), "what is refused changes nothing");
    if (outcome.answer) fuzz::require(outcome.answer->size() <= IPC_MAX_LENGTH, "an answer has room in a packet");
    if (!outcome.result || outcome.status != BSP_OK) return;
    rapidjson::Document table;
    table.Parse<rapidjson::kParseValidateEncodingFlag>(outcome.result->data(), outcome.result->size());
    fuzz::require(!table.HasParseError(), "a result is JSON");
}

void ask(Olt &olt, const Message &message)
{
    const std::optional<uint32_t> command = command_of(message);
    const Handler *handler = command ? find_handler(command_channel(message), *command, message.call) : nullptr;
    if (!handler) return;
    Outcome outcome = handler->handle(olt, {message.data, message.length});
    check(outcome);
    if (outcome.status == BSP_OK && !outcome.change.empty()) fuzz::make(olt, std::move(outcome.change));
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Olt olt = fuzz::registered_olt();
    for (fuzz::Packet &packet : fuzz::packets_of({data, size}))
        if (const std::optional<ModelTime> pause = packet.pause())
            fuzz::pass(olt, *pause);
        else
            ask(olt, packet.message());
    return 0;
}
