// ponctl onu, ponctl port: daily work, as calls of the operations with their arguments filled in.
#include <iostream>

#include <unistd.h>

#include "commands.h"
#include "report.h"

namespace ponctl
{
namespace
{

constexpr const char *view_operation = "bsp_pon_exec_get_json_";

// name=value for each option that was given.
std::vector<std::string> words_of(std::initializer_list<Assignment> options)
{
    std::vector<std::string> words;
    for (const Assignment &option : options)
        if (!option.value.empty()) words.push_back(option.name + "=" + option.value);
    return words;
}

ExitCode call(const Output &output, const char *operation, const std::vector<std::string> &words)
{
    return run_call(output, *catalogue::find_operation(operation), words, {});
}

// Whether one who sits at the terminal agrees. With nobody to ask, that is a UsageError.
bool agreed(const std::string &action)
{
    if (!isatty(STDIN_FILENO))
        throw UsageError("--yes: missing; " + action + " needs it when no terminal is there to ask");
    std::cerr << "ponctl: " << action << "? [y/N] " << std::flush;
    std::string answer;
    std::getline(std::cin, answer);
    return answer == "y" || answer == "yes";
}

ExitCode release_many(const Output &output, const ReleaseOptions &options)
{
    if (!options.id.empty() || !options.mac.empty() || (options.all && options.offline))
        throw UsageError("--all and --offline stand alone: not with each other, not with --id or --mac");
    const std::string which = options.all ? "all ONUs" : "all offline ONUs";
    if (!options.confirmed && !agreed("releasing " + which + " of port " + options.port)) {
        complain("nothing was released");
        return exit_usage;
    }
    return call(output, options.all ? "bsp_pon_no_bind_onu_all" : "bsp_pon_no_bind_offline_onu_all",
                words_of({{"pon_port", options.port}}));
}

} // namespace

ExitCode run_onu_list(const Output &output, const std::string &port)
{
    return run_list(output, view_operation,
                    words_of({{"cmd", "BSP_CMD_VIEW_ONU_INFO_WEB"}, {"pon_port", port.empty() ? "0" : port}}));
}

ExitCode run_port_list(const Output &output)
{
    return run_list(output, view_operation, words_of({{"cmd", "BSP_CMD_VIEW_BASE_INFO_WEB"}, {"pon_port", "0"}}));
}

ExitCode run_onu_bind(const Output &output, const BindOptions &options)
{
    return call(output, options.id.empty() ? "bsp_pon_bind_onu_auto_id" : "bsp_pon_bind_onu_spec_id",
                words_of({{"pon_port", options.port},
                          {"onu_id", options.id},
                          {"mac", options.mac},
                          {"text_a", options.text_a},
                          {"text_b", options.text_b},
                          {"value", options.mode.empty() ? "0" : options.mode},
                          {"text_c", options.text_c}}));
}

ExitCode run_onu_release(const Output &output, const ReleaseOptions &options)
{
    if (options.all || options.offline) return release_many(output, options);
    if (options.id.empty() && options.mac.empty())
        throw UsageError("which ONU? give --id N, --mac MAC or both, or --offline or --all");
    const char *operation = options.mac.empty()  ? "bsp_pon_no_bind_onu_spec_id"
                            : options.id.empty() ? "bsp_pon_no_bind_onu_by_mac"
                                                 : "bsp_pon_no_bind_onu_spec_id_and_mac";
    return call(output, operation,
                words_of({{"pon_port", options.port}, {"onu_id", options.id}, {"mac", options.mac}}));
}

} // namespace ponctl
