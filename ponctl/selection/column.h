// This file describes the columns of a listing by which rows are chosen and put in order.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue.h"

namespace ponctl
{

struct ListColumn {
    std::string name;  // as in JSON
    std::string title; // as in a table
    catalogue::ColumnType type;
    std::string unit;
};

// A cell is empty when the column does not apply to its row.
using ListCell = std::optional<std::string>;

// Returns the number of the column of this name or title. Throws a UsageError that starts with `option` and names the
// nearest column when there is none.
size_t column_number(std::string_view option, std::string_view word, std::span<const ListColumn> columns);

// Returns whether the column has numbers.
bool has_numbers(const ListColumn &column);
// Returns the number that a cell has.
double cell_number(const std::string &cell);

} // namespace ponctl
