#include "text/words.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace text
{
namespace
{

size_t edit_distance(std::string_view a, std::string_view b)
{
    std::vector<size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < a.size(); ++i) {
        size_t diagonal = row[0]++;
        for (size_t j = 0; j < b.size(); ++j) {
            const size_t other = diagonal + (a[i] != b[j]);
            diagonal = row[j + 1];
            row[j + 1] = std::min({other, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

} // namespace

std::string lower_case(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) { return std::tolower(c); });
    return lower;
}

std::string upper_case(std::string_view text)
{
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), [](unsigned char c) { return std::toupper(c); });
    return upper;
}

std::string join(std::span<const std::string_view> words, std::string_view separator)
{
    std::string text;
    for (const std::string_view word : words) {
        if (!text.empty()) text.append(separator);
        text.append(word);
    }
    return text;
}

std::string join(const std::vector<std::string> &words, std::string_view separator)
{
    return join(std::vector<std::string_view>(words.begin(), words.end()), separator);
}

std::vector<std::string> split(std::string_view text, char separator)
{
    std::vector<std::string> words(1);
    for (const char c : text) {
        if (c == separator)
            words.emplace_back();
        else
            words.back().push_back(c);
    }
    return words;
}

std::string replaced(std::string_view text, std::string_view what, std::string_view by)
{
    std::string changed;
    for (size_t at = 0, found; at <= text.size(); at = found + what.size()) {
        found = std::min(text.find(what, at), text.size());
        changed.append(text, at, found - at);
        if (found == text.size()) break;
        changed.append(by);
    }
    return changed;
}

std::string_view nearest(std::string_view wrong, std::span<const std::string_view> names)
{
    std::string_view best;
    size_t best_distance = std::max<size_t>(2, wrong.size() / 3) + 1;
    for (const std::string_view name : names) {
        const size_t distance = edit_distance(wrong, name);
        if (distance < best_distance && distance < name.size()) {
            best = name;
            best_distance = distance;
        }
    }
    return best;
}

std::string suggestion(std::string_view wrong, std::span<const std::string_view> names)
{
    const std::string_view name = nearest(wrong, names);
    return name.empty() ? "" : "; did you mean " + std::string(name) + "?";
}

} // namespace text
