// How the command line has every command run, beside the form of its result.
#pragma once

#include <string>

namespace ponctl
{

struct Mode {
    bool quiet = false;   // no results, and no notes on standard error
    bool dry_run = false; // nothing is sent
    bool watched = false; // the command runs again and again, so it must change nothing
    bool red = false;     // what went wrong is red on standard error
    // Where what is said on standard error waits until a reading is shown; null: it does not wait.
    std::string *held = nullptr;
};

// Set before a command runs.
Mode &mode();

} // namespace ponctl
