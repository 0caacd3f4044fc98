// The log of a program of ours that serves, on standard error: lines for people or, on demand, objects of JSON.
#pragma once

#include <string_view>

namespace program_log
{

enum class LogLevel { info, warning, error };
enum class LogForm { lines, json };

// Every line from now on has this form.
void choose_log_form(LogForm form);
// Any thread may call this. A line is written at once.
void log_line(LogLevel level, std::string_view text);

} // namespace program_log
