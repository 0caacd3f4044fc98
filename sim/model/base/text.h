// Texts as they are kept: UTF-8 without control characters, so that they can go out in JSON as they came.
#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace ponsim
{

bool is_clean(const std::string &text);

// A text of at most `size` bytes with its NUL: false when it does not end in these bytes, or is not clean.
bool get_text(const char *field, size_t size, std::string &out);

template <size_t size>
bool get_text(const char (&field)[size], std::string &out)
{
    return get_text(field, size, out);
}

template <size_t size>
bool get_text(const std::array<char, size> &field, std::string &out)
{
    return get_text(field.data(), size, out);
}

} // namespace ponsim
