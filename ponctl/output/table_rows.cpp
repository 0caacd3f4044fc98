// This file has what the tables of both editions have in common.
#include <algorithm>
#include <optional>

#include "output/exit_code.h"
#include "output/output.h"
#include "output/table.h"
#include "text/utf8.h"

namespace ponctl
{
namespace
{

// Numbers with more decimals than this stay as they are, so that one of them does not make all others long.
constexpr size_t most_decimals = 6;

// Returns how many decimals a number has, or nothing when the text is not a number in digits.
std::optional<size_t> decimals_of(std::string_view text)
{
    if (text.starts_with('-')) text.remove_prefix(1);
    const size_t point = std::min(text.find('.'), text.size());
    const auto is_digits = [](std::string_view part) {
        return !part.empty() && part.find_first_not_of("0123456789") == part.npos;
    };
    if (!is_digits(text.substr(0, point))) return std::nullopt;
    if (point == text.size()) return 0;
    const std::string_view behind = text.substr(point + 1);
    return is_digits(behind) && behind.size() <= most_decimals ? std::optional(behind.size()) : std::nullopt;
}

} // namespace

Table::Table(std::vector<Heading> titles, bool keeps_all)
    : headings(std::move(titles)), all_kept(keeps_all), decimals(headings.size())
{
    for (Heading &heading : headings)
        heading.title = text::printable(heading.title);
}

void Table::add(std::vector<std::string> row)
{
    for (size_t column = 0; column < row.size(); ++column) {
        row[column] = text::printable(row[column]);
        if (headings[column].fit == Fit::decimal)
            decimals[column] = std::max(decimals[column], decimals_of(row[column]).value_or(0));
    }
    rows.push_back(std::move(row));
}

std::string Table::cell(const std::vector<std::string> &row, size_t column) const
{
    std::string text = row[column];
    const auto own = decimals[column] > 0 ? decimals_of(text) : std::nullopt;
    if (own == 0) text += '.';
    if (own) text.append(decimals[column] - *own, '0');
    return text;
}

void Table::refuse_if_too_large(size_t line_length) const
{
    if (!rows.empty() && line_length > most_bytes / rows.size())
        throw TooLarge("the table has " + std::to_string(rows.size()) + " lines of " + std::to_string(line_length) +
                       " characters, too many to be printed; -o json has the result");
}

} // namespace ponctl
