// This file is the program: every command and option of the command line, and how a command ends.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "cli/run.h"
#include "command_line/command_tree.h"
#include "reach/options.h"
#include "selection/selection.h"

namespace ponctl
{

// GlobalOptions apply to every command.
struct GlobalOptions {
    std::string format = "table";
    bool no_headings = false;
    bool quiet = false;
    std::string colour = "auto";
    bool dry_run = false;
    bool yes = false;
    bool secrets = false;
    std::string interval; // of --watch; empty: not given
    std::string count;
    std::string socket_dir;
    std::string timeout;
    FleetOptions fleet;
    Selection selection; // of a listing
    bool nested = false; // the command line is one of a batch or a shell

    // Each function throws UsageError.
    Output output() const;
    bool colours_on(int stream) const;
    // Returns how the command line of these words is watched. `charted` says that it asks for a chart.
    std::optional<Watching> watching(const std::vector<std::string> &words, bool charted) const;
    // Sets the environment, because the board's libraries read their settings from it, once for each process. Throws
    // UsageError.
    void export_settings() const;
    // Returns whether the command line goes to OLTs of a fleet. A line that runs for one of them already does not.
    bool goes_to_fleet() const;
    FleetRequests fleet_requests() const;
};

// A Command is a command of the tool, with what it does.
using Command = command_line::Command<ExitCode(const Output &)>;

// Options keep what they were given, so each command line has a program of its own.
struct Program {
    explicit Program(const GlobalOptions &defaults = {});
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    Command tree;
    GlobalOptions global;
    std::vector<const command_line::Syntax *> followers;    // these read again and again by themselves, see follow.h
    std::vector<const command_line::Syntax *> line_runners; // these run lines, each line by itself and with the global
                                                            // options
    std::vector<const command_line::Syntax *> askless;      // these ask no OLT, so they run once, whatever --olt says
    std::vector<const command_line::Syntax *>
        planners; // in a dry run these ask what they need to say what they would do
};

// A Group adds a command of the program with all commands below it.
using Group = void (*)(Program &);
// Returns all groups of groups.inc, in the order of the help.
std::span<const Group> groups();

// Runs one command line, given without the program's name. Reports on standard error what is wrong with it. The
// `defaults` apply where the line says nothing else.
int run_line(const std::vector<std::string> &words, const GlobalOptions &defaults = {});

} // namespace ponctl
