// ponctl alarm.
#include "daily.h"

namespace ponctl
{
namespace
{

// What an alarm operation's record selects: all ports, one, or one ONU of it.
std::vector<std::string> selection_of(const AlarmOptions &options)
{
    const OnuName onu = options.onu.empty() ? OnuName{} : onu_but_0_of(options.onu);
    return words_of({{"record.pon_port", port_of(options.port)},
                     {"record.onu_id", onu.id},
                     {"record.onu_mac", onu.mac},
                     {"record.arg_value", options.alarm}});
}

} // namespace

ExitCode run_alarm_list(const Output &output, const AlarmOptions &options)
{
    return run_list(output, "bsp_pon_get_onu_alarm", selection_of(options));
}

ExitCode run_alarm_clear(const Output &output, const AlarmOptions &options)
{
    if (!options.alarm.empty()) parse_number("--alarm", options.alarm);
    const auto words = selection_of(options);
    const bool is_everything = port_of(options.port) == "0" && options.onu.empty() && options.alarm.empty();
    ask(options.confirmed || !is_everything, "clearing all alarms of all ports");
    return call(output, "bsp_pon_clear_onu_alarm", words);
}

} // namespace ponctl
