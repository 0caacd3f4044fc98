// This is ponsim test: scenarios that are run as tests.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "command_line/command_tree.h"

namespace ponsim
{

// The command line of ponsim test, as it is given.
struct TestWords {
    std::vector<std::string> files;
    std::string seeds; // empty: that of each scenario
    std::string until; // empty: the last check and the last event
    std::string junit; // file of the report; empty: none
    std::optional<uint32_t> jobs;
};

void declare_test(command_line::Syntax &command, TestWords &words);

// Runs the scenarios and prints what failed. Returns the exit status: 0 when all expectations hold, 1 when some do not
// or a run failed, and 2 when a scenario is wrong.
int run_test(const TestWords &words);

} // namespace ponsim
