// Texts are kept as UTF-8 without control characters, so that they can go out in JSON as they came in.
#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace ponsim
{

bool is_clean(const std::string &text);

// Reads a text of at most `size` bytes with its NUL. Returns false when the text does not end within these bytes, or is
// not clean.
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
