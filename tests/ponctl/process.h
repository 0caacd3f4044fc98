// Runs the tool as a process of its own.
#pragma once

#include <string>
#include <thread>
#include <vector>

struct Finished {
    int code;
    std::string out;
    std::string err;
};

// Runs ponctl with these arguments and waits for it. Its output is what `out` gets, unless it goes to a descriptor of
// the caller's; its input is one of the caller's, or nothing; its standard error is `err`, or one of the caller's.
Finished ponctl(const std::vector<std::string> &arguments, int output = -1, int input = -1, int error = -1);

// A terminal, to run ponctl on.
class Terminal
{
public:
    explicit Terminal(unsigned short columns = 80);
    ~Terminal();
    Terminal(const Terminal &) = delete;
    Terminal &operator=(const Terminal &) = delete;

    int descriptor() const { return terminal; }
    // Has someone type this.
    void type(const std::string &text) const;
    // All that was written on it; nothing can be any more.
    std::string text();

private:
    int keyboard, terminal;
    std::string written;
    std::thread reader; // else a writer waits when the terminal's buffer is full
};
