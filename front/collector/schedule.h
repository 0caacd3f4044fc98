// When a table is read the next time.
#pragma once

#include <cstdint>
#include <random>

namespace front
{

// Times of a schedule are milliseconds of a clock that never goes back.
using Steady = int64_t;

// A Schedule has a period, which varies a little, so that tables and OLTs do not go on together for ever. After a
// failure a table is asked for sooner than a long period has it, and later and later than a short one.
class Schedule
{
public:
    Schedule(Steady period, uint64_t seed) : length(period), chance(static_cast<std::minstd_rand::result_type>(seed)) {}

    Steady period() const { return length; }
    // The table is read at once for the first time.
    Steady due() const { return next; }
    // Says that it was read at this time, or that reading failed.
    void was_read(Steady now);
    void failed(Steady now);
    // Says that the table is not to be read before this time.
    void wait_until(Steady time) { next = time; }

private:
    static constexpr Steady first_delay = 1000, longest_delay = 60'000;

    // Returns a span that is up to a tenth shorter.
    Steady varied(Steady span);

    Steady length;
    std::minstd_rand chance;
    Steady next = 0;
    Steady delay = first_delay; // after the next failure
};

} // namespace front
