// ponctl health says how well the OLT is, for people and for monitoring systems.
#include <algorithm>

#include "call/invocation.h"
#include "cli/program.h"
#include "diagnosis/health.h"
#include "output/consent.h"
#include "output/json.h"
#include "output/report.h"
#include "output/table.h"
#include "output/text.h"
#include "results/operands.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

struct HealthOptions {
    std::string warning = "5", critical = "20"; // percent
};

// Asks for one kind of facts. What fails is reported, and leaves the facts unknown.
template <class Take>
bool ask_for(const char *operation, const std::vector<std::string> &words, Take take)
{
    const Invocation called(operation, words, consent());
    if (called.good()) {
        expect_answer(called);
        take(called.database());
    }
    return report(called) == exit_success;
}

void ask_modules(uint32_t ports, HealthFacts &facts)
{
    std::vector<ModuleFact> modules;
    for (uint32_t port = 1; port <= ports; ++port) {
        const bool good = ask_for(
            "bsp_sfp_diag_info_get_json", words_of({{"port", std::to_string(port)}}), [&](const db_handle *rows) {
                if (const auto limits = read_limits(rows)) facts.limits[port] = *limits;
                for (uint32_t row = 0; row < db_rows(rows); ++row)
                    modules.push_back({port, cell_text(rows, row, "quantity"), cell_text(rows, row, "state")});
            });
        if (!good) return;
    }
    facts.modules = std::move(modules);
}

HealthFacts ask_all()
{
    HealthFacts facts;
    uint32_t ports = 0;
    const bool reached = ask_for("bsp_pon_get_basic_info", {}, [&](const db_handle *rows) {
        double seconds = 0;
        int64_t count = 0;
        facts.olt = cell_text(rows, 0, "model") + " " + cell_text(rows, 0, "version");
        if (db_get_real(rows, 0, "uptime", &seconds) == 0) facts.now = static_cast<MilliTime>(seconds * 1000);
        if (db_get_integer(rows, 0, "pon_ports", &count) == 0)
            ports = static_cast<uint32_t>(std::clamp<int64_t>(count, 0, 64));
    });
    if (!reached) return facts; // nobody would answer the other questions
    ask_for("bsp_pon_get_onu_alarm", {"record.pon_port=0"},
            [&](const db_handle *rows) { facts.alarms = read_alarms(rows); });
    ask_for("bsp_pon_exec_get_json_", words_of({{"cmd", "BSP_CMD_VIEW_ONU_INFO_WEB"}, {"pon_port", "0"}}),
            [&](const db_handle *rows) { facts.onus = read_onus(rows); });
    ask_for("bsp_pon_get_onu_optical_diag_data_all", {},
            [&](const db_handle *rows) { facts.light = read_light(rows); });
    ask_modules(ports, facts);
    return facts;
}

void write_health(Json &json, const Health &health)
{
    json->StartObject();
    json.member("condition", word_of(health.condition));
    json.member("code", static_cast<uint32_t>(health.condition));
    json.member("summary", health.summary);
    json.key("checks");
    json->StartArray();
    for (const HealthCheck &check : health.checks) {
        json->StartObject();
        json.member("check", check.name);
        json.member("condition", word_of(check.condition));
        json.member("summary", check.summary);
        json->EndObject();
    }
    json->EndArray();
    json.member("bound", health.bound);
    json.member("online", health.online);
    json.member("offline", health.offline);
    json.member("without_power", health.without_power);
    json.member("waiting", health.waiting);
    json.member("weak_light", health.weak_light);
    json.key("dark_ports");
    json->StartArray();
    for (const uint32_t port : health.dark_ports)
        json->Uint(port);
    json->EndArray();
    json.key("active_alarms");
    json->StartObject();
    for (const char *severity : {"critical", "major", "minor"}) {
        const auto count = health.active_alarms.find(severity);
        json.member(severity, count == health.active_alarms.end() ? 0 : count->second);
    }
    json->EndObject();
    json->EndObject();
}

void print_health(const Output &output, const Health &health)
{
    print_line(output, text::upper_case(word_of(health.condition)) + ": " + health.summary);
    Table table({{"CHECK"}, {"CONDITION"}, {"SUMMARY", Table::Fit::wrap}});
    for (const HealthCheck &check : health.checks)
        table.add({std::string(check.name), std::string(word_of(check.condition)), check.summary});
    table.print(output);
}

ExitCode run_health(const Output &output, const HealthOptions &options)
{
    refuse_hex(output, "a summary");
    const HealthLimits limits{parse_number("--warning", options.warning, 100),
                              parse_number("--critical", options.critical, 100)};
    if (limits.warning > limits.critical) throw UsageError("--warning: more than --critical");
    const Health health = examine(ask_all(), limits);
    if (output.format == Format::json) {
        Json json(output.stream);
        write_health(json, health);
    } else {
        print_health(output, health);
    }
    // The numbers of conditions are exit codes of their own; see the page of this command.
    return static_cast<ExitCode>(health.condition);
}

} // namespace

void add_health(Program &program)
{
    Command &health = program.tree.add("health", "Says how well the OLT is: in one line, by exit code, and in detail");
    HealthOptions &options = health.runs(run_health);
    health.option(
        "--warning", &options.warning,
        "from so many percent of the bound ONUs on that are offline, and not for lost power, it is a warning; 5 "
        "when left out",
        "PERCENT");
    health.option("--critical", &options.critical, "from so many percent on it is critical; 20 when left out",
                  "PERCENT");
    health.footer =
        "It ends with 0 when all is well, with 1 for a warning, with 2 when something is critical, and with 3 "
        "when the service does not answer.";
}

} // namespace ponctl
