#include "command_line/help.h"

#include <algorithm>

#include "text/filled.h"
#include "text/words.h"

namespace command_line
{
namespace
{

constexpr size_t help_column = 30;

// Lays out the name with its meaning beside it, or below it when the name is too long.
std::string entry(const std::string &name, const std::string &about)
{
    const std::string start = "  " + name;
    if (start.size() < help_column) return text::filled(start, about, help_column);
    return start + "\n" + text::filled(about, help_column);
}

std::string full_name(const Syntax &command)
{
    return command.parent ? full_name(*command.parent) + " " + command.name : command.name;
}

std::string usage_of(const Syntax &command)
{
    std::string usage = "Usage: " + full_name(command);
    if (!command.options.empty()) usage += " [OPTIONS]";
    for (const Operand &argument : command.arguments) {
        const std::string name = argument.name + (argument.takes_many() ? "..." : "");
        usage += argument.required ? " " + name : " [" + name + "]";
    }
    if (!command.commands.empty()) usage += command.runs_itself() ? " [SUBCOMMAND]" : " SUBCOMMAND";
    return usage + "\n";
}

std::string entry_of(const Operand &operand, bool is_argument)
{
    std::string name = operand.name;
    if (!is_argument) {
        if (const std::string value = operand.value_name(); !value.empty()) name += " " + value;
        if (operand.required) name += " (required)";
    }
    if (operand.takes_many()) name += " ...";
    return entry(name, operand.help);
}

std::string group(const std::string &title, const std::string &entries)
{
    return entries.empty() ? entries : "\n" + title + ":\n" + entries;
}

// Returns the command line whose help tells what the command takes.
std::string place_of_help(const Syntax &command)
{
    return "'" + full_name(command) + " --help'";
}

std::vector<std::string> names_of_commands(const Syntax &command)
{
    std::vector<std::string> names;
    for (const auto &each : command.commands)
        names.push_back(each->name);
    return names;
}

std::vector<std::string> names_of_options(const Syntax &command)
{
    std::vector<std::string> names;
    for (const Syntax *holds = &command; holds; holds = holds->parent)
        for (const Operand &option : holds->options)
            std::ranges::copy_if(option.spellings(), std::back_inserter(names),
                                 [](const std::string &name) { return name.starts_with("--"); });
    return names;
}

} // namespace

std::string help_of(const Syntax &command)
{
    std::string arguments, options, commands;
    for (const Operand &argument : command.arguments)
        arguments += entry_of(argument, true);
    for (const Operand &option : command.options)
        options += entry_of(option, false);
    for (const auto &each : command.commands)
        if (!each->hidden) commands += entry(each->name, each->brief);
    std::string footer;
    for (const std::string &paragraph : text::split(command.footer, '\n'))
        if (!paragraph.empty()) footer += text::filled(paragraph, 0);
    return text::filled(command.brief, 0) + usage_of(command) + group("Positionals", arguments) +
           group("Options", options) + group("Subcommands", commands) + "\n" + footer;
}

std::string explain_unknown(const Syntax &command, const std::string &word)
{
    const auto with_advice = [&](const std::string &wrong, const std::vector<std::string> &names) {
        const std::string near = text::suggestion(word, std::vector<std::string_view>(names.begin(), names.end()));
        return wrong + (near.empty() ? "; " + place_of_help(command) + " lists them" : near);
    };
    if (word.starts_with('-')) return with_advice("there is no option " + word, names_of_options(command));
    const std::vector<std::string> commands = names_of_commands(command);
    if (commands.empty()) return "'" + word + "' is a word too many; see " + place_of_help(command);
    return with_advice("there is no command '" + word + "'", commands);
}

std::string explain_no_command(const Syntax &command)
{
    return "which command? " + place_of_help(command) + " lists them";
}

std::string explain(const Syntax &command, const std::string &what_is_wrong)
{
    return what_is_wrong + "; see " + place_of_help(command);
}

} // namespace command_line
