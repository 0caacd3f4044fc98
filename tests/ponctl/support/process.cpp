#include "process.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>

#include <fcntl.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

struct Close {
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

std::string contents(std::FILE *file)
{
    std::string text;
    char chunk[4096];
    std::rewind(file);
    while (const size_t count = std::fread(chunk, 1, sizeof chunk, file))
        text.append(chunk, count);
    return text;
}

// When the tool is built for another machine, the words before its name run it.
pid_t start(posix_spawn_file_actions_t &actions, short flags, const std::vector<std::string> &arguments)
{
    // A test run in the background may ignore the signals that end a program from the keyboard, so the child restores
    // them.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t of_keyboard;
    sigemptyset(&of_keyboard);
    sigaddset(&of_keyboard, SIGINT);
    sigaddset(&of_keyboard, SIGQUIT);
    posix_spawnattr_setsigdefault(&attributes, &of_keyboard);
    posix_spawnattr_setflags(&attributes, static_cast<short>(flags | POSIX_SPAWN_SETSIGDEF));

    std::istringstream emulator(EMULATOR);
    std::vector<std::string> words{std::istream_iterator<std::string>(emulator), {}};
    words.emplace_back(PONCTL);
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char *> argv;
    for (std::string &word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    pid_t pid = 0;
    const int failure = posix_spawnp(&pid, argv.front(), &actions, &attributes, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    if (failure) throw std::runtime_error("cannot run " + words.front());
    return pid;
}

} // namespace

Input::Input(const std::string &text) : file(memfd_create("input", MFD_CLOEXEC))
{
    if (write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        throw std::runtime_error("cannot keep a text");
    lseek(file, 0, SEEK_SET);
}

Input::~Input()
{
    close(file);
}

Finished ponctl(const std::vector<std::string> &arguments, int output, int input, int error)
{
    const File out(std::tmpfile()), err(std::tmpfile());
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (input < 0)
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", 0, 0);
    else
        posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output < 0 ? fileno(out.get()) : output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, error < 0 ? fileno(err.get()) : error, STDERR_FILENO);

    const pid_t pid = start(actions, 0, arguments);
    int status = 0;
    waitpid(pid, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(out.get()), contents(err.get())};
}

Terminal::Terminal(unsigned short columns) : keyboard(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
{
    const winsize size{24, columns, 0, 0};
    if (grantpt(keyboard) || unlockpt(keyboard) ||
        (terminal = open(ptsname(keyboard), O_RDWR | O_NOCTTY | O_CLOEXEC)) < 0 || ioctl(terminal, TIOCSWINSZ, &size))
        throw std::runtime_error("no terminal");
    reader = std::thread([this] {
        char text[4096];
        ssize_t length = 0;
        while ((length = read(keyboard, text, sizeof text)) > 0) {
            const std::lock_guard<std::mutex> lock(guard);
            written.append(text, static_cast<size_t>(length));
            more.notify_one();
        }
    });
}

Terminal::~Terminal()
{
    text();
    close(keyboard);
}

void Terminal::type(const std::string &text) const
{
    if (write(keyboard, text.data(), text.size()) < 0) throw std::runtime_error("cannot type");
}

std::string Terminal::text()
{
    // When the last possible writer has closed the terminal, the reader has read everything.
    if (reader.joinable()) {
        close(terminal);
        reader.join();
    }
    return written;
}

std::string Terminal::expect(const std::string &text)
{
    constexpr std::chrono::minutes long_enough{1};
    std::unique_lock<std::mutex> lock(guard);
    size_t at = 0;
    if (!more.wait_for(lock, long_enough, [&] { return (at = written.find(text, expected)) != written.npos; }))
        throw std::runtime_error("'" + text + "' does not come, but '" + written.substr(expected) + "'");
    const std::string between = written.substr(expected, at - expected);
    expected = at + text.size();
    return between;
}

Session::Session(const std::vector<std::string> &arguments)
{
    // The first terminal that the leader of a new session opens becomes its controlling terminal, so it receives its
    // Ctrl-C.
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, ptsname(terminal.keyboard), O_RDWR, 0);
    posix_spawn_file_actions_adddup2(&actions, STDIN_FILENO, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, STDIN_FILENO, STDERR_FILENO);
    process = start(actions, POSIX_SPAWN_SETSID, arguments);
}

Session::~Session()
{
    if (!process) return;
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
}

int Session::end()
{
    int status = 0;
    waitpid(process, &status, 0);
    process = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
