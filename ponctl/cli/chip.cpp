// ponctl debug and ponctl i2c.
#include "cli/cli.h"
#include "platform.h"

namespace ponctl
{
namespace
{

void add_view(Command &debug, const DebugView &view)
{
    Command &one = debug.add(view.name, std::string("Shows the ") + view.brief);
    DebugOptions &options = one.runs(run_debug_view);
    options.view = &view;
    one.argument("PORT", &options.port, "port or interface number").is_required();
    if (view.of_either_port) one.option("--ge", &options.ge, "PORT is a GE port; else a PON port");
}

void add_switch(Command &debug, const char *name, const char *brief,
                ExitCode (*run)(const Output &, const DebugSwitchOptions &))
{
    Command &one = debug.add(name, brief);
    DebugSwitchOptions &options = one.runs(run);
    one.argument("STATE", &options.state, "on or off", "on|off").is_required();
    one.argument("PORT", &options.port, "PON port number; all ports when left out");
}

void add_place(Command &one, I2cOptions &options)
{
    one.argument("PORT", &options.port, "SFP cage; that of a PON port has its number").is_required();
    one.argument("ADDRESS", &options.address, "bus address, as 0xa0").is_required();
    one.argument("OFFSET", &options.offset, "first byte of the memory").is_required();
}

} // namespace

void add_debug(Command &app)
{
    Command &debug = app.add("debug", "Shows registers of the PON chip and the interfaces, for engineers");
    for (const DebugView &view : debug_views)
        add_view(debug, view);

    Command &set = debug.add("ge-phy-set", "Sets the PHY of a GE port, all of it at once");
    DebugPhyOptions &options = set.runs(run_debug_ge_phy_set);
    set.argument("PORT", &options.port, "GE port number").is_required();
    set.argument("SETTING", &options.settings,
                 "reset, loopback, auto-negotiation, power-down, isolate, restart-negotiation, full-duplex; or all of "
                 "them as a number, the upper byte of the control register")
        .is_required();

    Command &fdb = debug.add("fdb-dump", "Has the chip's forwarding database written to the service's log");
    DebugFdbOptions &dumped = fdb.runs(run_debug_fdb);
    fdb.argument("PORT", &dumped.port, "PON port number; all ports when left out");
    fdb.option("--entries", &dumped.entries, "which entries; all when left out", "all|dynamic|static");

    add_switch(debug, "ctc-oam", "Switches debug output of CTC OAM", run_debug_ctc_oam);
    add_switch(debug, "onu", "Switches debug output of ONUs", run_debug_onu);
}

void add_i2c(Command &app)
{
    Command &i2c = app.add("i2c", "Reads and writes the memory of the optical modules");

    Command &read = i2c.add("read", "Reads bytes, and shows them by their places in the memory");
    I2cOptions &from = read.runs(run_i2c_read);
    add_place(read, from);
    read.argument("LENGTH", &from.length, "how many bytes").is_required();

    Command &write = i2c.add("write", "Writes bytes");
    I2cOptions &to = write.runs(run_i2c_write);
    add_place(write, to);
    write.argument("BYTES", &to.bytes, "the bytes, in pairs of hexadecimal digits, as 40 or 4001ff").is_required();
}

} // namespace ponctl
