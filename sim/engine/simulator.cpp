#include "engine/simulator.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <limits>

#include "bsp_pon.h"
#include "catalogue.h"
#include "control/control.h"
#include "generated/service_words.h"
#include "model/alarm/history.h"
#include "model/inventory/forgetting.h"
#include "store/configuration.h"
#include "text/written.h"

namespace ponsim
{
namespace
{

// Returns the wanted scenario or, when none is wanted, that of the store.
std::shared_ptr<const OltScenario> open_scenario(const Store &store, std::shared_ptr<const OltScenario> wanted)
{
    const std::optional<Settings> kept = store.settings();
    if (wanted || !kept || kept->scenario.empty()) return wanted;
    for (OltScenario &olt : read_scenario(kept->scenario, "the stored scenario").olts)
        if (olt.name == kept->olt) return std::make_shared<const OltScenario>(std::move(olt));
    throw StoreError("the stored scenario has no OLT " + kept->olt);
}

std::string describe(const Settings &settings)
{
    if (!settings.scenario.empty())
        return "the OLT " + settings.olt + " of another scenario, or as this one was before";
    return "an OLT with --seed " + std::to_string(settings.seed) + " --ports " + std::to_string(settings.ports) +
           " --arrivals " + std::to_string(settings.arrivals) + " --silent " + std::to_string(settings.silent);
}

// So many things can happen by themselves at one time. It is far more than an OLT has of what can happen.
constexpr uint32_t most_at_once = 100000;

Settings open_settings(Store &store, const WantedSettings &wanted, const OltScenario *scenario)
{
    const std::optional<Settings> kept = store.settings();
    Settings settings = scenario ? scenario->settings : kept.value_or(Settings{});
    settings.seed = wanted.seed.value_or(settings.seed);
    settings.ports = wanted.ports.value_or(settings.ports);
    settings.arrivals = wanted.arrivals.value_or(settings.arrivals);
    settings.silent = wanted.silent.value_or(settings.silent);
    if (!kept) {
        store.set_settings(settings, scenario ? scenario->provisioning : Change{});
    } else if (settings != *kept) {
        throw StoreError("the stored state is that of " + describe(*kept) +
                         "; leave --scenario, --seed, --ports, --arrivals and --silent out to go on with it, add "
                         "--fresh to discard it, or name another file with --state");
    }
    return settings;
}

} // namespace

Simulator::Simulator(Store &store, const WantedSettings &wanted, std::shared_ptr<const OltScenario> of_scenario)
    : kept(store),
      scenario(open_scenario(store, std::move(of_scenario))),
      agenda(scenario),
      olt_settings(open_settings(store, wanted, scenario.get())),
      model(olt_settings),
      wire_faults(olt_settings.seed)
{
    model.apply(store.load());
    due = find_due();
}

Simulator::~Simulator() = default;

void Simulator::change(Change change)
{
    recover();
    keep_happenings();
    change.put<ModelClock>({}, {model.now()});
    complete(change);
    kept.write(change);
    damaged = true;
    apply(change);
    damaged = false;
}

// What has happened by itself and is not kept yet happens again.
void Simulator::recover()
{
    if (!damaged) return;
    Olt again(olt_settings);
    again.apply(kept.load());
    model = std::move(again);
    happened = {};
    due = find_due();
    replies.clear();
    rows.clear();
    damaged = false;
}

void Simulator::complete(Change &change) const
{
    add_events(model, change);
    add_forgotten(model, change);
    model.add_traffic(change);
}

void Simulator::apply(const Change &change)
{
    model.apply(change);
    due = find_due();
    note(change);
}

void Simulator::keep_happenings()
{
    if (happened.empty()) return;
    happened.add(ponsim::change_of<ModelClock>({}, {model.now()}));
    kept.write(happened);
    happened = {};
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

void Simulator::use_upgrade_folder(const std::string &folder)
{
    const std::filesystem::path path = std::filesystem::absolute(folder) / "";
    upgrade_folder = path.lexically_normal().parent_path();
}

void Simulator::keep_time()
{
    change({});
}

Change Simulator::change_of(const Event &event) const
{
    const std::string what = std::string(event.kind) + " at " + text::time_text(event.at) + ": " + event.words;
    Change change;
    const auto carry_out = [&](const std::string &words) {
        try {
            const Change planned = plan_control(model, words).change;
            change.add(planned);
            change.log.insert(change.log.end(), planned.log.begin(), planned.log.end());
            change.faults.insert(change.faults.end(), planned.faults.begin(), planned.faults.end());
        } catch (const ControlError &error) {
            change.log.push_back(what + (event.together ? ": " + words : "") + ": refused: " + error.what());
            return false;
        }
        return true;
    };
    if (event.together) {
        for (const std::string &words : *event.together)
            carry_out(words);
        change.log.push_back(what);
    } else if (carry_out(event.words)) {
        change.log.push_back(what);
    }
    change.put<Timeline>({}, {model.events_done() + 1});
    return change;
}

// An event comes from outside, as a request does. So what happens by itself up to that time happens before.
std::optional<Happening> Simulator::find_due()
{
    constexpr ModelTime ever = std::numeric_limits<ModelTime>::max();
    const Event *event = agenda.entry(model.events_done());
    if (const std::optional<Happening> first = first_due(processes(), model, event ? event->at : ever)) return first;
    if (event) return Happening{nullptr, event->at};
    return std::nullopt;
}

std::optional<ModelTime> Simulator::next_due() const
{
    if (!due) return std::nullopt;
    return due->at;
}

void Simulator::happen()
{
    // A process that does not move on would happen for ever.
    at_once = due->at > model.now() ? 0 : at_once + (due->process != nullptr);
    if (at_once > most_at_once)
        throw std::runtime_error("the OLT does not get beyond " + text::time_text(model.now()) + ": " +
                                 std::to_string(most_at_once) + " things have happened by themselves at this time");
    model.advance(due->at);
    Change change = due->process ? due->process->happen(model) : change_of(*agenda.entry(model.events_done()));
    complete(change);
    damaged = true;
    happened.add(change);
    apply(change);
    damaged = false;
}

void Simulator::advance(ModelTime to)
{
    while (!advance(to, slices_together * slice))
        continue;
}

bool Simulator::advance(ModelTime to, uint32_t happenings)
{
    const bool there = pass(to, happenings);
    keep_happenings();
    return there;
}

bool Simulator::pass(ModelTime to, uint32_t happenings)
{
    recover();
    while (due && due->at <= to && happenings-- > 0)
        happen();
    if (due && due->at <= to) return false;
    model.advance(to);
    return true;
}

void Simulator::carry_out(const WriteConfiguration &wanted, uint32_t, Outcome &outcome, Loading *)
{
    keep_time();
    outcome.file = ResultFile{write_configuration(olt_settings, kept.rows()), wanted.name_at};
    const auto size = static_cast<uint32_t>(outcome.file->content.size());
    std::memcpy(outcome.answer.value().data() + wanted.size_at, &size, sizeof size);
}

void Simulator::carry_out(const ReceiveConfiguration &part, uint32_t user, Outcome &outcome, Loading *)
{
    const std::string problem = uploads.add(user, part);
    if (!problem.empty()) outcome = {.status = PON_ERR_BAD_CONFIG, .problem = "configuration: " + problem};
}

Loading read_loading(const Uploads::Taken &taken, const Settings &settings)
{
    if (!taken.problem.empty()) return {PON_ERR_BAD_CONFIG, taken.problem};
    if (text::sha256(taken.text) != taken.digest)
        return {PON_ERR_BAD_CONFIG, "the text that has come has another digest"};
    try {
        Loading loading{BSP_OK, {}, read_configuration(taken.text, settings), std::optional<Olt>(settings)};
        loading.olt->apply(loading.configuration);
        return loading;
    } catch (const OtherOltError &error) {
        return {PON_ERR_OTHER_OLT, error.what()};
    } catch (const ConfigurationError &error) {
        return {PON_ERR_BAD_CONFIG, error.what()};
    } catch (const std::logic_error &error) {
        // The cause are rows that are possible one by one, but not together, as a fibre without a beginning.
        return {PON_ERR_BAD_CONFIG, error.what()};
    }
}

std::optional<Uploads::Taken> Simulator::take_upload(const Message &message)
{
    const std::optional<uint32_t> command = command_of(message);
    if (message.channel != BSP_MSG_PROFILE || command != BSP_CMD_CONFIG_LOAD) return std::nullopt;
    const Outcome outcome =
        find_handler(message.channel, *command, message.call)->handle(model, {message.data, message.length});
    const auto *wanted = std::get_if<LoadConfiguration>(&outcome.configuration);
    if (!wanted) return std::nullopt;
    return uploads.take(message.user, wanted->digest);
}

void Simulator::carry_out(const LoadConfiguration &wanted, uint32_t user, Outcome &outcome, Loading *loading)
{
    const auto refuse = [&](uint32_t status, const std::string &problem) {
        outcome = {.status = status, .problem = "configuration: " + problem};
    };
    Loading own{BSP_OK};
    if (!loading) {
        own = read_loading(uploads.take(user, wanted.digest), olt_settings);
        loading = &own;
    }
    if (loading->status != BSP_OK) return refuse(loading->status, loading->problem);
    const ModelTime now = model.now();
    try {
        model = std::move(*loading->olt);
        happened = {};
        due = find_due();
        replies.clear();
        rows.clear();
        // Time does not go back. An OLT that was saved at an earlier time has been on since then.
        while (!pass(now, slice))
            continue;
        happened.add(ponsim::change_of<ModelClock>({}, {model.now()}));
        kept.replace(loading->configuration, happened);
        happened = {};
    } catch (...) {
        damaged = true;
        throw;
    }
    log.push_back("configuration loaded");
}

namespace
{

Reply reply_of(Outcome &&outcome)
{
    return {
        outcome.status,         true, std::move(outcome.result), std::move(outcome.answer), std::move(outcome.problem),
        std::move(outcome.file)};
}

bool only_reads(const Outcome &outcome)
{
    return outcome.change.empty() && outcome.change.log.empty() && outcome.change.faults.empty() && !outcome.file &&
           std::holds_alternative<std::monostate>(outcome.configuration);
}

} // namespace

SharedReply Simulator::look(const Message &message, ModelTime now)
{
    if (damaged || !ponsim::only_reads(message) || wire_faults.any() || (due && due->at <= now)) return nullptr;
    if (SharedReply kept_reply = replies.find(message, model.generation(), now)) return kept_reply;
    const Handler *handler = find_handler(command_channel(message), *command_of(message), message.call);
    if (!handler || now != model.now()) return nullptr;
    const Look look;
    Outcome outcome = handler->handle(model, {message.data, message.length, &rows});
    if (!only_reads(outcome)) return nullptr;
    const auto reply = std::make_shared<const Reply>(reply_of(std::move(outcome)));
    if (reply->result) replies.keep(message, model.generation(), look.holds_until(), reply);
    return reply;
}

Reply Simulator::handle(const Message &message, Loading *loading)
{
    recover();
    if (const SharedReply reply = look(message, model.now())) return *reply;
    const catalogue::Channel *channel = catalogue::find_channel(message.channel);
    if (!channel || !channel->record->command) return {PON_ERR_UNKNOWN_COMMAND};
    const std::optional<uint32_t> command = command_of(message);
    if (!command) return {PON_ERR_BAD_RECORD};
    const Handler *handler = find_handler(command_channel(message), *command, message.call);
    if (!handler) return {PON_ERR_UNKNOWN_COMMAND};

    Outcome outcome = handler->handle(model, {message.data, message.length, nullptr, upgrade_folder});
    try {
        if (outcome.change.empty())
            note(outcome.change);
        else
            change(std::move(outcome.change));
        const ConfigurationTask task = std::move(outcome.configuration);
        std::visit([&](const auto &wanted) { carry_out(wanted, message.user, outcome, loading); }, task);
    } catch (const StoreError &error) {
        return {PON_ERR_STORE, true, {}, {}, error.what()};
    }
    return reply_of(std::move(outcome));
}

} // namespace ponsim
