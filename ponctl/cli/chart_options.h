// The options of a command that can draw what it reads.
#pragma once

#include <string_view>

#include "cli/program.h"
#include "results/history.h"

namespace ponctl
{

// They stand for --watch, too.
void add_chart(Command &command, ChartOptions &options);

inline constexpr std::string_view chart_option = "--chart"; // that asks for it

} // namespace ponctl
