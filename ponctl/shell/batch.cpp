#include "shell/batch.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>

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

std::string trimmed(const std::string &line)
{
    constexpr const char *blanks = " \t\r";
    const size_t first = line.find_first_not_of(blanks);
    return line.substr(first, line.find_last_not_of(blanks) + 1 - first);
}

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
            const std::string command = is_secret(line) ? std::string() : ": " + trimmed(line);
            code = run_words(words, where + command);
            if (code == exit_success) return;
            if (code == exit_interrupted) complain(where + ": interrupted");
        } catch (const Error &error) {
            ++ran;
            complain(where + ": " + error.what());
        }
        failures.push_back({where, code});
        worst = std::max(worst, code);
        ended = code == exit_interrupted || !options.keep_going;
    }

    // Runs one line. Whatever it says on standard error is said with `start` before it, once the line has ended. A line
    // that fails without a word is reported.
    int run_words(const std::vector<std::string> &words, const std::string &start)
    {
        const std::unique_ptr<std::FILE, int (*)(std::FILE *)> said(std::tmpfile(), std::fclose);
        const int code = lines.run(words, false, said.get()).code;
        bool complained = false;
        if (said) {
            std::rewind(said.get());
            char *text = nullptr;
            size_t room = 0;
            while (getline(&text, &room, said.get()) > 0)
                complained |= pass_on(text, start);
            std::free(text);
        }
        if (!complained && code != exit_success && code != exit_interrupted)
            complain(start + ": ended with " + std::to_string(code));
        return code;
    }

    // Returns whether the text begins a message. The other lines of a message, such as candidates, follow as they are.
    static bool pass_on(std::string_view text, const std::string &start)
    {
        constexpr std::string_view program = "ponctl: ";
        const bool begins = text.starts_with(program);
        if (text.ends_with('\n')) text.remove_suffix(1);
        if (begins)
            complain(start + ": " + std::string(text.substr(program.size())));
        else
            std::fprintf(stderr, "%s\n", std::string(text).c_str());
        return begins;
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
