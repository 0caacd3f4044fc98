// ponctl port and ponctl optics.
#include "cli/cli.h"
#include "platform.h"

namespace ponctl
{

void add_port(CLI::App &app, Command &command)
{
    CLI::App *port = app.add_subcommand("port", "Lists and shows the PON ports, and counts what they carry");
    port->require_subcommand(1);
    port->add_subcommand("list", "Lists the PON ports with their ONUs and ranging limits")->callback([&command] {
        command = run_port_list;
    });

    CLI::App *show =
        port->add_subcommand("show", "Shows a PON port: ONUs, authentication, bandwidth, optics, MAC, PHY");
    auto shown = std::make_shared<std::string>();
    show->add_option("PORT", *shown, "PON port number")->required();
    runs(show, command, shown, run_port_show);

    CLI::App *stats = port->add_subcommand("stats", "Shows the counters of a port");
    auto counted = std::make_shared<PortStatsOptions>();
    stats->add_option("PORT", counted->port, "PON port number");
    stats->add_option("--ge", counted->ge, "in place of PORT: GE port number")->type_name("PORT");
    stats->add_option("--watch", counted->interval, "seconds between readings: go on, and show what grows how fast")
        ->type_name("SECONDS");
    stats->add_option("--count", counted->count, "with --watch: end after so many readings; else with Ctrl-C")
        ->type_name("N");
    runs(stats, command, counted, run_port_stats);
}

void add_optics(CLI::App &app, Command &command)
{
    CLI::App *optics = app.add_subcommand("optics", "Shows what the optical modules of the PON ports measure");
    auto options = std::make_shared<OpticsOptions>();
    optics->add_option("PORT", options->port,
                       "PON port number: the module with its thresholds; all ports in brief when left out");
    optics->add_option("--onu", options->onu, "ONU id: the power that the port receives from it")->type_name("ID");
    optics->add_flag("--measured", options->measured, "with --onu: what the last power measurement found of it");
    optics->add_flag("--watch", options->watched,
                     "go on reading, and draw a chart; where the output is no terminal, a line a reading");
    optics
        ->add_option("--quantity", options->quantity,
                     "with --watch: what to draw; temperature when left out, of an ONU received_power")
        ->type_name("NAME");
    optics->add_option("--interval", options->interval, "with --watch: seconds between readings; 1 when left out")
        ->type_name("SECONDS");
    optics->add_option("--count", options->count, "with --watch: end after so many readings; else with Ctrl-C")
        ->type_name("N");
    runs(optics, command, options, run_optics);
}

} // namespace ponctl
