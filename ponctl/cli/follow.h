// This file follows what changes: it reads again and again, and prints what is different since the reading before.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/program.h"

namespace ponctl
{

// An Event is printed as a line for people, or as a JSON object.
struct Event {
    std::string line;
    std::string document;
};

// Reads, and adds what has happened since it read last. The first time it has nothing to compare with.
using ReadEvents = std::function<ExitCode(std::vector<Event> &)>;

// Reads with the time between readings that --watch says, as often as --count says. It ends with exit_interrupted when
// an interrupt comes, and with the exit code of a reading that fails. In a dry run there is one reading.
ExitCode follow(const Output &output, const GlobalOptions &global, const ReadEvents &read);

} // namespace ponctl
