// The command line: which command, with which options.
#pragma once

#include <string_view>

#include "command_line/command_tree.h"
#include "commands.h"
#include "history.h"

namespace ponctl
{

struct Program;

using Command = command_line::Command<ExitCode(const Output &)>;

// Each adds one command with what belongs to it.
void add_ops(Command &app);
void add_call(Command &app);
void add_raw(Command &app);
void add_trace(Command &app);
void add_replay(Command &app);
void add_idset(Command &app);
void add_onu(Command &app);
// The commands for remote ONUs go to that one.
void add_remote(Command &onu);
void add_port(Command &app);
void add_arp(Command &app);
void add_bulk(Command &app);
void add_profile(Command &app);
void add_loid(Command &app);
void add_whitelist(Command &app);
void add_blacklist(Command &app);
void add_auth(Command &app);
void add_alarm(Command &app);
void add_optics(Command &app);
void add_sla(Command &app);
void add_p2p(Command &app);
void add_fdb(Command &app);
void add_upgrade(Command &app);
void add_loop(Command &app);
void add_config(Command &app);
void add_debug(Command &app);
void add_i2c(Command &app);
// Each line that these run has the global options of their own command line for defaults.
void add_batch(Program &program);
void add_shell(Program &program);

// The options of a command that can draw what it reads. They stand for --watch, too.
void add_chart(Command &command, ChartOptions &options);
constexpr std::string_view chart_option = "--chart"; // that asks for it
} // namespace ponctl
