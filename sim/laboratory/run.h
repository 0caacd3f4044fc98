// Runs of scenarios that are tests: without sockets and state files, as fast as possible, with every expectation looked
// at when its time has come.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "scenario/scenario.h"

namespace ponsim
{

// A CheckResult says what came of a check.
struct CheckResult {
    std::string olt;
    Check check;
    bool reached = false;                  // the run was long enough
    std::optional<std::string> found = {}; // in place of what was expected; none: the expectation held
};

// Lets the OLTs of a scenario live, up to a time or, without one, to the last check and the last event. Returns the
// results by OLT, and then by time.
std::vector<CheckResult> run_scenario(const Scenario &scenario, std::optional<ModelTime> until);

struct TestOptions {
    std::vector<std::string> files;
    std::vector<uint64_t> seeds; // none: that of each scenario
    std::optional<ModelTime> until;
    uint32_t jobs = 1; // how many runs there are beside each other
    std::vector<Overrides::Variable> variables = {};
};

// A TestRun is the run of a scenario with a seed.
struct TestRun {
    std::string file;
    std::optional<uint64_t> seed;
    bool several_olts = false;
    std::string error = {}; // why there was no run; empty: there was one
    bool wrong = false;     // the error is one of the scenario
    std::vector<CheckResult> results = {};

    uint32_t reached() const;
    uint32_t failed() const;
};

// Returns the runs by file, and then by seed. They do not depend on the number of jobs.
std::vector<TestRun> run_tests(const TestOptions &options);

} // namespace ponsim
