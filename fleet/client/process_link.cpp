#include "fleet/client/process_link.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "text/utf8.h"
#include "text/words.h"

namespace fleet
{
namespace
{

constexpr size_t most_complained = 2000, part = 65536;
// So long a program may take to end by itself when nobody listens to it any more.
constexpr std::chrono::milliseconds grace{2000}, between_looks{10};

uint64_t now()
{
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::milliseconds>(time).count());
}

// The pairs of descriptors of which the program gets one each.
struct Pairs {
    int channel[2] = {-1, -1}, errors[2] = {-1, -1};

    Pairs() = default;
    Pairs(const Pairs &) = delete;
    ~Pairs()
    {
        for (const int each : {channel[0], channel[1], errors[0], errors[1]})
            if (each >= 0) close(each);
    }
};

// Starts the program. Returns 0 or an error.
int spawn(const std::vector<std::string> &words, const Pairs &pairs, pid_t &child)
{
    std::vector<char *> arguments;
    for (const std::string &word : words)
        arguments.push_back(const_cast<char *>(word.c_str()));
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, pairs.channel[1], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&files, pairs.channel[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&files, pairs.errors[1], STDERR_FILENO);
    // The program has the signals that every program begins with, whatever this one has made of its own.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none, ended;
    sigemptyset(&none);
    sigemptyset(&ended);
    for (const int signal : {SIGPIPE, SIGINT, SIGTERM, SIGHUP})
        sigaddset(&ended, signal);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &ended);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    const int error = posix_spawnp(&child, arguments[0], &files, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return error;
}

} // namespace

ProcessLink::ProcessLink(const std::vector<std::string> &words, uint32_t milliseconds) : program(text::join(words, " "))
{
    Pairs pairs;
    if (words.empty()) throw Unreachable("there is no program to run");
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, pairs.channel) != 0 || pipe2(pairs.errors, O_CLOEXEC) != 0)
        throw Unreachable(program + ": " + std::strerror(errno));
    if (const int error = spawn(words, pairs, child); error != 0) {
        child = -1;
        throw Unreachable(program + " cannot be run: " + std::strerror(error));
    }
    channel = std::exchange(pairs.channel[0], -1);
    errors = std::exchange(pairs.errors[0], -1);
    fcntl(channel, F_SETFL, O_NONBLOCK);
    fcntl(errors, F_SETFL, O_NONBLOCK);
    close(std::exchange(pairs.channel[1], -1));
    close(std::exchange(pairs.errors[1], -1));

    try {
        const uint64_t until = now() + milliseconds;
        std::optional<std::string> line;
        while (!(line = take_line()) && reason.empty())
            if (!wait(false, until)) lose("said nothing within " + std::to_string(milliseconds) + " ms");
        if (!line) throw Unreachable(reason);
        said = hello_from_line(*line);
    } catch (const call::UsageError &error) {
        lose(std::string("is not what answers for an OLT: ") + error.what());
        end();
        throw Unreachable(reason);
    } catch (...) {
        end();
        throw;
    }
}

ProcessLink::~ProcessLink()
{
    end();
}

std::optional<std::string> ProcessLink::exchange(const std::string &request, catalogue::Class impact,
                                                 uint32_t milliseconds)
{
    const uint64_t until = now() + milliseconds;
    const std::string correlation = std::to_string(++number);
    std::string unsent = to_line(RequestFrame{correlation, impact, request}) + "\n";
    // What the program said since it was asked last may be that it ends.
    if (reason.empty()) read_output();
    if (!reason.empty()) throw Unreachable(reason);
    while (!unsent.empty()) {
        if (!wait(true, until)) lose("does not read what it is asked");
        if (reason.empty()) write(unsent);
        // Of a line without its end nothing is done.
        if (!reason.empty() && !unsent.empty()) throw Unreachable(reason);
    }
    for (;;) {
        while (const std::optional<std::string> line = take_line()) {
            try {
                AnswerFrame frame = answer_from_line(*line);
                // Answers to requests of before are late, and nobody wants them any more.
                if (frame.correlation == correlation) return std::move(frame.answer);
            } catch (const call::UsageError &error) {
                lose(std::string("says what is no answer: ") + error.what());
                return std::nullopt;
            }
        }
        if (!reason.empty() || !wait(false, until)) return std::nullopt;
    }
}

bool ProcessLink::wait(bool to_write, uint64_t until)
{
    const uint64_t time = now();
    if (time >= until) return false;
    pollfd polled[2] = {{channel, static_cast<short>(POLLIN | (to_write ? POLLOUT : 0)), 0}, {errors, POLLIN, 0}};
    const uint64_t longest = std::min<uint64_t>(until - time, 60'000);
    if (poll(polled, 2, static_cast<int>(longest)) < 0 && errno != EINTR) lose(std::strerror(errno));
    if (polled[1].revents != 0) read_errors();
    if (polled[0].revents & (POLLIN | POLLHUP | POLLERR)) read_output();
    return true;
}

void ProcessLink::write(std::string &text)
{
    const ssize_t size = send(channel, text.data(), text.size(), MSG_NOSIGNAL);
    if (size >= 0)
        text.erase(0, static_cast<size_t>(size));
    else if (errno != EAGAIN && errno != EINTR)
        lose("has ended");
}

void ProcessLink::read_output()
{
    for (;;) {
        const size_t size = received.size();
        received.resize(size + part);
        const ssize_t count = recv(channel, received.data() + size, part, 0);
        received.resize(size + static_cast<size_t>(std::max<ssize_t>(count, 0)));
        if (count > 0) {
            // A line ends somewhere: more than this is none.
            if (received.size() > longest_line + part) return lose("says more in a line than a line may have");
            continue;
        }
        if (count == 0) lose("has ended");
        if (count < 0 && errno != EAGAIN && errno != EINTR) lose(std::string("has ended: ") + std::strerror(errno));
        return;
    }
}

void ProcessLink::read_errors()
{
    char text[part];
    for (;;) {
        const ssize_t count = read(errors, text, sizeof text);
        if (count <= 0) {
            // The end of standard error alone says nothing.
            if (count == 0) close(std::exchange(errors, -1));
            return;
        }
        complained.append(text, static_cast<size_t>(count));
        if (complained.size() > most_complained) complained.erase(0, complained.size() - most_complained);
    }
}

std::optional<std::string> ProcessLink::take_line()
{
    const size_t end = received.find('\n', searched);
    searched = received.size();
    if (end == received.npos) return std::nullopt;
    std::string line = received.substr(0, end);
    received.erase(0, end + 1);
    searched = 0;
    return line;
}

void ProcessLink::lose(const std::string &why)
{
    if (!reason.empty()) return;
    // What it complains of comes before its end, but over another pipe.
    if (errors >= 0) read_errors();
    while (complained.ends_with('\n'))
        complained.pop_back();
    reason = text::printable(program) + " " + why;
    if (!complained.empty()) reason += "; it says: " + text::printable(complained, "\n");
}

void ProcessLink::end()
{
    for (int *each : {&channel, &errors})
        if (*each >= 0) close(std::exchange(*each, -1));
    if (child < 0) return;
    const auto until = std::chrono::steady_clock::now() + grace;
    while (waitpid(child, nullptr, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() >= until) {
            kill(child, SIGKILL);
            waitpid(child, nullptr, 0);
            break;
        }
        std::this_thread::sleep_for(between_looks);
    }
    child = -1;
}

std::vector<std::string> ssh_words(const std::string &host)
{
    if (host.empty() || host.starts_with('-'))
        throw call::UsageError("'" + text::printable(host) + "' is no host that ssh can reach");
    return {"ssh", "-T", "-o", "BatchMode=yes", "-o", "ConnectTimeout=10", "--", host, "ponctl serve --stdio"};
}

} // namespace fleet
