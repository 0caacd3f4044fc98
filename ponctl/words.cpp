#include "words.h"

#include <algorithm>
#include <cctype>
#include <numeric>

#include "errors.h"

namespace ponctl
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
            const size_t replaced = diagonal + (a[i] != b[j]);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

// Everything that a search word may occur in.
std::string searched_text(const catalogue::Operation &operation)
{
    std::string text;
    for (const std::string_view part :
         {operation.name, operation.brief, operation.family, catalogue::to_text(operation.impact)})
        text.append(part).push_back('\n');
    if (operation.command) text.append(operation.command->name).append("\n" + std::to_string(operation.command->code));
    return lower_case(text);
}

// Whether every word occurs in the text, which is in lower case.
bool contains_all(std::string_view text, std::span<const std::string> words)
{
    return std::all_of(words.begin(), words.end(),
                       [text](const std::string &word) { return text.find(lower_case(word)) != text.npos; });
}

// The words that a name is made of.
std::vector<std::string> parts_of(const std::string &name)
{
    std::vector<std::string> parts(1);
    for (const char c : name) {
        if (std::isalnum(static_cast<unsigned char>(c)))
            parts.back().push_back(c);
        else if (!parts.back().empty())
            parts.emplace_back();
    }
    return parts;
}

} // namespace

std::string lower_case(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) { return std::tolower(c); });
    return lower;
}

std::vector<const catalogue::Operation *> find_operations(std::span<const std::string> words)
{
    std::vector<const catalogue::Operation *> found;
    for (const catalogue::Operation &operation : catalogue::operations()) {
        if (contains_all(searched_text(operation), words)) found.push_back(&operation);
    }
    return found;
}

std::vector<const catalogue::Function *> find_functions(std::span<const std::string> words)
{
    std::vector<const catalogue::Function *> found;
    for (const catalogue::Function &function : catalogue::functions()) {
        const std::string text =
            std::string(function.name) + "\n" + std::string(function.brief) + "\n" + std::string(function.family);
        if (contains_all(lower_case(text), words)) found.push_back(&function);
    }
    return found;
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

std::string join(std::span<const std::string_view> names, std::string_view separator)
{
    std::string text;
    for (const std::string_view name : names) {
        if (!text.empty()) text.append(separator);
        text.append(name);
    }
    return text;
}

const catalogue::Operation &chosen_operation(std::span<const std::string> words)
{
    const auto found = find_operations(words);
    if (found.size() == 1) return *found.front();
    const std::vector<std::string_view> given(words.begin(), words.end());
    if (found.empty())
        throw UsageError("no operation has all of the words '" + join(given, " ") +
                         "'; look for it by fewer with 'ponctl ops WORD...'");
    std::string candidates;
    for (const catalogue::Operation *operation : found)
        candidates += "\n  " + std::string(operation->name) + ": " + std::string(operation->brief);
    throw UsageError(std::to_string(found.size()) + " operations have all of the words '" + join(given, " ") +
                     "'; give more words or a whole name:" + candidates);
}

const catalogue::Operation &named_operation(const std::string &name)
{
    if (const catalogue::Operation *operation = catalogue::find_operation(name)) return *operation;
    if (catalogue::find_function(name))
        throw UsageError(name + " makes no request, so there is nothing to call; see 'ponctl ops " + name + "'");

    // Those whose names hold every part of the wrong one; else the nearest.
    constexpr size_t most = 10;
    const std::vector<std::string> parts = parts_of(name);
    std::vector<std::string_view> all, candidates;
    for (const catalogue::Operation &operation : catalogue::operations()) {
        all.push_back(operation.name);
        if (contains_all(operation.name, parts)) candidates.push_back(operation.name);
    }
    if (candidates.empty())
        if (const std::string_view near = nearest(name, all); !near.empty()) candidates.push_back(near);

    const std::string message = "there is no operation '" + name + "'; ";
    if (candidates.empty() || candidates.size() > most)
        throw UsageError(message + "look for it by words with 'ponctl ops WORD...'");
    throw UsageError(message + "did you mean " + join(candidates, " or ") + "?");
}

} // namespace ponctl
