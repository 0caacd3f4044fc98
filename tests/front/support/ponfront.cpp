#include "ponfront.h"

#include <csignal>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

Ponfront::Ponfront(std::vector<std::string> arguments)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC)) throw std::runtime_error("no pipe");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
    std::vector<char *> words{const_cast<char *>(PONFRONT)};
    for (std::string &argument : arguments)
        words.push_back(argument.data());
    words.push_back(nullptr);
    const int failure = posix_spawn(&child, PONFRONT, &actions, nullptr, words.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    output = ends[0];
    if (failure) throw std::runtime_error("cannot run ponfront");
}

Ponfront::~Ponfront()
{
    if (child > 0) end(SIGKILL);
    close(output);
}

std::string Ponfront::expect(const std::string &text)
{
    std::string all, line;
    pollfd ready{output, POLLIN, 0};
    char byte;
    while (poll(&ready, 1, 30'000) == 1 && read(output, &byte, 1) == 1) {
        if (byte != '\n') {
            line += byte;
            continue;
        }
        if (line.find(text) != line.npos) return line;
        all += line + '\n';
        line.clear();
    }
    ADD_FAILURE() << "no line has '" << text << "':\n" << all;
    return all;
}

uint16_t Ponfront::port()
{
    const std::string line = expect("listening on ");
    return static_cast<uint16_t>(std::atoi(line.c_str() + line.rfind(' ')));
}

void Ponfront::send(int signal) const
{
    kill(child, signal);
}

int Ponfront::end(int signal)
{
    if (signal) kill(child, signal);
    int status = 0;
    waitpid(child, &status, 0);
    child = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}
