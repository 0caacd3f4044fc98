// ponctl call calls any operation of the library.
#include <algorithm>
#include <functional>

#include "call/codec/search.h"
#include "cli/program.h"
#include "command_line/parse.h"
#include "describe/operation_page.h"
#include "output/exit_code.h"
#include "output/report.h"
#include "results/delivered.h"
#include "results/operands.h"

namespace ponctl
{
namespace
{

struct CallLine {
    std::string operation;          // its name, or the first of the words that find it
    std::vector<std::string> words; // its arguments, and further words that find it
    std::string onus;
    bool allow_long = false;
    bool help = false;
};

// Returns the operation that the words name, and removes those words. Either the first word is its name, or all words
// without `=` find it together.
const catalogue::Operation &take_operation(std::vector<std::string> &words)
{
    const auto is_assignment = [](const std::string &word) { return word.find('=') != word.npos; };
    const auto assignments = std::stable_partition(words.begin(), words.end(), std::not_fn(is_assignment));
    const std::vector<std::string> names(words.begin(), assignments);
    if (names.empty()) throw UsageError("OPERATION: missing; 'ponctl ops' lists the operations");
    if (catalogue::find_operation(names.front())) {
        words.erase(words.begin());
        return *catalogue::find_operation(names.front());
    }
    // When a single word finds nothing, it is taken for a wrong name and not for a search.
    const bool is_wrong_name = names.size() == 1 && find_operations(names).empty();
    const catalogue::Operation &operation = is_wrong_name ? named_operation(names.front()) : chosen_operation(names);
    note("calling " + std::string(operation.name));
    words.erase(words.begin(), assignments);
    return operation;
}

ExitCode run_call_line(const Output &output, const CallLine &line)
{
    std::vector<std::string> words = line.words;
    if (!line.operation.empty()) words.insert(words.begin(), line.operation);
    const catalogue::Operation &operation = take_operation(words);
    if (!line.help && line.onus.empty()) return run_call(output, operation, words, line.allow_long);
    if (!line.help) return run_call_each(output, operation, line.onus, words, line.allow_long);
    print_page(output, operation);
    return exit_success;
}

} // namespace

void add_call(Program &program)
{
    Command &call = program.tree.add("call", "Calls an operation; 'ponctl ops' lists them");
    CallLine &line = call.runs(run_call_line);
    call.options.clear(); // this command has two kinds of help
    call.option("-h,--help", &line.help, "print this help; with an OPERATION, the page of that operation");
    call.argument("OPERATION", &line.operation,
                  "name of the operation, or words that occur in no other, as for 'ponctl ops'");
    call.argument("ARGUMENT", &line.words, "its arguments, as name=value, in any order");
    call.option("--onus", &line.onus,
                "call it for each of these ONUs in place of the arguments that name one: 1/3-17,20 or 1/all", "SET");
    call.option("--allow-long", &line.allow_long,
                "let texts and blocks that are longer than their field run on into the fields behind it");
    call.check = [&line] {
        if (line.help && line.operation.empty()) throw command_line::ShowHelp();
    };
}

} // namespace ponctl
