#include "results/operands.h"

#include "call/codec/search.h"
#include "call/codec/values.h"
#include "output/exit_code.h"
#include "text/words.h"

namespace ponctl
{

std::vector<std::string> words_of(std::initializer_list<Assignment> arguments)
{
    std::vector<std::string> words;
    for (const Assignment &argument : arguments)
        if (!argument.value.empty()) words.push_back(argument.name + "=" + argument.value);
    return words;
}

std::string port_of(const std::string &text)
{
    return text.empty() ? "0" : std::to_string(parse_number("PORT", text));
}

std::string number_word(std::string_view name, const std::string &text, uint32_t greatest)
{
    return text.empty() ? text : std::to_string(parse_number(name, text, greatest));
}

OnuName onu_of(const std::string &text)
{
    if (is_number(text)) return {std::to_string(parse_number("ONU", text, max_onu_id)), {}};
    return {{}, text::mac_text(parse_mac("ONU", text, "an ONU id from 0 to 127, or "))};
}

OnuName onu_but_0_of(const std::string &text)
{
    const OnuName onu = onu_of(text);
    if (onu.id == "0") throw UsageError("ONU: " + id_0_is_none);
    return onu;
}

void check_text(const char *name, const std::string &text, size_t greatest)
{
    if (text.size() > greatest)
        throw UsageError(std::string(name) + ": " + std::to_string(text.size()) + " bytes are more than the " +
                         std::to_string(greatest) + " that there can be");
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
    constexpr size_t most = 10;
    const std::vector<std::string_view> candidates = near_operations(name);
    const std::string message = "there is no operation '" + name + "'; ";
    if (candidates.empty() || candidates.size() > most)
        throw UsageError(message + "look for it by words with 'ponctl ops WORD...'");
    throw UsageError(message + "did you mean " + text::join(candidates, " or ") + "?");
}

} // namespace ponctl
