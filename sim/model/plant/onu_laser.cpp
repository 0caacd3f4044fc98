#include "model/plant/onu_laser.h"

#include <algorithm>

#include "model/base/random.h"
#include "model/base/search.h"
#include "model/plant/module.h"

namespace ponsim
{
namespace
{

// A new laser launches in the coldest hour at least so much more than the least of its class, in 0.01 dB, because it
// gets warm, and because it is to launch that much in old age, too. It launches so much less than the greatest.
constexpr int32_t reserve = 138;
constexpr int32_t below_greatest = 62;
constexpr uint64_t warm_loss = 30; // how much less it launches in the warmest hour
// A laser that loses 0.01 dB in so many hours has lost 1 dB after the 100,000 hours for which it is made.
constexpr uint64_t hours_per_loss = 1000;

constexpr uint64_t day = 2 * half_day;
constexpr uint64_t horizon = 1000 * 365; // days for which it looks ahead

} // namespace

OnuLaser::OnuLaser(uint64_t seed, const Transceiver &levels, const Mac &mac)
{
    const int32_t least = levels.least_launch + reserve;
    const auto range = static_cast<uint32_t>(levels.greatest_launch - below_greatest - least);
    Random random = random_for(seed, Purpose::optics, mac);
    new_power = least + static_cast<int32_t>(random.below(range + 1));
}

// Age counts in whole days, so that within a day only temperature changes the power.
int32_t OnuLaser::power(uint64_t second) const
{
    const uint64_t hours = second / day * 24 + added_hours;
    return new_power - static_cast<int32_t>(warm_loss * warmth(second) / half_day + hours / hours_per_loss);
}

// Power is least at noon, and greatest at the end of this day, because no later day has more.
std::optional<uint64_t> OnuLaser::first_outside(const Range &range, uint64_t from) const
{
    const auto too_low = [&](uint64_t second) { return power(second) < range.least; };
    const auto too_high = [&](uint64_t second) { return power(second) >= range.below; };
    std::optional<uint64_t> first;
    const uint64_t midnight = from / day * day;
    const uint64_t evening = midnight + day - 1;
    if (too_high(evening)) first = first_second(std::max(from, midnight + half_day), evening, too_high);

    const uint64_t noon = midnight + half_day + (from > midnight + half_day ? day : 0);
    const auto low_at_noon = [&](uint64_t days) { return too_low(noon + days * day); };
    uint64_t days = 0;
    if (!low_at_noon(0)) {
        if (first || !low_at_noon(horizon)) return first;
        days = first_second(1, horizon, low_at_noon);
    }
    const uint64_t found = noon + days * day;
    const uint64_t low = first_second(std::max(from, found - half_day), found, too_low);
    return first ? std::min(*first, low) : low;
}

} // namespace ponsim
