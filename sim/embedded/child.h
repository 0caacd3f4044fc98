// A Child is a ponsim as a child process.
#pragma once

#include <sys/types.h>

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace ponsim
{

class Child
{
public:
    // Runs the program that is the first of these words, with the others as its arguments. It inherits the descriptor
    // `inherited`, unless that is -1. Returns when it serves. Throws std::runtime_error.
    Child(std::vector<std::string> words, int inherited);
    // Ends the child.
    ~Child();
    Child(const Child &) = delete;

    // Returns how the child ended, or an empty text while it runs.
    std::string end();

private:
    enum class Phase { starting, serving, ended };

    void keep();
    [[noreturn]] void run(pid_t parent, int output);
    void follow(int output);
    void enter(Phase next, const std::string &message);
    void stop();

    std::vector<std::string> words;
    std::vector<char *> arguments;
    const int inherited;
    std::mutex mutex; // guards what follows
    std::condition_variable changed;
    Phase phase = Phase::starting;
    pid_t pid = -1;
    std::string said; // its output before it served
    std::string how;  // how it ended
    std::thread keeper;
};

} // namespace ponsim
