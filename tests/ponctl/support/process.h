// This file runs the tool as a process of its own.
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

// Runs ponctl with these arguments and waits for it. `out` gets its output, unless the caller gives a descriptor for
// it. Its input is a descriptor of the caller, or nothing. `err` gets its standard error, unless the caller gives a
// descriptor for it.
Finished ponctl(const std::vector<std::string> &arguments, int output = -1, int input = -1, int error = -1);

// An Input is a text that ponctl reads from a descriptor.
class Input
{
public:
    explicit Input(const std::string &text);
    ~Input();
    Input(const Input &) = delete;
    Input &operator=(const Input &) = delete;

    int descriptor() const { return file; }

private:
    int file;
};

// A Terminal is a terminal on which ponctl runs.
class Terminal
{
public:
    explicit Terminal(unsigned short columns = 80);
    ~Terminal();
    Terminal(const Terminal &) = delete;
    Terminal &operator=(const Terminal &) = delete;

    int descriptor() const { return terminal; }
    // Types this text, as a user would.
    void type(const std::string &text) const;
    // Returns everything that was written on the terminal. Nothing can be written on it any more.
    std::string text();
    // Waits until this text stands on the terminal, behind everything that was waited for before. Returns the text
    // between them.
    std::string expect(const std::string &text);

private:
    friend class Session;

    int keyboard, terminal;
    std::mutex guard;
    std::condition_variable more;
    std::string written;
    size_t expected = 0; // length of the text that was waited for
    std::thread reader;  // without it, a writer would wait when the terminal's buffer is full
};

// A Session is ponctl at work on a terminal of its own, with a user who types.
class Session
{
public:
    explicit Session(const std::vector<std::string> &arguments);
    ~Session(); // hangs up, and ends the session if it has not ended
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    void type(const std::string &text) const { terminal.type(text); }
    std::string expect(const std::string &text) { return terminal.expect(text); }
    // Waits for the session to end. Returns its exit code.
    int end();

private:
    Terminal terminal;
    int process = 0;
};
