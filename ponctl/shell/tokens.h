// This file splits a typed line into words. 'Single' quotes keep everything. In "double" quotes a backslash keeps " and
// \, and outside of quotes it keeps any character. A # at the start of a word begins a comment.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ponctl
{

// Throws a UsageError that says what is not closed.
std::vector<std::string> split_line(std::string_view line);

// A Typed is a line up to the cursor.
struct Typed {
    std::vector<std::string> before; // the complete words before the cursor
    std::string word;                // the word under the cursor, which may be empty
    char quote = 0;                  // the quotation mark that is open at the cursor; 0: none
    bool comment = false;            // the cursor is inside a comment
};
Typed split_typed(std::string_view text);

// Returns a text as it must be typed to be a part of a word, when this quotation mark is open.
std::string as_typed(std::string_view text, char quote = 0);

} // namespace ponctl
