#include "collector/schedule.h"

#include <algorithm>

namespace front
{

Steady Schedule::varied(Steady span)
{
    return span - static_cast<Steady>(chance() % static_cast<uint64_t>(span / 10 + 1));
}

void Schedule::was_read(Steady now)
{
    delay = first_delay;
    next = now + varied(length);
}

void Schedule::failed(Steady now)
{
    next = now + varied(delay);
    delay = std::min(2 * delay, longest_delay);
}

} // namespace front
