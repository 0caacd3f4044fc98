// The words of a typed line. 'Single' quotes keep everything, in "double" quotes a backslash keeps " and \, outside of
// them any character; # at the start of a word begins a comment.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ponctl
{

// Throws a UsageError that says what is not closed.
std::vector<std::string> split_line(std::string_view line);

// A line as far as the cursor.
struct Typed {
    std::vector<std::string> before; // whole words
    std::string word;                // under the cursor, perhaps empty
    char quote = 0;                  // the quotation mark that is open there; 0: none
    bool comment = false;            // the cursor stands in a comment
};
Typed split_typed(std::string_view text);

// A text as it must be typed to be a part of a word, where this quotation mark is open.
std::string as_typed(std::string_view text, char quote = 0);

} // namespace ponctl
