// This file has what the benchmarks of two processes share: a child on a processor of its own, and numbers of several
// rounds.
#pragma once

#include <sched.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

constexpr int any_processor = -1;

[[noreturn]] inline void die(const char *what)
{
    std::perror(what);
    std::exit(1);
}

inline void pin(int processor)
{
    if (processor == any_processor) return;
    cpu_set_t set;
    CPU_ZERO(&set);
    CPU_SET(processor, &set);
    if (sched_setaffinity(0, sizeof set, &set)) die("sched_setaffinity");
}

// A Server is a child process on a processor. It runs `serve` until its parent ends it or dies. It writes a byte when
// it is ready.
class Server
{
public:
    Server(int processor, const std::function<void(int ready)> &serve)
    {
        int ready[2];
        if (pipe(ready)) die("pipe");
        child = fork();
        if (child < 0) die("fork");
        if (child == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            pin(processor);
            serve(ready[1]);
            _exit(0);
        }
        close(ready[1]);
        char byte;
        if (read(ready[0], &byte, 1) != 1) die("server");
        close(ready[0]);
    }
    ~Server()
    {
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
    }
    Server(const Server &) = delete;

    pid_t process() const { return child; }

private:
    pid_t child;
};

inline void announce(int ready)
{
    if (write(ready, "", 1) != 1) die("write");
}

inline double median(std::vector<double> values)
{
    std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
    return values[values.size() / 2];
}
