#include "call/codec/search.h"

#include <algorithm>
#include <cctype>

#include "text/words.h"

namespace call
{
namespace
{

// Returns all text in which a search word may occur.
std::string searched_text(const catalogue::Operation &operation)
{
    std::string text;
    for (const std::string_view part :
         {operation.name, operation.brief, operation.family, catalogue::to_text(operation.impact)})
        text.append(part).push_back('\n');
    if (operation.command) text.append(operation.command->name).append("\n" + std::to_string(operation.command->code));
    return text::lower_case(text);
}

// Returns whether every word occurs in the text, which is in lower case.
bool contains_all(std::string_view text, std::span<const std::string> words)
{
    return std::all_of(words.begin(), words.end(),
                       [text](const std::string &word) { return text.find(text::lower_case(word)) != text.npos; });
}

// Returns the words that a name is made of.
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

std::vector<std::string_view> near_operations(const std::string &name)
{
    const std::vector<std::string> parts = parts_of(name);
    std::vector<std::string_view> all, candidates;
    for (const catalogue::Operation &operation : catalogue::operations()) {
        all.push_back(operation.name);
        if (contains_all(operation.name, parts)) candidates.push_back(operation.name);
    }
    if (candidates.empty())
        if (const std::string_view near = text::nearest(name, all); !near.empty()) candidates.push_back(near);
    return candidates;
}

} // namespace call
