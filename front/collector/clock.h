// The time of now.
#pragma once

#include <chrono>
#include <cstdint>

#include "collector/snapshot.h"

namespace front
{

inline UnixTime unix_time_now()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

// Returns milliseconds of a clock that never goes back.
inline int64_t steady_time_now()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

} // namespace front
