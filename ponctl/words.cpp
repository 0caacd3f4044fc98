#include "words.h"

#include <algorithm>
#include <cctype>

#include "errors.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

// Everything that a search word may occur in.
std::string searched_text(const catalogue::Operation &operation)
{
    std::string text;
    for (const std::string_view part :
         {operation.name, operation.brief, operation.family, catalogue::to_text(operation.impact)})
        text.append(part).push_back('\n');
    if (operation.command) text.append(operation.command->name).append("\n" + std::to_string(operation.command->code));
    return text::lower_case(text);
}

// Whether every word occurs in the text, which is in lower case.
bool contains_all(std::string_view text, std::span<const std::string> words)
{
    return std::all_of(words.begin(), words.end(),
                       [text](const std::string &word) { return text.find(text::lower_case(word)) != text.npos; });
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
        if (contains_all(text::lower_case(text), words)) found.push_back(&function);
    }
    return found;
}

const catalogue::Operation &chosen_operation(std::span<const std::string> words)
{
    const auto found = find_operations(words);
    if (found.size() == 1) return *found.front();
    const std::vector<std::string_view> given(words.begin(), words.end());
    if (found.empty())
        throw UsageError("no operation has all of the words '" + text::join(given, " ") +
                         "'; look for it by fewer with 'ponctl ops WORD...'");
    std::string candidates;
    for (const catalogue::Operation *operation : found)
        candidates += "\n  " + std::string(operation->name) + ": " + std::string(operation->brief);
    throw UsageError(std::to_string(found.size()) + " operations have all of the words '" + text::join(given, " ") +
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
        if (const std::string_view near = text::nearest(name, all); !near.empty()) candidates.push_back(near);

    const std::string message = "there is no operation '" + name + "'; ";
    if (candidates.empty() || candidates.size() > most)
        throw UsageError(message + "look for it by words with 'ponctl ops WORD...'");
    throw UsageError(message + "did you mean " + text::join(candidates, " or ") + "?");
}

} // namespace ponctl
