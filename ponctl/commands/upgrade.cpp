// ponctl upgrade sets which firmware goes to which ONUs, and shows how it gets there.
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <thread>

#include <unistd.h>

#include "board/datastore.h"

#include "call/invocation.h"
#include "cli/list_options.h"
#include "cli/program.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/json.h"
#include "output/mode.h"
#include "output/report.h"
#include "output/table.h"
#include "results/delivered.h"
#include "results/onu_set.h"
#include "results/operands.h"
#include "results/preview.h"
#include "text/utf8.h"

namespace ponctl
{
namespace
{

struct UpgradeAddOptions {
    std::string name, vendor, model, version, size, file;
};

struct UpgradeBindOptions {
    std::string port, name;
    bool none = false; // no name, in place of a name
    std::string onus;  // a set of ids; empty: the whole port
};

struct UpgradeStartOptions {
    std::string port; // a port, or a set without an ONU
    std::string onu;  // id; empty: all ONUs of the port
    bool wait = false;
    std::string timeout = "3600"; // s
};

// Returns a text for a field of a command's block. The result is empty when the text is left out.
std::string text_for(const char *command, const char *field, const char *name, const std::string &text)
{
    const catalogue::Layout &layout = *catalogue::find_layout(*catalogue::find_command(command));
    check_text(name, text, longest(*catalogue::find_field(layout.fields, field), true));
    return text;
}

std::string type_name_for(const char *command, const std::string &name)
{
    return text_for(command, "name", "NAME", name);
}

ExitCode run_upgrade_types(const Output &output)
{
    return run_list(output, "bsp_pon_get_onu_upgrade_type", {});
}

ExitCode run_upgrade_add(const Output &, const UpgradeAddOptions &options)
{
    constexpr const char *command = "BSP_CMD_UPGRADE_TYPE_ADD";
    return report(Invocation("bsp_pon_set_onu_upgrade_type_add",
                             words_of({{"block.name", type_name_for(command, options.name)},
                                       {"block.vendor", text_for(command, "vendor", "VENDOR", options.vendor)},
                                       {"block.model", text_for(command, "model", "MODEL", options.model)},
                                       {"block.version", text_for(command, "version", "VERSION", options.version)},
                                       {"block.size", number_word("SIZE", options.size)},
                                       {"block.file", text_for(command, "file", "--file", options.file)}}),
                             consent()));
}

ExitCode run_upgrade_delete(const Output &, const std::string &name)
{
    if (name.empty()) throw UsageError("NAME: empty");
    return report(Invocation("bsp_pon_set_onu_upgrade_type_del",
                             words_of({{"block.name", type_name_for("BSP_CMD_UPGRADE_TYPE_DELETE", name)}}),
                             consent()));
}

ExitCode run_upgrade_load(const Output &, const std::string &file)
{
    if (file.empty()) throw UsageError("FILE: empty");
    // The service opens the file, and its working folder is another one.
    std::error_code failed;
    const std::string path = std::filesystem::absolute(file, failed).lexically_normal();
    if (failed) throw UsageError("FILE: '" + file + "': the working folder has no name: " + failed.message());
    return report(Invocation("bsp_pon_load_onu_upgrade_type_file",
                             words_of({{"block.file", text_for("BSP_CMD_UPGRADE_TYPE_LOAD", "file", "FILE", path)}}),
                             consent()));
}

ExitCode run_upgrade_bind(const Output &, const UpgradeBindOptions &options)
{
    if (options.name.empty() != options.none) throw UsageError("which type? give either NAME or --none");
    const std::string port = port_of(options.port);
    if (options.onus.empty())
        return report(
            Invocation("bsp_pon_onu_upgrade_type_bind_ponport",
                       words_of({{"block.pon_port", port},
                                 {"block.name", type_name_for("BSP_CMD_UPGRADE_TYPE_BIND_PORT", options.name)}}),
                       consent()));
    return report(Invocation("bsp_pon_onu_upgrade_type_bind_some",
                             words_of({{"block.pon_port", port},
                                       {"block.name", type_name_for("BSP_CMD_UPGRADE_TYPE_BIND_ONUS", options.name)},
                                       {"block.onu_set", format_idset(parse_idset("--onus", options.onus))}}),
                             consent()));
}

// A Run is how the upgrade of an ONU stands.
struct Run {
    std::string state, progress, software, reason;

    bool operator==(const Run &) const = default;
    bool is_under_way() const
    {
        return state == "queued" || state == "downloading" || state == "verifying" || state == "rebooting";
    }
};

// Reads the upgrade runs of a port, by ONU id.
ExitCode read_runs(const std::string &port, std::map<uint32_t, Run> &runs)
{
    const Invocation listed("bsp_pon_get_upgrade_base_info_web", words_of({{"record.pon_port", port}}), looking());
    if (!listed.good()) return report(listed);
    const db_handle *database = listed.database();
    const auto cell = [database](uint32_t row, const char *column) {
        const char *text = db_get_text(database, row, column);
        return std::string(text ? text : "");
    };
    runs.clear();
    for (uint32_t row = 0; row < db_rows(database); ++row) {
        int64_t id = 0;
        if (db_get_integer(database, row, "onu_id", &id) == 0)
            runs[static_cast<uint32_t>(id)] = {cell(row, "run"), cell(row, "progress"), cell(row, "software"),
                                               cell(row, "reason")};
    }
    return exit_success;
}

// Shows on a terminal how far the upgrades have got, in one line that is written over.
void show_progress(const std::map<uint32_t, Run> &runs, const std::set<uint32_t> &awaited)
{
    if (mode().quiet || !isatty(STDERR_FILENO)) return;
    std::map<std::string, size_t> states;
    for (const uint32_t id : awaited)
        if (const auto run = runs.find(id); run != runs.end()) ++states[run->second.state];
    std::string line;
    for (const auto &[state, count] : states)
        line += (line.empty() ? "" : ", ") + std::to_string(count) + " " + state;
    std::fprintf(stderr, "\r\033[K%s", text::printable(line).c_str());
}

ExitCode show_runs(const Output &output, const std::string &port, const std::map<uint32_t, Run> &runs,
                   const std::set<uint32_t> &awaited)
{
    ExitCode code = exit_success;
    Table table({{"ONU"}, {"RUN"}, {"SOFTWARE"}, {"REASON", Table::Fit::wrap}});
    std::optional<Json> json;
    if (output.format == Format::json) json.emplace(output.stream);
    if (json) (*json)->StartArray();
    for (const uint32_t id : awaited) {
        const auto found = runs.find(id);
        const Run run = found == runs.end() ? Run{"failed", {}, {}, "released"} : found->second;
        if (run.state != "done") code = exit_status;
        if (json) {
            (*json)->StartObject();
            for (const auto &[name, value] : {std::pair{"onu", port + "/" + std::to_string(id)},
                                              {"run", run.state},
                                              {"software", run.software},
                                              {"reason", run.reason}})
                json->member(name, value);
            (*json)->EndObject();
        }
        table.add({port + "/" + std::to_string(id), run.state, run.software, run.reason.empty() ? "-" : run.reason});
    }
    if (json)
        (*json)->EndArray();
    else
        table.print(output);
    return code;
}

// Waits until the upgrade runs that were started have ended. `before` has the runs of the port before the start: a run
// can be over by now. Of ONUs that are named, each run counts.
ExitCode wait_for_upgrades(const Output &output, const OnuSet &set, const std::string &timeout,
                           const std::map<uint32_t, Run> &before)
{
    if (mode().dry_run) return exit_success;
    const std::string port = std::to_string(set.port);
    std::map<uint32_t, Run> runs;
    std::set<uint32_t> awaited;
    if (const ExitCode code = read_runs(port, runs); code != exit_success) return code;
    for (const auto &[id, run] : runs) {
        const auto old = before.find(id);
        const bool started = run.is_under_way() || old == before.end() || old->second != run;
        if (!run.state.empty() && (set.all ? started : holds(set.ids, id))) awaited.insert(id);
    }
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(parse_number("--timeout", timeout));
    const auto goes_on = [&] {
        return std::ranges::any_of(awaited, [&](uint32_t id) { return runs.contains(id) && runs[id].is_under_way(); });
    };
    ExitCode code = exit_success;
    while (code == exit_success && goes_on() && std::chrono::steady_clock::now() < end) {
        show_progress(runs, awaited);
        std::this_thread::sleep_for(std::chrono::milliseconds(250));
        code = read_runs(port, runs);
    }
    if (isatty(STDERR_FILENO)) std::fputs("\r\033[K", stderr);
    if (code != exit_success) return code;
    if (goes_on()) complain("--timeout: " + timeout + " s have passed, and upgrades are still under way");
    return show_runs(output, port, runs, awaited);
}

ExitCode run_upgrade_start(const Output &output, const UpgradeStartOptions &options)
{
    parse_number("--timeout", options.timeout);
    const auto set = set_in_place_of(options.port);
    if (set && !options.onu.empty())
        throw UsageError("--onu: not beside a set; " + options.port + " names the ONUs already");
    const std::string port = set ? std::to_string(set->port) : port_of(options.port);
    const std::string onu = number_word("--onu", options.onu, max_onu_id);
    const OnuSet onus =
        set ? *set : OnuSet{parse_number("PORT", port), onu.empty() ? IdSet{} : parse_idset("--onu", onu), onu.empty()};
    const std::string which = onu.empty() ? "the ONUs" : "ONU " + onu;
    const char *operation = set || !onu.empty() ? "bsp_pon_onu_upgrade_one" : "bsp_pon_onu_upgrade_ponport";
    ask_about(operation,
              "upgrading " + (set ? describe_onu_set(*set) : which + " of port " + port) + ", which ends in a reboot,",
              Effect::offline, onus);
    std::map<uint32_t, Run> before;
    if (options.wait)
        if (const ExitCode code = read_runs(port, before); code != exit_success) return code;
    // What --wait shows in the end is the only result.
    const Output starting{output.stream, options.wait ? Format::table : output.format};
    const ExitCode code =
        set ? tell_onus(starting, *set, operation)
            : report(Invocation(operation, words_of({{"block.pon_port", port}, {"block.onu_id", onu}}), consent()));
    if (!options.wait || (!set && code != exit_success)) return code;
    return std::max(code, wait_for_upgrades(output, onus, options.timeout, before));
}

ExitCode run_upgrade_status(const Output &output, const std::string &port)
{
    return run_list(output, "bsp_pon_get_upgrade_base_info_web", words_of({{"record.pon_port", port_of(port)}}));
}

void add_types(Command &upgrade)
{
    upgrade.add("types", "Lists the upgrade types").runs(run_upgrade_types);

    Command &add = upgrade.add("add", "Adds an upgrade type, or puts it in place of one of the same name");
    UpgradeAddOptions &added = add.runs(run_upgrade_add);
    add.argument("NAME", &added.name, "name of the type").is_required();
    add.argument("VENDOR", &added.vendor, "vendor id of the ONUs that it is for").is_required();
    add.argument("MODEL", &added.model, "their model").is_required();
    add.argument("VERSION", &added.version, "software version that they get").is_required();
    add.argument("SIZE", &added.size, "size of the image in bytes").is_required();
    add.option("--file", &added.file, "file name of the image; it is shown only", "NAME");

    Command &remove = upgrade.add("delete", "Deletes an upgrade type");
    std::string &name = remove.runs(run_upgrade_delete);
    remove.argument("NAME", &name, "name of the type").is_required();

    Command &load = upgrade.add("load", "Has the service load upgrade types from a file");
    std::string &file = load.runs(run_upgrade_load);
    load.argument("FILE", &file, "the file, a line a type: name, vendor, model, version and size").is_required();
}

} // namespace

void add_upgrade(Program &program)
{
    Command &upgrade = program.tree.add("upgrade", "Upgrades the firmware of ONUs");
    add_types(upgrade);

    Command &bind = upgrade.add("bind", "Binds an upgrade type to the ONUs of a port, or to some of them");
    UpgradeBindOptions &bound = bind.runs(run_upgrade_bind);
    bind.argument("PORT", &bound.port, "PON port number").is_required();
    bind.argument("NAME", &bound.name, "name of the type");
    bind.option("--none", &bound.none, "in place of NAME: no type is bound any more");
    bind.option("--onus", &bound.onus, "ids of the ONUs, as 1-5,7; the whole port when left out", "IDS");

    Command &start = upgrade.add("start", "Starts to upgrade the ONUs of a port, or some of them");
    UpgradeStartOptions &started = start.runs(run_upgrade_start);
    start.argument("PORT", &started.port, "PON port number; or with the ids of its ONUs, as 1/3-17,20 or 1/all")
        .is_required();
    start.option("--onu", &started.onu, "ONU id on the port; all that can be upgraded when left out", "ID");
    start.option("--wait", &started.wait,
                 "wait until the upgrades have ended, and show how: the exit code is 1 if one failed");
    start.option("--timeout", &started.timeout, "with --wait: seconds after which waiting ends; 3600 when left out",
                 "SECONDS");

    Command &status = upgrade.add("status", "Shows versions, types and upgrade runs of the bound ONUs");
    std::string &port = status.runs(run_upgrade_status);
    status.argument("PORT", &port, "PON port number; all ports when left out");
    add_list_options(program, upgrade, "types");
    add_list_options(program, status);
}

} // namespace ponctl
