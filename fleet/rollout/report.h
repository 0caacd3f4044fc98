// A Report says what a command came to at many OLTs: OLTs with the same outcome stand together.
#pragma once

#include <string>
#include <vector>

#include "fleet/rollout/result.h"

namespace fleet
{

struct Group {
    std::vector<std::string> olts; // in the order of people
    Result result;
};

// Returns the OLTs with equal results together: the largest group first, and of equal ones that of the first OLT.
std::vector<Group> groups_of(const Results &results);

// Returns names in few words: "north-1..north-17, south-3", of at most `width` characters, with "and 41 more" where
// they are cut; 0: no bound. The names are in the order of people.
std::string names_text(const std::vector<std::string> &names, size_t width);

// Returns "1,000 OLTs: 980 done, 10 failed, 10 unreachable". Those that have not begun, and OLTs that are neither,
// count as "not begun".
std::string totals_text(const Results &results, size_t not_begun = 0);

// Returns the groups for people: of each a line with its OLTs and their state, and below it, indented, what the command
// wrote for each of them. All that a terminal must not see is written as text::printable() does.
std::string report_text(const Results &results, size_t width);

// Returns an array of JSON, in the order of people: [{"olt","state","exit","result","errors"}]. The result is a
// document when the command wrote one, otherwise a text, or null.
std::string report_json(const Results &results);

} // namespace fleet
