// This file lists the fields of a request, for people and for completion.
#pragma once

#include <string>
#include <vector>

#include "catalogue.h"
#include "output/output.h"

namespace ponctl
{

// Returns the row of a field: its name, type, unit, range, the names of its values with commas between them, and what
// it means.
std::vector<std::string> field_row(const catalogue::Field &field);

void print_fields(const Output &output, const std::vector<std::vector<std::string>> &rows);

} // namespace ponctl
