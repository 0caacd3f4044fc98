// The command line as data: what its pages and completions are made of.
#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "cli/help.h"

namespace ponctl
{

std::vector<const CLI::App *> commands_of(const CLI::App &command);
// A command and all commands below it, in the order in which they are declared.
std::vector<const CLI::App *> all_commands_of(const CLI::App &command);

std::vector<const CLI::Option *> arguments_of(const CLI::App &command);
// The options without an argument's place, --help among them.
std::vector<const CLI::Option *> options_of(const CLI::App &command);

// -o and --output, each as it is typed.
std::vector<std::string> spellings_of(const CLI::Option &option);

// Whether a command does something by itself, and not only through its commands.
bool runs_itself(const CLI::App &command);

// The words that a value is one of, as far as the command line or the catalogue knows them.
std::vector<std::string> words_for(const CLI::Option &option);

enum class Completes { words, files, folders, operation_arguments };
Completes completes(const CLI::Option &option);

// First letter in upper case, unless it is that of a name of the library; a full stop at the end.
std::string sentence(std::string text);

} // namespace ponctl
