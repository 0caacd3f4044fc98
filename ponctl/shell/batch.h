// ponctl batch runs the lines of a file as command lines.
#pragma once

#include <istream>
#include <string>

#include "cli/program.h"

namespace ponctl
{

struct BatchOptions {
    std::string file; // - stands for standard input
    bool keep_going = false;
    bool echo = false;
};

ExitCode run_batch(const Output &output, const BatchOptions &options, const GlobalOptions &global);

// Refuses a command that runs lines when the command itself is in such a line.
void refuse_nested(const GlobalOptions &global, const char *name);

} // namespace ponctl
