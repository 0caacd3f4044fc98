// Clients that are sent messages for as long as they listen.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <set>
#include <thread>

#include <microhttpd.h>

#include "http/message.h"

namespace front
{

class Streams
{
public:
    // Each client hears so often at least that the server lives. A connection whose client is gone is found out so.
    explicit Streams(std::chrono::milliseconds beat);
    ~Streams();
    Streams(const Streams &) = delete;
    Streams &operator=(const Streams &) = delete;

    MHD_Result begin(MHD_Connection *connection, std::unique_ptr<MessageSource> source);
    // Has every client that waits look for what there is to send.
    void wake();
    // Ends all streams.
    void stop();

private:
    struct Listener;

    static ssize_t read(void *listener, uint64_t, char *buffer, size_t size);
    static void end(void *listener);
    void wake(bool beat); // the lock is held
    void beat_every(std::chrono::milliseconds span);

    std::mutex guard;
    std::condition_variable stopped;
    std::set<Listener *> listeners;
    bool stopping = false;
    std::thread thread;
};

} // namespace front
