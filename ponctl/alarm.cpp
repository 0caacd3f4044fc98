// ponctl alarm.
#include "consent.h"
#include "daily.h"
#include "onu_set.h"

namespace ponctl
{
namespace
{

// The set that is named in place of a port; id 0 would stand for all ONUs of it.
std::optional<OnuSet> set_of(const AlarmOptions &options)
{
    std::optional<OnuSet> set = set_in_place_of(options.port, options.onu);
    if (set) set->but_0 = true;
    return set;
}

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
    return call(output, "bsp_pon_clear_onu_alarm", words);
}

} // namespace ponctl
