// This file runs ponfront as a process of its own.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

class Ponfront
{
public:
    explicit Ponfront(std::vector<std::string> arguments);
    ~Ponfront(); // ends it without warning, if it has not ended
    Ponfront(const Ponfront &) = delete;
    Ponfront &operator=(const Ponfront &) = delete;

    // Waits for a line of the log that has this text, and returns it. Returns what was logged when no such line comes.
    std::string expect(const std::string &text);
    // Waits until it listens, and returns the port.
    uint16_t port();
    pid_t process() const { return child; }
    void send(int signal) const;
    // Sends the signal, or none for 0, and waits for the end. Returns the exit status, or a signal as a negative
    // number.
    int end(int signal = 0);

private:
    pid_t child = -1;
    int output = -1;
};
