// Reads command lines by the tree of a program's commands.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "command_line/command_tree.h"

namespace command_line
{

// How a program speaks of its command line.
enum class Manner {
    filled, // help in lines that fit a terminal; errors that say what may have been meant, and which help tells
    wide    // help with a line an entry, as long as it gets, with types and bounds of values; errors that say what is
            // wrong
};

// A command line that was read. Its values stand where the operands put them.
struct Line {
    const Syntax *command; // the last one that it names
    std::vector<const Operand *> given;

    bool gives(std::string_view option) const;
};

// What is wrong with a command line, as its program says it.
class WrongLine : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// A text is wanted in place of what the command does: the help, or the version. It ends with a line.
struct TextWanted {
    std::string text;
};

// Thrown by Syntax::check where the help of the command is wanted.
struct ShowHelp {
};

// Reads the words of a command line, without the program's name. Throws WrongLine and TextWanted.
Line parse(const Syntax &program, const std::vector<std::string> &words, Manner manner = Manner::filled);

// The words, with each value that was left out behind an option of the program, as in --watch=2.
std::vector<std::string> with_left_out_values(const Syntax &program, const std::vector<std::string> &words);

} // namespace command_line
