// ponctl loop sets the detection of forwarding loops behind the ONUs.
#include <array>

#include "call/invocation.h"
#include "cli/list_options.h"
#include "cli/program.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/report.h"
#include "results/operands.h"
#include "results/sections.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

// These are the ways in which ports that were shut because of a loop recover, from 0 on.
constexpr std::array<std::string_view, 2> loop_modes{"automatic", "manual"};

ExitCode send(const char *operation, const char *argument, const std::string &value)
{
    return report(Invocation(operation, words_of({{argument, value}}), consent()));
}

ExitCode switch_detection(const char *action, const char *state)
{
    ask_before("bsp_pon_loop_detect_status", action);
    return send("bsp_pon_loop_detect_status", "state", state);
}

ExitCode run_loop_show(const Output &output)
{
    const Invocation settings("bsp_pon_get_loop_detect_config", std::vector<std::string>{}, consent());
    if (!settings.good()) return report(settings);
    const Invocation ports("bsp_pon_get_loop_detect_info", std::vector<std::string>{}, consent());
    const std::vector<FieldStyle> styles{{"state"}, {"mode"},     {"time"},     {"interval"},
                                         {"shut"},  {"detected"}, {"recovered"}};
    return show(output, {{"settings", "Settings", &settings, styles, true}, {"ports", "Ports", &ports}});
}

ExitCode run_loop_on(const Output &)
{
    return switch_detection("having ports with a loop shut", "1");
}

ExitCode run_loop_off(const Output &)
{
    return switch_detection("leaving loops alone", "0");
}

ExitCode run_loop_recover(const Output &)
{
    ask_before("bsp_pon_loop_detect_recover_manual", "opening the ports that loops shut");
    return report(Invocation("bsp_pon_loop_detect_recover_manual", std::vector<std::string>{}, consent()));
}

ExitCode run_loop_mode(const Output &, const std::string &mode)
{
    return send("bsp_pon_loop_detect_recover_mode", "mode", number_of_word("MODE", mode, loop_modes));
}

ExitCode run_loop_time(const Output &, const std::string &seconds)
{
    return send("bsp_pon_loop_detect_recover_time", "time", std::to_string(parse_number("SECONDS", seconds)));
}

ExitCode run_loop_interval(const Output &, const std::string &seconds)
{
    return send("bsp_pon_loop_detect_pkt_send_interval", "interval", std::to_string(parse_number("SECONDS", seconds)));
}

void add_seconds(Command &loop, const char *name, const char *brief,
                 ExitCode (*run)(const Output &, const std::string &))
{
    Command &one = loop.add(name, brief);
    std::string &seconds = one.runs(run);
    one.argument("SECONDS", &seconds, "the time in seconds").is_required();
}

} // namespace

void add_loop(Program &program)
{
    Command &loop = program.tree.add("loop", "Detects forwarding loops behind the ONUs");
    const auto add = [&](const char *name, const char *brief, ExitCode (*run)(const Output &)) {
        loop.add(name, brief).runs(run);
    };
    add("show", "Shows the settings, and the ports that have or had a loop", run_loop_show);
    add("on", "Switches detection on: ports with a loop are shut", run_loop_on);
    add("off", "Switches detection off", run_loop_off);
    add("recover", "Opens the ports that loops shut, now", run_loop_recover);

    Command &set = loop.add("mode", "Sets how shut ports recover");
    std::string &mode = set.runs(run_loop_mode);
    set.argument("MODE", &mode, "one of " + text::join(loop_modes), text::join(loop_modes, "|")).is_required();

    add_seconds(loop, "time", "Sets after which time ports recover automatically", run_loop_time);
    add_seconds(loop, "interval", "Sets the interval between detection packets", run_loop_interval);
    add_list_options(program, loop, "show");
}

} // namespace ponctl
