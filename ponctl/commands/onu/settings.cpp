// These commands of ponctl onu configure remote ONUs, one or many.
#include <algorithm>
#include <deque>

#include <time.h>

#include "call/codec/meaning.h"
#include "call/invocation.h"
#include "cli/program.h"
#include "commands/onu/onu.h"
#include "describe/field_list.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/mode.h"
#include "output/report.h"
#include "output/text.h"
#include "results/onu_set.h"
#include "results/operands.h"
#include "results/present.h"
#include "results/preview.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

struct ImagePushOptions {
    std::string set, file, version;
};

struct MultiLlidOptions {
    std::string set, count;
};

struct SettingOptions {
    std::string set;
    std::vector<std::string> words; // the words of the setting's name, and field=value
};

using catalogue::Channel;

// Returns the operation that sends the settings of a channel unchanged, or null when there is none.
const char *setter_of(const Channel &channel)
{
    if (channel.name == "BSP_MSG_ONU_CFG") return "bsp_pon_onu_ctc_config";
    if (channel.name == "BSP_MSG_ONU_INFO") return "bsp_pon_onu_ctc_debug";
    return nullptr;
}

std::vector<const catalogue::Command *> settings()
{
    std::vector<const catalogue::Command *> found;
    for (const catalogue::Command &command : catalogue::commands())
        if (setter_of(*command.channel) && command.impact != catalogue::Class::read &&
            command.call.value_or(catalogue::Call::set) == catalogue::Call::set)
            found.push_back(&command);
    return found;
}

// Returns the words of a setting's name with hyphens between them: BSP_CMD_ONU_MULTI_LLID_SET becomes multi-llid.
std::string short_name(std::string_view name)
{
    std::string text = text::lower_case(name);
    std::ranges::replace(text, '_', '-');
    for (const std::string_view start : {"bsp-cmd-", "onu-"})
        if (text.starts_with(start)) text.erase(0, start.size());
    if (text.ends_with("-set")) text.erase(text.size() - 4);
    return text;
}

const catalogue::Command &named_setting(const std::vector<std::string> &words)
{
    std::string wanted;
    for (const std::string &word : words)
        wanted += (wanted.empty() ? "" : "-") + word;
    if (wanted.empty()) throw UsageError("COMMAND: missing; 'ponctl onu settings' lists the settings");
    wanted = short_name(wanted);
    std::vector<std::string> names;
    for (const catalogue::Command *command : settings()) {
        if (short_name(command->name) == wanted) return *command;
        names.push_back(short_name(command->name));
    }
    const std::vector<std::string_view> known(names.begin(), names.end());
    throw UsageError("COMMAND: '" + wanted + "' is not a setting" + text::suggestion(wanted, known) +
                     " ('ponctl onu settings' lists them)");
}

// A command line uses this name for the UNI port of a setting.
constexpr std::string_view uni = "uni";

// Returns the fields of a setting: those that its layout names, and those of the record.
std::vector<const catalogue::Field *> fields_of(const catalogue::Command &command)
{
    std::vector<const catalogue::Field *> fields;
    if (const catalogue::Layout *layout = catalogue::find_layout(command))
        for (const catalogue::Field &field : layout->fields)
            fields.push_back(&field);
    for (const char *name : {"onu_arg24", "onu_data"})
        fields.push_back(catalogue::find_field(command.channel->record->fields, name));
    return fields;
}

void check_field(const catalogue::Command &command, const std::string &name)
{
    std::vector<std::string_view> known{uni};
    for (const catalogue::Field *field : fields_of(command))
        known.push_back(field->name);
    if (std::ranges::find(known, name) == known.end())
        throw UsageError(name + ": not a field of " + std::string(command.name) + text::suggestion(name, known) +
                         " (known are " + text::join(known) + ")");
}

// Returns the setting that the words of a command line name, with its fields.
Setting read_setting(const std::vector<std::string> &words)
{
    std::vector<std::string> name;
    std::vector<Assignment> given;
    for (const std::string &word : words) {
        if (word.find('=') == word.npos)
            name.push_back(word);
        else
            given.push_back(parse_assignment(word));
    }
    Setting setting{&named_setting(name), {}};
    for (const Assignment &field : given) {
        check_field(*setting.command, field.name);
        const std::string own = field.name == uni ? "onu_uni_port" : field.name;
        if (!setting.value_of(own).empty()) throw UsageError(field.name + ": given twice");
        setting.given.push_back({own, field.value});
    }
    const bool takes_fields = setting.layout() != nullptr;
    if (takes_fields && std::ranges::all_of(given, [](const Assignment &field) { return field.name == uni; }))
        throw UsageError("FIELD=VALUE: missing; 'ponctl onu settings " + short_name(setting.command->name) +
                         "' lists the fields");
    return setting;
}

// A Step is the request for one ONU.
struct Step {
    Onu onu;
    std::deque<Invocation> readings;
    Bytes before, request;
    bool ready = false; // how the ONU stands is known, so the request can be made
};

// Reads how each ONU of a set stands, and makes the request for it.
std::deque<Step> steps_of(const Setting &setting, const OnuSet &set)
{
    std::deque<Step> steps;
    for (uint32_t id = 0; id <= max_onu_id; ++id) {
        if (!holds(set.ids, id)) continue;
        Step &step = steps.emplace_back();
        step.onu = {set.port, id};
        step.ready = read_present(setting, step.onu, step.readings, step.before);
        if (!step.ready) continue;
        step.request = step.before;
        put_given(setting, step.request);
    }
    return steps;
}

std::vector<Planned> planned_by(const Setting &setting, const std::deque<Step> &steps)
{
    std::vector<Planned> planned;
    for (const Step &step : steps) {
        Planned &one = planned.emplace_back(Planned{step.onu});
        if (step.ready) one.changes = changes_between(setting, step.before, step.request);
        if (!step.ready)
            one.about = "cannot be set now";
        else if (setting.layout())
            one.about = changes_text(one.changes);
    }
    return planned;
}

// Waits until the ONUs have what was sent to them, for a moment at most, so that the next command line finds it.
void wait_for_arrival(const Setting &setting, const std::deque<Step> &steps)
{
    constexpr int most_tries = 20;
    constexpr timespec pause{0, 50'000'000};
    for (const Step &step : steps)
        for (int tries = 0; step.ready && tries < most_tries; ++tries) {
            if (has_arrived(setting, step.onu, step.request)) break;
            if (tries + 1 == most_tries) note(step.onu.name() + ": the ONU does not have the setting yet");
            nanosleep(&pause, nullptr);
        }
}

// Returns the blocks that carry an image. Each block carries one part of it.
std::vector<Bytes> parts_of(const Bytes &image, const std::string &version)
{
    const catalogue::Command &command = *catalogue::find_command("BSP_CMD_ONU_IMAGE_WRITE");
    const catalogue::Layout *layout = catalogue::find_layout(command);
    if (!layout) throw UsageError("FILE: cannot be sent, since the catalogue lays out no parts of images");
    const catalogue::Record &record = *layout->record;
    const catalogue::Field &data = *catalogue::find_field(layout->fields, "data");
    check_text("--version", version, longest(*catalogue::find_field(layout->fields, "version"), true));
    std::vector<Bytes> parts;
    for (size_t at = 0; at < image.size(); at += data.size) {
        const size_t length = std::min<size_t>(data.size, image.size() - at);
        Bytes bytes(record.size);
        set_fields(record, {command.channel, catalogue::Call::set, &command},
                   std::vector<Assignment>{{"offset", std::to_string(at)},
                                           {"size", std::to_string(image.size())},
                                           {"length", std::to_string(length)},
                                           {"version", version}},
                   false, {}, bytes);
        std::copy_n(image.begin() + static_cast<std::ptrdiff_t>(at), length, bytes.begin() + data.offset);
        bytes.resize(data.offset + length);
        const uint32_t start = catalogue::find_field(record.fields, "onu_data")->offset;
        parts.emplace_back(bytes.begin() + start, bytes.end());
    }
    return parts;
}

ExitCode list_settings(const Output &output)
{
    std::vector<std::vector<std::string>> rows;
    for (const catalogue::Command *command : settings())
        rows.push_back(
            {short_name(command->name), std::string(catalogue::to_text(command->impact)), std::string(command->brief)});
    print_texts(output, {"COMMAND", "CLASS", "BRIEF"}, rows);
    return exit_success;
}

// Returns what becomes of the fields that are left out, of each setting of which nobody can say how it stands.
std::string left_out_text()
{
    std::string text = "What becomes of fields that are left out, where nobody can be asked how a setting stands:";
    for (const catalogue::Command *command : settings())
        if (const catalogue::Layout *layout = catalogue::find_layout(*command); layout && !layout->left_out.empty())
            text += "\n" + short_name(command->name) + ": " + std::string(layout->left_out);
    return text;
}

ExitCode list_fields(const Output &output, const catalogue::Command &command)
{
    std::vector<std::vector<std::string>> rows{
        {std::string(uni), "u8", "", "", "", "UNI port number, where the setting is one of a UNI port"}};
    for (const catalogue::Field *field : fields_of(command))
        rows.push_back(field_row(*field));
    print_fields(output, rows);
    return exit_success;
}

ExitCode run_onu_image_push(const Output &output, const ImagePushOptions &options)
{
    const OnuSet set = parse_onu_set(options.set);
    const Bytes image = parse_block("FILE", "@" + options.file);
    if (image.empty()) throw UsageError("FILE: '" + options.file + "' is empty");
    const std::vector<Bytes> parts = parts_of(image, options.version);
    ask_about("bsp_pon_onu_ctc_upgrade", "sending a new image to " + describe_onu_set(set), Effect::setting, set);
    const catalogue::Operation &operation = *catalogue::find_operation("bsp_pon_onu_ctc_upgrade");
    return for_each_onu(
        set,
        [&](const Onu &onu, std::deque<Invocation> &calls) {
            for (const Bytes &part : parts) {
                calls.clear();
                if (!calls
                         .emplace_back(operation, onu_words(operation, onu, {"data=hex:" + text::to_hex(part)}),
                                       consent())
                         .good())
                    return;
            }
        },
        statuses_on(output));
}

ExitCode run_onu_image_commit(const Output &output, const std::string &words)
{
    const OnuSet set = parse_onu_set(words);
    ask_about("bsp_pon_onu_ctc_upgrade_commit", "having " + describe_onu_set(set) + " start the new image from now on",
              Effect::setting, set);
    return tell_onus(output, set, "bsp_pon_onu_ctc_upgrade_commit");
}

ExitCode run_onu_multillid(const Output &output, const MultiLlidOptions &options)
{
    const OnuSet set = parse_onu_set(options.set);
    const std::string count = number_word("COUNT", options.count);
    ask_about("bsp_pon_onu_ctc_set_multillid", "changing the number of LLIDs of " + describe_onu_set(set),
              Effect::setting, set);
    return tell_onus(output, set, "bsp_pon_onu_ctc_set_multillid", {"count=" + count});
}

ExitCode run_onu_set(const Output &output, const SettingOptions &options)
{
    OnuSet set = parse_onu_set(options.set);
    const Setting setting = read_setting(options.words);
    check_given(setting);
    const std::string action = "sending " + std::string(setting.command->name) + " to " + describe_onu_set(set);
    // Who cannot be asked is refused before anything is read.
    if (!may_ask()) ask_before(setting.command->name, action);
    if (set.all)
        if (const ExitCode code = look_up_bound(set.port, set.ids); code != exit_success) return code;
    std::deque<Step> steps = steps_of(setting, set);
    ask_about(setting.command->name, action, Effect::setting, planned_by(setting, steps));
    const catalogue::Operation &operation = *catalogue::find_operation(setter_of(*setting.command->channel));
    auto step = steps.begin();
    const ExitCode code = for_each_onu(
        set,
        [&](const Onu &onu, std::deque<Invocation> &calls) {
            Step &own = *step++;
            if (own.ready)
                calls.emplace_back(operation, onu_words(operation, onu, {"msg=hex:" + text::to_hex(own.request)}),
                                   consent());
            else
                calls = std::move(own.readings);
        },
        statuses_on(output));
    if (code != exit_success && setting.layout() && !mode().dry_run)
        note("what the service takes: " + std::string(setting.layout()->brief) + " 'ponctl onu settings " +
             short_name(setting.command->name) + "' lists the fields");
    if (code == exit_success && !mode().dry_run) wait_for_arrival(setting, steps);
    return code;
}

ExitCode run_onu_settings(const Output &output, const std::vector<std::string> &words)
{
    return words.empty() ? list_settings(output) : list_fields(output, named_setting(words));
}

void add_images(Command &image)
{
    Command &push = image.add("push", "Sends an image, in parts");
    ImagePushOptions &pushed = push.runs(run_onu_image_push);
    push.argument("SET", &pushed.set, onu_set_help).is_required();
    push.argument("FILE", &pushed.file, "the image").is_required();
    push.option("--version", &pushed.version, "version of the image, at most 16 characters", "VERSION").is_required();

    Command &commit = image.add("commit", "Has ONUs start their new image from now on");
    std::string &committed = commit.runs(run_onu_image_commit);
    commit.argument("SET", &committed, onu_set_help).is_required();
}

} // namespace

void add_settings(Command &onu, Command &image)
{
    add_images(image);

    Command &multillid = onu.add("multillid", "Sets the number of LLIDs of ONUs");
    MultiLlidOptions &llids = multillid.runs(run_onu_multillid);
    multillid.argument("SET", &llids.set, onu_set_help).is_required();
    multillid.argument("COUNT", &llids.count, "number of LLIDs of each").is_required();

    Command &set = onu.add("set", "Sends any setting to ONUs");
    SettingOptions &setting = set.runs(run_onu_set);
    set.argument("SET", &setting.set, onu_set_help).is_required();
    set.argument("COMMAND FIELD=VALUE", &setting.words,
                 "the setting by its name or the words of it, as vlan or mc-vlan, and its fields; uni=N is the UNI "
                 "port; fields left out stay as they are, with the exceptions below; 'ponctl onu settings' lists both")
        .is_required();
    set.footer = left_out_text();

    Command &settings = onu.add("settings", "Lists the settings of 'ponctl onu set', or the fields of one");
    std::vector<std::string> &words = settings.runs(run_onu_settings);
    settings.argument("COMMAND", &words, "a setting by its name or the words of it; all settings when left out");
}

} // namespace ponctl
