// This file returns what other programs print.
#pragma once

#include <set>
#include <string>
#include <vector>

// Returns everything that a shell command writes, also on standard error.
std::string output_of(const std::string &command);
// Returns a manual page as a reader sees it, with lines as long as necessary.
std::string rendered(const std::string &page);
// Returns the complaints of mandoc about a page.
std::string complaints_about(const std::string &page);

std::vector<std::string> lines_of(const std::string &text);

using Names = std::set<std::string>;
// Returns what the groups of an expression match in a text, one group for each match.
Names found(const std::string &text, const char *expression);
