#include "embedded/child.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <stdexcept>

#include "daemon/thread.h"

namespace ponsim
{
namespace
{

constexpr std::chrono::seconds start_bound{30}, stop_bound{10};

std::string describe(const siginfo_t &info)
{
    if (info.si_code == CLD_EXITED) return "it ended with status " + std::to_string(info.si_status);
    return "it was ended by signal " + std::to_string(info.si_status);
}

} // namespace

Child::Child(std::vector<std::string> command, int descriptor) : words(std::move(command)), inherited(descriptor)
{
    for (std::string &word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    keeper = start_without_signals(&Child::keep, this);

    std::unique_lock lock(mutex);
    changed.wait_for(lock, start_bound, [this] { return phase != Phase::starting; });
    if (phase == Phase::serving) return;
    const std::string reason = phase == Phase::ended ? how : "it does not serve";
    lock.unlock();
    stop();
    throw std::runtime_error(words[0] + " did not start: " + reason + (said.empty() ? "" : "; it said: " + said));
}

Child::~Child()
{
    stop();
}

std::string Child::end()
{
    const std::lock_guard lock(mutex);
    return how;
}

void Child::enter(Phase next, const std::string &message)
{
    const std::lock_guard lock(mutex);
    phase = next;
    (next == Phase::ended ? how : said) = message;
    changed.notify_all();
}

// The keeper's thread lives as long as the child, because the kernel ends the child together with the thread that
// forked it.
void Child::keep()
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC)) return enter(Phase::ended, std::strerror(errno));
    const pid_t parent = getpid();
    const pid_t forked = fork();
    if (forked == 0) run(parent, ends[1]);
    const int error = errno;
    close(ends[1]);
    if (forked > 0) {
        {
            const std::lock_guard lock(mutex);
            pid = forked;
        }
        follow(ends[0]);
        siginfo_t info{};
        // The child is not reaped until nobody can send it a signal any more.
        while (waitid(P_PID, static_cast<id_t>(forked), &info, WEXITED | WNOWAIT) && errno == EINTR)
            continue;
        enter(Phase::ended, describe(info));
    } else {
        enter(Phase::ended, std::strerror(error));
    }
    close(ends[0]);
}

// Runs in the child. Another thread of the parent may have held any lock, so this does only what is safe then.
void Child::run(pid_t parent, int output)
{
    sigset_t none;
    sigemptyset(&none);
    signal(SIGTERM, SIG_DFL);
    pthread_sigmask(SIG_SETMASK, &none, nullptr);
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent) _exit(1); // the parent has already ended
    if (inherited >= 0) fcntl(inherited, F_SETFD, 0);
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    execvp(arguments[0], arguments.data());
    const char *const reason = strerrordesc_np(errno);
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, reason, std::strlen(reason));
    _exit(127);
}

// Reads the child's output until its end: the reason when it does not start, a line when it serves, and then its log.
void Child::follow(int output)
{
    std::string text;
    bool serving = false;
    char bytes[4096];
    for (ssize_t got; (got = read(output, bytes, sizeof bytes)) > 0 || (got < 0 && errno == EINTR);) {
        if (got < 0) continue;
        if (serving) {
            // When standard error cannot be written, there is nobody to tell.
            [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, bytes, static_cast<size_t>(got));
            continue;
        }
        text.append(bytes, static_cast<size_t>(got));
        const size_t line = text.find("ponsim: serving on ");
        serving = line != std::string::npos && text.find('\n', line) != std::string::npos;
        if (serving) enter(Phase::serving, {});
    }
    while (!text.empty() && text.back() == '\n')
        text.pop_back();
    const std::lock_guard lock(mutex);
    if (!serving) said = text;
}

void Child::stop()
{
    {
        std::unique_lock lock(mutex);
        const auto ended = [this] { return phase == Phase::ended; };
        if (!ended() && pid > 0) kill(pid, SIGTERM);
        if (!changed.wait_for(lock, stop_bound, ended) && pid > 0) kill(pid, SIGKILL);
    }
    keeper.join();
    if (pid > 0) waitpid(pid, nullptr, 0);
}

} // namespace ponsim
