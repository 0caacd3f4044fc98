// This fixture runs the daemon as a process of its own.
#pragma once

#include <csignal>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace ponsim
{

class Daemon
{
public:
    // Starts the daemon with these options.
    explicit Daemon(std::vector<std::string> options)
    {
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        child = fork();
        if (child == 0) {
            dup2(ends[1], STDOUT_FILENO);
            dup2(ends[1], STDERR_FILENO);
            close(ends[0]);
            close(ends[1]);
            std::vector<char *> arguments{const_cast<char *>(PONSIM)};
            for (std::string &option : options)
                arguments.push_back(option.data());
            arguments.push_back(nullptr);
            execv(PONSIM, arguments.data());
            _exit(127);
        }
        close(ends[1]);
        output = ends[0];
    }
    ~Daemon()
    {
        if (child > 0) stop(SIGKILL);
        close(output);
    }
    Daemon(const Daemon &) = delete;

    // Returns the daemon's next line. The line is empty at the end of the output, or when no line comes for 20 s.
    std::string line()
    {
        std::string text;
        pollfd ready{output, POLLIN, 0};
        char byte;
        while (poll(&ready, 1, 20000) == 1 && read(output, &byte, 1) == 1 && byte != '\n')
            text += byte;
        return text;
    }
    bool serves()
    {
        const std::string first = line();
        return first.starts_with("ponsim: serving on ") || (ADD_FAILURE() << first, false);
    }
    // Returns all output until the daemon ends by itself, and its exit status.
    std::string rest(int &exit_status)
    {
        std::string text;
        for (std::string next = line(); !next.empty(); next = line())
            text += next + "\n";
        exit_status = wait();
        return text;
    }
    // Returns the exit status, or the signal that ended the daemon as a negative number.
    int stop(int signal)
    {
        kill(child, signal);
        return wait();
    }

private:
    int wait()
    {
        int status = 0;
        waitpid(child, &status, 0);
        child = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

    pid_t child;
    int output;
};

} // namespace ponsim
