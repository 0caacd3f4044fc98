// The pages of the manual, each as a text.
#pragma once

#include <string>

#include <CLI/CLI.hpp>

#include "pages/prose.h"

namespace ponctl
{

std::string overview_page(const CLI::App &program, Prose &prose, const std::string &date);
// Of a command of the program with all below it.
std::string group_page(const CLI::App &command, Prose &prose, const std::string &date);
std::string operations_page(const std::string &date);

} // namespace ponctl
