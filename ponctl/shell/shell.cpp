// ponctl shell runs the lines that a user types.
#include <csignal>
#include <filesystem>

#include <unistd.h>

#include "board/service.h"
#include "cli/program.h"
#include "cli/state_folder.h"
#include "output/report.h"
#include "shell/batch.h"
#include "shell/complete.h"
#include "shell/line_editor.h"
#include "shell/lines.h"
#include "shell/tokens.h"
#include "text/utf8.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

constexpr const char *footer =
    "TAB completes commands, options and arguments, also by what the service knows; ? shows what can come next. Ctrl-C "
    "ends a command that runs, or empties the line. Ctrl-D, exit and quit leave. Where a command fails, the prompt has "
    "its exit code. Before it stands the name of the folder of sockets, which is that of the OLT, unless it is the "
    "usual folder. Lines are kept in $XDG_STATE_HOME/ponctl/history, or ~/.local/state/ponctl/history, but for those "
    "with passwords. The global options hold for every line that does not say otherwise. Without a terminal on "
    "standard input, lines are run as 'ponctl batch -' does. A line that ends in | include TEXT prints only what "
    "contains the text.";

std::filesystem::path history_file()
{
    const std::filesystem::path folder = state_folder();
    return folder.empty() ? folder : folder / "history";
}

// Returns what the prompt begins with: the name of the folder of sockets, which is the OLT's where a service has
// several, or nothing where it is the usual one.
std::string olt_of(const std::string &folder)
{
    std::filesystem::path path = std::filesystem::path(folder).lexically_normal();
    if (!path.has_filename()) path = path.parent_path();
    const std::string name = path.filename().string();
    return name.empty() || name.starts_with("board-ipc") ? std::string() : text::printable(name) + " ";
}

class Shell
{
public:
    explicit Shell(const GlobalOptions &global)
        : lines(global),
          editor("ponctl",
                 {[this](std::string_view line) { return complete(line); },
                  [this](std::string_view line) { return help_at(line, ask); },
                  [](std::string_view line) {
                      const Typed typed = split_typed(line);
                      return typed.quote || typed.comment;
                  }},
                 history_file())
    {
        // Interrupts are for the commands. An interrupt that arrives after its command has ended must not end the
        // shell.
        std::signal(SIGINT, SIG_IGN);
        std::signal(SIGQUIT, SIG_IGN);
    }

    void run()
    {
        const std::string olt = olt_of(board_ipc_directory());
        while (const auto line =
                   editor.read(olt + (code == 0 ? "ponctl> " : "ponctl [" + std::to_string(code) + "]> ")))
            if (!run_one(*line)) return;
        std::putchar('\n');
    }

private:
    LineEditor::Completed complete(std::string_view line) const
    {
        const Tab tab = press_tab(line, ask);
        return {tab.typed, tab.choice};
    }

    // Returns whether the shell continues.
    bool run_one(const std::string &line)
    {
        if (line.find_first_not_of(" \t") == line.npos) return true;
        if (!is_secret(line)) editor.keep(line);
        try {
            const std::vector<std::string> words = split_line(line);
            if (words.empty()) return true;
            if (words.size() == 1 && (words[0] == "exit" || words[0] == "quit")) return false;
            const Ended ended = lines.run(words, true);
            if (ended.interrupted) std::putchar('\n');
            code = ended.code;
        } catch (const Error &error) {
            complain(error.what());
            code = exit_usage;
        }
        return true;
    }

    const Lines lines;
    const Ask ask = [this](const std::vector<std::string> &words) { return lines.json_of(words); };
    int code = exit_success; // exit code of the last command
    LineEditor editor;
};

ExitCode run_shell(const Output &output, const GlobalOptions &global)
{
    refuse_nested(global, "shell");
    if (!isatty(STDIN_FILENO)) return run_batch(output, {"-"}, global);
    Shell(global).run();
    return exit_success;
}

} // namespace

void add_shell(Program &program)
{
    Command &shell = program.tree.add("shell", "Runs the lines that you type, with completion and history");
    shell.hidden = program.global.nested;
    shell.footer = footer;
    shell.run = [&global = program.global](const Output &output) { return run_shell(output, global); };
    program.line_runners.push_back(&shell);
}

} // namespace ponctl
