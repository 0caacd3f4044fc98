// ponctl complete says what may be typed next. The completions of shells ask it.
#include <unistd.h>

#include "cli/program.h"
#include "shell/complete.h"
#include "shell/lines.h"

namespace ponctl
{
namespace
{

// A shell waits no longer than this many seconds, whatever the service does.
constexpr unsigned longest_wait = 2;

// Returns the folder of sockets that the typed words name, so that the service behind it is asked.
std::string socket_dir_in(const std::vector<std::string> &words)
{
    const std::string option = "--socket-dir";
    for (size_t index = 0; index + 1 < words.size(); ++index) {
        if (words[index] == option) return words[index + 1];
        if (words[index].starts_with(option + "=")) return words[index].substr(option.size() + 1);
    }
    return {};
}

// Each candidate is a line: "=" or, when the word goes on behind it, "+", the word, a tab and its help. Files are left
// to the shell, which is told so by a word.
ExitCode run_complete(const Output &output, const std::vector<std::string> &words, GlobalOptions global)
{
    alarm(longest_wait);
    if (const std::string folder = socket_dir_in(words); !folder.empty()) global.socket_dir = folder;
    const Lines lines(global);
    const Ask ask = [&lines](const std::vector<std::string> &command) { return lines.json_of(command); };
    const std::vector<std::string> before(words.begin(), words.empty() ? words.end() : words.end() - 1);
    const Completion completion = complete(before, words.empty() ? std::string() : words.back(), ask, false);
    if (completion.paths == Paths::files) std::fputs("@files\n", output.stream);
    if (completion.paths == Paths::folders) std::fputs("@folders\n", output.stream);
    if (completion.paths != Paths::none) return exit_success;
    for (const Candidate &candidate : completion.candidates)
        std::fprintf(output.stream, "%c%s\t%s\n", candidate.goes_on ? '+' : '=', candidate.word.c_str(),
                     candidate.help.c_str());
    return exit_success;
}

} // namespace

void add_complete(Program &program)
{
    Command &complete = program.tree.add("complete", "Says what may be typed next");
    complete.hidden = true;
    std::vector<std::string> &words = complete.runs<std::vector<std::string>>(
        [&global = program.global](const Output &output, const std::vector<std::string> &typed) {
            return run_complete(output, typed, global);
        });
    complete.argument("WORD", &words, "the words behind 'ponctl', of which the last one is completed");
    program.line_runners.push_back(&complete);
}

} // namespace ponctl
