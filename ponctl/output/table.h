// Tables for people.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "output/output.h"

namespace ponctl
{

// A table, fitted to the terminal; on anything else every cell stands whole on its line. Where a terminal is too narrow
// for all columns, some are left out, empty ones first and then from the last on, and standard error says which.
class Table
{
public:
    // What becomes of a column on a terminal that is too narrow.
    enum class Fit {
        whole, // stays as it is
        right, // stays as it is, aligned to the right: numbers
        cut,
        wrap // goes on in further lines
    };
    struct Heading {
        std::string title;
        Fit fit = Fit::whole;
    };

    explicit Table(std::vector<Heading> titles) : headings(std::move(titles)) {}
    void add(std::vector<std::string> row) { rows.push_back(std::move(row)); }
    void print(const Output &output) const;

private:
    static int flags_of(Fit fit);
    // How wide a column is, and how wide at least where it is narrowed.
    size_t width_of(size_t column) const;
    size_t least_width_of(size_t column) const;
    bool is_empty(size_t column) const;
    // The columns for a terminal of this width.
    std::vector<size_t> columns_in(size_t terminal_width) const;

    std::vector<Heading> headings;
    std::vector<std::vector<std::string>> rows;
};

} // namespace ponctl
