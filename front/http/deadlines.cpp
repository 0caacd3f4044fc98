#include "http/deadlines.h"

#include <sys/socket.h>

namespace front
{

Deadlines::Deadlines(std::chrono::milliseconds span) : longest(span), thread(&Deadlines::run, this) {}

Deadlines::~Deadlines()
{
    {
        const std::lock_guard lock(guard);
        stopping = true;
    }
    stopped.notify_all();
    thread.join();
}

void Deadlines::begin(int socket)
{
    const std::lock_guard lock(guard);
    deadlines[socket] = Clock::now() + longest;
}

void Deadlines::suspend(int socket)
{
    const std::lock_guard lock(guard);
    deadlines[socket].reset();
}

void Deadlines::forget(int socket)
{
    const std::lock_guard lock(guard);
    deadlines.erase(socket);
}

// A socket is shut down, and not closed: the server sees its end, and closes it.
void Deadlines::run()
{
    constexpr int looks = 8; // in the longest time
    std::unique_lock lock(guard);
    while (!stopped.wait_for(lock, longest / looks, [this] { return stopping; })) {
        const Clock::time_point now = Clock::now();
        for (auto &[socket, deadline] : deadlines) {
            if (!deadline || *deadline > now) continue;
            shutdown(socket, SHUT_RDWR);
            deadline.reset();
        }
    }
}

} // namespace front
