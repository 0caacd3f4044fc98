#include "test_command.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <thread>

#include "laboratory/report.h"
#include "laboratory/run.h"
#include "text/written.h"

namespace ponsim
{
namespace
{

constexpr uint32_t most_jobs = 64;

constexpr char examples[] = R"(
Examples:
  ponsim test campus.toml                    whether what the scenario expects comes true
  ponsim test *.toml --seeds 1-100           the same with a hundred populations
  ponsim test fibre-cut.toml --until 3h      only what is expected of the first three hours
  ponsim test *.toml --junit report.xml      a report for who collects the results of tests

Exit status: 0 when all expectations hold, 1 when some do not, 2 when a scenario or the command line is wrong.
See ponsim-scenario(5).)";

std::optional<std::vector<uint64_t>> read_seeds(const std::string &text)
{
    return text::read_numbers(text, 0, INT64_MAX);
}

std::optional<ModelTime> read_until(const std::string &text)
{
    const std::optional<ModelTime> time = text::read_time(text);
    return time ? time : text::read_time(text + 's');
}

std::string say_unless_seeds(const std::string &text)
{
    return read_seeds(text) ? "" : "expected seeds, as 7 or 1-100, at most " + std::to_string(text::longest_list);
}

std::string say_unless_time(const std::string &text)
{
    return read_until(text) ? "" : "expected seconds, or a time as \"1d 2h 30min 5s\", of at most ten years";
}

void write_file(const std::string &file, const std::string &text)
{
    std::ofstream out(file, std::ios::binary);
    out << text;
    out.close();
    if (!out) throw std::runtime_error(file + ": cannot be written");
}

// Warns of files that expect nothing, because a run of them can fail in no other way than not to run.
void warn_of_nothing(const std::vector<TestRun> &tests)
{
    std::string last;
    for (const TestRun &test : tests)
        if (test.results.empty() && test.error.empty() && test.file != last) {
            fprintf(stderr, "ponsim: %s: there is no [[expect]]: it was run, and nothing was checked\n",
                    test.file.c_str());
            last = test.file;
        }
}

std::string say_unless_variable(const std::string &word)
{
    const size_t equals = word.find('=');
    return equals != word.npos && equals > 0 ? "" : "expected NAME=VALUE";
}

} // namespace

command_line::Operand &VariableWords::declare(command_line::Syntax &command)
{
    return command.option("--set", &words, "The value of a variable of the scenario; may be repeated", "NAME=VALUE")
        .is_checked_by(say_unless_variable);
}

std::vector<Overrides::Variable> VariableWords::read() const
{
    std::vector<Overrides::Variable> variables;
    for (const std::string &word : words) {
        const size_t equals = word.find('=');
        variables.push_back({word.substr(0, equals), word.substr(equals + 1)});
    }
    return variables;
}

void declare_test(command_line::Syntax &command, TestWords &words)
{
    command.argument("FILE", &words.files, "Scenarios").is_required();
    command
        .option("--seeds", &words.seeds, "Run each scenario with these seeds, as 1-100 [that of the scenario]", "LIST")
        .is_checked_by(say_unless_seeds);
    command
        .option("--until", &words.until, "Run up to this model time [the last expectation and the last event]", "TIME")
        .is_checked_by(say_unless_time);
    command.option("--junit", &words.junit, "Write a report in JUnit's XML", "FILE");
    command.option("--jobs", &words.jobs, "Runs at the same time [as many as there are processors]", "N")
        .is_within(1, most_jobs);
    words.variables.declare(command);
    command.footer = examples;
}

int run_test(const TestWords &words)
{
    TestOptions options{.files = words.files, .seeds = {}, .until = {}, .jobs = 1, .variables = {}};
    if (!words.seeds.empty()) options.seeds = read_seeds(words.seeds).value();
    if (!words.until.empty()) options.until = read_until(words.until);
    options.variables = words.variables.read();
    options.jobs = words.jobs.value_or(std::clamp(std::thread::hardware_concurrency(), 1u, most_jobs));
    const std::vector<TestRun> tests = run_tests(options);
    warn_of_nothing(tests);
    fputs(report_of(tests).c_str(), stdout);
    if (!words.junit.empty()) write_file(words.junit, junit_of(tests));
    if (std::ranges::any_of(tests, &TestRun::wrong)) return 2;
    const auto is_bad = [](const TestRun &test) { return test.failed() > 0 || !test.error.empty(); };
    return std::ranges::any_of(tests, is_bad) ? EXIT_FAILURE : EXIT_SUCCESS;
}

} // namespace ponsim
