// Runs typed lines, each as a command line in a process of its own.
//
// So an interrupt ends the command and nothing else, and takes its connections with it: no later command can be given
// the answer to a request that was given up. And each command has its own time-out and folder of sockets, which the
// board's libraries read once a process.
#pragma once

#include <csignal>
#include <string>
#include <vector>

#include "cli/program.h"

namespace ponctl
{

// The exit code of a command that an interrupt ended.
constexpr int exit_interrupted = 128 + SIGINT;

struct Ended {
    int code;         // of a command that a signal ended: 128 and the signal's number, as shells have it
    bool interrupted; // an interrupt came, whether or not it ended the command
};

class Lines
{
public:
    // Each line has these options unless it says otherwise. An interrupt does to the commands what it does now.
    explicit Lines(const GlobalOptions &defaults);

    // `has_input`: the command may read standard input; else it finds nothing there.
    Ended run(const std::vector<std::string> &words, bool has_input) const;

    // What a command writes in JSON; nothing where it fails. It says nothing else, and waits for an answer no longer
    // than someone who types would.
    std::string json_of(const std::vector<std::string> &words) const;

private:
    GlobalOptions options;
    struct sigaction interrupt;
};

} // namespace ponctl
