// Interrupts of the terminal that are counted.
#pragma once

#include <csignal>

namespace ponctl
{

// While it lives, an interrupt is counted, and does nothing else in this process. One lives at a time.
class CountedInterrupts
{
public:
    CountedInterrupts()
    {
        counted = 0;
        struct sigaction counting {
        };
        counting.sa_handler = [](int) { counted = counted + 1; };
        sigaction(SIGINT, &counting, &before);
    }
    ~CountedInterrupts() { sigaction(SIGINT, &before, nullptr); }
    CountedInterrupts(const CountedInterrupts &) = delete;
    CountedInterrupts &operator=(const CountedInterrupts &) = delete;

    int count() const { return counted; }

private:
    static inline volatile std::sig_atomic_t counted = 0;
    struct sigaction before;
};

} // namespace ponctl
