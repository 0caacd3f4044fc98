#include "simulator.h"

#include <cstring>

#include "bsp_pon.h"
#include "catalogue.h"
#include "generated/service_words.h"
#include "model/process.h"
#include "store/configuration.h"

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
    : kept(store), olt_settings(open_settings(store, wanted)), model(olt_settings), wire_faults(olt_settings.seed)
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
    for (const FaultOrder &order : change.faults)
        if (const std::string wrong = wire_faults.objection(order); !wrong.empty())
            log.push_back(wrong);
        else
            wire_faults.carry_out(order);
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

void Simulator::carry_out(const WriteConfiguration &wanted, Outcome &outcome)
{
    keep_time();
    outcome.file = ResultFile{write_configuration(olt_settings, kept.rows()), wanted.name_at};
    const auto size = static_cast<uint32_t>(outcome.file->content.size());
    std::memcpy(outcome.answer.value().data() + wanted.size_at, &size, sizeof size);
}

void Simulator::carry_out(const ReceiveConfiguration &part, Outcome &outcome)
{
    if (part.offset == 0) {
        received.clear();
        announced = part.total;
    }
    if (part.offset != received.size() || part.total != announced)
        outcome = {.status = PON_ERR_BAD_CONFIG,
                   .problem = "configuration: a part at " + std::to_string(part.offset) + " of " +
                              std::to_string(part.total) + " bytes, where " + std::to_string(received.size()) + " of " +
                              std::to_string(announced) + " have come"};
    else
        received += part.bytes;
}

void Simulator::carry_out(const LoadConfiguration &, Outcome &outcome)
{
    const auto refuse = [&](uint32_t status, const std::string &problem) {
        outcome = {.status = status, .problem = "configuration: " + problem};
    };
    const std::string text = std::exchange(received, {});
    if (text.empty() || text.size() != announced)
        return refuse(PON_ERR_BAD_CONFIG,
                      std::to_string(text.size()) + " of " + std::to_string(announced) + " bytes have come");
    const ModelTime now = model.now();
    try {
        const Configuration configuration = read_configuration(text, olt_settings);
        Olt loaded(olt_settings);
        loaded.apply(configuration.change);
        kept.replace(configuration.rows);
        model = std::move(loaded);
    } catch (const OtherOltError &error) {
        return refuse(PON_ERR_OTHER_OLT, error.what());
    } catch (const ConfigurationError &error) {
        return refuse(PON_ERR_BAD_CONFIG, error.what());
    } catch (const std::logic_error &error) {
        // From a block of another size than its command's.
        return refuse(PON_ERR_BAD_CONFIG, error.what());
    }
    log.push_back("configuration loaded");
    // Time does not go back: an OLT that was left earlier has been on since.
    advance(now);
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
    try {
        if (outcome.change.empty())
            note(outcome.change);
        else
            change(std::move(outcome.change));
        const ConfigurationTask task = std::move(outcome.configuration);
        std::visit([&](const auto &wanted) { carry_out(wanted, outcome); }, task);
    } catch (const StoreError &error) {
        return {PON_ERR_STORE, true, {}, {}, error.what()};
    }
    return {
        outcome.status,         true, std::move(outcome.result), std::move(outcome.answer), std::move(outcome.problem),
        std::move(outcome.file)};
}

} // namespace ponsim
