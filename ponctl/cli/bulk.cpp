// ponctl bulk and ponctl arp.
#include "bulk.h"
#include "cli/cli.h"

namespace ponctl
{

void add_arp(CLI::App &app, Command &command)
{
    CLI::App *arp = app.add_subcommand("arp", "Shows the ARP table of a PON port");
    auto port = std::make_shared<std::string>();
    arp->add_option("PORT", *port, "PON port number")->required();
    runs(arp, command, port, run_arp);
}

void add_bulk(CLI::App &app, Command &command)
{
    CLI::App *bulk = app.add_subcommand("bulk", "Shows all ONUs at once, and the OLT with its PON ports");
    bulk->require_subcommand(1);
    CLI::App *optics = bulk->add_subcommand("optics", "Shows the optical diagnostics of ONUs");
    auto port = std::make_shared<std::string>();
    optics->add_option("PORT", *port, "PON port number; all ports when left out");
    runs(optics, command, port, run_bulk_optics);

    const auto add = [&](const char *name, const char *brief, ExitCode (*run)(const Output &)) {
        bulk->add_subcommand(name, brief)->callback([&command, run] { command = run; });
    };
    add("stats", "Shows the performance statistics of all ONUs", run_bulk_stats);
    add("ports", "Shows the PON ports", run_bulk_ports);
    add("olt", "Shows the OLT", run_bulk_olt);
    add("all", "Shows all ONUs in a text", run_bulk_all);
}

} // namespace ponctl
