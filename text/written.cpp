#include "text/written.h"

#include <algorithm>
#include <charconv>
#include <set>

namespace text
{
namespace
{

constexpr uint64_t ms_per_second = 1000;

bool is_letter_or_digit(char byte)
{
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9');
}

// Takes a number off the front of the text.
std::optional<uint64_t> take_number(std::string_view &text)
{
    uint64_t number = 0;
    const auto [last, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{}) return std::nullopt;
    text.remove_prefix(static_cast<size_t>(last - text.data()));
    return number;
}

void skip_spaces(std::string_view &text)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
}

struct Unit {
    std::string_view name;
    uint64_t seconds;
};
constexpr Unit units[] = {{"d", 24 * 3600}, {"h", 3600}, {"min", 60}, {"s", 1}};

} // namespace

std::optional<uint64_t> read_time(std::string_view text)
{
    constexpr uint64_t most = longest_time / ms_per_second;
    uint64_t seconds = 0;
    do {
        const std::optional<uint64_t> number = take_number(text);
        skip_spaces(text);
        const std::string_view word = text.substr(0, std::min(text.find_first_of(" 0123456789"), text.size()));
        const auto unit = std::ranges::find(units, word, &Unit::name);
        if (!number || unit == std::end(units) || *number > (most - seconds) / unit->seconds) return std::nullopt;
        seconds += *number * unit->seconds;
        text.remove_prefix(word.size());
        skip_spaces(text);
    } while (!text.empty());
    return seconds * ms_per_second;
}

std::string time_text(uint64_t time)
{
    uint64_t seconds = time / ms_per_second;
    std::string text;
    for (const Unit &unit : units) {
        if (seconds >= unit.seconds)
            text += (text.empty() ? "" : " ") + std::to_string(seconds / unit.seconds) + std::string(unit.name);
        seconds %= unit.seconds;
    }
    return text.empty() ? "0s" : text;
}

std::optional<std::vector<uint64_t>> read_numbers(std::string_view text, uint64_t least, uint64_t greatest)
{
    std::set<uint64_t> numbers;
    while (true) {
        const std::optional<uint64_t> first = take_number(text);
        std::optional<uint64_t> last = first;
        if (text.starts_with('-')) {
            text.remove_prefix(1);
            last = take_number(text);
        }
        if (!first || !last || *first < least || *last > greatest || *first > *last) return std::nullopt;
        if (*last - *first >= longest_list - numbers.size()) return std::nullopt;
        for (uint64_t each = *first; each <= *last; ++each)
            if (!numbers.insert(each).second) return std::nullopt;
        if (text.empty()) return std::vector(numbers.begin(), numbers.end());
        if (!text.starts_with(',')) return std::nullopt;
        text.remove_prefix(1);
    }
}

bool is_name(std::string_view text)
{
    const auto fits = [](char byte) { return is_letter_or_digit(byte) || byte == '-' || byte == '_' || byte == '.'; };
    return !text.empty() && text.size() <= longest_name && is_letter_or_digit(text[0]) &&
           std::ranges::all_of(text, fits);
}

} // namespace text
