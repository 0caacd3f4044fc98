// This file runs a command once, or again and again, and shows its result in the form that is wanted.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "output/exit_code.h"
#include "output/output.h"

namespace ponctl
{

// An Action is what the command does that the command line chose.
using Action = std::function<ExitCode(const Output &)>;

struct Watching {
    std::string interval; // in seconds
    std::string count;    // number of readings; empty: no end
    std::string title;    // names what is read
};

// Acts, and shows what the action writes. In a dry run it shows the requests instead. When it is watched, it runs again
// until a reading fails, there were enough readings, or an interrupt comes.
ExitCode run(const Action &action, const Output &output, const std::optional<Watching> &watching);

} // namespace ponctl
