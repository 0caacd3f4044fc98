// ponctl alarm shows, follows and clears alarms.
#include <algorithm>
#include <optional>

#include "call/invocation.h"
#include "cli/follow.h"
#include "cli/list_options.h"
#include "cli/operand_help.h"
#include "cli/program.h"
#include "diagnosis/differences.h"
#include "output/consent.h"
#include "output/report.h"
#include "output/text.h"
#include "results/delivered.h"
#include "results/onu_set.h"
#include "results/operands.h"

namespace ponctl
{
namespace
{

struct AlarmOptions {
    std::string port;  // a port, or a set without an ONU
    std::string onu;   // id or MAC address of an ONU
    std::string alarm; // code of an alarm
    bool active = false, history = false;
};

// Returns the set that is named in place of a port. It must not contain id 0, which would stand for all ONUs of the
// port.
std::optional<OnuSet> set_of(const AlarmOptions &options)
{
    std::optional<OnuSet> set = set_in_place_of(options.port, options.onu);
    if (set) set->but_0 = true;
    return set;
}

// Returns what an alarm operation's record selects: all ports, one port, or one ONU of a port.
std::vector<std::string> selection_of(const AlarmOptions &options)
{
    const OnuName onu = options.onu.empty() ? OnuName{} : onu_but_0_of(options.onu);
    return words_of({{"record.pon_port", port_of(options.port)},
                     {"record.onu_id", onu.id},
                     {"record.onu_mac", onu.mac},
                     {"record.arg_value", options.alarm}});
}

constexpr const char *list_operation = "bsp_pon_get_onu_alarm";

// Adds to what is wanted of the listing that alarms are active, or that they have ended, with the last one first.
Selection narrowed(const Selection *wanted, const AlarmOptions &options)
{
    Selection selection = wanted ? *wanted : Selection();
    const std::string state = options.active ? "state=active" : "state=cleared";
    selection.where = selection.where.empty() ? state : state + " and (" + selection.where + ")";
    if (selection.sort.empty()) selection.sort = options.active ? "-raised" : "-cleared";
    return selection;
}

ExitCode run_alarm_list(const Output &wanted, const AlarmOptions &options)
{
    if (options.active && options.history) throw UsageError("--active and --history: not together; all without them");
    constexpr const char *operation = list_operation;
    Output output = wanted;
    Selection selection;
    if (options.active || options.history) {
        selection = narrowed(wanted.selection, options);
        output.selection = &selection;
    }
    if (const auto set = set_of(options)) return list_onus(output, *set, operation);
    return run_list(output, operation, selection_of(options));
}

ExitCode run_alarm_clear(const Output &output, const AlarmOptions &options)
{
    if (!options.alarm.empty()) parse_number("--alarm", options.alarm);
    if (const auto set = set_of(options))
        return tell_onus(output, *set, "bsp_pon_clear_onu_alarm", words_of({{"record.arg_value", options.alarm}}));
    const auto words = selection_of(options);
    const bool is_everything = port_of(options.port) == "0" && options.onu.empty() && options.alarm.empty();
    if (is_everything) ask("clearing all alarms of all ports");
    return run_call(output, "bsp_pon_clear_onu_alarm", words);
}

Event event_of(const AlarmEvent &event)
{
    const AlarmFact &alarm = event.alarm;
    const std::string time = time_text(), reason = alarm.reason();
    JsonText json;
    json->StartObject();
    json.member("time", time);
    json.member("event", event.what);
    write_member(json, "at", event.at());
    json.member("pon_port", alarm.port);
    write_member(json, "onu_id", alarm.onu_id ? std::optional<MilliTime>(*alarm.onu_id) : std::nullopt);
    json.member_or_null("mac", alarm.mac);
    json.member("alarm", alarm.name);
    json.member("severity", alarm.severity);
    json.member_or_null("cause", alarm.cause);
    json.member_or_null("place", alarm.place);
    json->EndObject();
    return {time + " " + std::string(event.what) + " " + alarm.subject() + " " + alarm.name + " " + alarm.severity +
                (reason.empty() ? "" : " (" + reason + ")"),
            json.written()};
}

ExitCode run_alarm_watch(const Output &output, const GlobalOptions &global, const std::string &port)
{
    const auto words = words_of({{"record.pon_port", port_of(port)}});
    std::optional<std::vector<AlarmFact>> before;
    return follow(output, global, [&](std::vector<Event> &events) {
        const Invocation listed(list_operation, words, consent());
        if (!listed.good()) return report(listed);
        std::vector<AlarmFact> now = read_alarms(listed.database());
        if (before) std::ranges::transform(alarm_events(*before, now), std::back_inserter(events), event_of);
        before = std::move(now);
        return exit_success;
    });
}

} // namespace

void add_alarm(Program &program)
{
    Command &alarm = program.tree.add("alarm", "Lists, follows and clears alarms");
    const auto select = [](Command &one, AlarmOptions &options) {
        one.argument("PORT", &options.port,
                     "PON port number, or with the ids of its ONUs, as 1/3-17,20 or 1/all; all ports when left out");
        one.argument("ONU", &options.onu,
                     "ONU id on the port, or MAC address; id 0 cannot be given, for there it means all");
    };

    Command &list = alarm.add("list", "Lists the alarms of all ports, of one, or of some ONUs");
    AlarmOptions &listed = list.runs(run_alarm_list);
    select(list, listed);

    list.option("--active", &listed.active, "only alarms that are active, the newest first");
    list.option("--history", &listed.history, "only alarms that have ended, the one that ended last first");

    Command &watch = alarm.add("watch", "Prints a line for each alarm that is raised or cleared, as it happens");
    std::string &watched =
        watch.runs<std::string>([&global = program.global](const Output &output, const std::string &port) {
            return run_alarm_watch(output, global, port);
        });
    watch.argument("PORT", &watched, port_or_all_help);
    program.followers.push_back(&watch);

    Command &clear = alarm.add("clear", "Clears the alarms of all ports, of one, or of some ONUs");
    AlarmOptions &cleared = clear.runs(run_alarm_clear);
    select(clear, cleared);
    clear.option("--alarm", &cleared.alarm, "code of the alarms to clear; all when left out", "CODE");
    add_list_options(program, list);
    list.footer = "Offline for longer than a day: ponctl alarm list --where 'state=active and (name=los or "
                  "name=port_los) and raised<1d-ago'";
}

} // namespace ponctl
