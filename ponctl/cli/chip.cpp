// ponctl debug and ponctl i2c.
#include "cli/cli.h"
#include "platform.h"

namespace ponctl
{
namespace
{

void add_view(CLI::App &debug, Command &command, const DebugView &view)
{
    CLI::App *one = debug.add_subcommand(view.name, std::string("Shows the ") + view.brief);
    auto options = std::make_shared<DebugOptions>();
    options->view = &view;
    one->add_option("PORT", options->port, "port or interface number")->required();
    if (view.of_either_port) one->add_flag("--ge", options->ge, "PORT is a GE port; else a PON port");
    runs(one, command, options, run_debug_view);
}

void add_switch(CLI::App &debug, Command &command, const char *name, const char *brief,
                ExitCode (*run)(const Output &, const DebugSwitchOptions &))
{
    CLI::App *one = debug.add_subcommand(name, brief);
    auto options = std::make_shared<DebugSwitchOptions>();
    one->add_option("STATE", options->state, "on or off")->required()->type_name("on|off");
    one->add_option("PORT", options->port, "PON port number; all ports when left out");
    runs(one, command, options, run);
}

void add_place(CLI::App &one, I2cOptions &options)
{
    one.add_option("PORT", options.port, "SFP cage; that of a PON port has its number")->required();
    one.add_option("ADDRESS", options.address, "bus address, as 0xa0")->required();
    one.add_option("OFFSET", options.offset, "first byte of the memory")->required();
}

} // namespace

void add_debug(CLI::App &app, Command &command)
{
    CLI::App *debug = app.add_subcommand("debug", "Shows registers of the PON chip and the interfaces, for engineers");
    debug->require_subcommand(1);
    for (const DebugView &view : debug_views)
        add_view(*debug, command, view);

    CLI::App *set = debug->add_subcommand("ge-phy-set", "Sets the PHY of a GE port, all of it at once");
    auto options = std::make_shared<DebugPhyOptions>();
    set->add_option("PORT", options->port, "GE port number")->required();
    set->add_option(
           "SETTING", options->settings,
           "reset, loopback, auto-negotiation, power-down, isolate, restart-negotiation, full-duplex; or all of "
           "them as a number, the upper byte of the control register")
        ->required();
    runs(set, command, options, run_debug_ge_phy_set);

    CLI::App *fdb =
        debug->add_subcommand("fdb-dump", "Has the chip's forwarding database written to the service's log");
    auto dumped = std::make_shared<DebugFdbOptions>();
    fdb->add_option("PORT", dumped->port, "PON port number; all ports when left out");
    fdb->add_option("--entries", dumped->entries, "which entries; all when left out")->type_name("all|dynamic|static");
    runs(fdb, command, dumped, run_debug_fdb);

    add_switch(*debug, command, "ctc-oam", "Switches debug output of CTC OAM", run_debug_ctc_oam);
    add_switch(*debug, command, "onu", "Switches debug output of ONUs", run_debug_onu);
}

void add_i2c(CLI::App &app, Command &command)
{
    CLI::App *i2c = app.add_subcommand("i2c", "Reads and writes the memory of the optical modules");
    i2c->require_subcommand(1);

    CLI::App *read = i2c->add_subcommand("read", "Reads bytes, and shows them by their places in the memory");
    auto from = std::make_shared<I2cOptions>();
    add_place(*read, *from);
    read->add_option("LENGTH", from->length, "how many bytes")->required();
    runs(read, command, from, run_i2c_read);

    CLI::App *write = i2c->add_subcommand("write", "Writes bytes");
    auto to = std::make_shared<I2cOptions>();
    add_place(*write, *to);
    write->add_option("BYTES", to->bytes, "the bytes, in pairs of hexadecimal digits, as 40 or 4001ff")->required();
    runs(write, command, to, run_i2c_write);
}

} // namespace ponctl
