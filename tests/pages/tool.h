// This file runs the tool for code in which the tool's name is that of a namespace.
#pragma once

#include <string>
#include <vector>

struct Said {
    int code;
    std::string out, err;
};

Said run_tool(const std::vector<std::string> &words);
