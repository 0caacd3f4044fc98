// ponctl onu watch follows which ONUs come and go, and why.
#include <algorithm>
#include <optional>

#include "call/invocation.h"
#include "cli/follow.h"
#include "cli/operand_help.h"
#include "commands/onu/onu.h"
#include "diagnosis/differences.h"
#include "output/consent.h"
#include "output/report.h"
#include "output/text.h"
#include "results/operands.h"

namespace ponctl
{
namespace
{

Event event_of(const OnuEvent &event)
{
    const std::string time = time_text();
    JsonText json;
    json->StartObject();
    json.member("time", time);
    json.member("pon_port", event.onu.port);
    write_member(json, "onu_id", event.onu.id ? std::optional<MilliTime>(*event.onu.id) : std::nullopt);
    json.member("mac", event.onu.mac);
    json.member_or_null("description", event.onu.description);
    json.member("before", event.before);
    json.member("state", event.state);
    const AlarmFact cause = event.cause.value_or(AlarmFact{});
    write_member(json, "at", cause.raised);
    json.member_or_null("alarm", cause.name);
    json.member_or_null("cause", cause.cause);
    json.member_or_null("place", cause.place);
    json->EndObject();
    std::string line = time + " " + event.onu.name() + " " + event.state + " (was " + event.before + ")";
    if (event.cause) line += ": " + cause.name + (cause.reason().empty() ? "" : " (" + cause.reason() + ")");
    if (!event.onu.description.empty()) line += " \"" + event.onu.description + "\"";
    return {line, json.written()};
}

ExitCode run_onu_watch(const Output &output, const GlobalOptions &global, const std::string &port)
{
    const std::string number = port_of(port);
    std::optional<std::vector<OnuFact>> before;
    return follow(output, global, [&](std::vector<Event> &events) {
        const Invocation onus("bsp_pon_exec_get_json_",
                              words_of({{"cmd", "BSP_CMD_VIEW_ONU_INFO_WEB"}, {"pon_port", number}}), consent());
        if (!onus.good()) return report(onus);
        const Invocation alarms("bsp_pon_get_onu_alarm", words_of({{"record.pon_port", number}}), consent());
        if (!alarms.good()) return report(alarms);
        std::vector<OnuFact> now = read_onus(onus.database());
        if (before)
            std::ranges::transform(onu_events(*before, now, read_alarms(alarms.database())), std::back_inserter(events),
                                   event_of);
        before = std::move(now);
        return exit_success;
    });
}

} // namespace

void add_watch(Program &program, Command &onu)
{
    Command &watch = onu.add("watch", "Prints a line for each ONU whose state changes, with the cause, as it happens");
    std::string &port =
        watch.runs<std::string>([&global = program.global](const Output &output, const std::string &given) {
            return run_onu_watch(output, global, given);
        });
    watch.argument("PORT", &port, port_or_all_help);
    program.followers.push_back(&watch);
}

} // namespace ponctl
