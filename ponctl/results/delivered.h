// What an operation delivers, shown as it is.
#pragma once

#include <string>
#include <vector>

#include "catalogue.h"
#include "output/database.h"
#include "output/exit_code.h"
#include "output/output.h"

namespace ponctl
{

// Calls an operation with arguments of the form name=value, and shows all that it delivers.
ExitCode run_call(const Output &output, const catalogue::Operation &operation, const std::vector<std::string> &words,
                  bool allow_long = false);
ExitCode run_call(const Output &output, const char *operation, const std::vector<std::string> &words);

// The same for each ONU of a set, with the arguments that name the ONU filled in.
ExitCode run_call_each(const Output &output, const catalogue::Operation &operation, const std::string &onus,
                       const std::vector<std::string> &words, bool allow_long);

// Calls an operation for what it delivers: shows the rows of its database alone.
ExitCode run_list(const Output &output, const char *operation, const std::vector<std::string> &words,
                  const TableStyle &style = {});

} // namespace ponctl
