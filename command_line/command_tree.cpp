#include "command_line/command_tree.h"

#include <algorithm>

#include "text/words.h"

namespace command_line
{

Operand &Operand::is_required()
{
    required = true;
    return *this;
}

Operand &Operand::shows_default(std::string text)
{
    shown_default = std::move(text);
    return *this;
}

Operand &Operand::is_within(double least, double greatest)
{
    range.emplace(least, greatest);
    return *this;
}

Operand &Operand::is_existing_file()
{
    is_file = true;
    return *this;
}

Operand &Operand::is_checked_by(std::function<std::string(const std::string &)> says_what_is_wrong)
{
    check = std::move(says_what_is_wrong);
    return *this;
}

Operand &Operand::needs(const Operand &other)
{
    needed.push_back(&other);
    return *this;
}

Operand &Operand::excludes(const Operand &other)
{
    excluded.push_back(&other);
    return *this;
}

Operand &Operand::may_leave_out_value(LeftOut value_then)
{
    left_out = std::move(value_then);
    return *this;
}

bool Operand::is_flag() const
{
    return std::holds_alternative<bool *>(into) || std::holds_alternative<Help>(into) ||
           std::holds_alternative<Version>(into);
}

std::string Operand::value_name() const
{
    if (left_out) return "[" + value + "]";
    const bool is_argument = !name.starts_with('-');
    return value.empty() && is_argument ? name : value;
}

std::vector<std::string> Operand::choices() const
{
    return value.find('|') == value.npos ? std::vector<std::string>() : text::split(value, '|');
}

std::vector<std::string> Operand::spellings() const
{
    return text::split(name, ',');
}

std::string Operand::plain_name() const
{
    const std::string last = spellings().back();
    return last.substr(std::min(last.find_first_not_of('-'), last.size()));
}

Operand &Syntax::argument(std::string operand, Target into, std::string help, std::string value)
{
    return arguments.emplace_back(Operand{
        .name = std::move(operand), .into = std::move(into), .help = std::move(help), .value = std::move(value)});
}

Operand &Syntax::option(std::string operand, Target into, std::string help, std::string value)
{
    return options.emplace_back(Operand{
        .name = std::move(operand), .into = std::move(into), .help = std::move(help), .value = std::move(value)});
}

std::string Syntax::path() const
{
    if (!parent) return {};
    const std::string before = parent->path();
    return before.empty() ? name : before + " " + name;
}

bool Syntax::inherits(const Operand &option) const
{
    return parent && std::holds_alternative<Help>(option.into);
}

void Syntax::adopt(std::unique_ptr<Syntax> command)
{
    command->parent = this;
    for (const Operand &option : options)
        if (std::holds_alternative<Help>(option.into)) command->options.push_back(option);
    commands.push_back(std::move(command));
}

std::vector<const Syntax *> all_commands_of(const Syntax &command)
{
    std::vector<const Syntax *> all{&command};
    for (const auto &below : command.commands)
        if (!below->hidden) std::ranges::copy(all_commands_of(*below), std::back_inserter(all));
    return all;
}

} // namespace command_line
