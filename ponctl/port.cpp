// ponctl port: a PON port as a whole, and its counters.
#include "daily.h"
#include "numbers.h"
#include "platform.h"
#include "report.h"
#include "sections.h"

namespace ponctl
{
namespace
{

// Shows the counters, with what they grow by where they are watched.
ExitCode show_growth(const Output &output, const char *operation, const std::vector<std::string> &words,
                     std::map<std::string_view, Rate> &rates)
{
    const Called called(operation, words);
    const Rate::Clock::time_point now = Rate::Clock::now();
    if (!called.good()) return called.report();
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

// The row of a port in the view of all; nothing where there is none.
std::optional<uint32_t> row_of(const Called &base, const std::string &port)
{
    const db_handle *rows = base.database();
    for (uint32_t row = 0; rows && row < db_rows(rows); ++row) {
        const char *cell = db_get_text(rows, row, "pon_port");
        if (cell && port == cell) return row;
    }
    return std::nullopt;
}

} // namespace

ExitCode run_port_show(const Output &output, const std::string &port)
{
    const auto pon_port = words_of({{"pon_port", port_of(port)}});
    const auto any_port = words_of({{"port", port_of(port)}});
    const Called base("bsp_pon_exec_get_json_",
                      words_of({{"cmd", "BSP_CMD_VIEW_BASE_INFO_WEB"}, {"pon_port", port_of(port)}}));
    if (!base.good()) return base.report();
    base.expect_answer();
    const std::optional<uint32_t> row = row_of(base, port_of(port));
    if (!row) {
        complain("there is no PON port " + port_of(port));
        return exit_status;
    }
    const Called authentication("bsp_pon_onu_auth_mode_type_get", pon_port);
    const Called sla("bsp_pon_onu_sla_all_get", pon_port);
    const Called optics("bsp_om_plat_diag_get", pon_port);
    const Called mac("bsp_debug_plat_pon_mac_get", any_port);
    const Called phy("bsp_debug_plat_pon_phy_get", any_port);
    return show(output,
                {{.name = "port", .title = "Port", .called = &base, .row = row},
                 {"authentication", "Authentication", &authentication, {{"arg_word12", "mode", auth_modes}}, true},
                 {"sla", "Bandwidth", &sla},
                 {"optics",
                  "Optics",
                  &optics,
                  {{"temperature"},
                   {"voltage"},
                   {"bias"},
                   {"launch_power"},
                   {"received_power"},
                   {"laser", "laser", off_on},
                   {"tx_fault", "tx_fault", no_yes}},
                  true},
                 {"mac", "MAC", &mac, {{"fec", {}, off_on}}},
                 {"phy", "PHY", &phy, pon_phy_styles()}});
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

} // namespace ponctl
