// The history of OLTs, in an SQLite file: what happened, up to a bound, and what was known of each OLT last.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "storage/statement.h"
#include "watch/watcher.h"

namespace front
{

class History
{
public:
    // Opens `file`, or creates it for its user only. An empty name keeps everything in memory only. At most so many
    // events are kept, the last ones. Throws a storage::Error when the file cannot be used.
    History(const std::string &file, uint64_t most);

    // Any thread may call these. They throw a storage::Error.

    void keep_at_most(uint64_t events);
    Known known(const std::string &olt) const;
    // Keeps what a look found, and gives its events their numbers. When it throws, nothing of it is kept.
    void keep(const std::string &olt, const Known &known, Watcher::Found &found);
    // Returns at most so many events behind the one with this number, in order: the first of them or, when `last` says
    // so, the last.
    std::vector<Event> events(uint64_t behind, size_t most_events, bool last = false) const;

private:
    struct Close {
        void operator()(sqlite3 *db) const;
    };
    struct Statements;
    struct Delete {
        void operator()(Statements *statements) const;
    };

    void prepare(const std::string &file);
    void execute(const char *sql) const;
    void write(const std::string &olt, const Known &known, Watcher::Found &found);

    mutable std::mutex guard;
    uint64_t most;
    std::unique_ptr<sqlite3, Close> db;
    std::unique_ptr<Statements, Delete> statements; // closed before the database
};

} // namespace front
