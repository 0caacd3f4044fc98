// The clock says how model time follows the time of day: a number of times as fast, or not at all, and then it is
// stepped.
#pragma once

#include <chrono>
#include <optional>

#include "model/base/time.h"

namespace ponsim
{

class Clock
{
public:
    // Starts at `start`. With a speed of 0 only step() moves the time.
    Clock(ModelTime start, double speed);

    ModelTime now() const;
    // Returns when the clock shows this model time or, when it is past, a time that is past, too. Returns no time when
    // the clock stands still, or shows this in a hundred years or later.
    std::optional<std::chrono::steady_clock::time_point> when(ModelTime time) const;
    void step(ModelTime milliseconds) { base += milliseconds; }
    // Continues from that time, unless it is already past.
    void reach(ModelTime time);

private:
    ModelTime base;
    double speed;
    std::chrono::steady_clock::time_point started;
};

} // namespace ponsim
