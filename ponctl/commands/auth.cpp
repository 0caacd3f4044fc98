// ponctl auth sets how the ONUs of a port prove who they are.
#include <algorithm>

#include "board/datastore.h"
#include "call/invocation.h"
#include "cli/list_options.h"
#include "cli/operand_help.h"
#include "cli/password_options.h"
#include "cli/program.h"
#include "diagnosis/facts.h"
#include "output/consent.h"
#include "output/database.h"
#include "output/exit_code.h"
#include "output/report.h"
#include "results/delivered.h"
#include "results/listing.h"
#include "results/operands.h"
#include "results/secret.h"
#include "results/sections.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

struct AuthOptions {
    std::string port, mode, loid;
    Secret password;
};

constexpr size_t longest_loid = 24;
constexpr size_t longest_password = 12;

std::string mode_of(const std::string &word)
{
    const auto mode = std::ranges::find(auth_modes, word);
    if (mode == auth_modes.end()) throw UsageError("MODE: '" + word + "' is not one of " + text::join(auth_modes));
    return std::to_string(mode - auth_modes.begin());
}

constexpr TableStyle auth_style{.filled_only = true, .worded = "mode", .words = auth_modes};

// Prints the mode of a port, which the summary of all ports has.
ExitCode print_mode(const Output &output, const std::string &port)
{
    const Invocation summary("bsp_pon_onu_auth_infolist_get", {}, consent());
    if (!summary.good()) return report(summary);
    const db_handle *rows = summary.database();
    for (uint32_t row = 0; row < db_rows(rows); ++row) {
        int64_t mode = 0;
        if (cell_text(rows, row, "pon_port") != port || db_get_integer(rows, row, "mode", &mode)) continue;
        const auto number = static_cast<size_t>(mode);
        const std::string word = number < auth_modes.size() ? std::string(auth_modes[number]) : std::to_string(mode);
        std::fprintf(output.stream, "Mode: %s\n\n", word.c_str());
    }
    return exit_success;
}

ExitCode run_auth_show(const Output &output, const std::string &text)
{
    const std::string port = port_of(text);
    if (port == "0") return run_list(output, "bsp_pon_onu_auth_infolist_get", {}, auth_style);
    const Invocation records("bsp_pon_exec_get_json_", words_of({{"cmd", "BSP_CMD_AUTH_LIST"}, {"pon_port", port}}),
                             consent());
    db_handle *rows = records.answered() && records.fault().empty() ? records.database() : nullptr;
    ExitCode code = exit_success;
    if (rows && output.format == Format::table && output.headings) code = print_mode(output, port);
    if (rows) print_listing(output, rows, records.view(), auth_style);
    return std::max(code, report(records));
}

ExitCode run_auth_set(const Output &output, const AuthOptions &options)
{
    const std::string port = port_of(options.port);
    const std::string mode = mode_of(options.mode);
    check_text("--loid", options.loid, longest_loid);
    if (options.loid.empty() && options.password.given())
        throw UsageError("--password: goes with --loid, whose password it is");
    const std::string password = read_secret(options.password, longest_password);
    ask_before("bsp_pon_onu_auth_mode_type_set", "having the ONUs of port " + port + " prove anew who they are");
    return run_call(output, "bsp_pon_onu_auth_mode_type_set",
                    words_of({{"pon_port", port}, {"text_a", options.loid}, {"text_b", password}, {"mode", mode}}));
}

ExitCode run_auth_remove(const Output &output, const AuthOptions &options)
{
    const std::string port = port_of(options.port);
    check_text("LOID", options.loid, longest_loid);
    if (options.loid.empty()) throw UsageError("LOID: empty");
    ask_before("bsp_pon_onu_auth_set",
               "having the ONUs of port " + port + " prove anew who they are, without LOID " + options.loid);
    // The request that removes a record also sets the mode, so it must state the current mode.
    const Invocation current("bsp_pon_onu_auth_mode_type_get", words_of({{"pon_port", port}}), looking());
    if (!current.good()) return report(current);
    const Reading reading = current.response();
    const catalogue::Field &mode = *catalogue::find_field(reading.record->fields, "arg_word12");
    return run_call(output, "bsp_pon_onu_auth_set",
                    words_of({{"record.pon_port", port},
                              {"record.arg_word12", std::to_string(load_word(field_bytes(mode, reading.bytes).data()))},
                              {"record.text45", options.loid},
                              {"record.remove", "1"}}));
}

} // namespace

void add_auth(Program &program)
{
    Command &auth = program.tree.add("auth", "Shows and sets how the ONUs of a port prove who they are");

    Command &show = auth.add("show", "Shows the mode of every port, or the mode and the LOIDs of one");
    std::string &port = show.runs(run_auth_show);
    show.argument("PORT", &port, "PON port number; a summary of all ports when left out");

    Command &set = auth.add("set", "Sets the mode of a port, and adds a LOID or changes its password");
    AuthOptions &wanted = set.runs(run_auth_set);
    set.argument("PORT", &wanted.port, port_help).is_required();
    set.argument("MODE", &wanted.mode, "one of " + text::join(auth_modes), text::join(auth_modes, "|")).is_required();
    set.option("--loid", &wanted.loid, "LOID that is accepted, at most 24 characters", "LOID");
    add_password(set, wanted.password, "its password, at most 12 characters");

    Command &remove = auth.add("remove", "Removes a LOID from a port; the mode stays");
    AuthOptions &unwanted = remove.runs(run_auth_remove);
    remove.argument("PORT", &unwanted.port, port_help).is_required();
    remove.argument("LOID", &unwanted.loid, "the LOID").is_required();
    add_list_options(program, show);
}

} // namespace ponctl
