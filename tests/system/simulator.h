// A ponsim of the test's own, with a state of its own that goes with it. One at a time.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

class Simulator
{
public:
    // Starts the daemon with these arguments besides, where this process's library looks for it.
    explicit Simulator(std::vector<std::string> arguments = {});
    ~Simulator();
    Simulator(const Simulator &) = delete;
    Simulator &operator=(const Simulator &) = delete;

    // Starts the daemon on the state that it left, and returns when it serves.
    void start();
    // Ends it without warning.
    void kill();

    pid_t process() const { return pid; }
    // Where its sockets and its state are.
    static const std::string &folder();

private:
    std::vector<std::string> options;
    std::string state;
    pid_t pid = 0;
};
