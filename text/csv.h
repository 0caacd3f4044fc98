// Rows of values with commas between them, as spreadsheets write them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace text
{

struct CsvRow {
    size_t line; // the line of the text on which the row begins, from 1 on
    std::vector<std::string> cells;
};

// Reads rows. A cell in quotes may hold commas, line ends and doubled quotes. Empty lines are passed over. Throws
// std::runtime_error, with the line, when a quote is not closed or stands inside a cell.
std::vector<CsvRow> read_csv(std::string_view text);

} // namespace text
