#include "model/olt/light.h"

#include "model/base/random.h"
#include "model/olt/mpcp.h"
#include "model/plant/bit_errors.h"
#include "model/plant/fibre.h"
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

// RS(255,239) of IEEE 802.3, clause 65, turns a BER of 10^-4 into one of 10^-12. A BER of 10^-4 needs a Q factor of 3.7
// instead of 7.03, which is 2.8 dB less light. Networks are planned with 2.5 dB.
constexpr int32_t fec_gain = 250;

} // namespace

OnuLaser::OnuLaser(const Olt &olt, const PonPort &port, const Mac &mac)
{
    const Transceiver &levels = olt.optics_of(port, mac).onu;
    const int32_t least = levels.least_launch + reserve;
    const auto range = static_cast<uint32_t>(levels.greatest_launch - below_greatest - least);
    Random random = random_for(olt.seed(), Purpose::optics, mac);
    new_power = least + static_cast<int32_t>(random.below(range + 1));
    const auto found = port.onus.find(mac);
    added_hours = found == port.onus.end() ? 0 : found->second.added_hours;
}

// Age counts in whole days, so that within a day only temperature changes the power.
int32_t OnuLaser::power(uint64_t second) const
{
    const uint64_t hours = second / (2 * half_day) * 24 + added_hours;
    return new_power - static_cast<int32_t>(warm_loss * warmth(second) / half_day + hours / hours_per_loss);
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
    const int32_t launched = direction == Direction::up ? OnuLaser(olt, port, arrival.mac).power(second)
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

uint32_t errored_share(const PonPort &port, const Arrival &arrival, const Flow &flow, Direction direction)
{
    const OnuRecord record = port.record(arrival.mac);
    const Reception &reception = record.reception(direction);
    if (!reception.heard()) return all_errored;
    return static_cast<uint32_t>(expected(frame_error(reception.steps, flow.length), all_errored));
}

} // namespace ponsim
