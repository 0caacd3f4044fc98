#include "pages/prose.h"

#include <fstream>
#include <map>
#include <stdexcept>

namespace ponctl
{
namespace
{

std::string take(std::map<std::string, std::string> &from, const std::string &key)
{
    const auto node = from.extract(key);
    return node.empty() ? std::string() : node.mapped();
}

} // namespace

Prose::Prose(const std::filesystem::path &path) : file(path.string())
{
    std::ifstream in(path);
    std::string *current = nullptr;
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with(".Sh "))
            current = &sections[line.substr(4)];
        else if (line.starts_with(".Ss "))
            current = &commands[line.substr(4)];
        else if (current)
            *current += line + "\n";
        else
            throw std::runtime_error(file + ": starts without a section: " + line);
    }
}

std::string Prose::section(const std::string &title)
{
    return take(sections, title);
}

std::string Prose::of_command(const std::string &name)
{
    return take(commands, name);
}

void Prose::check_used() const
{
    for (const auto *left : {&sections, &commands})
        if (!left->empty())
            throw std::runtime_error(file + ": the page has no place for '" + left->begin()->first +
                                     "'; is there such a command?");
}

} // namespace ponctl
