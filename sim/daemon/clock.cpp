#include "daemon/clock.h"

namespace ponsim
{

Clock::Clock(ModelTime start, double wanted) : base(start), speed(wanted), started(std::chrono::steady_clock::now()) {}

ModelTime Clock::now() const
{
    const std::chrono::duration<double, std::milli> passed = std::chrono::steady_clock::now() - started;
    return base + static_cast<ModelTime>(passed.count() * speed);
}

std::optional<std::chrono::steady_clock::time_point> Clock::when(ModelTime time) const
{
    using std::chrono::steady_clock;
    constexpr std::chrono::hours hundred_years{100 * 365 * 24};
    if (speed == 0) return std::nullopt;
    if (time <= base) return started;
    const std::chrono::duration<double, std::milli> passes{static_cast<double>(time - base) / speed};
    if (passes > hundred_years) return std::nullopt;
    return started + std::chrono::ceil<steady_clock::duration>(passes);
}

void Clock::reach(ModelTime time)
{
    const ModelTime reached = now();
    if (time > reached) step(time - reached);
}

} // namespace ponsim
