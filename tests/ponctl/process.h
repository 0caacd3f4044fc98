// Runs the tool as a process of its own.
#pragma once

#include <string>
#include <vector>

struct Finished {
    int code;
    std::string out;
    std::string err;
};

// Runs ponctl with these arguments, with nothing on its standard input, and waits for it. Its output is what `out`
// gets, unless it goes to a descriptor of the caller's.
Finished ponctl(const std::vector<std::string> &arguments, int output = -1);
