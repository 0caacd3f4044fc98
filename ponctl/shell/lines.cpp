#include "shell/lines.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <functional>
#include <optional>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "cli/program.h"
#include "output/exit_code.h"
#include "output/interrupts.h"
#include "output/report.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

constexpr const char *quick_answer = "500"; // in milliseconds

// Runs a child process from its start to its end. An exception that it cannot handle ends the process, because it must
// never continue with the parent's work.
[[noreturn]] void live(const std::function<int()> &act) noexcept
{
    const int code = act();
    std::fflush(stdout);
    _exit(code);
}

pid_t start_child(const struct sigaction &interrupt, const std::function<int()> &act)
{
    std::fflush(stdout); // otherwise the child would write the same text again
    // An interrupt that comes now waits until it can end the child.
    sigset_t held, before;
    sigemptyset(&held);
    sigaddset(&held, SIGINT);
    sigprocmask(SIG_BLOCK, &held, &before);
    const pid_t child = fork();
    if (child == 0) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        sigaction(SIGINT, &interrupt, nullptr);
        sigprocmask(SIG_SETMASK, &before, nullptr);
        live(act);
    }
    sigprocmask(SIG_SETMASK, &before, nullptr);
    return child;
}

// Waits for the child and returns its exit code.
int wait_for(pid_t child)
{
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR)
        ;
    if (!WIFSIGNALED(status)) return WEXITSTATUS(status);
    const int signal = WTERMSIG(status);
    if (signal != SIGINT) complain(std::string("the command was ended by a signal: ") + strsignal(signal));
    return 128 + signal;
}

void redirect(int descriptor, const char *file, int flags)
{
    const int opened = open(file, flags | O_CLOEXEC);
    if (opened < 0 || dup2(opened, descriptor) < 0) _exit(exit_ipc);
}

// Passes on all that can be read.
void read_all(int descriptor, const std::function<void(std::string_view)> &pass)
{
    char chunk[4096];
    for (ssize_t length; (length = read(descriptor, chunk, sizeof chunk)) != 0;) {
        if (length > 0)
            pass({chunk, static_cast<size_t>(length)});
        else if (errno != EINTR)
            break;
    }
}

std::string contents(int descriptor)
{
    std::string text;
    read_all(descriptor, [&text](std::string_view chunk) { text.append(chunk); });
    return text;
}

// A LineFilter writes the lines that contain a text, in capital letters or not.
class LineFilter
{
public:
    explicit LineFilter(const std::string &text) : wanted(text::lower_case(text)) {}

    void add(std::string_view text)
    {
        for (const char c : text) {
            line.push_back(c);
            if (c == '\n') end_line();
        }
    }
    void end_line()
    {
        if (text::lower_case(line).find(wanted) != line.npos) std::fputs(line.c_str(), stdout);
        line.clear();
        std::fflush(stdout);
    }

private:
    const std::string wanted;
    std::string line;
};

// Takes "| include TEXT" off the words and returns the text, or nothing when the words do not end so. Throws a
// UsageError for any other word behind the bar.
std::optional<std::string> take_filter(std::vector<std::string> &words)
{
    const auto bar = std::ranges::find(words, "|");
    if (bar == words.end()) return std::nullopt;
    if (words.end() - bar != 3 || bar[1] != "include")
        throw UsageError("behind | there can be 'include TEXT' alone, which prints the lines that contain the text");
    std::string text = bar[2];
    words.erase(bar, words.end());
    return text;
}

} // namespace

Lines::Lines(const GlobalOptions &defaults) : options(defaults)
{
    options.nested = true;
    sigaction(SIGINT, nullptr, &interrupt);
    std::signal(SIGCHLD, SIG_DFL); // otherwise exit codes are lost when our parent process ignores the signal
}

bool is_secret(const std::string &line)
{
    return text::lower_case(line).find("passw") != line.npos;
}

Ended Lines::run(const std::vector<std::string> &line, bool has_input, std::FILE *errors) const
{
    std::vector<std::string> words = line;
    const std::optional<std::string> wanted = take_filter(words);
    const CountedInterrupts interrupts; // which are for the child
    int ends[2] = {-1, -1};
    if (wanted && pipe2(ends, O_CLOEXEC)) {
        complain(std::string("cannot make a pipe: ") + std::strerror(errno));
        return {exit_ipc, false};
    }
    const pid_t child = start_child(interrupt, [&] {
        if (!has_input) redirect(STDIN_FILENO, "/dev/null", O_RDONLY);
        if (wanted && dup2(ends[1], STDOUT_FILENO) < 0) return static_cast<int>(exit_ipc);
        if (errors && dup2(fileno(errors), STDERR_FILENO) < 0) return static_cast<int>(exit_ipc);
        return run_line(words, options);
    });
    if (wanted) {
        close(ends[1]);
        LineFilter filter(*wanted);
        if (child >= 0) read_all(ends[0], [&filter](std::string_view text) { filter.add(text); });
        filter.end_line();
        close(ends[0]);
    }
    if (child < 0) {
        complain(std::string("cannot start a process: ") + std::strerror(errno));
        return {exit_ipc, false};
    }
    const int code = wait_for(child);
    return {code, interrupts.count() > 0};
}

std::string Lines::json_of(const std::vector<std::string> &words) const
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC)) return {};
    const pid_t child = start_child(interrupt, [&] {
        redirect(STDIN_FILENO, "/dev/null", O_RDONLY);
        redirect(STDERR_FILENO, "/dev/null", O_WRONLY);
        if (dup2(ends[1], STDOUT_FILENO) < 0) return static_cast<int>(exit_ipc);
        GlobalOptions quick;
        quick.nested = true;
        quick.socket_dir = options.socket_dir;
        quick.format = "json";
        quick.timeout = quick_answer;
        return run_line(words, quick);
    });
    close(ends[1]);
    std::string json = child < 0 ? std::string() : contents(ends[0]);
    close(ends[0]);
    return child >= 0 && wait_for(child) == exit_success ? json : std::string();
}

} // namespace ponctl
