// ponctl upgrade and ponctl loop.
#include "cli/cli.h"
#include "platform.h"
#include "words.h"

namespace ponctl
{
namespace
{

void add_types(CLI::App &upgrade, Command &command)
{
    upgrade.add_subcommand("types", "Lists the upgrade types")->callback([&command] { command = run_upgrade_types; });

    CLI::App *add = upgrade.add_subcommand("add", "Adds an upgrade type, or puts it in place of one of the same name");
    auto added = std::make_shared<UpgradeAddOptions>();
    add->add_option("NAME", added->name, "name of the type")->required();
    add->add_option("VENDOR", added->vendor, "vendor id of the ONUs that it is for")->required();
    add->add_option("MODEL", added->model, "their model")->required();
    add->add_option("VERSION", added->version, "software version that they get")->required();
    add->add_option("SIZE", added->size, "size of the image in bytes")->required();
    add->add_option("--file", added->file, "file name of the image; it is shown only")->type_name("NAME");
    runs(add, command, added, run_upgrade_add);

    CLI::App *remove = upgrade.add_subcommand("delete", "Deletes an upgrade type");
    auto name = std::make_shared<std::string>();
    remove->add_option("NAME", *name, "name of the type")->required();
    runs(remove, command, name, run_upgrade_delete);

    CLI::App *load = upgrade.add_subcommand("load", "Has the service load upgrade types from a file");
    auto file = std::make_shared<std::string>();
    load->add_option("FILE", *file, "the file, a line a type: name, vendor, model, version and size")->required();
    runs(load, command, file, run_upgrade_load);
}

void add_seconds(CLI::App &loop, Command &command, const char *name, const char *brief,
                 ExitCode (*run)(const Output &, const std::string &))
{
    CLI::App *one = loop.add_subcommand(name, brief);
    auto seconds = std::make_shared<std::string>();
    one->add_option("SECONDS", *seconds, "the time in seconds")->required();
    runs(one, command, seconds, run);
}

} // namespace

void add_upgrade(CLI::App &app, Command &command)
{
    CLI::App *upgrade = app.add_subcommand("upgrade", "Upgrades the firmware of ONUs");
    upgrade->require_subcommand(1);
    add_types(*upgrade, command);

    CLI::App *bind = upgrade->add_subcommand("bind", "Binds an upgrade type to the ONUs of a port, or to some of them");
    auto bound = std::make_shared<UpgradeBindOptions>();
    bind->add_option("PORT", bound->port, "PON port number")->required();
    bind->add_option("NAME", bound->name, "name of the type");
    bind->add_flag("--none", bound->none, "in place of NAME: no type is bound any more");
    bind->add_option("--onus", bound->onus, "ids of the ONUs, as 1-5,7; the whole port when left out")
        ->type_name("IDS");
    runs(bind, command, bound, run_upgrade_bind);

    CLI::App *start = upgrade->add_subcommand("start", "Starts to upgrade the ONUs of a port, or some of them");
    auto started = std::make_shared<UpgradeStartOptions>();
    start->add_option("PORT", started->port, "PON port number; or with the ids of its ONUs, as 1/3-17,20 or 1/all")
        ->required();
    start->add_option("--onu", started->onu, "ONU id on the port; all that can be upgraded when left out")
        ->type_name("ID");
    runs(start, command, started, run_upgrade_start);

    CLI::App *status = upgrade->add_subcommand("status", "Shows versions, types and upgrade runs of the bound ONUs");
    auto port = std::make_shared<std::string>();
    status->add_option("PORT", *port, "PON port number; all ports when left out");
    runs(status, command, port, run_upgrade_status);
}

void add_loop(CLI::App &app, Command &command)
{
    CLI::App *loop = app.add_subcommand("loop", "Detects forwarding loops behind the ONUs");
    loop->require_subcommand(1);
    const auto add = [&](const char *name, const char *brief, ExitCode (*run)(const Output &)) {
        loop->add_subcommand(name, brief)->callback([&command, run] { command = run; });
    };
    add("show", "Shows the settings, and the ports that have or had a loop", run_loop_show);
    add("on", "Switches detection on: ports with a loop are shut", run_loop_on);
    add("off", "Switches detection off", run_loop_off);
    add("recover", "Opens the ports that loops shut, now", run_loop_recover);

    CLI::App *set = loop->add_subcommand("mode", "Sets how shut ports recover");
    auto mode = std::make_shared<std::string>();
    set->add_option("MODE", *mode, "one of " + join(loop_modes))->required()->type_name(join(loop_modes, "|"));
    runs(set, command, mode, run_loop_mode);

    add_seconds(*loop, command, "time", "Sets after which time ports recover automatically", run_loop_time);
    add_seconds(*loop, command, "interval", "Sets the interval between detection packets", run_loop_interval);
}

} // namespace ponctl
