// ponctl batch: the lines of a file as command lines.
#pragma once

#include <istream>
#include <string>

#include "cli/program.h"

namespace ponctl
{

struct BatchOptions {
    std::string file; // - is standard input
    bool keep_going = false;
    bool echo = false;
};

ExitCode run_batch(const Output &output, const BatchOptions &options, const GlobalOptions &global);

// Refuses a command that runs lines where it stands in one of the lines.
void refuse_nested(const GlobalOptions &global, const char *name);

} // namespace ponctl
