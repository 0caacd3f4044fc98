#include "shell/line_editor.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <new>
#include <utility>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <histedit.h>

namespace ponctl
{
namespace
{

constexpr int longest_history = 1000; // number of lines

size_t terminal_width()
{
    winsize size{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

// Prints words in columns, as many columns as fit. The order of the words goes down the columns.
void print_columns(const std::vector<std::string> &words)
{
    size_t width = 0;
    for (const std::string &word : words)
        width = std::max(width, word.size() + 2);
    const size_t columns = std::max<size_t>(1, terminal_width() / width);
    const size_t lines = (words.size() + columns - 1) / columns;
    for (size_t line = 0; line < lines; ++line) {
        for (size_t at = line; at < words.size(); at += lines)
            std::printf("%-*s", at + lines < words.size() ? static_cast<int>(width) : 0, words[at].c_str());
        std::putchar('\n');
    }
}

std::vector<std::string> lines_of(const std::filesystem::path &file)
{
    std::vector<std::string> lines;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

// Writes a file that only its owner may read.
bool write_lines(const std::filesystem::path &file, int flags, const std::vector<std::string> &lines)
{
    const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | flags, S_IRUSR | S_IWUSR);
    if (descriptor < 0) return false;
    std::string text;
    for (const std::string &line : lines)
        text.append(line).push_back('\n');
    // Each line is written by one call, so that several shells may share the file.
    const bool written = fchmod(descriptor, S_IRUSR | S_IWUSR) == 0 &&
                         write(descriptor, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    return close(descriptor) == 0 && written;
}

// Returns the last lines of earlier sessions. The other lines are removed from the file.
std::vector<std::string> read_history(const std::filesystem::path &file)
{
    std::vector<std::string> lines = lines_of(file);
    if (lines.size() <= longest_history) return lines;
    lines.erase(lines.begin(), lines.end() - longest_history);
    const std::filesystem::path shortened = file.string() + "." + std::to_string(getpid());
    std::error_code failed;
    if (write_lines(shortened, O_TRUNC, lines)) std::filesystem::rename(shortened, file, failed);
    return lines;
}

} // namespace

struct LineEditor::Terminal {
    Helpers helpers;
    std::filesystem::path file;
    EditLine *editor = nullptr;
    History *history = nullptr;
    std::string prompt;
    bool interrupted = false;

    ~Terminal()
    {
        if (editor) el_end(editor);
        if (history) history_end(history);
    }

    static Terminal &of(EditLine *editor)
    {
        void *self = nullptr;
        el_get(editor, EL_CLIENTDATA, &self);
        return *static_cast<Terminal *>(self);
    }

    std::string_view line_to_cursor() const
    {
        const LineInfo *line = el_line(editor);
        return {line->buffer, static_cast<size_t>(line->cursor - line->buffer)};
    }

    static char *show_prompt(EditLine *editor) { return of(editor).prompt.data(); }

    static unsigned char complete(EditLine *editor, int)
    {
        const Terminal &self = of(editor);
        const Completed completed = self.helpers.complete(self.line_to_cursor());
        if (!completed.choice.empty()) {
            std::putchar('\n');
            print_columns(completed.choice);
            el_set(editor, EL_REFRESH);
            return CC_NORM;
        }
        if (completed.typed.empty() || el_insertstr(editor, completed.typed.c_str())) return CC_REFRESH_BEEP;
        return CC_REFRESH;
    }

    static unsigned char help(EditLine *editor, int)
    {
        const Terminal &self = of(editor);
        const std::string_view line = self.line_to_cursor();
        if (self.helpers.keeps_question_mark(line)) return el_insertstr(editor, "?") ? CC_ERROR : CC_REFRESH;
        std::printf("?\n%s", self.helpers.help(line).c_str());
        el_set(editor, EL_REFRESH);
        return CC_NORM;
    }

    static unsigned char interrupt(EditLine *editor, int)
    {
        of(editor).interrupted = true;
        std::puts("^C");
        return CC_EOF;
    }

    void remember(const std::string &line)
    {
        HistEvent event;
        ::history(history, &event, H_ENTER, line.c_str());
    }
};

LineEditor::LineEditor(const char *program, Helpers helpers, const std::filesystem::path &history)
    : terminal(std::make_unique<Terminal>())
{
    terminal->helpers = std::move(helpers);
    terminal->file = history;
    EditLine *editor = terminal->editor = el_init(program, stdin, stdout, stderr);
    terminal->history = history_init();
    if (!editor || !terminal->history) throw std::bad_alloc();
    HistEvent event;
    ::history(terminal->history, &event, H_SETSIZE, longest_history);
    ::history(terminal->history, &event, H_SETUNIQUE, 1);
    el_set(editor, EL_CLIENTDATA, terminal.get());
    el_set(editor, EL_SIGNAL, 1);
    el_set(editor, EL_EDITOR, "emacs");
    el_set(editor, EL_PROMPT, &Terminal::show_prompt);
    el_set(editor, EL_HIST, ::history, terminal->history);
    el_source(editor, nullptr); // users put their own settings in ~/.editrc
    // The library makes no copies of wide names. It would never free such copies.
    el_wset(editor, EL_ADDFN, L"ponctl-complete", L"Completes a word", &Terminal::complete);
    el_wset(editor, EL_ADDFN, L"ponctl-help", L"Shows what can come next", &Terminal::help);
    el_wset(editor, EL_ADDFN, L"ponctl-interrupt", L"Starts the line anew", &Terminal::interrupt);
    el_set(editor, EL_BIND, "^I", "ponctl-complete", nullptr);
    el_set(editor, EL_BIND, "?", "ponctl-help", nullptr);
    el_set(editor, EL_BIND, "^C", "ponctl-interrupt", nullptr);
    // While a line is typed, Ctrl-C is a key and not a signal.
    el_set(editor, EL_SETTY, "-d", "-isig", nullptr);
    if (terminal->file.empty()) return;
    std::error_code failed; // after a failure no line is kept
    std::filesystem::create_directories(terminal->file.parent_path(), failed);
    for (const std::string &line : read_history(terminal->file))
        terminal->remember(line);
}

LineEditor::~LineEditor() = default;

std::optional<std::string> LineEditor::read(const std::string &prompt)
{
    terminal->prompt = prompt;
    for (;;) {
        terminal->interrupted = false;
        int length = 0;
        const char *line = el_gets(terminal->editor, &length);
        if (terminal->interrupted) continue;
        if (!line || length <= 0) return std::nullopt;
        std::string text(line, static_cast<size_t>(length));
        while (text.ends_with('\n') || text.ends_with('\r'))
            text.pop_back();
        return text;
    }
}

void LineEditor::keep(const std::string &line)
{
    terminal->remember(line);
    if (!terminal->file.empty()) write_lines(terminal->file, O_APPEND, {line});
}

} // namespace ponctl
