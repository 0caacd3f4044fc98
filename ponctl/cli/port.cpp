// ponctl port and ponctl optics.
#include "cli/cli.h"
#include "platform.h"

namespace ponctl
{

void add_port(Command &app)
{
    Command &port = app.add("port", "Lists and shows the PON ports, and counts what they carry");
    port.add("list", "Lists the PON ports with their ONUs and ranging limits").runs(run_port_list);

    Command &show = port.add("show", "Shows a PON port: ONUs, authentication, bandwidth, optics, MAC, PHY");
    std::string &shown = show.runs(run_port_show);
    show.argument("PORT", &shown, "PON port number").is_required();

    Command &stats = port.add("stats", "Shows the counters of a port");
    PortStatsOptions &counted = stats.runs(run_port_stats);
    stats.argument("PORT", &counted.port, "PON port number");
    stats.option("--ge", &counted.ge, "in place of PORT: GE port number", "PORT");
    add_chart(stats, counted.chart);
    stats.footer = "With --watch, the table has what grows how fast.";
}

void add_chart(Command &command, ChartOptions &options)
{
    const auto &chart = command.option(
        std::string(chart_option), &options.drawn,
        "read again and again as with --watch, and draw one quantity: of counters, their growth a second");
    command.option("--quantity", &options.quantity, "with --chart: what to draw, by its name in JSON", "NAME")
        .needs(chart);
}

void add_optics(Command &app)
{
    Command &optics = app.add("optics", "Shows what the optical modules of the PON ports measure");
    OpticsOptions &options = optics.runs(run_optics);
    optics.argument("PORT", &options.port,
                    "PON port number: the module with its thresholds; all ports in brief when left out");
    optics.option("--onu", &options.onu, "ONU id: the power that the port receives from it", "ID");
    optics.option("--measured", &options.measured, "with --onu: what the last power measurement found of it");
    add_chart(optics, options.chart);
}

} // namespace ponctl
