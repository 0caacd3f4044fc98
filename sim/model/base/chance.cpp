#include "model/base/chance.h"

#include <algorithm>

namespace ponsim
{
namespace
{

__extension__ using Wide = unsigned __int128;

} // namespace

Chance both(Chance one, Chance other)
{
    if (one == certain) return other;
    if (other == certain) return one;
    return static_cast<Chance>(Wide{one} * other >> 64);
}

Chance every_time(Chance chance, uint64_t times)
{
    Chance result = certain;
    for (Chance square = chance; times > 0; times /= 2) {
        if (times % 2 == 1) result = both(result, square);
        square = both(square, square);
    }
    return result;
}

Chance chance_of(uint64_t in_a_million_millions)
{
    return static_cast<Chance>((Wide{in_a_million_millions} << 64) / 1000000000000);
}

uint64_t expected(Chance chance, uint64_t all)
{
    return static_cast<uint64_t>((Wide{chance} * all + (Wide{1} << 63)) >> 64);
}

bool happens(Random &random, Chance chance)
{
    return chance == certain || random.next() < chance;
}

// By the method of von Neumann this takes comparisons alone: a number is the fraction when an odd count of further ones
// fall from it.
uint64_t exponential(Random &random)
{
    for (uint64_t whole = 0;; ++whole) {
        const uint64_t fraction = random.next() >> 32;
        uint64_t last = fraction;
        uint32_t falling = 1;
        for (uint64_t number = random.next() >> 32; number < last; number = random.next() >> 32) {
            last = number;
            ++falling;
        }
        if (falling % 2 == 1) return whole << 32 | fraction;
    }
}

uint64_t failures_before_success(Random &random, Chance success)
{
    constexpr Chance often = certain / 16;
    if (success > often) {
        uint64_t failures = 0;
        while (!happens(random, success))
            ++failures;
        return failures;
    }
    // The time is E / -ln(1 - s) trials, where E has the exponential distribution. The logarithm is taken up to its
    // second term, which is right to 0.2 percent.
    const Chance rate = success + both(success, success) / 2;
    if (rate == 0) return never;
    return static_cast<uint64_t>(std::min<Wide>((Wide{exponential(random)} << 32) / rate, never));
}

// The failures are the first trials, or they follow a success. The chance of the latter is taken to be the same at each
// further trial: the one with which there are (1 - f^n) / (f^n (1 - f)) trials on average, as there are in truth.
uint64_t trials_until_failures(Random &random, Chance failure, uint64_t in_a_row)
{
    const Chance all = every_time(failure, in_a_row);
    if (happens(random, all)) return in_a_row;
    const Chance rest = opposite(all);
    const Chance after_success = both(all, opposite(failure));
    const Wide among_first = Wide{after_success} * in_a_row;
    const Chance each =
        among_first < rest
            ? static_cast<Chance>(std::min<Wide>(Wide{after_success} * rest / (rest - among_first), certain))
            : certain;
    return std::min(in_a_row + 1 + failures_before_success(random, each), never);
}

} // namespace ponsim
