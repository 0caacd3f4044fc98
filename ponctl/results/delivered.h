// This file shows what an operation delivers, without interpreting it.
#pragma once

#include <string>
#include <vector>

#include "catalogue.h"
#include "output/database.h"
#include "output/exit_code.h"
#include "output/output.h"

namespace ponctl
{

// Calls an operation with arguments of the form name=value, and shows everything that it delivers.
ExitCode run_call(const Output &output, const catalogue::Operation &operation, const std::vector<std::string> &words,
                  bool allow_long = false);
ExitCode run_call(const Output &output, const char *operation, const std::vector<std::string> &words);

// As above, for each ONU of a set. The arguments that name the ONU are filled in.
ExitCode run_call_each(const Output &output, const catalogue::Operation &operation, const std::string &onus,
                       const std::vector<std::string> &words, bool allow_long);

// Calls an operation and shows only the rows of its database.
ExitCode run_list(const Output &output, const char *operation, const std::vector<std::string> &words,
                  const TableStyle &style = {});

} // namespace ponctl
