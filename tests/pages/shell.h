// What other programs print.
#pragma once

#include <string>
#include <vector>

// All that a command of the shell writes, on standard error too.
std::string output_of(const std::string &command);
// The same with a manual page as a reader sees it, in lines as long as they need to be.
std::string rendered(const std::string &page);
// What mandoc finds to complain of in a page.
std::string complaints_about(const std::string &page);

std::vector<std::string> lines_of(const std::string &text);
