// How model time follows the time of day: not at all until it is stepped, or so many times as fast.
#pragma once

#include <chrono>

#include "model/base/time.h"

namespace ponsim
{

class Clock
{
public:
    // Starts at `start`. A speed of 0 leaves time to step().
    Clock(ModelTime start, double speed);

    ModelTime now() const;
    void step(ModelTime milliseconds) { base += milliseconds; }
    // Goes on from that time, unless it is past already.
    void reach(ModelTime time);

private:
    ModelTime base;
    double speed;
    std::chrono::steady_clock::time_point started;
};

} // namespace ponsim
