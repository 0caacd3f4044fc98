#include "model/base/text.h"

#include <algorithm>
#include <cstring>

#include "text/utf8.h"

namespace ponsim
{
namespace
{

bool is_letter_or_digit(char byte)
{
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9');
}

} // namespace

bool is_name(const std::string &text)
{
    const auto fits = [](char byte) { return is_letter_or_digit(byte) || byte == '-' || byte == '_' || byte == '.'; };
    return !text.empty() && text.size() <= longest_name && is_letter_or_digit(text[0]) &&
           std::ranges::all_of(text, fits);
}

bool is_clean(const std::string &text)
{
    return text::is_printable(text);
}

bool get_text(const char *field, size_t size, std::string &out)
{
    out.assign(field, strnlen(field, size));
    return out.size() < size && is_clean(out);
}

} // namespace ponsim
