#include "model/alarm/light_reasons.h"

#include "model/olt/light.h"
#include "model/olt/standing.h"

namespace ponsim
{
namespace
{

// Returns the branch on the ONU's way that is damaged most. Of branches with equal damage it is the one nearest to the
// port, because whoever looks for the fault begins there.
std::optional<uint32_t> damaged_branch(const PonPort &port, const Arrival &arrival)
{
    if (port.damage.empty()) return std::nullopt;
    std::optional<uint32_t> worst;
    int32_t most = 1;
    for (std::optional<uint32_t> branch = arrival.branch; branch; branch = port.branches.at(*branch).parent) {
        const int32_t damage = damage_to(port, *branch);
        if (damage < most) continue;
        worst = branch;
        most = damage;
    }
    return worst;
}

} // namespace

AlarmReason rogue_reason(const PonPort &port)
{
    for (const auto &[mac, record] : port.onus)
        if (shines(record)) return {AlarmCause::rogue, {}, mac, port.number};
    return {AlarmCause::rogue};
}

AlarmReason light_reason(const Olt &olt, const PonPort &port, const Arrival &arrival, Direction direction)
{
    if (arrival.unplugged) return {AlarmCause::fibre, arrival.branch};
    if (direction == Direction::up && known_blinded(olt, port)) return rogue_reason(port);
    const Module &module = *olt.module(port.number);
    const bool dark = !module.laser_on() || module.record().dimmed > 0;
    if (direction == Direction::down && dark) return {AlarmCause::transmitter};
    const std::optional<uint32_t> branch = damaged_branch(port, arrival);
    return {branch ? AlarmCause::fibre : AlarmCause::laser, branch};
}

AlarmReason loss_reason(const Olt &olt, const PonPort &port, const Arrival &arrival)
{
    const OnuRecord record = port.record(arrival.mac);
    return light_reason(olt, port, arrival, record.up.heard() ? Direction::down : Direction::up);
}

std::optional<AlarmReason> common_loss(const Olt &olt, const PonPort &port)
{
    if (known_blinded(olt, port)) return std::nullopt;
    std::optional<AlarmReason> common;
    for (const Arrival &arrival : port.arrivals) {
        const OnuRecord record = port.record(arrival.mac);
        if (arrival.unplugged || !record.powered || record.phase == Phase::booting ||
            !port.limits.contain(arrival.distance))
            continue;
        if (record.heard()) return std::nullopt;
        const AlarmReason reason = loss_reason(olt, port, arrival);
        if (common && *common != reason) return std::nullopt;
        common = reason;
    }
    return common;
}

} // namespace ponsim
