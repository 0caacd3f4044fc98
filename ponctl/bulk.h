// The commands for tables of many ONUs and of the OLT, beside those of commands.h, whose rules hold here too.
#pragma once

#include "commands.h"

namespace ponctl
{

ExitCode run_arp(const Output &output, const std::string &port);

// Without a port, of all ports.
ExitCode run_bulk_optics(const Output &output, const std::string &port);
ExitCode run_bulk_stats(const Output &output);
ExitCode run_bulk_ports(const Output &output);
ExitCode run_bulk_olt(const Output &output);
ExitCode run_bulk_all(const Output &output);

} // namespace ponctl
