// This file reads the expression that says which rows of a listing are wanted:
//
//     expression = term { "or" term }
//     term       = factor { "and" factor }
//     factor     = "not" factor | "(" expression ")" | COLUMN operator VALUE
//     operator   = "=" | "!=" | "<" | "<=" | ">" | ">=" | "~"
//
// A value with blanks or parentheses stands in quotation marks. A number may have a unit behind it. A comparison with
// an empty cell is neither true nor false, and so are "not" of it and what depends on it: such a row is not wanted.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "selection/column.h"

namespace ponctl
{

class Where
{
public:
    // Returns the time of the service in seconds. It is asked at most once, for a value as 1d-ago.
    using Clock = std::function<double()>;

    // Throws a UsageError that names the column, the rule that the text breaks, and the nearest column.
    Where(std::string_view text, std::span<const ListColumn> columns, const Clock &clock);
    ~Where();

    bool wants(const std::vector<ListCell> &row) const;

    class Node; // a part of the expression
private:
    std::unique_ptr<const Node> root;
};

} // namespace ponctl
