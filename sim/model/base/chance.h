// This file reckons with probabilities, and draws how often something is tried. It uses integers only, so that the same
// seed gives the same numbers on every machine.
#pragma once

#include <cstdint>

#include "model/base/random.h"

namespace ponsim
{

// A Chance is a probability in units of 2^-64. The greatest number is certainty itself.
using Chance = uint64_t;
inline constexpr Chance certain = UINT64_MAX;

constexpr Chance opposite(Chance chance)
{
    return certain - chance;
}
// Returns the chance that two independent events both happen.
Chance both(Chance one, Chance other);
// Returns the chance that an event happens so many times in a row.
Chance every_time(Chance chance, uint64_t times);
// Returns the chance of an event of which so many happen in 10^12.
Chance chance_of(uint64_t in_a_million_millions);
// Returns how many of so many are expected to be what the chance is of, rounded.
uint64_t expected(Chance chance, uint64_t all);

bool happens(Random &random, Chance chance);

// Draws a number of the exponential distribution with mean 1, in 2^-32.
uint64_t exponential(Random &random);

// So many trials are taken for infinitely many.
inline constexpr uint64_t never = uint64_t{1} << 45;
// Draws how many trials fail before one succeeds. Returns `never` when there are too many.
uint64_t failures_before_success(Random &random, Chance success);
// Draws how many trials there are up to the end of the first so many failures in a row. Returns `never` when there are
// too many.
uint64_t trials_until_failures(Random &random, Chance failure, uint64_t in_a_row);

} // namespace ponsim
