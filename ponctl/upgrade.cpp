// ponctl upgrade: which firmware goes to which ONUs, and its way there.
#include <filesystem>

#include "consent.h"
#include "daily.h"
#include "onu_set.h"
#include "platform.h"

namespace ponctl
{
namespace
{

// A text that goes into a field of a command's block; empty where it is left out.
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

} // namespace

ExitCode run_upgrade_types(const Output &output)
{
    return run_list(output, "bsp_pon_get_onu_upgrade_type", {});
}

ExitCode run_upgrade_add(const Output &, const UpgradeAddOptions &options)
{
    constexpr const char *command = "BSP_CMD_UPGRADE_TYPE_ADD";
    return Called("bsp_pon_set_onu_upgrade_type_add",
                  words_of({{"block.name", type_name_for(command, options.name)},
                            {"block.vendor", text_for(command, "vendor", "VENDOR", options.vendor)},
                            {"block.model", text_for(command, "model", "MODEL", options.model)},
                            {"block.version", text_for(command, "version", "VERSION", options.version)},
                            {"block.size", number_word("SIZE", options.size)},
                            {"block.file", text_for(command, "file", "--file", options.file)}}))
        .report();
}

ExitCode run_upgrade_delete(const Output &, const std::string &name)
{
    if (name.empty()) throw UsageError("NAME: empty");
    return Called("bsp_pon_set_onu_upgrade_type_del",
                  words_of({{"block.name", type_name_for("BSP_CMD_UPGRADE_TYPE_DELETE", name)}}))
        .report();
}

ExitCode run_upgrade_load(const Output &, const std::string &file)
{
    if (file.empty()) throw UsageError("FILE: empty");
    // The service opens it, from a folder of its own.
    const std::string path = std::filesystem::absolute(file).lexically_normal();
    return Called("bsp_pon_load_onu_upgrade_type_file",
                  words_of({{"block.file", text_for("BSP_CMD_UPGRADE_TYPE_LOAD", "file", "FILE", path)}}))
        .report();
}

ExitCode run_upgrade_bind(const Output &, const UpgradeBindOptions &options)
{
    if (options.name.empty() != options.none) throw UsageError("which type? give either NAME or --none");
    const std::string port = port_of(options.port);
    if (options.onus.empty())
        return Called("bsp_pon_onu_upgrade_type_bind_ponport",
                      words_of({{"block.pon_port", port},
                                {"block.name", type_name_for("BSP_CMD_UPGRADE_TYPE_BIND_PORT", options.name)}}))
            .report();
    return Called("bsp_pon_onu_upgrade_type_bind_some",
                  words_of({{"block.pon_port", port},
                            {"block.name", type_name_for("BSP_CMD_UPGRADE_TYPE_BIND_ONUS", options.name)},
                            {"block.onu_set", format_idset(parse_idset("--onus", options.onus))}}))
        .report();
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
    return Called(operation, words_of({{"block.pon_port", port}, {"block.onu_id", onu}})).report();
}

ExitCode run_upgrade_status(const Output &output, const std::string &port)
{
    return run_list(output, "bsp_pon_get_upgrade_base_info_web", words_of({{"record.pon_port", port_of(port)}}));
}

} // namespace ponctl
