// ponctl port and ponctl optics.
#include <algorithm>

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
    add_chart(*stats, counted->chart);
    stats->footer("With --watch, the table has what grows how fast.");
    runs(stats, command, counted, run_port_stats);
}

void add_chart(CLI::App &app, ChartOptions &options)
{
    app.add_flag("--chart", options.drawn,
                 "read again and again as with --watch, and draw one quantity: of counters, their growth a second");
    app.add_option("--quantity", options.quantity, "with --chart: what to draw, by its name in JSON")
        ->option_text("NAME")
        ->needs("--chart");
}

bool wants_chart(const CLI::App &app)
{
    const CLI::Option *chart = app.get_option_no_throw("--chart");
    return (chart && chart->count() > 0) ||
           std::ranges::any_of(app.get_subcommands(), [](const CLI::App *chosen) { return wants_chart(*chosen); });
}

void add_optics(CLI::App &app, Command &command)
{
    CLI::App *optics = app.add_subcommand("optics", "Shows what the optical modules of the PON ports measure");
    auto options = std::make_shared<OpticsOptions>();
    optics->add_option("PORT", options->port,
                       "PON port number: the module with its thresholds; all ports in brief when left out");
    optics->add_option("--onu", options->onu, "ONU id: the power that the port receives from it")->type_name("ID");
    optics->add_flag("--measured", options->measured, "with --onu: what the last power measurement found of it");
    add_chart(*optics, options->chart);
    runs(optics, command, options, run_optics);
}

} // namespace ponctl
