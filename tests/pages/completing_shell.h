// A completing shell shows what a shell offers for a command line that ends where its user presses TAB.
#pragma once

#include <string>
#include <vector>

enum class ShellKind { bash, zsh, fish };

// Returns whether this machine has the shell.
bool is_installed(ShellKind shell);

// Returns the words that the shell offers at the end of each of the lines. It finds the tool in PATH.
std::vector<std::vector<std::string>> completed_by(ShellKind shell, const std::vector<std::string> &lines);
