#include "pages/tree.h"

#include <algorithm>
#include <cctype>

#include "catalogue.h"
#include "cli/help.h"
#include "profiles.h"

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

std::vector<const CLI::App *> commands_of(const CLI::App &command)
{
    return command.get_subcommands([](const CLI::App *each) { return !each->get_name().empty(); });
}

std::vector<const CLI::App *> all_commands_of(const CLI::App &command)
{
    std::vector<const CLI::App *> all{&command};
    for (const CLI::App *each : commands_of(command))
        std::ranges::copy(all_commands_of(*each), std::back_inserter(all));
    return all;
}

std::vector<const CLI::Option *> arguments_of(const CLI::App &command)
{
    return command.get_options([](const CLI::Option *option) { return option->get_positional(); });
}

std::vector<const CLI::Option *> options_of(const CLI::App &command)
{
    return command.get_options([](const CLI::Option *option) { return !option->get_positional(); });
}

std::vector<std::string> spellings_of(const CLI::Option &option)
{
    std::vector<std::string> spellings;
    for (const std::string &name : option.get_snames())
        spellings.push_back("-" + name);
    for (const std::string &name : option.get_lnames())
        spellings.push_back("--" + name);
    return spellings;
}

bool runs_itself(const CLI::App &command)
{
    return command.get_require_subcommand_min() == 0;
}

std::vector<std::string> words_for(const CLI::Option &option)
{
    const std::string name = value_name(option);
    if (name == "OPERATION") return names_of(catalogue::operations());
    if (name == "CHANNEL") return names_of(catalogue::channels());
    if (name == "RECORD") return names_of(catalogue::records());
    if (name == "KIND") return profile_kinds();
    return choices_of(option);
}

Completes completes(const CLI::Option &option)
{
    const std::string name = value_name(option);
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
