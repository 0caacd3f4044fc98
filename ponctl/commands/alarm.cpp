// ponctl alarm shows and clears the alarms of ONUs.
#include "cli/list_options.h"
#include "cli/program.h"
#include "output/consent.h"
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

ExitCode run_alarm_list(const Output &output, const AlarmOptions &options)
{
    constexpr const char *operation = "bsp_pon_get_onu_alarm";
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

} // namespace

void add_alarm(Program &program)
{
    Command &alarm = program.tree.add("alarm", "Lists and clears alarms of ONUs");
    const auto select = [](Command &one, AlarmOptions &options) {
        one.argument("PORT", &options.port,
                     "PON port number, or with the ids of its ONUs, as 1/3-17,20 or 1/all; all ports when left out");
        one.argument("ONU", &options.onu,
                     "ONU id on the port, or MAC address; id 0 cannot be given, for there it means all");
    };

    Command &list = alarm.add("list", "Lists the alarms of all ports, of one, or of some ONUs");
    AlarmOptions &listed = list.runs(run_alarm_list);
    select(list, listed);

    Command &clear = alarm.add("clear", "Clears the alarms of all ports, of one, or of some ONUs");
    AlarmOptions &cleared = clear.runs(run_alarm_clear);
    select(clear, cleared);
    clear.option("--alarm", &cleared.alarm, "code of the alarms to clear; all when left out", "CODE");
    add_list_options(program, list);
    list.footer = "Offline for longer than a day: ponctl alarm list --where 'state=active and (name=los or "
                  "name=port_los) and raised<1d-ago'";
}

} // namespace ponctl
