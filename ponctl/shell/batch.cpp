#include "shell/batch.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>

#include "cli/program.h"
#include "output/report.h"
#include "output/text.h"
#include "shell/lines.h"
#include "shell/tokens.h"
#include "text/utf8.h"

namespace ponctl
{
namespace
{

constexpr const char *footer =
    "A line is what would follow 'ponctl'. Empty lines are passed over, and # starts a comment; quotation marks and "
    "backslashes are those of a shell. Nothing is asked, and commands find nothing on standard input: what would ask "
    "needs --yes in its line. The global options hold for every line that does not say otherwise. A line that ends in "
    "| include TEXT prints only what contains the text.";

struct FailedLine {
    std::string where;
    int code;
};

// A Batch runs the lines one after the other, and notes which of them fail.
class Batch
{
public:
    Batch(const Output &echoes, const BatchOptions &wanted, const GlobalOptions &global)
        : output(echoes), options(wanted), name(wanted.file == "-" ? "standard input" : wanted.file), lines(global)
    {
    }

    ExitCode run(std::istream &input)
    {
        std::string line;
        while (!ended && std::getline(input, line)) {
            ++number;
            run_one(line);
        }
        if (input.bad()) {
            complain(name + ": cannot be read");
            worst = std::max<int>(worst, exit_usage);
        }
        if (options.keep_going && !failures.empty()) summarize();
        return static_cast<ExitCode>(worst);
    }

private:
    void run_one(const std::string &line)
    {
        const std::string where = name + ":" + std::to_string(number);
        int code = exit_usage;
        try {
            const std::vector<std::string> words = split_line(line);
            if (words.empty()) return;
            if (options.echo) print_line(output, "+ " + line);
            ++ran;
            code = lines.run(words, false).code;
            if (code == exit_success) return;
            complain(where + (code == exit_interrupted ? ": interrupted" : ": ended with " + std::to_string(code)));
        } catch (const Error &error) {
            ++ran;
            complain(where + ": " + error.what());
        }
        failures.push_back({where, code});
        worst = std::max(worst, code);
        ended = code == exit_interrupted || !options.keep_going;
    }

    void summarize() const
    {
        complain(std::to_string(failures.size()) + " of " + std::to_string(ran) + " lines failed:");
        for (const FailedLine &failure : failures)
            std::fprintf(stderr, "  %s: ended with %d\n", text::printable(failure.where).c_str(), failure.code);
    }

    const Output &output;
    const BatchOptions &options;
    const std::string name;
    const Lines lines;
    std::vector<FailedLine> failures;
    size_t number = 0, ran = 0;
    int worst = exit_success;
    bool ended = false;
};

} // namespace

void refuse_nested(const GlobalOptions &global, const char *name)
{
    if (global.nested)
        throw UsageError(std::string(name) + ": not in a line of a batch or shell; give the lines themselves");
}

ExitCode run_batch(const Output &output, const BatchOptions &options, const GlobalOptions &global)
{
    refuse_nested(global, "batch");
    Batch batch(output, options, global);
    if (options.file == "-") return batch.run(std::cin);
    std::ifstream file(options.file);
    if (!file) throw UsageError("FILE: '" + options.file + "' cannot be read: " + std::strerror(errno));
    return batch.run(file);
}

void add_batch(Program &program)
{
    Command &batch = program.tree.add("batch", "Runs the lines of a file, each as a command line");
    batch.hidden = program.global.nested;
    BatchOptions &options =
        batch.runs<BatchOptions>([&global = program.global](const Output &output, const BatchOptions &given) {
            return run_batch(output, given, global);
        });
    batch.argument("FILE", &options.file, "the file; - for standard input").is_required();
    batch.option("--keep-going", &options.keep_going,
                 "go on behind a line that fails; list those that failed, and end with the worst exit code");
    batch.option("--echo", &options.echo, "print each line before what it prints");
    batch.footer = footer;
    program.line_runners.push_back(&batch);
}

} // namespace ponctl
