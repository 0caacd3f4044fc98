// A collector reads the tables of one OLT, each in its period, for everybody who wants to know them.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "collector/schedule.h"
#include "collector/snapshot.h"

namespace front
{

struct Now {
    Steady steady;
    UnixTime unix_time;
};

class Collector
{
public:
    using Periods = std::array<uint32_t, table_count>; // seconds, by table

    // Two collectors of one seed read at the same times.
    Collector(const Periods &periods, uint64_t seed, std::function<Now()> clock);

    // Reads the tables that are due, and returns when the next one is. One thread calls this. An OLT that does not
    // answer is asked for one table at a time only. Before another table is read, `look` is called, so that nobody
    // waits for it to be told of what is known by then.
    Steady read_due(const std::function<void()> &look = {});
    // Returns what is known. Any thread may call this. It never waits for the OLT.
    std::shared_ptr<const Snapshot> snapshot() const;

private:
    Schedule &schedule_of(Table table) { return schedules[static_cast<size_t>(table)]; }
    // Returns whether the OLT answers.
    bool read(Table table);
    void note_failure(Table table, const char *reason);
    void publish(std::shared_ptr<const Snapshot> made);

    const std::function<Now()> clock;
    std::vector<Schedule> schedules; // by table
    mutable std::mutex guard;        // only while a pointer is copied
    std::shared_ptr<const Snapshot> latest;
};

} // namespace front
