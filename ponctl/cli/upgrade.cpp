// ponctl upgrade and ponctl loop.
#include "cli/cli.h"
#include "platform.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

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

void add_seconds(Command &loop, const char *name, const char *brief,
                 ExitCode (*run)(const Output &, const std::string &))
{
    Command &one = loop.add(name, brief);
    std::string &seconds = one.runs(run);
    one.argument("SECONDS", &seconds, "the time in seconds").is_required();
}

} // namespace

void add_upgrade(Command &app)
{
    Command &upgrade = app.add("upgrade", "Upgrades the firmware of ONUs");
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
}

void add_loop(Command &app)
{
    Command &loop = app.add("loop", "Detects forwarding loops behind the ONUs");
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
}

} // namespace ponctl
