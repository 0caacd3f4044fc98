#include "consent.h"

#include <algorithm>
#include <iostream>

#include <unistd.h>

#include "decode.h"
#include "errors.h"
#include "exchange.h"
#include "mode.h"

namespace ponctl
{
namespace
{

using catalogue::Call;
using catalogue::Class;
using catalogue::Command;
using catalogue::Field;

bool consented = false;

// The worst of the commands that the request may be, for some share a code.
Class impact_of(const Sender &sender, const Exchange &exchange, const Command *command)
{
    if (sender.operation && sender.operation->command) return sender.operation->impact;
    if (!command)
        return exchange.call == Call::set || exchange.call == Call::dgram_set ? Class::service_affecting : Class::read;
    Class worst = Class::read;
    for (const Command &other : catalogue::commands())
        if (other.channel == command->channel && other.code == command->code &&
            other.call.value_or(exchange.call) == exchange.call)
            worst = std::max(worst, other.impact);
    return worst;
}

// The first of these fields that the request has; null where it has none of them.
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

// Whether a zero in the field names something: where an argument goes there, and where a record is of an ONU always.
bool always_counts(const Sender &sender, const Field &field)
{
    if (field.name == "onu_onu_id" || field.name == "onu_pon_port") return true;
    return sender.operation && std::ranges::find(sender.operation->arguments, &field, &catalogue::Argument::field) !=
                                   sender.operation->arguments.end();
}

// Which port and ONUs a request is for, as far as it says: " for port 1, ONU 5".
std::string target_of(const Sender &sender, const Reading &request)
{
    std::string target;
    const auto add = [&](const char *what, std::initializer_list<std::string_view> names) {
        const Field *field = first_field(request, names);
        if (field && (always_counts(sender, *field) || !is_zero(request, *field)))
            target += (target.empty() ? " for " : ", ") + std::string(what) + " " + text_of(request, *field);
    };
    add("port", {"pon_port", "onu_pon_port", "plat_port"});
    add("ONU", {"onu_id", "onu_onu_id"});
    add("ONUs", {"onu_set", "id_set"});
    add("MAC address", {"onu_mac"});
    return target;
}

// What is watched is done again and again, so it must change nothing.
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

} // namespace

void start_consent(bool given)
{
    consented = given;
}

void ask(const std::string &action)
{
    refuse_watched(Class::service_affecting, action);
    if (consented) return;
    if (!isatty(STDIN_FILENO))
        throw UsageError("--yes: missing; " + action + " needs it when no terminal is there to ask");
    std::cerr << "ponctl: " << action << "? [y/N] " << std::flush;
    std::string answer;
    std::getline(std::cin, answer);
    if (answer != "y" && answer != "yes") throw UsageError("nothing was changed");
    consented = true;
}

void ask_before(std::string_view name, const std::string &action)
{
    const catalogue::Operation *operation = catalogue::find_operation(name);
    const Class impact = operation ? operation->impact : catalogue::find_command(name)->impact;
    if (impact == Class::service_affecting) ask(action);
}

void ask_before(const Sender &sender, const Exchange &exchange)
{
    const Place place{exchange.channel, exchange.call};
    const Command *command = sender.operation ? sender.operation->command : nullptr;
    if (!command) command = command_of(*sender.record, place, exchange.request);
    const Class impact = impact_of(sender, exchange, command);
    refuse_watched(impact, sender.name);
    if (impact != Class::service_affecting) return;
    const Reading request = read_record(*sender.record, {exchange.channel, exchange.call, command}, exchange.request);
    ask(sender.name + command_text(request, command) + target_of(sender, request));
}

} // namespace ponctl
