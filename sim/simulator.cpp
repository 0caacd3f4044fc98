#include "simulator.h"

#include <cstring>

#include "bsp_pon.h"
#include "catalogue.h"
#include "generated/service_words.h"
#include "model/process.h"

namespace ponsim
{
namespace
{

Settings open_settings(Store &store, const WantedSettings &wanted)
{
    const std::optional<Settings> kept = store.settings();
    const Settings base = kept.value_or(Settings{});
    const Settings settings{wanted.seed.value_or(base.seed), wanted.ports.value_or(base.ports),
                            wanted.arrivals.value_or(base.arrivals), wanted.silent.value_or(base.silent)};
    if (!kept) {
        store.set_settings(settings);
    } else if (settings != base) {
        throw StoreError("the stored state is that of an OLT with --seed " + std::to_string(base.seed) + " --ports " +
                         std::to_string(base.ports) + " --arrivals " + std::to_string(base.arrivals) + " --silent " +
                         std::to_string(base.silent) +
                         "; leave these options out to go on with it, add --fresh to discard it, or name another "
                         "file with --state");
    }
    return settings;
}

} // namespace

bool is_get(const Message &message)
{
    return message.call == catalogue::Call::get || message.call == catalogue::Call::dgram_get;
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

Simulator::Simulator(Store &store, const WantedSettings &wanted)
    : kept(store), olt_settings(open_settings(store, wanted)), model(olt_settings)
{
    model.apply(store.load());
}

void Simulator::change(Change change)
{
    change.now = model.now();
    model.add_traffic(change);
    kept.write(change);
    model.apply(change);
    note(change);
}

void Simulator::note(const Change &change)
{
    log.insert(log.end(), change.log.begin(), change.log.end());
}

void Simulator::keep_time()
{
    change({});
}

void Simulator::advance(ModelTime to)
{
    while (const std::optional<Happening> due = first_due(processes(), model, to)) {
        model.advance(due->at);
        change(due->process->happen(model));
    }
    model.advance(to);
}

Reply Simulator::handle(const Message &message)
{
    const catalogue::Channel *channel = catalogue::find_channel(message.channel);
    if (!channel || !channel->record->command) return {PON_ERR_UNKNOWN_COMMAND};
    const std::optional<uint32_t> command = command_of(message);
    if (!command) return {PON_ERR_BAD_RECORD};
    const Handler *handler = find_handler(command_channel(message), *command, message.call);
    if (!handler) return {PON_ERR_UNKNOWN_COMMAND};

    Outcome outcome = handler->handle(model, {message.data, message.length});
    if (outcome.change.empty()) {
        note(outcome.change);
    } else {
        try {
            change(std::move(outcome.change));
        } catch (const StoreError &error) {
            return {PON_ERR_STORE, true, {}, {}, error.what()};
        }
    }
    return {
        outcome.status,         true, std::move(outcome.result), std::move(outcome.answer), std::move(outcome.problem),
        std::move(outcome.file)};
}

} // namespace ponsim
