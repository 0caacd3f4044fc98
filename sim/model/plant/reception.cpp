#include "model/plant/reception.h"

#include <algorithm>

#include "model/plant/bit_errors.h"

namespace ponsim
{
namespace
{

Range range_of_errors(const Reception &reception, const Levels &levels)
{
    const auto weaker_by = [&](uint32_t steps) { return levels.good - static_cast<int32_t>(steps) * error_step; };
    const bool weakest = reception.steps == most_steps;
    return {.least = weakest ? levels.loss : std::max(weaker_by(reception.steps), levels.loss),
            .below = weaker_by(reception.steps - 1)};
}

Range range_of_overload(const Reception &reception, const Levels &levels)
{
    const int32_t stronger_by = levels.overload + static_cast<int32_t>(reception.steps) * error_step;
    return {.least = stronger_by - error_step + 1, .below = std::min(stronger_by + 1, levels.saturation)};
}

} // namespace

Reception reception_at(int32_t received, const Levels &levels)
{
    if (received < levels.loss) return {.light = Light::lost};
    if (received >= levels.saturation) return {.light = Light::saturated};
    if (received > levels.overload)
        return {.light = Light::overloaded, .steps = error_steps(received - levels.overload)};
    if (received < levels.good) return {.light = Light::degraded, .steps = error_steps(levels.good - received)};
    return {};
}

Range range_of(const Reception &reception, const Levels &levels)
{
    switch (reception.light) {
    case Light::good:
        return {.least = std::max(levels.good, levels.loss), .below = levels.overload + 1};
    case Light::degraded:
        return range_of_errors(reception, levels);
    case Light::lost:
        return {.below = levels.loss + recovery_margin};
    case Light::overloaded:
        return range_of_overload(reception, levels);
    case Light::saturated:
        return {.least = levels.saturation - recovery_margin};
    }
    return {};
}

} // namespace ponsim
