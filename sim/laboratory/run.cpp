#include "laboratory/run.h"

#include <algorithm>
#include <atomic>
#include <thread>

#include "engine/simulator.h"

namespace ponsim
{
namespace
{

void run_olt(const OltScenario &olt, std::optional<ModelTime> until, std::vector<CheckResult> &results)
{
    Store store({}, false);
    Simulator simulator(store, {}, std::make_shared<const OltScenario>(olt));
    for (const Check &check : olt.checks) {
        CheckResult &result = results.emplace_back(CheckResult{olt.name, check});
        if (until && check.at > *until) continue;
        simulator.advance(check.at);
        result.reached = true;
        result.found = check.expectation->objection(simulator.olt());
    }
    const ModelTime last_event = olt.events.empty() ? 0 : olt.events.back().at;
    simulator.advance(std::max(until.value_or(last_event), simulator.olt().now()));
}

void run(TestRun &test, const TestOptions &options)
{
    try {
        const Scenario scenario = read_scenario_file(test.file, {.seed = test.seed, .variables = options.variables});
        test.seed = scenario.seed;
        test.several_olts = scenario.olts.size() > 1;
        test.results = run_scenario(scenario, options.until);
    } catch (const ScenarioError &error) {
        test.wrong = true;
        test.error = error.what();
    } catch (const std::exception &error) {
        test.error = error.what();
    }
}

} // namespace

std::vector<CheckResult> run_scenario(const Scenario &scenario, std::optional<ModelTime> until)
{
    std::vector<CheckResult> results;
    for (const OltScenario &olt : scenario.olts)
        run_olt(olt, until, results);
    return results;
}

uint32_t TestRun::reached() const
{
    return static_cast<uint32_t>(std::ranges::count_if(results, &CheckResult::reached));
}

uint32_t TestRun::failed() const
{
    return static_cast<uint32_t>(
        std::ranges::count_if(results, [](const CheckResult &result) { return result.found.has_value(); }));
}

std::vector<TestRun> run_tests(const TestOptions &options)
{
    std::vector<TestRun> tests;
    for (const std::string &file : options.files) {
        for (const uint64_t seed : options.seeds)
            tests.push_back({file, seed});
        if (options.seeds.empty()) tests.push_back({file, std::nullopt});
    }
    std::atomic<size_t> next = 0;
    const auto work = [&] {
        for (size_t index = next++; index < tests.size(); index = next++)
            run(tests[index], options);
    };
    std::vector<std::jthread> workers;
    for (size_t worker = 1; worker < std::min<size_t>(options.jobs, tests.size()); ++worker)
        workers.emplace_back(work);
    work();
    for (std::jthread &worker : workers)
        worker.join();
    return tests;
}

} // namespace ponsim
