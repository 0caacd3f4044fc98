// ponctl optics shows what the optical modules measure, now and over time.
#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "board/datastore.h"
#include "call/invocation.h"
#include "cli/chart_options.h"
#include "cli/list_options.h"
#include "cli/program.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/report.h"
#include "output/table.h"
#include "results/history.h"
#include "results/listing.h"
#include "results/operands.h"
#include "results/sections.h"

namespace ponctl
{
namespace
{

struct OpticsOptions {
    std::string port; // empty: all ports
    std::string onu;  // id; shows its power as the port receives it
    bool measured = false;
    ChartOptions chart;
};

// Returns the PON ports that exist, in order.
std::vector<std::string> ports_of(const Invocation &base)
{
    std::vector<std::string> ports;
    const db_handle *rows = base.database();
    for (uint32_t row = 0; rows && row < db_rows(rows); ++row)
        if (const char *port = db_get_text(rows, row, "pon_port")) ports.emplace_back(port);
    return ports;
}

ExitCode show_all(const Output &output)
{
    if (output.format == Format::hex) throw UsageError("PORT: missing; the bytes are those of one port");
    const Invocation base("bsp_pon_exec_get_json_",
                          words_of({{"cmd", "BSP_CMD_VIEW_BASE_INFO_WEB"}, {"pon_port", "0"}}), consent());
    if (!base.good()) return report(base);
    expect_answer(base);
    std::vector<std::pair<std::string, std::unique_ptr<const Invocation>>> modules;
    const auto number = [](const char *name, const char *title, const char *unit) {
        return Listing::Column{name, {title, Table::Fit::right}, catalogue::ColumnType::real, unit};
    };
    Listing listing({number("pon_port", "PORT", ""),
                     number("temperature", "TEMPERATURE", "degC"),
                     number("voltage", "VOLTAGE", "V"),
                     number("bias", "BIAS", "mA"),
                     number("launch_power", "LAUNCH POWER", "dBm"),
                     {"laser", {"LASER"}},
                     {"alarms", {"ALARMS", Table::Fit::wrap, catalogue::Priority::high}}});
    ExitCode code = exit_success;
    for (const std::string &port : ports_of(base)) {
        auto called =
            std::make_unique<const Invocation>("bsp_om_plat_diag_get", words_of({{"pon_port", port}}), consent());
        code = std::max(code, report(*called));
        if (!called->answered()) break;
        if (!called->good()) continue;
        const Reading reading = called->block();
        const auto measured = [&reading](const char *name) {
            return Listing::Cell{field_digits(reading, name), field_text(reading, name)};
        };
        listing.add({{port},
                     measured("temperature"),
                     measured("voltage"),
                     measured("bias"),
                     measured("launch_power"),
                     {field_text(reading, "laser")},
                     {field_text(reading, "alarms")}});
        modules.emplace_back(port, std::move(called));
    }
    listing.print(output, [&modules](JsonText &json, size_t row) {
        const auto &[port, called] = modules[row];
        json->StartObject();
        json.key("pon_port");
        json.number(port);
        for (const catalogue::Field *field : shown_fields(called->block())) {
            json.key(field->name);
            json.field(*field, called->block());
        }
        json->EndObject();
    });
    return code;
}

ExitCode show_port(const Output &output, const std::string &port)
{
    const Invocation diagnostics("bsp_om_plat_diag_get", words_of({{"pon_port", port}}), consent());
    if (!diagnostics.good()) return report(diagnostics);
    // The module of PON port N is in SFP cage N.
    const Invocation module("bsp_sfp_diag_info_get", words_of({{"port", port}}), consent());
    const Invocation quantities("bsp_sfp_diag_info_get_json", words_of({{"port", port}}), consent());
    const std::vector<FieldStyle> of_module{{"vendor"}, {"part"},       {"revision"}, {"serial"},
                                            {"date"},   {"wavelength"}, {"reach"},    {"rate"}};
    return show(output, {{"module", "Module", &module, of_module, true},
                         {"diagnostics", "Diagnostics", &diagnostics},
                         {"quantities", "Quantities and thresholds", &quantities}});
}

// A Source says what is read again and again of a port, or of one ONU there.
struct Source {
    const char *operation;
    std::vector<std::string> words;
};

Source source_of(const OpticsOptions &options)
{
    const std::string port = port_of(options.port);
    if (options.onu.empty()) return {"bsp_om_plat_diag_get", words_of({{"pon_port", port}})};
    return {"bsp_om_plat_diag_rssi_get", words_of({{"pon_port", port},
                                                   {"id", number_word("--onu", options.onu, max_onu_id)},
                                                   {"sel", options.measured ? "1" : "0"}})};
}

ExitCode draw(const Output &output, const OpticsOptions &options)
{
    const Source source = source_of(options);
    return run_chart(output, options.chart,
                     {.operation = source.operation,
                      .words = source.words,
                      .title = "port " + options.port + (options.onu.empty() ? "" : " ONU " + options.onu),
                      .usual = options.onu.empty() ? "temperature" : "received_power",
                      .counts = false});
}

ExitCode run_optics(const Output &output, const OpticsOptions &options)
{
    if (options.port.empty() && (options.chart.drawn || !options.onu.empty()))
        throw UsageError("PORT: missing; --chart and --onu are for one port");
    if (options.measured && options.onu.empty()) throw UsageError("--measured: goes with --onu alone");
    if (options.port.empty()) return show_all(output);
    refuse_selection(output);
    if (options.chart.drawn) return draw(output, options);
    if (options.onu.empty()) return show_port(output, port_of(options.port));
    const Source source = source_of(options);
    return run_show(output, source.operation, source.words);
}

} // namespace

void add_optics(Program &program)
{
    Command &optics = program.tree.add("optics", "Shows what the optical modules of the PON ports measure");
    OpticsOptions &options = optics.runs(run_optics);
    optics.argument("PORT", &options.port,
                    "PON port number: the module with its thresholds; all ports in brief when left out");
    optics.option("--onu", &options.onu, "ONU id: the power that the port receives from it", "ID");
    optics.option("--measured", &options.measured, "with --onu: what the last power measurement found of it");
    add_chart(optics, options.chart);
    add_list_options(program, optics);
}

} // namespace ponctl
