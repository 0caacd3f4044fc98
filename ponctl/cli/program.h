// The program: every command and option of the command line, and how a command ends.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/cli.h"

namespace ponctl
{

// What holds for every command.
struct GlobalOptions {
    std::string format = "table";
    bool no_headings = false;
    bool quiet = false;
    std::string colour = "auto";
    bool dry_run = false;
    bool yes = false;
    std::string interval; // of --watch; empty: not given
    std::string count;
    std::string socket_dir;
    std::string timeout;
    bool nested = false; // the command line is one of a batch's or shell's

    // Each throws UsageError.
    Output output() const;
    bool colours_on(int stream) const;
    // How the command line of these words is watched; `charted`: it asks for a chart.
    std::optional<Watching> watching(const std::vector<std::string> &words, bool charted) const;
    // The board's libraries read their settings from the environment, once a process. Throws UsageError.
    void export_settings() const;
};

// Options keep what they were given: a command line has a program of its own.
struct Program {
    explicit Program(const GlobalOptions &defaults = {});
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    CLI::App app;
    GlobalOptions global;
    Command command;
    Command lines; // in place of it: runs lines, each by itself and with the global options
};

// The words with the interval of --watch, which may be left out, written as --watch=SECONDS.
std::vector<std::string> with_interval(const std::vector<std::string> &words);

// Runs one command line, without the program's name. What is wrong with it goes to standard error. `defaults` hold
// where the line says nothing else.
int run_line(const std::vector<std::string> &words, const GlobalOptions &defaults = {});

} // namespace ponctl
