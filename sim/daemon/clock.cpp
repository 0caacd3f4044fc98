#include "daemon/clock.h"

namespace ponsim
{

Clock::Clock(ModelTime start, double wanted) : base(start), speed(wanted), started(std::chrono::steady_clock::now()) {}

ModelTime Clock::now() const
{
    const std::chrono::duration<double, std::milli> passed = std::chrono::steady_clock::now() - started;
    return base + static_cast<ModelTime>(passed.count() * speed);
}

void Clock::reach(ModelTime time)
{
    const ModelTime reached = now();
    if (time > reached) step(time - reached);
}

} // namespace ponsim
