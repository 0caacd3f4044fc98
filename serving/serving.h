// What daemons of ours have in common: they take signals in one place, tell the service manager how they are, and read
// their configuration again on demand.
#pragma once

#include <csignal>
#include <functional>

namespace serving
{

// Only the thread that calls this takes signals that end or reload a program, and only where it waits for them. To be
// called before there are other threads. Returns these signals.
sigset_t hold_signals();

// There may be more files than the usual limit, which is for programs that cannot have more.
void allow_many_files();

struct Daemon {
    std::function<bool()> is_alive;
    // Reads the configuration again. May throw std::runtime_error, which says why it goes on as before.
    std::function<void()> reload;
};

// Says that the daemon is ready, and goes on until a signal ends it. The service manager learns as often as it wants to
// know that the daemon lives.
void serve_until_ended(const Daemon &daemon, const sigset_t &signals);

} // namespace serving
