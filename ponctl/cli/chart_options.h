// This file has the options of a command that can draw what it reads.
#pragma once

#include <string_view>

#include "cli/program.h"
#include "results/history.h"

namespace ponctl
{

// These options include what --watch does.
void add_chart(Command &command, ChartOptions &options);

inline constexpr std::string_view chart_option = "--chart"; // the option that asks for a chart

} // namespace ponctl
