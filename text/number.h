// Numbers that are written as texts.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace text
{

// Returns the number when the whole text is one that the type holds.
template <class Number>
std::optional<Number> to_number(std::string_view text, int base = 10)
{
    Number number{};
    const char *const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, base);
    return error == std::errc{} && stop == end ? std::optional(number) : std::nullopt;
}

// Does the same for a number that is decimal, or hexadecimal with 0x before it.
template <class Number>
std::optional<Number> to_number_of_either_base(std::string_view text)
{
    if (!text.starts_with("0x") && !text.starts_with("0X")) return to_number<Number>(text);
    text.remove_prefix(2);
    return text.starts_with('-') ? std::nullopt : to_number<Number>(text, 16);
}

// Returns the number when the whole text is one with a decimal point or without, and no exponent.
inline std::optional<double> to_real(std::string_view text)
{
    double number = 0;
    const char *const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, std::chars_format::fixed);
    return error == std::errc{} && stop == end ? std::optional(number) : std::nullopt;
}

} // namespace text
