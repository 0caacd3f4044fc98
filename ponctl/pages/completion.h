// What can stand where on a command line: one table, which a few lines of each shell walk.
#pragma once

#include <string>
#include <vector>

#include "command_line/command_tree.h"

namespace ponctl
{

struct Candidate {
    std::string word, about;
};

// The words that can stand at a place, or instead of words @files, @folders or @arguments, those of an operation.
// Keys are
//   commands:COMMAND          the commands of a command, which is empty for the program
//   options:COMMAND           its options
//   value:COMMAND:OPTION      the value of an option that takes one
//   argument:COMMAND:NUMBER   an argument, from 1 on
//   argument:COMMAND:more     all arguments from the last one on
//   operation:OPERATION       the arguments of an operation
struct Position {
    std::string key;
    std::vector<Candidate> candidates;
};

std::vector<Position> positions_of(const command_line::Syntax &program);

// The table as a function of a shell. It is followed by the lines that walk it.
std::string bash_table(const std::vector<Position> &positions);
std::string zsh_table(const std::vector<Position> &positions);
std::string fish_table(const std::vector<Position> &positions);

} // namespace ponctl
