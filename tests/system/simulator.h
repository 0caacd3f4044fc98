// A Simulator is a ponsim that a test starts. Its state is removed with it. There can be one at a time.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

class Simulator
{
public:
    // Starts the daemon with these additional arguments, in the folder where this process's library looks for it.
    explicit Simulator(std::vector<std::string> arguments = {});
    ~Simulator();
    Simulator(const Simulator &) = delete;
    Simulator &operator=(const Simulator &) = delete;

    // Starts the daemon on the state that it left, and returns when the daemon serves.
    void start();
    // Ends the daemon without warning.
    void kill();

    pid_t process() const { return pid; }
    // Returns the folder of its sockets and its state.
    static const std::string &folder();

private:
    std::vector<std::string> options;
    std::string state;
    pid_t pid = 0;
};
