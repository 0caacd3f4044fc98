// The clock says how model time follows the time of day: a number of times as fast, or not at all, and then it is
// stepped.
#pragma once

#include <chrono>

#include "model/base/time.h"

namespace ponsim
{

class Clock
{
public:
    // Starts at `start`. With a speed of 0 only step() moves the time.
    Clock(ModelTime start, double speed);

    ModelTime now() const;
    void step(ModelTime milliseconds) { base += milliseconds; }
    // Continues from that time, unless it is already past.
    void reach(ModelTime time);

private:
    ModelTime base;
    double speed;
    std::chrono::steady_clock::time_point started;
};

} // namespace ponsim
