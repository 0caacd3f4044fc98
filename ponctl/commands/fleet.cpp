// ponctl fleet shows the OLTs of a fleet, what happens at them and who asked what of them, and resumes runs.
#include <algorithm>
#include <ctime>

#include "cli/program.h"
#include "cli/repeat.h"
#include "cli/state_folder.h"
#include "fleet/client/client.h"
#include "fleet/rollout/run_file.h"
#include "fleet/selection/selector.h"
#include "output/exit_code.h"
#include "output/json.h"
#include "output/report.h"
#include "output/table.h"
#include "output/text.h"
#include "reach/fleet.h"
#include "text/utf8.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

struct FleetCommandOptions {
    std::string selector; // empty: that of --olt, or all
    std::string run, max_failures;
};

std::string labels_text(const std::map<std::string, std::string> &labels)
{
    std::vector<std::string> words;
    for (const auto &[name, value] : labels)
        words.push_back(name + "=" + value);
    return text::join(words, " ");
}

std::string state_text(const fleet::Olt &olt)
{
    return olt.online ? "online" : "offline";
}

std::string moment_text(uint64_t seconds)
{
    const auto time = static_cast<std::time_t>(seconds);
    std::tm parts{};
    localtime_r(&time, &parts);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &parts);
    return text;
}

void write_olt(Json &json, const fleet::Olt &olt)
{
    const fleet::Inventory &known = olt.inventory;
    json->StartObject();
    json.member("olt", known.olt);
    json.member("state", state_text(olt));
    json.member("bridge", known.bridge);
    json.key("labels");
    json->StartObject();
    for (const auto &[name, value] : known.labels)
        json.member(name, value);
    json->EndObject();
    json.member("model", known.model);
    json.member("firmware", known.firmware);
    json.member("ports", known.ports);
    json.member("online", known.onus.online);
    json.member("offline", known.onus.offline);
    json.member("waiting", known.onus.waiting);
    json.member("version", known.version);
    json.member("catalogue", known.catalogue);
    json.key("at");
    json->Uint64(known.at);
    json->EndObject();
}

// These commands are about the fleet, so --olt says of which OLTs they tell.
fleet::Selector selector_of(const FleetOptions &reached, const FleetCommandOptions &options)
{
    const std::string &given = options.selector.empty() ? reached.olt : options.selector;
    return fleet::Selector(given.empty() ? "all" : given);
}

std::vector<fleet::Olt> chosen(const fleet::Client &client, const fleet::Selector &wanted)
{
    std::vector<fleet::Olt> olts = client.olts();
    std::erase_if(olts, [&](const fleet::Olt &olt) { return !wanted.matches(olt); });
    return olts;
}

ExitCode run_list(const Output &output, const FleetOptions &reached, const FleetCommandOptions &options)
{
    refuse_hex(output, "a list of OLTs");
    const fleet::Selector wanted = selector_of(reached, options);
    fleet::Client client(fleet_settings(reached.settings));
    connect(client);
    const std::vector<fleet::Olt> olts = chosen(client, wanted);
    if (output.format == Format::json) {
        Json json(output.stream);
        json->StartArray();
        for (const fleet::Olt &olt : olts)
            write_olt(json, olt);
        json->EndArray();
        return exit_success;
    }
    Table table({{"OLT"},
                 {"STATE"},
                 {"MODEL"},
                 {"FIRMWARE"},
                 {"PORTS", Table::Fit::right},
                 {"ONLINE", Table::Fit::right},
                 {"OFFLINE", Table::Fit::right},
                 {"WAITING", Table::Fit::right},
                 {"LABELS"},
                 {"BRIDGE", Table::Fit::whole, catalogue::Priority::low},
                 {"READ", Table::Fit::whole, catalogue::Priority::low}});
    for (const fleet::Olt &olt : olts) {
        const fleet::Inventory &known = olt.inventory;
        table.add({known.olt, state_text(olt), known.model, known.firmware, std::to_string(known.ports),
                   std::to_string(known.onus.online), std::to_string(known.onus.offline),
                   std::to_string(known.onus.waiting), labels_text(known.labels), known.bridge, moment_text(known.at)});
    }
    table.print(output);
    return exit_success;
}

// Shows lines as they come, until an interrupt.
ExitCode follow(const Output &output, const FleetOptions &reached, const FleetCommandOptions &options, bool audit)
{
    const fleet::Selector wanted = selector_of(reached, options);
    fleet::Client client(fleet_settings(reached.settings));
    const auto show = [&](const std::string &olt, std::string_view line) {
        const std::optional<fleet::Olt> known = client.find(olt);
        if (!known || !wanted.matches(*known)) return;
        const std::string text = text::printable(line);
        if (output.format == Format::json)
            std::fprintf(output.stream, "{\"olt\":\"%s\",\"%s\":%s}\n", olt.c_str(), audit ? "audit" : "event",
                         text.c_str());
        else
            std::fprintf(output.stream, "%s  %s\n", olt.c_str(), text.c_str());
        std::fflush(output.stream);
    };
    if (audit)
        client.hear_audit(show);
    else
        client.hear_events(show);
    sigset_t ending, before;
    sigemptyset(&ending);
    sigaddset(&ending, SIGINT);
    sigaddset(&ending, SIGTERM);
    sigprocmask(SIG_BLOCK, &ending, &before);
    connect(client);
    constexpr timespec at_once{};
    constexpr uint32_t turn = 100; // milliseconds
    while (sigtimedwait(&ending, nullptr, &at_once) < 0)
        client.turn(turn);
    sigprocmask(SIG_SETMASK, &before, nullptr);
    return exit_success;
}

std::filesystem::path runs_folder()
{
    const std::filesystem::path folder = state_folder();
    if (folder.empty()) throw Error("there is no folder in which runs are kept: HOME is not set");
    return folder / "runs";
}

ExitCode run_runs(const Output &output)
{
    refuse_hex(output, "a list of runs");
    const std::vector<std::string> ids = fleet::runs_in(runs_folder());
    if (output.format == Format::json) {
        Json json(output.stream);
        json->StartArray();
        for (const std::string &id : ids)
            json.text(id);
        json->EndArray();
        return exit_success;
    }
    for (const std::string &id : ids)
        print_line(output, id);
    return exit_success;
}

// The words of a run are a whole command line, so it is run as one.
ExitCode run_resume(const Output &, const FleetCommandOptions &options)
{
    const std::vector<std::string> words = [&] {
        const fleet::RunFile file(runs_folder(), options.run, static_cast<uint64_t>(std::time(nullptr)));
        return file.run().words;
    }();
    GlobalOptions defaults;
    defaults.fleet.resumed = options.run;
    defaults.fleet.resumed_max_failures = options.max_failures;
    return static_cast<ExitCode>(run_line(words, defaults));
}

} // namespace

void add_fleet(Program &program)
{
    Command &fleet = program.tree.add("fleet", "Shows the OLTs of a fleet, and resumes what went to many of them");
    const FleetOptions &reached = program.global.fleet;
    const auto add = [&](const char *name, const char *brief, auto act) -> Command & {
        Command &command = fleet.add(name, brief);
        FleetCommandOptions &options =
            command.runs<FleetCommandOptions>([&reached, act](const Output &output, const FleetCommandOptions &given) {
                return act(output, reached, given);
            });
        program.askless.push_back(&command);
        command.argument("SELECTOR", &options.selector,
                         "which OLTs, as --olt takes them; those of --olt, or all, when left out");
        return command;
    };
    add("list", "Lists the OLTs: state, model, ONUs and labels", run_list);
    program.followers.push_back(
        &add("watch", "Shows what happens at the OLTs, as it happens",
             [](const auto &output, const auto &to, const auto &given) { return follow(output, to, given, false); }));
    program.followers.push_back(
        &add("audit", "Shows who asks what of the OLTs, as it happens",
             [](const auto &output, const auto &to, const auto &given) { return follow(output, to, given, true); }));
    Command &runs = fleet.add("runs", "Lists the runs that are kept, the newest first");
    runs.run = run_runs;
    program.askless.push_back(&runs);
    Command &resumed = fleet.add("resume", "Goes on with a run that ended early; nothing is done twice");
    FleetCommandOptions &options = resumed.runs(run_resume);
    resumed.argument("RUN", &options.run, "the id that the run was given").is_required();
    resumed.option("--max-failures", &options.max_failures, "in place of those that the run began with", "N|PERCENT%");
    program.line_runners.push_back(&resumed);
}

} // namespace ponctl
