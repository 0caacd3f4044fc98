#include "pages/tree.h"

#include <cctype>

namespace ponctl
{

std::vector<const Syntax *> commands_of(const Syntax &command)
{
    std::vector<const Syntax *> shown;
    for (const auto &each : command.commands)
        if (!each->hidden) shown.push_back(each.get());
    return shown;
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
