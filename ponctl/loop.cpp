// ponctl loop: detection of forwarding loops behind the ONUs.
#include "consent.h"
#include "daily.h"
#include "platform.h"
#include "sections.h"

namespace ponctl
{
namespace
{

ExitCode send(const char *operation, const char *argument, const std::string &value)
{
    return Called(operation, words_of({{argument, value}})).report();
}

ExitCode switch_detection(const char *action, const char *state)
{
    ask_before("bsp_pon_loop_detect_status", action);
    return send("bsp_pon_loop_detect_status", "state", state);
}

} // namespace

ExitCode run_loop_show(const Output &output)
{
    const Called settings("bsp_pon_get_loop_detect_config", std::vector<std::string>{});
    if (!settings.good()) return settings.report();
    const Called ports("bsp_pon_get_loop_detect_info", std::vector<std::string>{});
    const std::vector<FieldStyle> styles{
        {"state", {}, off_on}, {"mode", {}, loop_modes}, {"time"}, {"interval"}, {"shut"}, {"detected"}, {"recovered"}};
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
    return Called("bsp_pon_loop_detect_recover_manual", std::vector<std::string>{}).report();
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

} // namespace ponctl
