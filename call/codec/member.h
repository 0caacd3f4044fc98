// A member of a JSON object.
#pragma once

#include <string>

namespace call
{

struct Member {
    std::string name;
    std::string value; // JSON in one line

    bool operator==(const Member &) const = default;
};

} // namespace call
