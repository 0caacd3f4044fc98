// The program: every command and option of the command line, and how a command ends.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "cli/run.h"
#include "command_line/command_tree.h"

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

// A command of the tool, and what it does.
using Command = command_line::Command<ExitCode(const Output &)>;

// Options keep what they were given: a command line has a program of its own.
struct Program {
    explicit Program(const GlobalOptions &defaults = {});
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    Command tree;
    GlobalOptions global;
    std::vector<const command_line::Syntax *> line_runners; // run lines, each by itself and with the global options
};

// Adds a command of the program with all below it.
using Group = void (*)(Program &);
// All groups, in the order of the help: those of groups.inc.
std::span<const Group> groups();

// Runs one command line, without the program's name. What is wrong with it goes to standard error. `defaults` hold
// where the line says nothing else.
int run_line(const std::vector<std::string> &words, const GlobalOptions &defaults = {});

} // namespace ponctl
