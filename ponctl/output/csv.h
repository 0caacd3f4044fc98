// This file writes results as comma-separated values.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "output/output.h"

namespace ponctl
{

// Writes a JSON document as RFC 4180 describes, with lines that end in LF. Each object of a list is a row. When the
// objects of the list contain one list of objects, each object of that inner list is a row, together with the other
// values of the outer object. Any other object gives a row of name and value for each of its values. Members of members
// are named with dots, members of lists by number.
//
// What a terminal must not see is written as text::printable() does. A text that a spreadsheet would take for a formula
// has an apostrophe before it. Throws TooLarge when the rows and columns make too many cells.
//
// `heading` is the heading line that was written last. The heading line is written unless it is the same. An empty list
// has the heading line of these columns.
void print_csv(const Output &output, std::string_view document, std::string &heading,
               const std::vector<std::string> &columns = {});

} // namespace ponctl
