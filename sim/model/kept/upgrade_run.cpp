#include "model/kept/upgrade_run.h"

namespace ponsim
{
namespace
{

constexpr uint64_t download_rate = 100 * 1024; // bytes/s of model time
constexpr ModelTime verification = 5 * ms_per_second;

} // namespace

ModelTime download_time(uint32_t size)
{
    return (uint64_t{size} * ms_per_second + download_rate - 1) / download_rate;
}

std::optional<ModelTime> UpgradeRun::end() const
{
    switch (state) {
    case State::downloading:
        return since + download_time(size);
    case State::verifying:
        return since + verification;
    case State::rebooting:
        return since + reload_time;
    default:
        return std::nullopt;
    }
}

} // namespace ponsim
