// ponctl upgrade sets which firmware goes to which ONUs, and shows how it gets there.
#include <filesystem>

#include "call/invocation.h"
#include "cli/list_options.h"
#include "cli/program.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/report.h"
#include "results/delivered.h"
#include "results/onu_set.h"
#include "results/operands.h"

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

ExitCode run_upgrade_start(const Output &output, const UpgradeStartOptions &options)
{
    if (const auto set = set_in_place_of(options.port)) {
        if (!options.onu.empty())
            throw UsageError("--onu: not beside a set; " + options.port + " names the ONUs already");
        constexpr const char *one = "bsp_pon_onu_upgrade_one";
        ask_before(one, "upgrading " + describe_onu_set(*set) + ", which ends in a reboot,");
        return tell_onus(output, *set, one);
    }
    const std::string port = port_of(options.port), onu = number_word("--onu", options.onu, max_onu_id);
    const std::string which = onu.empty() ? "the ONUs" : "ONU " + onu;
    const char *operation = onu.empty() ? "bsp_pon_onu_upgrade_ponport" : "bsp_pon_onu_upgrade_one";
    ask_before(operation, "upgrading " + which + " of port " + port + ", which ends in a reboot,");
    return report(Invocation(operation, words_of({{"block.pon_port", port}, {"block.onu_id", onu}}), consent()));
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

    Command &status = upgrade.add("status", "Shows versions, types and upgrade runs of the bound ONUs");
    std::string &port = status.runs(run_upgrade_status);
    status.argument("PORT", &port, "PON port number; all ports when left out");
    add_list_options(program, upgrade, "types");
    add_list_options(program, status);
}

} // namespace ponctl
