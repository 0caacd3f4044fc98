// A ponsim of the test's own, in a folder of its own that goes with it.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

class Simulator
{
public:
    // Makes the folder, points BOARD_IPC_DIR to it and starts the daemon with these arguments besides.
    explicit Simulator(std::vector<std::string> arguments = {});
    ~Simulator();
    Simulator(const Simulator &) = delete;
    Simulator &operator=(const Simulator &) = delete;

    // Starts the daemon on the state that it left, and returns when it serves.
    void start();
    // Ends it without warning.
    void kill();

    pid_t process() const { return pid; }
    const std::string &folder() const { return directory; }

private:
    std::string directory;
    std::vector<std::string> options;
    pid_t pid = 0;
};
