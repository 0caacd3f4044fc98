// The Outbox keeps what is to be published until the broker has taken it, over restarts of both. What a broker has
// taken just before such a restart may be published twice.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <string>

#include "fleet/journal/file.h"

namespace fleet
{

class Connection;

class Outbox
{
public:
    static constexpr uint64_t usual_limit = 16u << 20; // bytes
    using Complain = std::function<void(const std::string &text)>;

    // Publishes what the file still has when there is a connection. Throws std::runtime_error when the file cannot be
    // used, or another process uses it.
    Outbox(const std::string &file, Complain complain, uint64_t limit = usual_limit);

    // Any thread may call these.

    // Publishes the text, now or later. When too much waits, or the disk is full, it is lost.
    void add(const std::string &topic, const std::string &text);
    // The connection is there, or is there no more. It must outlive that.
    void connected(Connection &connection);
    void lost();
    // The broker has answered what was published under this number. Returns false when it was not published by this.
    bool acknowledged(int number, const std::string &error);

    // Returns how much waits.
    size_t size() const;

private:
    struct Entry {
        std::string topic, text;
        uint64_t size = 0; // of its line
        bool done = false;
    };

    void read();
    void append(Entry &entry);
    void publish_on();
    void forget_done();
    // Writes a file that has only what waits.
    void write_anew();

    const std::string name;
    const Complain complain;
    const uint64_t limit;
    mutable std::mutex guard; // of what follows
    File file;
    uint64_t waiting = 0; // bytes
    uint64_t losses = 0;  // since the last that was kept
    std::deque<Entry> entries;
    size_t published = 0;            // of the entries, how many were published by this connection
    uint64_t first = 0;              // number of the first entry
    std::map<int, uint64_t> answers; // that are awaited: numbers of entries
    Connection *connection = nullptr;
};

} // namespace fleet
