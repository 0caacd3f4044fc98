// Names of OLTs that count up.
#pragma once

#include <string>
#include <vector>

inline std::vector<std::string> olts(size_t count, const std::string &prefix = "olt-")
{
    std::vector<std::string> names;
    for (size_t number = 1; number <= count; ++number)
        names.push_back(prefix + std::to_string(number));
    return names;
}
