// How long a client may take. The server itself ends connections on which nothing comes; this ends those on which
// something comes now and then, and never all of it.
#pragma once

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <optional>
#include <thread>

namespace front
{

class Deadlines
{
public:
    // A request is here, and its answer is taken, within this time each.
    explicit Deadlines(std::chrono::milliseconds span);
    ~Deadlines();
    Deadlines(const Deadlines &) = delete;
    Deadlines &operator=(const Deadlines &) = delete;

    // Any thread may call these, with the socket of a connection.

    // Something begins that has to come to its end: a request, or an answer.
    void begin(int socket);
    // What goes on is not the client's: an answer is being made, or a stream goes on until somebody ends it.
    void suspend(int socket);
    // The socket is about to be closed.
    void forget(int socket);

private:
    using Clock = std::chrono::steady_clock;

    void run();

    const std::chrono::milliseconds longest;
    std::mutex guard;
    std::condition_variable stopped;
    std::map<int, std::optional<Clock::time_point>> deadlines; // by socket
    bool stopping = false;
    std::thread thread;
};

} // namespace front
