// This is ponsim test: scenarios that are run as tests.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "command_line/command_tree.h"
#include "scenario/scenario.h"

namespace ponsim
{

// These are the values that a command line gives to variables of a scenario.
class VariableWords
{
public:
    // Declares the option, and returns it.
    command_line::Operand &declare(command_line::Syntax &command);
    std::vector<Overrides::Variable> read() const;

private:
    std::vector<std::string> words;
};

// The command line of ponsim test, as it is given.
struct TestWords {
    std::vector<std::string> files;
    std::string seeds; // empty: that of each scenario
    std::string until; // empty: the last check and the last event
    std::string junit; // file of the report; empty: none
    std::optional<uint32_t> jobs;
    VariableWords variables;
};

void declare_test(command_line::Syntax &command, TestWords &words);

// Runs the scenarios and prints what failed. Returns the exit status: 0 when all expectations hold, 1 when some do not
// or a run failed, and 2 when a scenario is wrong.
int run_test(const TestWords &words);

} // namespace ponsim
