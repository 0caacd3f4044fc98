#include "model/olt/light.h"

#include <array>

#include "model/olt/mpcp.h"
#include "model/plant/bit_errors.h"
#include "model/plant/fibre.h"
#include "model/plant/module.h"

namespace ponsim
{
namespace
{

// RS(255,239) of IEEE 802.3, clause 65, turns a BER of 10^-4 into one of 10^-12. A BER of 10^-4 needs a Q factor of 3.7
// instead of 7.03, which is 2.8 dB less light. Networks are planned with 2.5 dB.
constexpr int32_t fec_gain = 250;

} // namespace

OnuLaser laser_of(const Olt &olt, const PonPort &port, const Mac &mac)
{
    OnuLaser laser(olt.seed(), olt.optics_of(port, mac).onu, mac);
    const auto found = port.onus.find(mac);
    if (found != port.onus.end()) laser.age(found->second.added_hours);
    return laser;
}

int32_t path_loss(const PonPort &port, const Arrival &arrival, Direction direction)
{
    int32_t loss = arrival.loss + fibre_loss(arrival.distance, direction);
    if (arrival.unplugged) loss += cut_loss;
    if (port.damage.empty()) return loss;
    for (std::optional<uint32_t> branch = arrival.branch; branch; branch = port.branches.at(*branch).parent)
        loss += damage_to(port, *branch);
    return loss;
}

int32_t damage_to(const PonPort &port, uint32_t branch)
{
    const auto found = port.damage.find(branch);
    return found == port.damage.end() ? 0 : found->second;
}

int32_t received_level(const Olt &olt, const PonPort &port, const Arrival &arrival, Direction direction, ModelTime at)
{
    const uint64_t second = at / ms_per_second;
    const int32_t launched = direction == Direction::up ? laser_of(olt, port, arrival.mac).power(second)
                                                        : olt.module(port.number)->launch_level(second);
    return launched - path_loss(port, arrival, direction);
}

int32_t received_from(const Olt &olt, const PonPort &port, const Arrival &arrival, ModelTime at)
{
    return power_of(received_level(olt, port, arrival, Direction::up, at));
}

int32_t sensitivity(const Olt &olt, const PonPort &port, const Arrival &arrival, Direction direction)
{
    const bool fec = mpcp_of(olt, port.number).fec == 1 && olt.device_of(arrival.mac).type->fec;
    const int32_t without_fec =
        direction == Direction::up ? port.optics->olt.sensitivity : olt.optics_of(port, arrival.mac).onu.sensitivity;
    return without_fec - (fec ? fec_gain : 0);
}

uint32_t errored_share(const Reception &reception, uint32_t length)
{
    if (!reception.heard()) return all_errored;
    return static_cast<uint32_t>(expected(frame_error(reception.steps, length), all_errored));
}

const PerFlow &errored_shares(const Reception &reception)
{
    const auto shares_of = [](const Reception &light) {
        PerFlow shares{};
        for (size_t flow = 0; flow < flows.size(); ++flow)
            shares[flow] = errored_share(light, flows[flow].length);
        return shares;
    };
    static const PerFlow all = shares_of({.light = Light::lost});
    static const std::array by_steps = [&] {
        std::array<PerFlow, most_steps + 1> shares{};
        for (uint32_t steps = 0; steps <= most_steps; ++steps)
            shares[steps] = shares_of({.light = Light::degraded, .steps = steps});
        return shares;
    }();
    return reception.heard() ? by_steps.at(reception.steps) : all;
}

} // namespace ponsim
