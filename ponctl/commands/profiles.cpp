// This file has ponctl profile and ponctl loid.
#include "commands/profiles.h"

#include <algorithm>
#include <array>

#include "call/codec/meaning.h"
#include "call/invocation.h"
#include "cli/list_options.h"
#include "cli/password_options.h"
#include "cli/program.h"
#include "describe/field_list.h"
#include "generated/service_words.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/report.h"
#include "output/text.h"
#include "results/delivered.h"
#include "results/operands.h"
#include "results/secret.h"
#include "results/sections.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

// A command line names a kind in lower case, with hyphens between words.
struct ProfileOptions {
    std::string kind;
    std::string name;
    std::vector<std::string> fields; // field=value
};

struct LoidOptions {
    std::string port, loid;
    Secret password;
};

using catalogue::Field;

constexpr std::string_view prefix = "BSP_CMD_PROFILE_";
constexpr size_t longest_password = 63; // bytes of its field; the service takes fewer
constexpr std::array<std::string_view, 6> actions{"STORE", "FETCH", "DELETE", "LIST", "TABLE", "TEXT"};

// Returns the name that a command line uses for a name of the catalogue, or for a part of one.
std::string spoken(std::string_view name)
{
    std::string text = text::lower_case(name);
    std::ranges::replace(text, '_', '-');
    return text;
}

// Returns the kind that a command is for when its action is this one. Otherwise the text is empty.
std::string kind_of(const catalogue::Command &command, std::string_view action)
{
    const std::string end = "_" + std::string(action);
    if (!command.name.starts_with(prefix) || !command.name.ends_with(end)) return {};
    const std::string_view rest = command.name.substr(prefix.size());
    return rest.size() > end.size() ? spoken(rest.substr(0, rest.size() - end.size())) : std::string();
}

const catalogue::Command *find_action(const std::string &kind, std::string_view action)
{
    for (const catalogue::Command &command : catalogue::commands())
        if (kind_of(command, action) == kind) return &command;
    return nullptr;
}

// Returns a kind that a command line names. Throws a UsageError when there is no such kind.
std::string named_kind(const std::string &name)
{
    const std::string kind = spoken(name);
    const std::vector<std::string> known = profile_kinds();
    if (std::ranges::find(known, kind) != known.end()) return kind;
    const std::vector<std::string_view> names(known.begin(), known.end());
    throw UsageError("KIND: '" + name + "' is not a kind of profile" + text::suggestion(kind, names) +
                     (names.empty() ? "; the catalogue has none" : " (known are " + text::join(names) + ")"));
}

const catalogue::Command &named_action(const std::string &name, std::string_view action)
{
    const std::string kind = named_kind(name);
    if (const catalogue::Command *command = find_action(kind, action)) return *command;
    throw UsageError("KIND: the service has no command " + spoken(action) + " for profiles of kind " + kind);
}

// Returns the fields of a request. A command without fields has nothing in its payload.
std::span<const Field> fields_of(const catalogue::Command &command)
{
    const catalogue::Layout *layout = catalogue::find_layout(command);
    return layout ? layout->fields : std::span<const Field>();
}

void check_fields(const catalogue::Command &command, const std::vector<Assignment> &given)
{
    std::vector<std::string_view> known;
    for (const Field &field : fields_of(command))
        known.push_back(field.name);
    for (const auto &[name, value] : given)
        if (std::ranges::find(known, name) == known.end())
            throw UsageError(name + ": not a field of " + std::string(command.name) + text::suggestion(name, known) +
                             " (known are " + text::join(known) + ")");
}

// Returns the words that send a command with these fields. All other fields are zero.
std::vector<std::string> words_for(const catalogue::Command &command, const std::vector<Assignment> &fields = {})
{
    check_fields(command, fields);
    const std::string action = "action=" + std::string(command.name);
    const catalogue::Layout *layout = catalogue::find_layout(command);
    if (!layout) return {action};
    const catalogue::Record &record = *command.channel->record;
    Bytes bytes(record.size);
    set_fields(record, {command.channel, catalogue::Call::dgram_set, &command}, fields, false, {}, bytes);
    const std::span<const uint8_t> payload(bytes.begin() + record.payload->offset, bytes.begin() + end_of(*layout));
    return {action, "buf=hex:" + text::to_hex(payload)};
}

ExitCode list_fields(const Output &output, const catalogue::Command &command)
{
    std::vector<std::vector<std::string>> rows;
    for (const Field &field : fields_of(command))
        rows.push_back(field_row(field));
    print_fields(output, rows);
    return exit_success;
}

ExitCode send(const Output &output, const catalogue::Command &command, const std::vector<Assignment> &fields)
{
    return run_call(output, "bsp_profile_exec_set", words_for(command, fields));
}

ExitCode send_loid(const Output &output, const char *operation, const LoidOptions &options)
{
    if (options.loid.empty()) throw UsageError("LOID: missing; give a text of 1 to 63 bytes");
    return run_call(output, operation,
                    words_of({{"rec.pon_port", port_of(options.port)},
                              {"rec.text45", options.loid},
                              {"rec.text109", read_secret(options.password, longest_password)}}));
}

ExitCode run_profile_kinds(const Output &output, const std::string &kind)
{
    if (!kind.empty()) return list_fields(output, named_action(kind, "STORE"));
    std::vector<std::vector<std::string>> rows;
    for (const std::string &known : profile_kinds()) {
        std::string able;
        for (const std::string_view action : actions)
            if (find_action(known, action)) able += (able.empty() ? "" : ", ") + spoken(action);
        rows.push_back({known, able});
    }
    print_texts(output, {"KIND", "ACTIONS"}, rows);
    return exit_success;
}

ExitCode run_profile_list(const Output &output, const std::string &kind)
{
    if (const catalogue::Command *command = find_action(named_kind(kind), "TABLE"))
        return run_list(output, "bsp_profile_exec_get_json", words_for(*command));
    return run_show(output, "bsp_profile_exec_get_", words_for(named_action(kind, "LIST")));
}

ExitCode run_profile_show(const Output &output, const ProfileOptions &options)
{
    const catalogue::Command &command = named_action(options.kind, "FETCH");
    return run_show(output, "bsp_profile_exec_get_", words_for(command, {{"name", options.name}}));
}

// Refuses values that the fields of a profile cannot have.
void check_values(const catalogue::Command &command, const std::vector<Assignment> &given)
{
    check_fields(command, given);
    const catalogue::Record &record = *command.channel->record;
    Bytes bytes(record.size);
    set_fields(record, {command.channel, catalogue::Call::dgram_set, &command}, given, false, {}, bytes);
    for (const auto &[name, value] : given) {
        const Field &field = *catalogue::find_field(fields_of(command), name);
        check_allowed(name, field, field_bytes(field, bytes));
    }
}

// Adds the fields that are not given, as the profile of this name has them. A profile that is not there has zeros.
ExitCode keep_rest(const std::string &kind, const catalogue::Command &command, std::vector<Assignment> &fields)
{
    const auto name = std::ranges::find(fields, "name", &Assignment::name);
    if (name == fields.end()) return exit_success;
    const Invocation fetched("bsp_profile_exec_get_", words_for(named_action(kind, "FETCH"), {*name}), looking());
    if (fetched.answered() && fetched.status() == PON_ERR_NO_PROFILE) return exit_success;
    if (!fetched.good()) return report(fetched);
    const Reading present = fetched.answer();
    for (const Field &field : fields_of(command)) {
        const std::string value = field_digits(present, field.name);
        const bool given = std::ranges::find(fields, field.name, &Assignment::name) != fields.end();
        if (!given && !value.empty()) fields.push_back({std::string(field.name), value});
    }
    return exit_success;
}

ExitCode run_profile_store(const Output &output, const ProfileOptions &options)
{
    const catalogue::Command &command = named_action(options.kind, "STORE");
    std::vector<Assignment> fields;
    for (const std::string &word : options.fields)
        fields.push_back(parse_assignment(word));
    if (fields.empty())
        throw UsageError("FIELD=VALUE: missing; 'ponctl profile kinds " + spoken(options.kind) + "' lists the fields");
    check_values(command, fields);
    if (const ExitCode code = keep_rest(options.kind, command, fields); code != exit_success) return code;
    return send(output, command, fields);
}

ExitCode run_profile_delete(const Output &output, const ProfileOptions &options)
{
    const catalogue::Command &command = named_action(options.kind, "DELETE");
    ask("deleting profile " + options.name + " of kind " + spoken(options.kind));
    return send(output, command, {{"name", options.name}});
}

ExitCode run_profile_text(const Output &output, const std::string &kind)
{
    const Invocation called("bsp_profile_exec_get_cfgwr", words_for(named_action(kind, "TEXT")), consent());
    if (called.good()) print_content(output, called.bytes(called.operation().arguments.size() - 2));
    return report(called);
}

ExitCode run_loid_list(const Output &output, const std::string &port)
{
    return run_list(output, "bsp_pon_get_onu_loidlist", {"pon_port=" + port_of(port)});
}

ExitCode run_loid_add(const Output &output, const LoidOptions &options)
{
    return send_loid(output, "bsp_pon_onu_ctc_add_loid", options);
}

ExitCode run_loid_delete(const Output &output, const LoidOptions &options)
{
    return send_loid(output, "bsp_pon_onu_ctc_delete_loid", options);
}

constexpr const char *kind_help = "kind of profile; 'ponctl profile kinds' lists them";

using RunOfKind = ExitCode (*)(const Output &, const std::string &);
using RunOfProfile = ExitCode (*)(const Output &, const ProfileOptions &);

void add_of_kind(Command &profile, const char *name, const char *brief, RunOfKind run)
{
    Command &one = profile.add(name, brief);
    std::string &kind = one.runs(run);
    one.argument("KIND", &kind, kind_help).is_required();
}

ProfileOptions &add_of_profile(Command &one, RunOfProfile run)
{
    ProfileOptions &options = one.runs(run);
    one.argument("KIND", &options.kind, kind_help).is_required();
    return options;
}

void add_loid_change(Command &loid, bool adds)
{
    Command &one =
        adds ? loid.add("add", "Adds a LOID to a PON port") : loid.add("delete", "Deletes a LOID of a PON port");
    LoidOptions &options = one.runs(adds ? run_loid_add : run_loid_delete);
    one.argument("PORT", &options.port, "PON port number").is_required();
    one.argument("LOID", &options.loid, "the LOID").is_required();
    if (adds) add_password(one, options.password, "password that goes with it");
}

} // namespace

std::vector<std::string> profile_kinds()
{
    std::vector<std::string> found;
    for (const catalogue::Command &command : catalogue::commands())
        for (const std::string_view action : actions) {
            const std::string kind = kind_of(command, action);
            if (!kind.empty() && std::ranges::find(found, kind) == found.end()) found.push_back(kind);
        }
    return found;
}

void add_profile(Program &program)
{
    Command &profile = program.tree.add("profile", "Lists, shows, stores and deletes profiles");
    Command &kinds = profile.add("kinds", "Lists the kinds of profiles, or the fields of one kind");
    std::string &kind = kinds.runs(run_profile_kinds);
    kinds.argument("KIND", &kind, "kind of profile; all kinds when left out");

    add_of_kind(profile, "list", "Lists the profiles of a kind", run_profile_list);
    add_of_kind(profile, "text", "Shows the profiles of a kind as the configuration has them", run_profile_text);

    Command &show = profile.add("show", "Shows a profile");
    ProfileOptions &shown = add_of_profile(show, run_profile_show);
    show.argument("NAME", &shown.name, "its name").is_required();

    Command &store = profile.add("store", "Stores a profile, or puts it in place of the one that is there");
    ProfileOptions &stored = add_of_profile(store, run_profile_store);
    store
        .argument(
            "FIELD=VALUE", &stored.fields,
            "its fields, as 'ponctl profile kinds KIND' lists them; what is left out stays as it is, and is zero in a "
            "new profile")
        .is_required();

    Command &remove = profile.add("delete", "Deletes a profile");
    ProfileOptions &removed = add_of_profile(remove, run_profile_delete);
    remove.argument("NAME", &removed.name, "its name").is_required();
    add_list_options(program, profile, "list");
}

void add_loid(Program &program)
{
    Command &loid = program.tree.add("loid", "Lists, adds and deletes the LOIDs of a PON port");
    Command &list = loid.add("list", "Lists the LOIDs of a PON port");
    std::string &port = list.runs(run_loid_list);
    list.argument("PORT", &port, "PON port number").is_required();
    add_loid_change(loid, true);
    add_loid_change(loid, false);
    add_list_options(program, list);
}

} // namespace ponctl
