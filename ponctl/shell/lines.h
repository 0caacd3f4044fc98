// Lines runs typed lines. Each of them is a command line in a process of its own.
//
// So an interrupt ends the command and nothing else, and closes the command's connections with it. No later command can
// receive the answer to a request that was given up. And each command has its own time-out and folder of sockets, which
// the board's libraries read once for each process.
#pragma once

#include <csignal>
#include <cstdio>
#include <string>
#include <vector>

#include "cli/program.h"

namespace ponctl
{

struct Ended {
    int code;         // when a signal ended the command: 128 and the signal's number, as in shells
    bool interrupted; // an interrupt came, whether or not it ended the command
};

// Returns whether a line may hold a password. It is better to take one line too many for such a line than one too few.
bool is_secret(const std::string &line);

class Lines
{
public:
    // Each line has these options unless it says otherwise. An interrupt has the same effect on the commands as it has
    // now.
    explicit Lines(const GlobalOptions &defaults);

    // `has_input` says that the command may read standard input. Otherwise it finds nothing there.
    // What the command writes on standard error goes to `errors`, unless it is null.
    Ended run(const std::vector<std::string> &words, bool has_input, std::FILE *errors = nullptr) const;

    // Returns what a command writes in JSON, or an empty text when it fails. The command writes nothing else, and waits
    // for an answer no longer than a typing user would wait.
    std::string json_of(const std::vector<std::string> &words) const;

private:
    GlobalOptions options;
    struct sigaction interrupt;
};

} // namespace ponctl
