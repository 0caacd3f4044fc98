#include "model/plant/bit_errors.h"

#include <algorithm>
#include <array>

namespace ponsim
{
namespace
{

// This is the BER, in 10^-12, by steps. Thermal noise limits the receiver, and does not depend on light. So the Q
// factor falls in proportion to optical power, and with s for the steps
//     Q = 7.03 * 10^(-0.025 s), BER = erfc(Q / sqrt(2)) / 2.
// The same values are taken for the steps that FEC leaves, and for light that is too strong. The numbers are written
// here because math libraries differ in the last digits.
constexpr std::array<uint64_t, most_steps + 1> error_ratios{1,
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

uint32_t error_steps(int32_t beyond)
{
    if (beyond <= 0) return 0;
    return std::min(static_cast<uint32_t>((beyond + error_step - 1) / error_step), most_steps);
}

Chance frame_error(uint32_t steps, uint32_t octets)
{
    if (steps == 0) return 0;
    return opposite(every_time(opposite(chance_of(error_ratios.at(steps))), uint64_t{octets} * 8));
}

} // namespace ponsim
