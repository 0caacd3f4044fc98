// ponctl ops lists the operations, and shows what the catalogue says of each.
#include <algorithm>

#include "call/search.h"
#include "cli/program.h"
#include "describe/operation_page.h"
#include "output/exit_code.h"
#include "output/json.h"
#include "output/report.h"
#include "output/table.h"
#include "output/text.h"

namespace ponctl
{
namespace
{

using catalogue::Operation;

ExitCode run_ops(const Output &output, const std::vector<std::string> &words)
{
    refuse_hex(output, "the catalogue");
    if (words.size() == 1) {
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
    if (output.format == Format::json) {
        Json json(output.stream);
        json->StartArray();
        for (const Operation *operation : found)
            write_operation(json, *operation);
        for (const catalogue::Function *function : functions)
            write_function(json, *function);
        json->EndArray();
        return exit_success;
    }
    if (found.empty() && functions.empty())
        note("no operation has all of these words in its name, brief, family or command");
    Table table({{"OPERATION"},
                 {"BRIEF", Table::Fit::cut},
                 {"CLASS", Table::Fit::cut},
                 {"COMMAND", Table::Fit::cut},
                 {"CODE", Table::Fit::right}});
    for (const Operation *operation : found) {
        const catalogue::Command *command = operation->command;
        table.add({std::string(operation->name), std::string(operation->brief),
                   std::string(catalogue::to_text(operation->impact)), command ? std::string(command->name) : "-",
                   command ? std::to_string(command->code) : "-"});
    }
    for (const catalogue::Function *function : functions)
        table.add({std::string(function->name), std::string(function->brief), std::string(local_class), "-", "-"});
    table.print(output);
    return exit_success;
}

} // namespace

void add_ops(Program &program)
{
    Command &ops = program.tree.add("ops", "Lists the operations and local functions, or shows one of them");
    std::vector<std::string> &words = ops.runs(run_ops);
    ops.argument("WORD", &words,
                 "words that must all occur in name, brief, family, class or command; an operation's whole name "
                 "shows its page",
                 "OPERATION");
}

} // namespace ponctl
