// ponctl bulk and ponctl arp.
#include "bulk.h"
#include "cli/cli.h"

namespace ponctl
{

void add_arp(Command &app)
{
    Command &arp = app.add("arp", "Shows the ARP table of a PON port");
    std::string &port = arp.runs(run_arp);
    arp.argument("PORT", &port, "PON port number").is_required();
}

void add_bulk(Command &app)
{
    Command &bulk = app.add("bulk", "Shows all ONUs at once, and the OLT with its PON ports");
    Command &optics = bulk.add("optics", "Shows the optical diagnostics of ONUs");
    std::string &port = optics.runs(run_bulk_optics);
    optics.argument("PORT", &port, "PON port number; all ports when left out");

    const auto add = [&](const char *name, const char *brief, ExitCode (*run)(const Output &)) {
        bulk.add(name, brief).runs(run);
    };
    add("stats", "Shows the performance statistics of all ONUs", run_bulk_stats);
    add("ports", "Shows the PON ports", run_bulk_ports);
    add("olt", "Shows the OLT", run_bulk_olt);
    add("all", "Shows all ONUs in a text", run_bulk_all);
}

} // namespace ponctl
