// ponctl port shows the PON ports, and what they carry.
#include <map>
#include <memory>

#include "board/datastore.h"
#include "call/codec/numbers.h"
#include "call/invocation.h"
#include "cli/chart_options.h"
#include "cli/list_options.h"
#include "cli/program.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/mode.h"
#include "output/report.h"
#include "output/table.h"
#include "results/delivered.h"
#include "results/history.h"
#include "results/operands.h"
#include "results/sections.h"

namespace ponctl
{
namespace
{

struct PortStatsOptions {
    std::string port; // a PON port
    std::string ge;   // or a GE port; one of the two is given
    ChartOptions chart;
    std::shared_ptr<std::map<std::string_view, Rate>> rates = std::make_shared<std::map<std::string_view, Rate>>();
};

// Shows the counters. When they are watched, shows their growth, too.
ExitCode show_growth(const Output &output, const char *operation, const std::vector<std::string> &words,
                     std::map<std::string_view, Rate> &rates)
{
    const Invocation called(operation, words, consent());
    const Rate::Clock::time_point now = Rate::Clock::now();
    if (!called.good()) return report(called);
    Table table({{"COUNTER"}, {"VALUE", Table::Fit::right}, {"A SECOND", Table::Fit::right}});
    const Reading reading = called.block();
    for (const DecodedField &decoded : decode(reading)) {
        const catalogue::Field &field = *decoded.field;
        if (!is_number(field.type)) continue;
        const auto rate = rates[field.name].next(number_of(field, field_bytes(field, reading.bytes)), now);
        table.add({std::string(field.name), decoded.text, rate ? rate_text(*rate) : "-"});
    }
    table.print(output);
    return exit_success;
}

// Returns the row of a port in the view of all ports, or nothing when there is none.
std::optional<uint32_t> row_of(const Invocation &base, const std::string &port)
{
    const db_handle *rows = base.database();
    for (uint32_t row = 0; rows && row < db_rows(rows); ++row) {
        const char *cell = db_get_text(rows, row, "pon_port");
        if (cell && port == cell) return row;
    }
    return std::nullopt;
}

ExitCode run_port_show(const Output &output, const std::string &port)
{
    const auto pon_port = words_of({{"pon_port", port_of(port)}});
    const auto any_port = words_of({{"port", port_of(port)}});
    const Invocation base("bsp_pon_exec_get_json_",
                          words_of({{"cmd", "BSP_CMD_VIEW_BASE_INFO_WEB"}, {"pon_port", port_of(port)}}), consent());
    if (!base.good()) return report(base);
    expect_answer(base);
    const std::optional<uint32_t> row = row_of(base, port_of(port));
    if (!row) {
        complain("there is no PON port " + port_of(port));
        return exit_status;
    }
    const Invocation authentication("bsp_pon_onu_auth_mode_type_get", pon_port, consent());
    const Invocation sla("bsp_pon_onu_sla_all_get", pon_port, consent());
    const Invocation optics("bsp_om_plat_diag_get", pon_port, consent());
    const Invocation mac("bsp_debug_plat_pon_mac_get", any_port, consent());
    const Invocation phy("bsp_debug_plat_pon_phy_get", any_port, consent());
    return show(
        output,
        {{.name = "port", .title = "Port", .called = &base, .row = row},
         {"authentication", "Authentication", &authentication, {{"mode"}}, true},
         {"sla", "Bandwidth", &sla},
         {"optics",
          "Optics",
          &optics,
          {{"temperature"}, {"voltage"}, {"bias"}, {"launch_power"}, {"received_power"}, {"laser"}, {"tx_fault"}},
          true},
         {"mac", "MAC", &mac},
         {"phy", "PHY", &phy}});
}

ExitCode run_port_stats(const Output &output, const PortStatsOptions &options)
{
    if (options.port.empty() == options.ge.empty()) throw UsageError("which port? give either PORT or --ge PORT");
    const bool pon = options.ge.empty();
    const char *operation = pon ? "bsp_debug_8022_pon_stats" : "bsp_debug_8022_ge_stats";
    const auto words = words_of({{"port", pon ? number_word("PORT", options.port) : number_word("--ge", options.ge)}});
    if (options.chart.drawn)
        return run_chart(output, options.chart,
                         {.operation = operation,
                          .words = words,
                          .title = pon ? "port " + options.port : "GE port " + options.ge,
                          .usual = "in_octets",
                          .counts = true});
    if (mode().watched && output.format == Format::table) return show_growth(output, operation, words, *options.rates);
    return run_show(output, operation, words);
}

ExitCode run_port_list(const Output &output)
{
    return run_list(output, "bsp_pon_exec_get_json_",
                    words_of({{"cmd", "BSP_CMD_VIEW_BASE_INFO_WEB"}, {"pon_port", "0"}}));
}

} // namespace

void add_port(Program &program)
{
    Command &port = program.tree.add("port", "Lists and shows the PON ports, and counts what they carry");
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
    add_list_options(program, port, "list");
}

} // namespace ponctl
