// ponctl auth: how the ONUs of a port prove who they are.
#include <algorithm>

#include "consent.h"
#include "daily.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

constexpr size_t longest_loid = 24;
constexpr size_t longest_password = 12;

std::string mode_of(const std::string &word)
{
    const auto mode = std::ranges::find(auth_modes, word);
    if (mode == auth_modes.end()) throw UsageError("MODE: '" + word + "' is not one of " + text::join(auth_modes));
    return std::to_string(mode - auth_modes.begin());
}

} // namespace

ExitCode run_auth_show(const Output &output, const std::string &port)
{
    constexpr TableStyle style{.filled_only = true, .worded = "mode", .words = auth_modes};
    if (port_of(port) == "0") return run_list(output, "bsp_pon_onu_auth_infolist_get", {}, style);
    return run_list(output, "bsp_pon_exec_get_json_",
                    words_of({{"cmd", "BSP_CMD_AUTH_LIST"}, {"pon_port", port_of(port)}}), style);
}

ExitCode run_auth_set(const Output &output, const AuthOptions &options)
{
    const std::string port = port_of(options.port);
    const std::string mode = mode_of(options.mode);
    check_text("--loid", options.loid, longest_loid);
    check_text("--password", options.password, longest_password);
    if (options.loid.empty() && !options.password.empty())
        throw UsageError("--password: goes with --loid, whose password it is");
    ask_before("bsp_pon_onu_auth_mode_type_set", "having the ONUs of port " + port + " prove anew who they are");
    return call(output, "bsp_pon_onu_auth_mode_type_set",
                words_of({{"pon_port", port}, {"text_a", options.loid}, {"text_b", options.password}, {"mode", mode}}));
}

ExitCode run_auth_remove(const Output &output, const AuthOptions &options)
{
    const std::string port = port_of(options.port);
    check_text("LOID", options.loid, longest_loid);
    if (options.loid.empty()) throw UsageError("LOID: empty");
    ask_before("bsp_pon_onu_auth_set",
               "having the ONUs of port " + port + " prove anew who they are, without LOID " + options.loid);
    // What removes a record sets the mode too, so it must state the one that holds.
    const Called current("bsp_pon_onu_auth_mode_type_get", words_of({{"pon_port", port}}));
    if (!current.good()) return current.report();
    current.expect_answer();
    const Reading reading = current.response();
    const catalogue::Field &mode = *catalogue::find_field(reading.record->fields, "arg_word12");
    return call(output, "bsp_pon_onu_auth_set",
                words_of({{"record.pon_port", port},
                          {"record.arg_word12", std::to_string(load_word(field_bytes(mode, reading.bytes).data()))},
                          {"record.text45", options.loid},
                          {"record.remove", "1"}}));
}

} // namespace ponctl
