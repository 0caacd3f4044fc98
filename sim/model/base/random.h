// Everything that is found at an OLT follows from these pseudo-random numbers.
#pragma once

#include <cstdint>

#include "model/base/mac.h"

namespace ponsim
{

// This is SplitMix64, which gives the same numbers on every machine and with every library. A seed has many streams.
class Random
{
public:
    Random(uint64_t seed, uint64_t stream) : state(seed) { state = next() ^ stream; }

    uint64_t next()
    {
        state += 0x9e3779b97f4a7c15;
        uint64_t z = state;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
        z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
        return z ^ (z >> 31);
    }

    uint32_t below(uint32_t bound) { return static_cast<uint32_t>(next() % bound); }
    bool happens(uint32_t percent) { return below(100) < percent; }

private:
    uint64_t state;
};

// Each purpose has a stream of its own for each MAC address, so that the numbers drawn for one purpose do not shift
// those of another.
enum class Purpose : uint64_t {
    device = 1,
    configuration = 2,
    optics = 4,
    traffic = 5,
    stations = 6,
    lines = 9,
    usage = 11,
    viewers = 12,
    gateway = 13,
    discovery = 14,
    control_frames = 15,
    phases = 16,
    windows = 17,
    faults = 20,
    back_off = 21,
    boot = 22,
    places = 24,
    population = 40,
    failures = 41
};

// The number of a stream for a MAC address has the purpose above the address. So it is greater than the number of any
// stream for arrivals.
inline Random random_for(uint64_t seed, Purpose purpose, const Mac &mac)
{
    uint64_t stream = static_cast<uint64_t>(purpose);
    for (uint8_t byte : mac)
        stream = stream << 8 | byte;
    return {seed, stream};
}

} // namespace ponsim
