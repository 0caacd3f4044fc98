#include "http/streams.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace front
{
namespace
{

constexpr size_t block_size = 16 * 1024; // bytes

} // namespace

struct Streams::Listener {
    Streams &streams;
    MHD_Connection *connection;
    std::unique_ptr<MessageSource> source;
    std::string text = {}; // that is being sent
    size_t sent = 0;       // of it
    bool waits = false, beats = false;
};

Streams::Streams(std::chrono::milliseconds beat) : thread([this, beat] { beat_every(beat); }) {}

Streams::~Streams()
{
    stop();
}

void Streams::stop()
{
    {
        const std::lock_guard lock(guard);
        stopping = true;
        wake(false);
    }
    stopped.notify_all();
    if (thread.joinable()) thread.join();
}

MHD_Result Streams::begin(MHD_Connection *connection, std::unique_ptr<MessageSource> source)
{
    auto listener = std::make_unique<Listener>(*this, connection, std::move(source));
    MHD_Response *const made =
        MHD_create_response_from_callback(MHD_SIZE_UNKNOWN, block_size, read, listener.get(), end);
    if (!made) return MHD_NO;
    {
        const std::lock_guard lock(guard);
        listeners.insert(listener.release());
    }
    MHD_add_response_header(made, MHD_HTTP_HEADER_CONTENT_TYPE, "text/event-stream");
    MHD_add_response_header(made, MHD_HTTP_HEADER_CACHE_CONTROL, "no-store");
    MHD_add_response_header(made, "X-Content-Type-Options", "nosniff");
    MHD_add_response_header(made, "X-Accel-Buffering", "no"); // a proxy must not collect messages
    const MHD_Result result = MHD_queue_response(connection, MHD_HTTP_OK, made);
    MHD_destroy_response(made);
    return result;
}

// The lock is held from the question until the connection waits, so that nobody wakes it in between, in vain.
ssize_t Streams::read(void *of, uint64_t, char *buffer, size_t size)
{
    auto &listener = *static_cast<Listener *>(of);
    const std::lock_guard lock(listener.streams.guard);
    if (listener.sent == listener.text.size()) {
        std::optional<std::string> text;
        try {
            if (!listener.streams.stopping) text = listener.source->next();
        } catch (const std::exception &) {
            return MHD_CONTENT_READER_END_WITH_ERROR;
        }
        if (!text) return MHD_CONTENT_READER_END_OF_STREAM;
        listener.text = std::move(*text);
        listener.sent = 0;
        if (listener.text.empty() && listener.beats) listener.text = ":\n\n";
        listener.beats = false;
    }
    if (listener.text.empty()) {
        listener.waits = true;
        MHD_suspend_connection(listener.connection);
        return 0;
    }
    const size_t count = std::min(size, listener.text.size() - listener.sent);
    std::memcpy(buffer, listener.text.data() + listener.sent, count);
    listener.sent += count;
    return static_cast<ssize_t>(count);
}

void Streams::end(void *of)
{
    const std::unique_ptr<Listener> listener(static_cast<Listener *>(of));
    const std::lock_guard lock(listener->streams.guard);
    listener->streams.listeners.erase(listener.get());
}

void Streams::wake()
{
    const std::lock_guard lock(guard);
    wake(false);
}

void Streams::wake(bool beat)
{
    for (Listener *listener : listeners) {
        listener->beats |= beat;
        if (std::exchange(listener->waits, false)) MHD_resume_connection(listener->connection);
    }
}

void Streams::beat_every(std::chrono::milliseconds span)
{
    std::unique_lock lock(guard);
    while (!stopped.wait_for(lock, span, [this] { return stopping; }))
        wake(true);
}

} // namespace front
