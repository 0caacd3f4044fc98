#include "output/consent.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <utility>

#include <unistd.h>

#include "call/codec/decode.h"
#include "call/target.h"
#include "output/exit_code.h"
#include "output/mode.h"
#include "text/utf8.h"

namespace ponctl
{
namespace
{

using catalogue::Class;
using catalogue::Field;

bool consented = false;
std::vector<KeptRequest> kept;
std::string previews;
std::vector<Hit> expected;  // hits of the requests that follow
std::optional<HitOnu> only; // the one of them that is hit now
AskUser asked;              // empty: the user is at the terminal
std::string asked_olt;      // empty: there is only one

bool is_only(const Hit &hit)
{
    return hit.port == only->port && hit.id == only->id;
}

// Returns those of the expected hits that a request names: by id, as one of a set or by MAC address. A request that
// names no ONU hits all of them.
std::vector<Hit> hits_of(const call::PermissionRequest &sent)
{
    std::vector<Hit> named;
    if (only) {
        std::ranges::copy_if(expected, std::back_inserter(named), is_only);
        return named;
    }
    const call::Target target = call::target_of(sent);
    const auto is_named = [&target](const Hit &hit) { return target.names(hit.id, hit.mac); };
    std::ranges::copy_if(expected, std::back_inserter(named), is_named);
    return named;
}

// A watched command runs again and again, so it must change nothing.
void refuse_watched(Class impact, const std::string &action)
{
    if (mode().watched && impact != Class::read)
        throw UsageError("--watch: only readings are repeated; " + action + " changes something");
}

std::string command_text(const call::PermissionRequest &sent)
{
    if (sent.command) return " (" + std::string(sent.command->name) + ")";
    const Exchange &exchange = sent.exchange;
    const Reading request = read_record(*exchange.record, {exchange.channel, exchange.call}, exchange.request);
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
        const std::string target = call::target_of(sent).text;
        ask(sent.doing + command_text(sent) + (target.empty() ? "" : " for " + target));
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

void ask_through(AskUser asks)
{
    asked = std::move(asks);
}

void name_asked_olt(std::string olt)
{
    asked_olt = std::move(olt);
}

void ask(const std::string &action, const MakePreview &preview)
{
    refuse_watched(Class::service_affecting, action);
    show_in_dry_run(preview);
    if (consented) return;
    if (asked) {
        consented = asked(preview ? preview().text : std::string(), action);
        if (!consented) throw Refused("nothing was changed");
        return;
    }
    if (!may_ask()) throw Refused("--yes: missing; " + action + " needs it when no terminal is there to ask");
    if (preview) std::cerr << text::printable(preview().text, "\n");
    std::cerr << "ponctl: " << text::printable(asked_olt.empty() ? action : asked_olt + ": " + action) << "? [y/N] "
              << std::flush;
    std::string answer;
    std::getline(std::cin, answer);
    if (answer != "y" && answer != "yes") throw Refused("nothing was changed");
    consented = true;
}

bool may_ask()
{
    return consented || asked || isatty(STDIN_FILENO);
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
