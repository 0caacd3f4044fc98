// This file draws tables with libsmartcols.
#include "output/table.h"

#include <algorithm>
#include <cwchar>
#include <memory>

#include <libsmartcols.h>

#include "output/output.h"
#include "output/report.h"

namespace ponctl
{
namespace
{

// Returns how many columns of a terminal a text takes.
size_t display_width(const std::string &text)
{
    std::wstring wide(text.size(), L'\0');
    const size_t length = std::mbstowcs(wide.data(), text.c_str(), wide.size());
    const int width = length == static_cast<size_t>(-1) ? -1 : wcswidth(wide.c_str(), length);
    return width < 0 ? text.size() : static_cast<size_t>(width);
}

} // namespace

int Table::flags_of(Fit fit)
{
    switch (fit) {
    case Fit::whole:
        return 0;
    case Fit::right:
    case Fit::decimal:
        return SCOLS_FL_RIGHT;
    case Fit::cut:
        return SCOLS_FL_TRUNC;
    case Fit::wrap:
        return SCOLS_FL_WRAP;
    }
    return 0;
}

size_t Table::width_of(size_t column) const
{
    size_t width = display_width(headings[column].title);
    for (const auto &row : rows)
        width = std::max(width, display_width(cell(row, column)));
    return width;
}

size_t Table::least_width_of(size_t column) const
{
    constexpr size_t legible = 12;
    const bool narrows = headings[column].fit == Fit::cut || headings[column].fit == Fit::wrap;
    return narrows ? std::min(width_of(column), legible) : width_of(column);
}

bool Table::is_empty(size_t column) const
{
    return std::ranges::all_of(rows, [column](const auto &row) { return row[column].empty() || row[column] == "-"; });
}

std::vector<size_t> Table::columns_in(size_t terminal_width) const
{
    std::vector<bool> kept(headings.size(), true);
    size_t width = 0; // includes a blank behind each column
    for (size_t column = 0; column < headings.size(); ++column)
        width += least_width_of(column) + 1;
    const auto leave_out = [&](const auto &may_go) {
        for (size_t column = headings.size(); !all_kept && column-- > 1 && width > terminal_width + 1;) {
            if (!kept[column] || !may_go(column)) continue;
            kept[column] = false;
            width -= least_width_of(column) + 1;
        }
    };
    leave_out([this](size_t column) { return is_empty(column); });
    for (const auto priority : {catalogue::Priority::low, catalogue::Priority::normal, catalogue::Priority::high})
        leave_out([&](size_t column) { return headings[column].priority == priority; });

    std::vector<size_t> columns;
    std::string left_out;
    for (size_t column = 0; column < headings.size(); ++column) {
        if (kept[column])
            columns.push_back(column);
        else
            left_out += (left_out.empty() ? "" : ", ") + headings[column].title;
    }
    if (!left_out.empty()) note("the terminal is too narrow for " + left_out + "; -o json has all");
    return columns;
}

size_t Table::least_length_of(const std::vector<size_t> &columns) const
{
    size_t length = 0;
    for (const size_t column : columns)
        length += least_width_of(column) + 1;
    return length;
}

void Table::print(const Output &output) const
{
    if (rows.empty() && output.terminal) {
        std::fputs("none\n", output.stream);
        return;
    }
    const auto release = [](libscols_table *table) { scols_unref_table(table); };
    const std::unique_ptr<libscols_table, decltype(release)> table(scols_new_table(), release);
    if (!table) throw std::bad_alloc();
    scols_table_set_stream(table.get(), output.stream);
    scols_table_set_termforce(table.get(), output.terminal ? SCOLS_TERMFORCE_ALWAYS : SCOLS_TERMFORCE_NEVER);
    scols_table_enable_noheadings(table.get(), !output.headings);
    scols_table_enable_colors(table.get(), output.colours);
    // The texts are printable already. The library would take the backslash of \xNN for a part of the text.
    scols_table_enable_noencoding(table.get(), 1);
    size_t line_length = 0;
    for (size_t column = 0; column < headings.size(); ++column)
        line_length += width_of(column) + 1;
    refuse_if_too_large(line_length);
    const size_t terminal_width = scols_table_get_termwidth(table.get());
    const auto columns = columns_in(output.terminal ? terminal_width : SIZE_MAX - 1);
    if (const size_t length = least_length_of(columns); length > terminal_width + 1)
        scols_table_set_termwidth(table.get(), length);
    for (const size_t index : columns) {
        const Heading &heading = headings[index];
        // A column that is short enough is not narrowed.
        const bool narrows = least_width_of(index) < width_of(index) || flags_of(heading.fit) == SCOLS_FL_RIGHT;
        libscols_column *column =
            scols_table_new_column(table.get(), heading.title.c_str(), 0, flags_of(narrows ? heading.fit : Fit::whole));
        if (!column) throw std::bad_alloc();
        scols_cell_set_color(scols_column_get_header(column), bold);
    }
    for (const auto &row : rows) {
        libscols_line *line = scols_table_new_line(table.get(), nullptr);
        if (!line) throw std::bad_alloc();
        for (size_t index = 0; index < columns.size(); ++index) {
            const std::string text = cell(row, columns[index]);
            scols_line_set_data(line, index, text.c_str());
            if (const char *colour = colour_of(text)) scols_cell_set_color(scols_line_get_cell(line, index), colour);
        }
    }
    scols_print_table(table.get());
}

} // namespace ponctl
