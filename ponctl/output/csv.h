// Results as comma-separated values.
#pragma once

#include <string>
#include <string_view>

#include "output/output.h"

namespace ponctl
{

// Writes a JSON document as RFC 4180 has it, with lines that end in LF. A list of objects is a row each; where they
// hold one list of objects in turn, that is a row each, beside what else they hold. Any other object is a row of name
// and value for each of its values. Members of members are named with dots, members of lists by number.
//
// `heading` is the heading line that was written last; the line is written unless it is the same.
void print_csv(const Output &output, std::string_view document, std::string &heading);

} // namespace ponctl
