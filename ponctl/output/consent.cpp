#include "output/consent.h"

#include <algorithm>
#include <iostream>
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

bool consented = false;
std::vector<Exchange> kept;
std::string previews;

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

// Returns the port and ONUs that a request is for, as far as the request says: " for port 1, ONU 5".
std::string target_of(const call::PermissionRequest &sent, const Reading &request)
{
    std::string target;
    const auto add = [&](const char *what, std::initializer_list<std::string_view> names) {
        const Field *field = first_field(request, names);
        if (field && (always_counts(sent, *field) || !is_zero(request, *field)))
            target += (target.empty() ? " for " : ", ") + std::string(what) + " " + text_of(request, *field);
    };
    add("port", {"pon_port", "onu_pon_port", "plat_port"});
    add("ONU", {"onu_id", "onu_onu_id"});
    add("ONUs", {"onu_set", "id_set"});
    add("MAC address", {"onu_mac"});
    return target;
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

class Consent : public call::Permission
{
public:
    call::Verdict decide(const call::PermissionRequest &sent) override
    {
        if (mode().dry_run) {
            kept.push_back(sent.exchange);
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
        const Reading request =
            read_record(*exchange.record, {exchange.channel, exchange.call, sent.command}, exchange.request);
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

void ask(const std::string &action, const Preview &preview)
{
    refuse_watched(Class::service_affecting, action);
    if (mode().dry_run && preview) previews += preview();
    if (consented) return;
    if (!may_ask()) throw Refused("--yes: missing; " + action + " needs it when no terminal is there to ask");
    if (preview) std::cerr << text::printable(preview(), "\n");
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

void ask_before(std::string_view name, const std::string &action, const Preview &preview)
{
    const catalogue::Operation *operation = catalogue::find_operation(name);
    const Class impact = operation ? operation->impact : catalogue::find_command(name)->impact;
    if (impact == Class::service_affecting) ask(action, preview);
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

std::vector<Exchange> take_kept_requests()
{
    return std::exchange(kept, {});
}

} // namespace ponctl
