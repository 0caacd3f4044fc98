// This file finds the second at which a condition begins to hold.
#pragma once

#include <cstdint>

namespace ponsim
{

// Returns the first number from `from` to `to` at which the condition holds. The condition must hold at `to`, and must
// hold at every number after the first one at which it holds.
template <class Holds>
uint64_t first_second(uint64_t from, uint64_t to, Holds holds)
{
    while (from < to) {
        const uint64_t middle = from + (to - from) / 2;
        if (holds(middle))
            to = middle;
        else
            from = middle + 1;
    }
    return from;
}

} // namespace ponsim
