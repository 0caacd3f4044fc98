// Requests to a simulator. Then another one begins from what the first one keeps, and has to answer all queries alike.
#include <cstring>
#include <string>

#include "bsp_pon.h"
#include "olt.h"
#include "packets.h"
#include "target.h"

namespace
{

using namespace ponsim;

// The forwarding database is learned, and not kept.
bool is_kept(const catalogue::Command &command)
{
    return command.name.find("FDB") == std::string_view::npos &&
           command.name.find("CMD_MAC_") == std::string_view::npos;
}

void compare(Simulator &live, Simulator &again, const catalogue::Command &command, uint32_t onu_id)
{
    const catalogue::Record &record = *command.channel->record;
    if (!record.command || record.payload) return;
    std::vector<uint32_t> words(record.size / sizeof(uint32_t) + 1);
    const auto put = [&](const catalogue::Field *field, uint32_t value) {
        if (field) std::memcpy(reinterpret_cast<char *>(words.data()) + field->offset, &value, sizeof value);
    };
    put(record.command, command.code);
    for (const char *name : {"pon_port", "plat_port", "onu_pon_port"})
        put(catalogue::find_field(record.fields, name), 1);
    for (const char *name : {"onu_id", "plat_arg4", "onu_onu_id"})
        put(catalogue::find_field(record.fields, name), onu_id);
    const Message message{command.channel->type, words.data(), record.size,
                          command.call.value_or(catalogue::Call::get)};
    const Reply one = live.handle(message), other = again.handle(message);
    const bool same = one.status == other.status && one.result == other.result && one.answer == other.answer;
    if (!same) std::fprintf(stderr, "%s, ONU %u\n", std::string(command.name).c_str(), onu_id);
    fuzz::require(same, "what is kept answers alike");
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Store store({}, false);
    Simulator live(store, {.seed = 1, .ports = 2, .arrivals = 4, .silent = 0});
    for (fuzz::Packet &packet : fuzz::packets_of({data, size}))
        if (const std::optional<ModelTime> pause = packet.pause())
            live.advance(live.olt().now() + *pause, 1024);
        else
            live.handle(packet.message());
    live.keep_time();
    Store kept(store.image());
    Simulator again(kept, {});
    fuzz::require(live.olt().now() == again.olt().now(), "time is kept");
    for (const catalogue::Command &command : catalogue::commands())
        if (command.impact == catalogue::Class::read && is_kept(command))
            for (const uint32_t onu_id : {0u, 1u, 2u})
                compare(live, again, command, onu_id);
    return 0;
}
