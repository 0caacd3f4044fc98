// This file prints tables for people.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "output/output.h"

namespace ponctl
{

// A Table is fitted to the terminal. On anything else every cell stands whole on its line. When a terminal is too
// narrow for all columns, some are left out: empty columns first, then columns from the last one on. Standard error
// says which ones.
class Table
{
public:
    // Fit says what happens to a column on a terminal that is too narrow.
    enum class Fit {
        whole, // the column keeps its width
        right, // the column keeps its width, and is aligned to the right: for numbers
        cut,
        wrap // the text continues in further lines
    };
    struct Heading {
        std::string title;
        Fit fit = Fit::whole;
    };

    // The table makes the titles and the texts of the rows printable.
    explicit Table(std::vector<Heading> titles);
    void add(std::vector<std::string> row);
    // Throws TooLarge when the lines are too long and too many.
    void print(const Output &output) const;

private:
    // On anything that is not a terminal, every line is as long as the widest cells of all columns together.
    void refuse_if_too_large(size_t line_length) const;
    static int flags_of(Fit fit);
    // These return how wide a column is, and how wide it is at least when it is narrowed.
    size_t width_of(size_t column) const;
    size_t least_width_of(size_t column) const;
    bool is_empty(size_t column) const;
    // Returns the columns for a terminal of this width.
    std::vector<size_t> columns_in(size_t terminal_width) const;

    std::vector<Heading> headings;
    std::vector<std::vector<std::string>> rows;
};

} // namespace ponctl
