// This file has ponctl bulk and ponctl arp.
#include "call/invocation.h"
#include "cli/list_options.h"
#include "cli/program.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/report.h"
#include "output/text.h"
#include "results/delivered.h"
#include "results/operands.h"

namespace ponctl
{
namespace
{

ExitCode run_arp(const Output &output, const std::string &port)
{
    return run_list(output, "bsp_pon_get_arptable", {"pon_port=" + port_of(port)});
}

ExitCode run_bulk_optics(const Output &output, const std::string &port)
{
    if (port.empty()) return run_list(output, "bsp_pon_get_onu_optical_diag_data_all", {});
    return run_list(output, "bsp_pon_get_onu_optical_diag_by_pon", {"pon_port=" + port_of(port)});
}

ExitCode run_bulk_stats(const Output &output)
{
    return run_list(output, "bsp_pon_get_onu_perf_stat_data_all", {});
}

ExitCode run_bulk_ports(const Output &output)
{
    return run_list(output, "bsp_pon_get_port_info", {});
}

ExitCode run_bulk_olt(const Output &output)
{
    return run_list(output, "bsp_pon_get_basic_info", {});
}

ExitCode run_bulk_all(const Output &output)
{
    const Invocation called("bsp_pon_get_allonuinfo", {}, consent());
    if (called.good()) {
        const std::string_view text = called.text(0);
        print_content(output, {reinterpret_cast<const uint8_t *>(text.data()), text.size()});
    }
    return report(called);
}

} // namespace

void add_arp(Program &program)
{
    Command &arp = program.tree.add("arp", "Shows the ARP table of a PON port");
    std::string &port = arp.runs(run_arp);
    arp.argument("PORT", &port, "PON port number").is_required();
    add_list_options(program, arp);
}

void add_bulk(Program &program)
{
    Command &bulk = program.tree.add("bulk", "Shows all ONUs at once, and the OLT with its PON ports");
    Command &optics = bulk.add("optics", "Shows the optical diagnostics of ONUs");
    std::string &port = optics.runs(run_bulk_optics);
    optics.argument("PORT", &port, "PON port number; all ports when left out");

    const auto add = [&](const char *name, const char *brief, ExitCode (*run)(const Output &)) {
        Command &command = bulk.add(name, brief);
        command.runs(run);
        return &command;
    };
    add("stats", "Shows the performance statistics of all ONUs", run_bulk_stats)->footer =
        "Top talkers: ponctl bulk stats --sort -up_load --limit 10";
    add("ports", "Shows the PON ports", run_bulk_ports);
    add("olt", "Shows the OLT", run_bulk_olt);
    add("all", "Shows all ONUs in a text", run_bulk_all);
    for (const char *name : {"optics", "stats", "ports", "olt"})
        add_list_options(program, bulk, name);
    optics.footer = "Weak light: ponctl bulk optics --where 'rx<-27 or olt_rx_power<-27' --sort rx";
}

} // namespace ponctl
