// A Pattern is a text in which '*' stands for any characters and '?' for one.
#pragma once

#include <string>
#include <string_view>

namespace fleet
{

struct Pattern {
    std::string text;
    bool literal = false; // '*' and '?' are meant as they are

    bool is_plain() const;
    bool matches(std::string_view whole) const;
};

} // namespace fleet
