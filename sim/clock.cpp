#include "clock.h"

namespace ponsim
{

Clock::Clock(ModelTime start, double wanted) : base(start), speed(wanted), started(std::chrono::steady_clock::now()) {}

ModelTime Clock::now() const
{
    const std::chrono::duration<double, std::milli> passed = std::chrono::steady_clock::now() - started;
    return base + static_cast<ModelTime>(passed.count() * speed);
}

} // namespace ponsim
