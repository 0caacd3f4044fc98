// Searching for the second at which something begins to hold.
#pragma once

#include <cstdint>

namespace ponsim
{

// The first number from `from` to `to` at which it holds. It must hold at `to`, and from the first on.
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
