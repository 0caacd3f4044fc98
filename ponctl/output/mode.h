// The Mode says how the command line runs every command, beside the form of its result.
#pragma once

#include <string>

namespace ponctl
{

struct Mode {
    bool quiet = false;   // no results, and no notes on standard error
    bool dry_run = false; // nothing is changed
    bool planned = false; // the command says what it would do, and only reads
    bool watched = false; // the command runs again and again, so it must change nothing
    bool secrets = false; // passwords are shown
    bool red = false;     // errors on standard error are red
    // The text for standard error waits here until a reading is shown. When it is null, the text does not wait.
    std::string *held = nullptr;
};

// Returns a secret as it is shown: itself, or "***" unless the command line asks for secrets. An empty one stays empty.
std::string shown_secret(const std::string &secret);

// The mode is set before a command runs.
Mode &mode();

} // namespace ponctl
