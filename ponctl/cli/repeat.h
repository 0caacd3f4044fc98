// This file takes readings again and again.
#pragma once

#include <csignal>
#include <cstdint>
#include <string>
#include <string_view>

namespace ponctl
{

inline constexpr std::string_view default_interval = "2"; // seconds between readings

// A Repeat counts readings, and waits between them. While it lives, an interrupt ends the wait and with it the
// readings, and does nothing else.
class Repeat
{
public:
    // `interval` is in seconds, with decimals. `count` is the number of readings; there is no end when it is empty.
    // Both are words of the command line. A UsageError names them as --watch and --count.
    Repeat(const std::string &interval, const std::string &count);
    ~Repeat();
    Repeat(const Repeat &) = delete;
    Repeat &operator=(const Repeat &) = delete;

    // Returns whether there is another reading to take, after waiting for it. The first reading is taken at once.
    bool next();
    // Returns whether an interrupt ended the readings, and not their number.
    bool interrupted() const { return was_interrupted; }

private:
    uint32_t milliseconds;
    uint32_t wanted; // 0: no end
    uint32_t taken = 0;
    bool was_interrupted = false;
    sigset_t ending, before;
};

} // namespace ponctl
