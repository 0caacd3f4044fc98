// These are the tables of the board's edition, which has no libsmartcols. Every cell stands whole on its line, on a
// terminal as on anything else.
#include "output/table.h"

#include <algorithm>

#include "output/output.h"

namespace ponctl
{
namespace
{

constexpr const char *plain = "\033[0m";

// Returns how many characters a text has: the number of bytes that start a UTF-8 character.
size_t characters_in(const std::string &text)
{
    return static_cast<size_t>(
        std::ranges::count_if(text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xc0) != 0x80; }));
}

} // namespace

size_t Table::width_of(size_t column) const
{
    size_t width = characters_in(headings[column].title);
    for (const auto &row : rows)
        width = std::max(width, characters_in(cell(row, column)));
    return width;
}

void Table::print(const Output &output) const
{
    if (rows.empty()) {
        if (output.terminal) std::fputs("none\n", output.stream);
        return;
    }
    std::vector<size_t> widths;
    size_t line_length = 0;
    for (size_t column = 0; column < headings.size(); ++column) {
        widths.push_back(width_of(column));
        line_length += widths.back() + 1;
    }
    refuse_if_too_large(line_length);
    const auto print_line = [&](auto text_of, auto colour_of_text) {
        std::string line;
        for (size_t column = 0; column < headings.size(); ++column) {
            const std::string text = text_of(column);
            const Fit fit = headings[column].fit;
            const bool last = column + 1 == headings.size(), right = fit == Fit::right || fit == Fit::decimal;
            const std::string filler(widths[column] - characters_in(text), ' ');
            const char *colour = output.colours ? colour_of_text(text) : nullptr;
            line += (column > 0 ? " " : "") + (right ? filler : "");
            line += colour && !text.empty() ? colour + text + plain : text;
            if (!right && !last) line += filler;
        }
        line.erase(line.find_last_not_of(' ') + 1);
        std::fprintf(output.stream, "%s\n", line.c_str());
    };
    if (output.headings)
        print_line([this](size_t column) { return headings[column].title; }, [](const std::string &) { return bold; });
    for (const auto &row : rows)
        print_line([this, &row](size_t column) { return cell(row, column); }, colour_of);
}

} // namespace ponctl
