// ponctl profile and ponctl loid.
#include "profiles.h"

#include <algorithm>

#include "consent.h"
#include "daily.h"
#include "sections.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

using catalogue::Command;
using catalogue::Field;

constexpr std::string_view prefix = "BSP_CMD_PROFILE_";
constexpr std::array<std::string_view, 6> actions{"STORE", "FETCH", "DELETE", "LIST", "TABLE", "TEXT"};

// What a command line calls a name of the catalogue, or a part of one.
std::string spoken(std::string_view name)
{
    std::string text = text::lower_case(name);
    std::ranges::replace(text, '_', '-');
    return text;
}

// The kind that a command is for, where its action is this one; else empty.
std::string kind_of(const Command &command, std::string_view action)
{
    const std::string end = "_" + std::string(action);
    if (!command.name.starts_with(prefix) || !command.name.ends_with(end)) return {};
    const std::string_view rest = command.name.substr(prefix.size());
    return rest.size() > end.size() ? spoken(rest.substr(0, rest.size() - end.size())) : std::string();
}

const Command *find_action(const std::string &kind, std::string_view action)
{
    for (const Command &command : catalogue::commands())
        if (kind_of(command, action) == kind) return &command;
    return nullptr;
}

// A kind as a command line names it.
std::string named_kind(const std::string &name)
{
    const std::string kind = spoken(name);
    const std::vector<std::string> known = profile_kinds();
    if (std::ranges::find(known, kind) != known.end()) return kind;
    const std::vector<std::string_view> names(known.begin(), known.end());
    throw UsageError("KIND: '" + name + "' is not a kind of profile" + text::suggestion(kind, names) +
                     (names.empty() ? "; the catalogue has none" : " (known are " + text::join(names) + ")"));
}

const Command &named_action(const std::string &name, std::string_view action)
{
    const std::string kind = named_kind(name);
    if (const Command *command = find_action(kind, action)) return *command;
    throw UsageError("KIND: the service has no command " + spoken(action) + " for profiles of kind " + kind);
}

// The fields of a request. A command without any has nothing in its payload.
std::span<const Field> fields_of(const Command &command)
{
    const catalogue::Layout *layout = catalogue::find_layout(command);
    return layout ? layout->fields : std::span<const Field>();
}

void check_fields(const Command &command, const std::vector<Assignment> &given)
{
    std::vector<std::string_view> known;
    for (const Field &field : fields_of(command))
        known.push_back(field.name);
    for (const auto &[name, value] : given)
        if (std::ranges::find(known, name) == known.end())
            throw UsageError(name + ": not a field of " + std::string(command.name) + text::suggestion(name, known) +
                             " (known are " + text::join(known) + ")");
}

// The words that send a command with these fields; the others are zero.
std::vector<std::string> words_for(const Command &command, const std::vector<Assignment> &fields = {})
{
    check_fields(command, fields);
    const std::string action = "action=" + std::string(command.name);
    const catalogue::Layout *layout = catalogue::find_layout(command);
    if (!layout) return {action};
    const catalogue::Record &record = *command.channel->record;
    Bytes bytes(record.size);
    set_fields(record, {command.channel, catalogue::Call::dgram_set, &command}, fields, false, {}, bytes);
    const std::span<const uint8_t> payload(bytes.begin() + record.payload->offset, bytes.begin() + end_of(*layout));
    return {action, "buf=hex:" + format_hex(payload)};
}

ExitCode list_fields(const Output &output, const Command &command)
{
    std::vector<std::vector<std::string>> rows;
    for (const Field &field : fields_of(command))
        rows.push_back({std::string(field.name), std::string(catalogue::to_text(field.type)), std::string(field.unit),
                        std::string(field.brief)});
    print_texts(output, {"FIELD", "TYPE", "UNIT", "BRIEF"}, rows);
    return exit_success;
}

ExitCode tell(const Output &output, const Command &command, const std::vector<Assignment> &fields)
{
    return call(output, "bsp_profile_exec_set", words_for(command, fields));
}

ExitCode send_loid(const Output &output, const char *operation, const LoidOptions &options)
{
    if (options.loid.empty()) throw UsageError("LOID: missing; give a text of 1 to 63 bytes");
    return call(output, operation,
                words_of({{"rec.pon_port", port_of(options.port)},
                          {"rec.text45", options.loid},
                          {"rec.text109", options.password}}));
}

} // namespace

std::vector<std::string> profile_kinds()
{
    std::vector<std::string> found;
    for (const Command &command : catalogue::commands())
        for (const std::string_view action : actions) {
            const std::string kind = kind_of(command, action);
            if (!kind.empty() && std::ranges::find(found, kind) == found.end()) found.push_back(kind);
        }
    return found;
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
    if (const Command *command = find_action(named_kind(kind), "TABLE"))
        return run_list(output, "bsp_profile_exec_get_json", words_for(*command));
    return run_show(output, "bsp_profile_exec_get_", words_for(named_action(kind, "LIST")));
}

ExitCode run_profile_show(const Output &output, const ProfileOptions &options)
{
    const Command &command = named_action(options.kind, "FETCH");
    return run_show(output, "bsp_profile_exec_get_", words_for(command, {{"name", options.name}}));
}

ExitCode run_profile_store(const Output &output, const ProfileOptions &options)
{
    const Command &command = named_action(options.kind, "STORE");
    std::vector<Assignment> fields;
    for (const std::string &word : options.fields)
        fields.push_back(parse_assignment(word));
    if (fields.empty())
        throw UsageError("FIELD=VALUE: missing; 'ponctl profile kinds " + spoken(options.kind) + "' lists the fields");
    return tell(output, command, fields);
}

ExitCode run_profile_delete(const Output &output, const ProfileOptions &options)
{
    const Command &command = named_action(options.kind, "DELETE");
    ask("deleting profile " + options.name + " of kind " + spoken(options.kind));
    return tell(output, command, {{"name", options.name}});
}

ExitCode run_profile_text(const Output &output, const std::string &kind)
{
    const Called called("bsp_profile_exec_get_cfgwr", words_for(named_action(kind, "TEXT")));
    if (called.good()) print_content(output, called.bytes(called.operation().arguments.size() - 2));
    return called.report();
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

} // namespace ponctl
