// The history of OLTs, in an SQLite file: what happened, up to a bound, light over time, and what was known of each OLT
// last.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "history/light.h"
#include "storage/statement.h"
#include "watch/watcher.h"

namespace front
{

// An EventQuery says which events are wanted. What is left out is not asked for.
struct EventQuery {
    std::string olt = {};
    std::vector<EventKind> kinds = {};
    std::optional<uint32_t> port = {};
    std::string mac = {};
    std::optional<uint32_t> onu_id = {};
    std::optional<UnixTime> from = {}, to = {};
    std::optional<uint64_t> before = {}, after = {}; // numbers of events
};

// A HistoryLimits says how much is kept.
struct HistoryLimits {
    uint64_t events = 100'000;            // the last ones
    UnixTime light = 2 * 24 * light_hour; // for so long every reading, and for longer one of each hour
    UnixTime hourly = 31 * 24 * light_hour;

    bool operator==(const HistoryLimits &) const = default;
};

class History
{
public:
    // Opens `file`, or creates it for its user only. An empty name keeps everything in memory only. Throws a
    // storage::Error when the file cannot be used.
    History(const std::string &file, const HistoryLimits &limits);

    // Any thread may call these. They throw a storage::Error.

    void keep_at_most(const HistoryLimits &limits);
    Known known(const std::string &olt) const;
    // Keeps what a look found, and gives its events their numbers. When it throws, nothing of it is kept.
    void keep(const std::string &olt, const Known &known, Watcher::Found &found);
    // Returns at most so many events behind the one with this number, in order: the first of them or, when `last` says
    // so, the last.
    std::vector<Event> events(uint64_t behind, size_t most_events, bool last = false) const;
    // Returns at most so many events that are wanted, the last of them, of which the newest comes first.
    std::vector<Event> find(const EventQuery &query, size_t most_events) const;
    // Returns the numbers of the oldest and of the newest event that are kept; 0 when there is none.
    std::pair<uint64_t, uint64_t> bounds() const;

    // Keeps what a table of light shows, unless one was kept a moment ago.
    void keep_light(const std::string &olt, UnixTime at, std::span<const view::onu_optics_table> table);
    std::vector<LightSample> light_of(const std::string &olt, uint32_t port, const view::Mac &mac, UnixTime from,
                                      UnixTime to) const;

private:
    struct Close {
        void operator()(sqlite3 *db) const;
    };
    struct Statements;
    struct Delete {
        void operator()(Statements *statements) const;
    };

    static const char *const event_columns; // a statement that selects them
    // Returns no event when its kind is unknown.
    static std::optional<Event> event_in(const storage::Statement &row);

    void prepare(const std::string &file);
    void execute(const char *sql) const;
    void write(const std::string &olt, const Known &known, Watcher::Found &found);

    mutable std::mutex guard;
    HistoryLimits most;
    std::unique_ptr<sqlite3, Close> db;
    std::unique_ptr<Statements, Delete> statements; // closed before the database
};

} // namespace front
