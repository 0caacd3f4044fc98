// This file takes passwords from places that other users of the machine do not see, in place of the command line.
#pragma once

#include <string>

namespace ponctl
{

// A Secret is a password as a command line gives it: itself, or where it is.
struct Secret {
    std::string text;
    std::string file; // - stands for standard input

    bool given() const { return !(text + file).empty(); }
};

// Returns the password: the first line of its file or of standard input. At a terminal it is asked for without echo.
// Throws a UsageError when it cannot be read, is longer than `longest` bytes, or was given in two ways.
std::string read_secret(const Secret &secret, size_t longest);

} // namespace ponctl
