// How a command is run: once or again and again, with its result in the form that is wanted.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "output/exit_code.h"
#include "output/output.h"

namespace ponctl
{

// What the command does that the command line chose.
using Action = std::function<ExitCode(const Output &)>;

struct Watching {
    std::string interval; // seconds
    std::string count;    // of readings; empty: without an end
    std::string title;    // of what is read
};

// Acts, and shows what it writes: in a dry run, its requests in place of that. Where it is watched, it runs
// again until a reading fails, there were enough, or an interrupt comes.
ExitCode run(const Action &action, const Output &output, const std::optional<Watching> &watching);

} // namespace ponctl
