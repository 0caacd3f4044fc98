// Runs the tool where the namespace of its code has its name.
#pragma once

#include <string>
#include <vector>

struct Said {
    int code;
    std::string out, err;
};

Said run_tool(const std::vector<std::string> &words);
