// Runs the tool as a process of its own.
#pragma once

#include <condition_variable>
#include <mutex>
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
    // Waits until this stands on it, behind all that was waited for before. Returns what stands between.
    std::string expect(const std::string &text);

private:
    friend class Session;

    int keyboard, terminal;
    std::mutex guard;
    std::condition_variable more;
    std::string written;
    size_t expected = 0; // how much of it was waited for
    std::thread reader;  // else a writer waits when the terminal's buffer is full
};

// ponctl at work on a terminal of its own, with someone who types.
class Session
{
public:
    explicit Session(const std::vector<std::string> &arguments);
    ~Session(); // hangs up and ends it, where it has not ended
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    void type(const std::string &text) const { terminal.type(text); }
    std::string expect(const std::string &text) { return terminal.expect(text); }
    // Waits for its end. Returns its exit code.
    int end();

private:
    Terminal terminal;
    int process = 0;
};
