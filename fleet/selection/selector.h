// A Selector says which OLTs of a fleet are wanted:
//
//     selector   = term { "or" term }
//     term       = factor { "and" factor }
//     factor     = "not" factor | "(" selector ")" | "all" | PATTERNS | KEY operator PATTERNS
//     operator   = "=" | "!=", and of numbers also "<" | "<=" | ">" | ">="
//     PATTERNS   = PATTERN { "," PATTERN }
//
// Patterns alone are of names. A pattern may have '*' for any characters and '?' for one; what stands in quotation
// marks is meant as it is. Keys are name, bridge, model, firmware, version, state (online or offline), the numbers
// ports, online, offline and waiting (of ONUs), and each label: site, or label.site.
//
// Names of OLTs and bridges have upper and lower case; other values are compared without it. A comparison with what an
// OLT does not have, or what is not known of it, is neither true nor false, and so are "not" of it and what depends on
// it: such an OLT is not wanted.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "fleet/selection/inventory.h"

namespace fleet
{

class Selector
{
public:
    // Throws a call::UsageError that says what is wrong, at which character, and what may have been meant.
    explicit Selector(std::string_view text);

    bool matches(const Olt &olt) const;
    // Returns the names of the OLTs that are wanted, in the order of people: north-2 before north-10. Throws a
    // call::UsageError when the selector has a name that none of these OLTs has, or a label that none of them has.
    std::vector<std::string> choose(std::span<const Olt> olts) const;

    class Node; // a part of the selector
    // What a selector names that may be misspelt: each with its character in the text.
    struct Mention {
        std::string word;
        size_t at = 0;
    };

private:
    std::shared_ptr<const Node> root;
    std::vector<Mention> names, labels;
};

// Returns whether it is the plain name of one OLT: no pattern, no list, no word of the language above.
bool is_single_name(std::string_view text);

// Returns whether a name comes before another in the order of people, in which numbers count as such.
bool comes_before(const std::string &name, const std::string &other);

} // namespace fleet
