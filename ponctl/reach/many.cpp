#include "reach/many.h"

#include <algorithm>
#include <ctime>
#include <iostream>
#include <map>
#include <set>

#include <sys/ioctl.h>
#include <unistd.h>

#include "fleet/client/client.h"
#include "fleet/rollout/report.h"
#include "fleet/rollout/rollout.h"
#include "fleet/rollout/run_file.h"
#include "fleet/selection/selector.h"
#include "output/exit_code.h"
#include "output/interrupts.h"
#include "output/report.h"
#include "reach/fleet.h"
#include "reach/workers.h"
#include "text/utf8.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

using fleet::Result;
using fleet::Results;
using fleet::State;

constexpr int turning = 200; // milliseconds
constexpr std::string_view default_check = "health";

size_t width_of(const Output &output)
{
    winsize size{};
    const bool is_known = output.terminal && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0;
    return is_known ? size.ws_col : 0;
}

fleet::RolloutOptions read_options(const FleetOptions &given)
{
    fleet::RolloutOptions options;
    if (!given.concurrency.empty()) options.concurrency = fleet::read_concurrency(given.concurrency);
    if (!given.limit.empty()) options.limit = fleet::read_limit(given.limit);
    if (!given.waves.empty()) options.waves = fleet::read_waves(given.waves);
    if (!given.max_failures.empty()) options.max_failures = fleet::read_max_failures(given.max_failures);
    options.check = given.check.empty() && !given.waves.empty() ? std::string(default_check) : given.check;
    return options;
}

// Returns the plan of a run with another bound.
fleet::Plan with_bound(const fleet::Run &run, const std::string &max_failures)
{
    fleet::RolloutOptions options = run.options;
    options.max_failures = fleet::read_max_failures(max_failures);
    options.limit.reset(); // the plan has the OLTs that it left
    std::vector<std::string> olts;
    for (const std::vector<std::string> &wave : run.plan.waves)
        olts.insert(olts.end(), wave.begin(), wave.end());
    fleet::Plan plan = run.plan;
    plan.most_failures = fleet::plan_for(olts, options).most_failures;
    return plan;
}

std::vector<std::string> names_of(const fleet::Client &client, const std::string &selector)
{
    const std::vector<fleet::Olt> olts = client.olts();
    if (olts.empty()) throw UsageError("--olt: the broker knows no OLTs; a bridge tells of them when it is there");
    return fleet::Selector(selector).choose(olts);
}

// Writes the rows of each OLT behind its name.
void print_csv(std::FILE *stream, const Results &results, bool headings)
{
    bool first = headings;
    for (const auto &[olt, result] : results) {
        size_t at = 0;
        bool heading = headings;
        while (at < result.output.size()) {
            size_t end = at;
            for (bool quoted = false; end < result.output.size() && (quoted || result.output[end] != '\n'); ++end)
                if (result.output[end] == '"') quoted = !quoted;
            const std::string_view row = std::string_view(result.output).substr(at, end - at);
            if (!heading || first)
                std::fprintf(stream, "%s,%.*s\n", heading ? "olt" : olt.c_str(), static_cast<int>(row.size()),
                             row.data());
            first = first && !heading;
            heading = false;
            at = end + 1;
        }
    }
}

// A Run goes on from wave to wave.
class Run
{
public:
    Run(const FleetOptions &options, const fleet::RolloutOptions &rollout_options, const FleetRequests &requests,
        const ManyRun &wanted, const Output &output);

    int go();

private:
    void begin_anew(const FleetOptions &options);
    void open_file();
    void before_change(const std::string &olt);
    bool ask(const std::string &olt, const std::string &preview, const std::string &action);
    void take(const WorkerEnd &ended);
    void show_progress();
    void clear_progress() const;
    std::map<std::string, int> check(const std::vector<std::string> &olts);
    bool is_worse(const std::map<std::string, int> &after) const;
    std::vector<std::string> wave_olts() const { return rollout->plan().waves[rollout->wave()]; }
    int finish(bool interrupted);

    const FleetRequests &requests;
    const ManyRun &wanted;
    const Output &output;
    fleet::Client client;
    fleet::Run run;
    std::optional<fleet::RunFile> file;
    std::optional<fleet::Rollout> rollout;
    Results results;
    std::map<std::string, int> healthy; // what the check came to before a wave
    std::optional<size_t> checked_wave; // the wave that it was of
    std::optional<bool> consent;        // of the user, for all OLTs
    bool shows_progress;
};

Run::Run(const FleetOptions &options, const fleet::RolloutOptions &rollout_options,
         const FleetRequests &wanted_requests, const ManyRun &wanted_run, const Output &wanted_output)
    : requests(wanted_requests),
      wanted(wanted_run),
      output(wanted_output),
      client(fleet_settings(options.settings)),
      shows_progress(isatty(STDERR_FILENO))
{
    connect(client);
    if (options.resumed.empty()) {
        begin_anew(options);
        run.options = rollout_options;
        run.plan = fleet::plan_for(names_of(client, options.olt), rollout_options);
        rollout.emplace(run.plan);
        return;
    }
    file.emplace(requests.runs, options.resumed, static_cast<uint64_t>(std::time(nullptr)));
    run = file->run();
    if (!options.resumed_max_failures.empty()) run.plan = with_bound(run, options.resumed_max_failures);
    results = file->progress().ended;
    rollout.emplace(run.plan, file->progress());
}

void Run::begin_anew(const FleetOptions &options)
{
    run.at = static_cast<uint64_t>(std::time(nullptr));
    run.id = fleet::new_run_id(run.at);
    run.words = wanted.words;
    run.selector = options.olt;
}

// What only reads leaves nothing to resume. So the file is made when something is about to be changed.
void Run::open_file()
{
    if (file) return;
    if (requests.runs.empty()) throw Error("there is no folder to keep the run in: HOME is not set");
    std::filesystem::create_directories(requests.runs);
    std::filesystem::permissions(requests.runs, std::filesystem::perms::owner_all);
    file.emplace(requests.runs, run);
    for (const auto &[olt, result] : results)
        file->ended(olt, result);
}

void Run::before_change(const std::string &olt)
{
    open_file();
    file->begun(std::span(&olt, 1));
}

bool Run::ask(const std::string &olt, const std::string &preview, const std::string &action)
{
    if (consent) return *consent;
    clear_progress();
    const size_t others = run.plan.size() - 1;
    if (!preview.empty()) std::cerr << text::printable(preview, "\n");
    std::cerr << "ponctl: " << text::printable(olt) << ": " << text::printable(action);
    if (others > 0)
        std::cerr << ", and what this command does to " << others << " other OLT" << (others == 1 ? "" : "s");
    std::cerr << "? [y/N] " << std::flush;
    std::string answer;
    std::getline(std::cin, answer);
    consent = answer == "y" || answer == "yes";
    if (!*consent) rollout->stop("nothing was permitted");
    return *consent;
}

void Run::take(const WorkerEnd &ended)
{
    results[ended.olt] = ended.result;
    if (file) file->ended(ended.olt, ended.result);
    rollout->ended(ended.olt, ended.result.state);
}

void Run::clear_progress() const
{
    if (shows_progress) std::cerr << "\r\033[K" << std::flush;
}

void Run::show_progress()
{
    if (!shows_progress) return;
    const size_t all = run.plan.size(), begun = all - rollout->waiting() - rollout->running();
    std::cerr << "\r\033[K" << begun << " of " << all << " OLTs";
    if (run.plan.waves.size() > 1) std::cerr << ", wave " << rollout->wave() + 1 << " of " << run.plan.waves.size();
    const size_t bad = begun - std::min(begun, rollout->count(State::done));
    if (bad > 0) std::cerr << ", " << bad << " not well";
    if (rollout->running() > 0) std::cerr << ", " << rollout->running() << " at work";
    std::cerr << std::flush;
}

// Returns what the check between waves comes to at each OLT.
std::map<std::string, int> Run::check(const std::vector<std::string> &olts)
{
    std::map<std::string, int> codes;
    Workers workers(
        client,
        {.run = run.id + "-check",
         .timeout = requests.timeout,
         .before_change = [](const std::string &) { throw UsageError("--check: a check between waves only reads"); },
         .answer = {}});
    const std::vector<std::string> words = text::split(run.options.check, ' ');
    size_t next = 0;
    while (codes.size() < olts.size()) {
        for (; next < olts.size() && workers.running() < run.plan.concurrency; ++next)
            workers.start(olts[next], [&] { return wanted.run_words(words); });
        for (const WorkerEnd &ended : workers.turn(turning))
            codes[ended.olt] = ended.result.state == State::unreachable ? exit_ipc : ended.result.exit;
    }
    return codes;
}

bool Run::is_worse(const std::map<std::string, int> &after) const
{
    size_t worse = 0;
    for (const auto &[olt, code] : after) {
        const auto before = healthy.find(olt);
        if (before == healthy.end() || code <= before->second) continue;
        ++worse;
        complain(olt + ": the check \"" + run.options.check + "\" ended with " + std::to_string(code) + ", and with " +
                 std::to_string(before->second) + " before its wave");
    }
    return worse > run.plan.most_failures.value_or(0);
}

int Run::go()
{
    const CountedInterrupts interrupts;
    WorkerRules rules{.run = run.id,
                      .timeout = requests.timeout,
                      .before_change = [this](const std::string &olt) { before_change(olt); },
                      .answer = {}};
    if (isatty(STDIN_FILENO))
        rules.answer = [this](const auto &olt, const auto &preview, const auto &action) {
            return ask(olt, preview, action);
        };
    Workers workers(client, rules);
    while (!rollout->is_over()) {
        if (interrupts.count() > 0) rollout->stop("it was interrupted");
        if (interrupts.count() > 1) break;
        if (run.plan.checked && rollout->stopped().empty() && checked_wave != rollout->wave()) {
            healthy = check(wave_olts());
            checked_wave = rollout->wave();
        }
        for (const std::string &olt : rollout->next())
            workers.start(olt, wanted.act);
        if (const std::optional<size_t> wave = rollout->check_due()) {
            const bool good = !is_worse(check(run.plan.waves[*wave]));
            if (file) file->checked(*wave, good ? 0 : 1);
            rollout->checked(good);
            continue;
        }
        for (const WorkerEnd &ended : workers.turn(turning))
            take(ended);
        show_progress();
    }
    clear_progress();
    return finish(interrupts.count() > 0);
}

int Run::finish(bool interrupted)
{
    if (wanted.json)
        std::fprintf(output.stream, "%s\n", fleet::report_json(results).c_str());
    else if (wanted.csv)
        print_csv(output.stream, results, output.headings);
    else
        std::fputs(fleet::report_text(results, width_of(output)).c_str(), output.stream);
    std::fflush(output.stream);
    const size_t missing = run.plan.size() - results.size();
    note(fleet::totals_text(results, missing));
    if (wanted.csv)
        for (const auto &[olt, result] : results)
            if (!result.errors.empty()) complain(olt + ": " + result.errors);
    size_t open = missing;
    bool unsure = false, failed = false;
    for (const auto &[olt, result] : results) {
        if (!fleet::is_final(result.state)) ++open;
        unsure |= result.state == State::unknown || result.state == State::unreachable;
        failed |= result.state != State::done;
    }
    if (!rollout->stopped().empty()) complain("the run ends early: " + rollout->stopped());
    if (file) {
        file->over(open > 0 ? (rollout->stopped().empty() ? "not all OLTs came to an end" : rollout->stopped()) : "");
        if (open > 0)
            complain("`ponctl fleet resume " + run.id + "` goes on with " + std::to_string(open) + " OLT" +
                     (open == 1 ? "" : "s") + "; nothing is done twice");
    }
    if (interrupted) return exit_interrupted;
    if (unsure) return exit_ipc;
    return failed || missing > 0 ? exit_status : exit_success;
}

} // namespace

int run_on_many(const FleetOptions &options, const FleetRequests &requests, const ManyRun &wanted, const Output &output)
{
    // What is wrong with the command line is said before anybody is asked.
    if (options.resumed.empty()) fleet::Selector(options.olt);
    const fleet::RolloutOptions rollout_options = read_options(options);
    fleet::plan_for({options.olt}, rollout_options);
    return Run(options, rollout_options, requests, wanted, output).go();
}

} // namespace ponctl
