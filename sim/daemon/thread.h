// Threads of this process that are not the program's own take no signals, because signals are for the program to
// handle.
#pragma once

#include <csignal>
#include <thread>
#include <utility>

namespace ponsim
{

// Starts a thread that takes no signals.
template <class... Arguments>
std::thread start_without_signals(Arguments &&...arguments)
{
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    try {
        std::thread started(std::forward<Arguments>(arguments)...);
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        return started;
    } catch (...) {
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        throw;
    }
}

} // namespace ponsim
