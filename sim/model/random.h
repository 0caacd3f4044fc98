// The numbers that everything found at an OLT follows from.
#pragma once

#include <cstdint>

namespace ponsim
{

// SplitMix64: the same numbers on every machine and with every library. A seed has many streams.
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

} // namespace ponsim
