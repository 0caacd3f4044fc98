// Readings that are taken again and again.
#pragma once

#include <csignal>
#include <cstdint>
#include <string>

namespace ponctl
{

// Counts readings, and waits between them. While it lives, an interrupt ends the wait and with it the readings, and
// does nothing else.
class Repeat
{
public:
    // `interval` in seconds, with decimals; `count` readings, without an end where it is empty. Each as a word of the
    // command line, which a UsageError names as --watch and --count.
    Repeat(const std::string &interval, const std::string &count);
    ~Repeat();
    Repeat(const Repeat &) = delete;
    Repeat &operator=(const Repeat &) = delete;

    // Whether there is another reading to take, after the wait for it; the first is taken at once.
    bool next();

private:
    uint32_t milliseconds;
    uint32_t wanted; // 0: without an end
    uint32_t taken = 0;
    sigset_t ending, before;
};

} // namespace ponctl
