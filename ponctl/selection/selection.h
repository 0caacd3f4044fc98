// This file chooses rows and columns of a listing, and puts the rows in order.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "selection/column.h"
#include "selection/where.h"

namespace ponctl
{

// A Selection is what a command line wants of a listing. What is empty was not given.
struct Selection {
    std::string where = {}; // an expression
    std::string sort = {}; // columns with commas between them, with a '-' before those whose greatest value comes first
    std::string columns = {}; // columns with commas between them
    std::string limit = {};   // how many rows at most

    bool any() const { return !(where + sort + columns + limit).empty(); }
};

// Selected says what is shown, by numbers from 0 on.
struct Selected {
    std::vector<size_t> rows, columns;
};

// Throws a UsageError that starts with the name of the option that is wrong. Each row has a cell for each column.
Selected select(const Selection &selection, std::span<const ListColumn> columns,
                std::span<const std::vector<ListCell>> rows, const Where::Clock &clock);

} // namespace ponctl
