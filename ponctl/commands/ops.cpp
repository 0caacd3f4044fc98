// ponctl ops lists the operations, and shows what the catalogue says of each.
#include <algorithm>

#include "call/codec/search.h"
#include "cli/list_options.h"
#include "cli/program.h"
#include "describe/operation_page.h"
#include "output/exit_code.h"
#include "output/report.h"
#include "output/table.h"
#include "output/text.h"
#include "results/listing.h"

namespace ponctl
{
namespace
{

using catalogue::Operation;

ExitCode run_ops(const Output &output, const std::vector<std::string> &words)
{
    refuse_hex(output, "the catalogue");
    if (words.size() == 1 && !output.selection) {
        if (const Operation *operation = catalogue::find_operation(words.front())) {
            print_page(output, *operation);
            return exit_success;
        }
        if (const catalogue::Function *function = catalogue::find_function(words.front())) {
            print_page(output, *function);
            return exit_success;
        }
    }

    const auto found = find_operations(words);
    const auto functions = find_functions(words);
    if (found.empty() && functions.empty() && output.format == Format::table)
        note("no operation has all of these words in its name, brief, family or command");
    Listing listing({{"name", {"OPERATION"}},
                     {"brief", {"BRIEF", Table::Fit::cut}},
                     {"class", {"CLASS", Table::Fit::cut}},
                     {"command", {"COMMAND", Table::Fit::cut}},
                     {"code", {"CODE", Table::Fit::right}, catalogue::ColumnType::u32}});
    for (const Operation *operation : found) {
        const catalogue::Command *command = operation->command;
        listing.add({{std::string(operation->name)},
                     {std::string(operation->brief)},
                     {std::string(catalogue::to_text(operation->impact))},
                     {command ? ListCell(command->name) : std::nullopt},
                     {command ? ListCell(std::to_string(command->code)) : std::nullopt}});
    }
    for (const catalogue::Function *function : functions)
        listing.add({{std::string(function->name)},
                     {std::string(function->brief)},
                     {std::string(local_class)},
                     {std::nullopt},
                     {std::nullopt}});
    listing.print(output, [&](JsonText &json, size_t row) {
        if (row < found.size())
            write_operation(json, *found[row]);
        else
            write_function(json, *functions[row - found.size()]);
    });
    return exit_success;
}

} // namespace

void add_ops(Program &program)
{
    Command &ops = program.tree.add("ops", "Lists the operations and local functions, or shows one of them");
    program.askless.push_back(&ops);
    std::vector<std::string> &words = ops.runs(run_ops);
    ops.argument("WORD", &words,
                 "words that must all occur in name, brief, family, class or command; an operation's whole name "
                 "shows its page",
                 "OPERATION");
    add_list_options(program, ops);
}

} // namespace ponctl
