// This file prints tables for people.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "catalogue.h"
#include "output/output.h"

namespace ponctl
{

// A Table is fitted to the terminal. On anything else every cell stands whole on its line. When a terminal is too
// narrow for all columns, some are left out: empty columns first, then columns of low priority, then the others, each
// time from the last one on. Standard error says which ones. A table without rows is the word "none" on a terminal,
// and nothing on anything else.
class Table
{
public:
    // Fit says what happens to a column on a terminal that is too narrow.
    enum class Fit {
        whole,   // the column keeps its width
        right,   // the column keeps its width, and is aligned to the right: for numbers
        decimal, // as right, with as many decimals in every cell as in the cell that has the most
        cut,
        wrap // the text continues in further lines
    };
    struct Heading {
        std::string title;
        Fit fit = Fit::whole;
        catalogue::Priority priority = catalogue::Priority::normal;
    };

    // The table makes the titles and the texts of the rows printable. A table that `keeps_all` leaves no column out:
    // its lines are longer than the terminal instead.
    explicit Table(std::vector<Heading> titles, bool keeps_all = false);
    void add(std::vector<std::string> row);
    // Throws TooLarge when the lines are too long and too many.
    void print(const Output &output) const;

private:
    // On anything that is not a terminal, every line is as long as the widest cells of all columns together.
    void refuse_if_too_large(size_t line_length) const;
    static int flags_of(Fit fit);
    // Returns a cell as it is printed.
    std::string cell(const std::vector<std::string> &row, size_t column) const;
    // These return how wide a column is, and how wide it is at least when it is narrowed.
    size_t width_of(size_t column) const;
    size_t least_width_of(size_t column) const;
    bool is_empty(size_t column) const;
    // Returns the columns for a terminal of this width.
    std::vector<size_t> columns_in(size_t terminal_width) const;
    // Returns how long a line with these columns is at least.
    size_t least_length_of(const std::vector<size_t> &columns) const;

    std::vector<Heading> headings;
    bool all_kept;
    std::vector<size_t> decimals; // of each column, the most that a cell has
    std::vector<std::vector<std::string>> rows;
};

} // namespace ponctl
