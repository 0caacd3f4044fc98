// Many OLTs of a fleet, which one command line goes to.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "output/output.h"
#include "reach/options.h"

namespace ponctl
{

// A ManyRun is a command line, and how it is done at one OLT.
struct ManyRun {
    std::vector<std::string> words; // of the whole command line
    std::function<int()> act;       // does the command for the OLT that the thread reaches; returns the exit code
    std::function<int(const std::vector<std::string> &words)> run_words; // does another command there
    bool json = false, csv = false;
};

// Does the command at each OLT that is chosen, in a process of its own, and reports what it came to. Returns the exit
// code: 0 when it came to an end everywhere.
int run_on_many(const FleetOptions &options, const FleetRequests &requests, const ManyRun &run, const Output &output);

} // namespace ponctl
