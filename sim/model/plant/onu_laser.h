// An OnuLaser is the laser of an ONU. How much light it gives follows from temperature and age.
#pragma once

#include <cstdint>
#include <optional>

#include "model/base/mac.h"
#include "model/plant/optical_class.h"
#include "model/plant/reception.h"

namespace ponsim
{

class OnuLaser
{
public:
    OnuLaser(uint64_t seed, const Transceiver &levels, const Mac &mac);

    // Makes the laser this much older than the OLT.
    void age(uint32_t hours) { added_hours = hours; }

    // Returns the launched power in 0.01 dBm. From midnight to noon it only falls, from noon to the end of the day it
    // only rises. At the same hour it is never higher than on the day before.
    int32_t power(uint64_t second) const;
    // Returns the first second from `from` on at which the power is outside the range in which it is at `from`. Returns
    // no time when there is none for a thousand years.
    std::optional<uint64_t> first_outside(const Range &range, uint64_t from) const;

private:
    int32_t new_power; // at midnight
    uint32_t added_hours = 0;
};

} // namespace ponsim
