// A Look says how long what is read of an OLT holds. Views are kept that long, so that they are not made again while
// nothing becomes different.
//
// What an OLT shows follows from its changes, which it counts, and from the time at which it is asked. Whoever shows
// something can only learn the time from the OLT, by one of three questions: what time it is, which second it is, and
// whether a time has come. The answer to each holds up to a certain time, and the Look takes that from the OLT. So a
// column that follows from the time cannot forget to say so.
#pragma once

#include <algorithm>
#include <limits>
#include <utility>

#include "model/base/time.h"

namespace ponsim
{

// As long as a Look exists, all that its thread asks counts for it, and for the Look in which it was made.
class Look
{
public:
    Look() : outer(std::exchange(current, this)) {}
    ~Look()
    {
        current = outer;
        end(until);
    }
    Look(const Look &) = delete;

    // Returns the time from which on the answers may be different.
    ModelTime holds_until() const { return until; }

    // Says that something that was read may be different from this time on.
    static void end(ModelTime time)
    {
        if (current) current->until = std::min(current->until, time);
    }

private:
    static inline thread_local Look *current = nullptr;

    Look *outer;
    ModelTime until = std::numeric_limits<ModelTime>::max();
};

} // namespace ponsim
