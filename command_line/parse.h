// This file reads command lines by the tree of a program's commands.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "command_line/command_tree.h"

namespace command_line
{

// A Manner says how a program writes its help and its errors.
enum class Manner {
    filled, // help in lines that fit a terminal; an error says what may have been meant and which help to read
    wide    // help with one line for each entry, however long, with types and bounds of values; an error says what is
            // wrong
};

// A Line is a command line that was read. Its values are where the targets of the operands point to.
struct Line {
    const Syntax *command; // the last command that the line names
    std::vector<const Operand *> given;

    bool gives(std::string_view option) const;
};

// A WrongLine says what is wrong with a command line, in the words of its program.
class WrongLine : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// TextWanted means that a text is wanted in place of what the command does: the help, or the version. The text ends
// with a newline.
struct TextWanted {
    std::string text;
};

// Syntax::check throws a ShowHelp when the help of the command is wanted.
struct ShowHelp {
};

// Reads the words of a command line, without the program's name. Throws WrongLine and TextWanted.
Line parse(const Syntax &program, const std::vector<std::string> &words, Manner manner = Manner::filled);

// Returns the words with each left-out value added to its option of the program, as in --watch=2.
std::vector<std::string> with_left_out_values(const Syntax &program, const std::vector<std::string> &words);

} // namespace command_line
