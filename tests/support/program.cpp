#include "program.h"

#include <csignal>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

Program::Program(std::vector<std::string> words)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC)) throw std::runtime_error("no pipe");
    std::vector<char *> arguments;
    for (std::string &word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    child = fork();
    if (child == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        dup2(ends[1], STDOUT_FILENO);
        dup2(ends[1], STDERR_FILENO);
        execv(arguments[0], arguments.data());
        _exit(127);
    }
    close(ends[1]);
    output = ends[0];
}

Program::~Program()
{
    if (child > 0) end(SIGKILL);
    close(output);
}

std::string Program::expect(const std::string &text)
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

void Program::send(int signal) const
{
    kill(child, signal);
}

int Program::end(int signal)
{
    if (signal) kill(child, signal);
    int status = 0;
    waitpid(child, &status, 0);
    child = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}
