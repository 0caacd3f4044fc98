#include "pages/tree.h"

#include <cctype>

#include "catalogue.h"
#include "commands/profiles.h"

namespace ponctl
{
namespace
{

template <class Entry>
std::vector<std::string> names_of(std::span<const Entry> entries)
{
    std::vector<std::string> names;
    for (const Entry &entry : entries)
        names.emplace_back(entry.name);
    return names;
}

} // namespace

std::vector<const Syntax *> commands_of(const Syntax &command)
{
    std::vector<const Syntax *> shown;
    for (const auto &each : command.commands)
        if (!each->hidden) shown.push_back(each.get());
    return shown;
}

std::vector<std::string> words_for(const Operand &operand)
{
    const std::string name = operand.value_name();
    if (name == "OPERATION") return names_of(catalogue::operations());
    if (name == "CHANNEL") return names_of(catalogue::channels());
    if (name == "RECORD") return names_of(catalogue::records());
    if (name == "KIND") return profile_kinds();
    return operand.choices();
}

Completes completes(const Operand &operand)
{
    const std::string name = operand.value_name();
    if (name == "FILE") return Completes::files;
    if (name == "DIR") return Completes::folders;
    if (name == "ARGUMENT") return Completes::operation_arguments;
    return Completes::words;
}

std::string sentence(std::string text)
{
    if (text.empty()) return text;
    const bool name = text.substr(0, text.find(' ')).find('_') != text.npos;
    if (!name) text.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(text.front())));
    if (text.back() != '.') text.push_back('.');
    return text;
}

} // namespace ponctl
