// ponctl port: a PON port as a whole, and its counters.
#include <chrono>

#include <unistd.h>

#include "daily.h"
#include "numbers.h"
#include "platform.h"
#include "repeat.h"
#include "report.h"
#include "sections.h"

namespace ponctl
{
namespace
{

using Clock = std::chrono::steady_clock;

struct Counter {
    std::string_view name;
    std::string text;
    double number;
};

std::vector<Counter> counters_of(const Reading &reading)
{
    std::vector<Counter> counters;
    for (const DecodedField &decoded : decode(reading))
        if (is_number(decoded.field->type))
            counters.push_back({decoded.field->name, decoded.text,
                                number_of(*decoded.field, field_bytes(*decoded.field, reading.bytes))});
    return counters;
}

// A counter's growth a second; a counter that fell was cleared.
std::string rate_text(const Counter &now, const std::vector<Counter> &before, double seconds)
{
    for (const Counter &counter : before) {
        if (counter.name != now.name || now.number < counter.number || seconds <= 0) continue;
        char text[64];
        std::snprintf(text, sizeof text, "%.1f", (now.number - counter.number) / seconds);
        return text;
    }
    return "-";
}

void print_rates(const Output &output, const std::vector<Counter> &now, const std::vector<Counter> &before,
                 double seconds)
{
    if (isatty(fileno(output.stream)))
        std::fputs("\033[H\033[J", output.stream);
    else if (!before.empty())
        std::fputc('\n', output.stream);
    Table table({{"COUNTER"}, {"VALUE", Table::Fit::right}, {"A SECOND", Table::Fit::right}});
    for (const Counter &counter : now)
        table.add({std::string(counter.name), counter.text, rate_text(counter, before, seconds)});
    table.print(output);
    std::fflush(output.stream);
}

// Shows the counters with what they grow by, again and again.
ExitCode watch(const Output &output, const char *operation, const std::vector<std::string> &words,
               const PortStatsOptions &options)
{
    if (output.format == Format::hex) throw UsageError("--watch: rates have no bytes to show; take table or json");
    Repeat repeat("--watch", options.interval, options.count);
    std::vector<Counter> before;
    Clock::time_point then;
    while (repeat.next()) {
        const Called called(operation, words);
        const Clock::time_point moment = Clock::now();
        if (!called.good()) return called.report();
        if (output.format == Format::json) {
            show(output, {{{}, {}, &called}});
            std::fflush(output.stream);
            continue;
        }
        std::vector<Counter> now = counters_of(called.block());
        print_rates(output, now, before, std::chrono::duration<double>(moment - then).count());
        before = std::move(now);
        then = moment;
    }
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
    if (options.interval.empty() && !options.count.empty()) throw UsageError("--count: goes with --watch alone");
    const char *operation = options.ge.empty() ? "bsp_debug_8022_pon_stats" : "bsp_debug_8022_ge_stats";
    const auto words =
        words_of({{"port", options.ge.empty() ? number_word("PORT", options.port) : number_word("--ge", options.ge)}});
    return options.interval.empty() ? run_show(output, operation, words) : watch(output, operation, words, options);
}

} // namespace ponctl
