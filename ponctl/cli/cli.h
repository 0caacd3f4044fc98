// The command line: which command, with which options.
#pragma once

#include <memory>

#include <CLI/CLI.hpp>

#include "cli/run.h"
#include "commands.h"
#include "history.h"

namespace ponctl
{

struct GlobalOptions;

// Each adds one command with what belongs to it.
void add_ops(CLI::App &app, Command &command);
void add_call(CLI::App &app, Command &command);
void add_raw(CLI::App &app, Command &command);
void add_trace(CLI::App &app, Command &command);
void add_replay(CLI::App &app, Command &command);
void add_idset(CLI::App &app, Command &command);
void add_onu(CLI::App &app, Command &command);
// The commands for remote ONUs go to that one.
void add_remote(CLI::App &onu, Command &command);
void add_port(CLI::App &app, Command &command);
void add_arp(CLI::App &app, Command &command);
void add_bulk(CLI::App &app, Command &command);
void add_profile(CLI::App &app, Command &command);
void add_loid(CLI::App &app, Command &command);
void add_whitelist(CLI::App &app, Command &command);
void add_blacklist(CLI::App &app, Command &command);
void add_auth(CLI::App &app, Command &command);
void add_alarm(CLI::App &app, Command &command);
void add_optics(CLI::App &app, Command &command);
void add_sla(CLI::App &app, Command &command);
void add_p2p(CLI::App &app, Command &command);
void add_fdb(CLI::App &app, Command &command);
void add_upgrade(CLI::App &app, Command &command);
void add_loop(CLI::App &app, Command &command);
void add_config(CLI::App &app, Command &command);
void add_debug(CLI::App &app, Command &command);
void add_i2c(CLI::App &app, Command &command);
// Each line that these run has the global options of their own command line for defaults.
void add_batch(CLI::App &app, Command &command, const GlobalOptions &global);
void add_shell(CLI::App &app, Command &command, const GlobalOptions &global);

// The options of a command that can draw what it reads. They stand for --watch, too.
void add_chart(CLI::App &app, ChartOptions &options);
// Whether the command line asks for a chart.
bool wants_chart(const CLI::App &app);

// Has a command of the command line run `run` with its options. Where it has commands of its own and one of them is
// given, that one runs.
template <class Options, class Run>
void runs(CLI::App *app, Command &command, const std::shared_ptr<Options> &options, Run run)
{
    app->callback([=, &command] {
        if (app->get_subcommands().empty()) command = [=](const Output &output) { return run(output, *options); };
    });
}

} // namespace ponctl
