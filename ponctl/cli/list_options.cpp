#include "cli/list_options.h"

#include <algorithm>
#include <stdexcept>

namespace ponctl
{
namespace
{

command_line::Syntax &below(command_line::Syntax &above, std::string_view name)
{
    const auto found =
        std::ranges::find_if(above.commands, [name](const auto &command) { return command->name == name; });
    if (found == above.commands.end()) throw std::logic_error("no command " + std::string(name));
    return **found;
}

} // namespace

void add_list_options(Program &program, command_line::Syntax &above, std::string_view path)
{
    command_line::Syntax &command = path.empty() ? above : below(above, path);
    Selection &selection = program.global.selection;
    command.option("--where", &selection.where,
                   "only rows for which this holds: comparisons of a column and a value with = != < <= > >= or ~ "
                   "(contains), joined with and, or, not and parentheses",
                   "EXPRESSION");
    command.option("--sort", &selection.sort, "in order of these columns; with a - before one, the greatest first",
                   "COLUMN,...");
    command.option("--columns", &selection.columns, "only these columns, in this order", "COLUMN,...");
    command.option("--limit", &selection.limit, "so many rows at most", "N");
}

} // namespace ponctl
