// A Program is a daemon that a test runs. What it prints is read line by line.
#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

class Program
{
public:
    // The first word is the file of the program.
    explicit Program(std::vector<std::string> words);
    ~Program(); // kills it when it has not ended
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    // Waits for a line with this text, for half a minute at most, and returns it. Otherwise the test fails.
    std::string expect(const std::string &text);
    pid_t process() const { return child; }
    void send(int signal) const;
    // Sends the signal, unless it is 0, waits for the end, and returns the exit code, or the negative number of the
    // signal that ended it.
    int end(int signal = 0);

private:
    pid_t child = -1;
    int output;
};
