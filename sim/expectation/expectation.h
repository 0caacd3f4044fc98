// An Expectation says what an OLT shows to whoever asks it a question.
#pragma once

#include <cstdint>
#include <optional>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

#include "expectation/question.h"

namespace ponsim
{

enum class Comparison : uint32_t { equals, differs, at_least, at_most, contains, matches, null };

// These are the words of the comparisons, in their order.
inline constexpr std::string_view comparison_words[] = {"equals",   "not",     "at_least", "at_most",
                                                        "contains", "matches", "null"};

// Returns whether values of that kind can be compared so.
bool compares(Comparison comparison, CellKind kind);

// A Condition compares a cell with a value. A null cell fulfils `differs` and `null` alone.
struct Condition {
    Comparison comparison;
    CellValue value; // of `null`: whether the cell is expected to be null
    std::optional<std::regex> pattern = {};

    bool holds(const CellValue &cell) const;
};

// A Filter leaves the rows that have the value in the column.
struct Filter {
    size_t column;
    CellValue value;
};

struct Expectation {
    std::string file;
    uint32_t line;
    std::string text; // what is expected, for people
    Question question;
    std::vector<Filter> filters;
    std::optional<size_t> column; // none: the number of rows
    std::vector<Condition> conditions;

    // Returns what is found at the OLT in place of what is expected. Returns nothing when the expectation holds: there
    // is a row, and the column of each row fulfils all conditions.
    std::optional<std::string> objection(const Olt &olt) const;
};

} // namespace ponsim
