#include "daily.h"

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
    return {{}, format_mac(parse_mac("ONU", text, "an ONU id from 0 to 127, or ").data())};
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

ExitCode call(const Output &output, const char *operation, const std::vector<std::string> &words)
{
    return run_call(output, *catalogue::find_operation(operation), words, {});
}

} // namespace ponctl
