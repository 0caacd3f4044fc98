#include "model/olt/light.h"

#include <algorithm>

#include "model/base/random.h"
#include "model/olt/mpcp.h"
#include "model/plant/fibre.h"
#include "model/plant/module.h"

namespace ponsim
{
namespace
{

// A new laser launches this power in the coldest hour, in 0.01 dBm. The range is 2 to 5 dBm.
constexpr uint32_t least_power = 200;
constexpr uint32_t power_range = 300;
constexpr uint64_t warm_loss = 30; // how much less it launches in the warmest hour
// A laser that loses 0.01 dB in so many hours has lost 1 dB after the 100,000 hours for which it is made.
constexpr uint64_t hours_per_loss = 1000;

// A port's receiver needs this power, in 0.01 dBm, for a bit error ratio (BER) of 10^-12.
constexpr int32_t receiver_sensitivity = -3000;
// RS(255,239) of IEEE 802.3, clause 65, turns a BER of 10^-4 into one of 10^-12. A BER of 10^-4 needs a Q factor of 3.7
// instead of 7.03, which is 2.8 dB less light. Networks are planned with 2.5 dB.
constexpr int32_t fec_gain = 250;

// This is the BER, in 10^-12, by weakness. Thermal noise limits the receiver, and does not depend on light. So the Q
// factor falls in proportion to optical power, and with w for the weakness
//     Q = 7.03 * 10^(-0.025 w), BER = erfc(Q / sqrt(2)) / 2.
// With FEC the same values are taken for the weakness that FEC leaves. The numbers are written here because math
// libraries differ in the last digits.
constexpr std::array<uint64_t, most_weak + 1> error_ratios{1,
                                                           16,
                                                           186,
                                                           1659,
                                                           11744,
                                                           67562,
                                                           323122,
                                                           1310667,
                                                           4590168,
                                                           14101899,
                                                           38546872,
                                                           94938391,
                                                           213067127,
                                                           440109416,
                                                           844203993,
                                                           1515746059,
                                                           2565491527,
                                                           4119236786,
                                                           6309613516,
                                                           9266163214,
                                                           13105162715,
                                                           17920619710,
                                                           23777520092,
                                                           30707921820,
                                                           38709991774,
                                                           47749675175,
                                                           57764423428,
                                                           68668291205,
                                                           80357722012,
                                                           92717433923,
                                                           105625953555,
                                                           118960493659,
                                                           132601005229,
                                                           146433346282,
                                                           160351591818,
                                                           174259563898,
                                                           188071691411,
                                                           201713321118,
                                                           215120600483,
                                                           228240043277,
                                                           241027874738};

} // namespace

OnuLaser::OnuLaser(const Olt &olt, const PonPort &port, const Mac &mac)
{
    Random random = random_for(olt.seed(), Purpose::optics, mac);
    new_power = static_cast<int32_t>(least_power + random.below(power_range + 1));
    const auto found = port.onus.find(mac);
    added_hours = found == port.onus.end() ? 0 : found->second.added_hours;
}

// Age counts in whole days, so that within a day only temperature changes the power.
int32_t OnuLaser::power(uint64_t second) const
{
    const uint64_t hours = second / (2 * half_day) * 24 + added_hours;
    return new_power - static_cast<int32_t>(warm_loss * warmth(second) / half_day + hours / hours_per_loss);
}

int32_t path_loss(const PonPort &port, const Arrival &arrival)
{
    int32_t loss = arrival.loss + fibre_loss(arrival.distance);
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

int32_t received_level(const Olt &olt, const PonPort &port, const Arrival &arrival, ModelTime at)
{
    return OnuLaser(olt, port, arrival.mac).power(at / ms_per_second) - path_loss(port, arrival);
}

int32_t received_from(const Olt &olt, const PonPort &port, const Arrival &arrival, ModelTime at)
{
    return power_of(received_level(olt, port, arrival, at));
}

int32_t sensitivity(const Olt &olt, const PonPort &port, const Arrival &arrival)
{
    const bool fec = mpcp_of(olt, port.number).fec == 1 && olt.device_of(arrival.mac).type->fec;
    return fec ? receiver_sensitivity - fec_gain : receiver_sensitivity;
}

uint32_t weakness(int32_t received, int32_t sensitivity)
{
    if (received >= sensitivity) return 0;
    const auto steps = static_cast<uint32_t>((sensitivity - received + weakness_step - 1) / weakness_step);
    return std::min(steps, most_weak);
}

uint32_t errored_share(const Olt &olt, const PonPort &port, const Arrival &arrival, const Flow &flow)
{
    constexpr uint64_t million = 1000000;
    if (port.record(arrival.mac).light != Light::degraded) return 0;
    const uint64_t bits = uint64_t{flow.length} * 8;
    // The ratio is in 10^-12. For a million frames it is divided by a million.
    const uint64_t share = bits * error_ratios.at(olt.light_watch().weakness(port.number, arrival.mac)) / million;
    return static_cast<uint32_t>(std::min(share, million));
}

} // namespace ponsim
