#include "output/consent.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <utility>

#include <unistd.h>

#include "call/codec/decode.h"
#include "output/exit_code.h"
#include "output/mode.h"
#include "text/utf8.h"

namespace ponctl
{
namespace
{

using catalogue::Call;
using catalogue::Class;
using catalogue::Command;
using catalogue::Field;
using namespace std::string_view_literals;

bool consented = false;
std::vector<KeptRequest> kept;
std::string previews;
std::vector<Hit> expected;  // hits of the requests that follow
std::optional<HitOnu> only; // the one of them that is hit now

Reading reading_of(const call::PermissionRequest &sent)
{
    const Exchange &exchange = sent.exchange;
    return read_record(*exchange.record, {exchange.channel, exchange.call, sent.command}, exchange.request);
}

// Returns the first of these fields that the request has, or null when it has none of them.
const Field *first_field(const Reading &request, std::initializer_list<std::string_view> names)
{
    for (const std::string_view name : names) {
        const Field *field = request.layout ? catalogue::find_field(request.layout->fields, name) : nullptr;
        if (!field) field = catalogue::find_field(request.record->fields, name);
        if (field && request.reaches(*field)) return field;
    }
    return nullptr;
}

bool is_zero(const Reading &request, const Field &field)
{
    return without_trailing_zeros(field_bytes(field, request.bytes)).empty();
}

// Returns whether a zero in the field is a name: when an argument is sent in the field, and when the record is always
// about an ONU.
bool always_counts(const call::PermissionRequest &sent, const Field &field)
{
    if (field.name == "onu_onu_id" || field.name == "onu_pon_port") return true;
    return sent.operation && std::ranges::find(sent.operation->arguments, &field, &catalogue::Argument::field) !=
                                 sent.operation->arguments.end();
}

// Returns the first of these fields that names something in a request, or null.
const Field *naming_field(const call::PermissionRequest &sent, const Reading &request,
                          std::initializer_list<std::string_view> names)
{
    const Field *field = first_field(request, names);
    return field && (always_counts(sent, *field) || !is_zero(request, *field)) ? field : nullptr;
}

constexpr auto port_fields = {"pon_port"sv, "onu_pon_port"sv, "plat_port"sv};
constexpr auto onu_fields = {"onu_id"sv, "onu_onu_id"sv};
constexpr auto set_fields_of_onus = {"onu_set"sv, "id_set"sv};
constexpr auto mac_fields = {"onu_mac"sv};

// Returns the port and ONUs that a request is for, as far as the request says: " for port 1, ONU 5".
std::string target_of(const call::PermissionRequest &sent, const Reading &request)
{
    std::string target;
    const auto add = [&](const char *what, std::initializer_list<std::string_view> names) {
        if (const Field *field = naming_field(sent, request, names))
            target += (target.empty() ? " for " : ", ") + std::string(what) + " " + text_of(request, *field);
    };
    add("port", port_fields);
    add("ONU", onu_fields);
    add("ONUs", set_fields_of_onus);
    add("MAC address", mac_fields);
    return target;
}

bool is_only(const Hit &hit)
{
    return hit.port == only->port && hit.id == only->id;
}

// Returns those of the expected hits that a request names: by id, as one of a set or by MAC address. A request that
// names no ONU hits all of them.
std::vector<Hit> hits_of(const call::PermissionRequest &sent)
{
    const Exchange &exchange = sent.exchange;
    std::vector<Hit> named;
    if (only) {
        std::ranges::copy_if(expected, std::back_inserter(named), is_only);
        return named;
    }
    if (!exchange.record || !exchange.channel) return expected;
    const Reading request = reading_of(sent);
    const Field *id = naming_field(sent, request, onu_fields), *set = first_field(request, set_fields_of_onus),
                *mac = first_field(request, mac_fields);
    if (set && is_zero(request, *set)) set = nullptr;
    if (mac && is_zero(request, *mac)) mac = nullptr;
    const auto is_named = [&](const Hit &hit) {
        if (mac && hit.mac == text_of(request, *mac)) return true;
        if (set) return hit.id && holds(parse_idset("", text_of(request, *set)), *hit.id);
        if (id) return hit.id && text_of(request, *id) == std::to_string(*hit.id);
        return !mac;
    };
    std::ranges::copy_if(expected, std::back_inserter(named), is_named);
    return named;
}

// A watched command runs again and again, so it must change nothing.
void refuse_watched(Class impact, const std::string &action)
{
    if (mode().watched && impact != Class::read)
        throw UsageError("--watch: only readings are repeated; " + action + " changes something");
}

std::string command_text(const Reading &request, const Command *command)
{
    if (command) return " (" + std::string(command->name) + ")";
    const Field *code = request.record->command;
    return code && request.reaches(*code) ? " (command " + text_of(request, *code) + ")" : std::string();
}

// Keeps a preview in a dry run, which shows it.
void show_in_dry_run(const MakePreview &preview)
{
    if (!mode().dry_run || !preview) return;
    Preview made = preview();
    previews += made.text;
    expect_hits(std::move(made.hits));
}

class Consent : public call::Permission
{
public:
    call::Verdict decide(const call::PermissionRequest &sent) override
    {
        if (mode().dry_run) {
            kept.push_back({sent.exchange, hits_of(sent)});
            return call::Verdict::keep_back;
        }
        refuse_watched(sent.impact, sent.doing);
        if (sent.impact == Class::service_affecting) ask_for(sent);
        return call::Verdict::send;
    }

private:
    static void ask_for(const call::PermissionRequest &sent)
    {
        const Exchange &exchange = sent.exchange;
        if (!exchange.record || !exchange.channel) return ask(sent.doing);
        const Reading request = reading_of(sent);
        ask(sent.doing + command_text(request, sent.command) + target_of(sent, request));
    }
};

class Looking : public call::Permission
{
public:
    call::Verdict decide(const call::PermissionRequest &sent) override
    {
        if (sent.impact != Class::read) throw std::logic_error(sent.doing + " is no reading");
        return call::Verdict::send;
    }
};

} // namespace

void start_consent(bool given)
{
    consented = given;
}

void ask(const std::string &action, const MakePreview &preview)
{
    refuse_watched(Class::service_affecting, action);
    show_in_dry_run(preview);
    if (consented) return;
    if (!may_ask()) throw Refused("--yes: missing; " + action + " needs it when no terminal is there to ask");
    if (preview) std::cerr << text::printable(preview().text, "\n");
    std::cerr << "ponctl: " << text::printable(action) << "? [y/N] " << std::flush;
    std::string answer;
    std::getline(std::cin, answer);
    if (answer != "y" && answer != "yes") throw Refused("nothing was changed");
    consented = true;
}

bool may_ask()
{
    return consented || isatty(STDIN_FILENO);
}

void expect_hits(std::vector<Hit> hits)
{
    expected = std::move(hits);
}

void narrow_hits(const std::optional<HitOnu> &onu)
{
    only = onu;
}

void expect_changes(const std::vector<Change> &changes)
{
    for (Hit &hit : expected)
        if (only && is_only(hit)) hit.changes = changes;
}

void ask_before(std::string_view name, const std::string &action, const MakePreview &preview)
{
    const catalogue::Operation *operation = catalogue::find_operation(name);
    const Class impact = operation ? operation->impact : catalogue::find_command(name)->impact;
    impact == Class::service_affecting ? ask(action, preview) : show_in_dry_run(preview);
}

call::Permission &consent()
{
    static Consent permission;
    return permission;
}

call::Permission &looking()
{
    static Looking permission;
    return permission;
}

std::string take_previews()
{
    return std::exchange(previews, {});
}

std::vector<KeptRequest> take_kept_requests()
{
    expected.clear();
    only.reset();
    return std::exchange(kept, {});
}

} // namespace ponctl
