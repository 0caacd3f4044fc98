// The optical class of a PON says how strong its lasers are, how much light its receivers need and bear, and so how
// much light may be lost between them.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "model/base/direction.h"

namespace ponsim
{

// Powers are in 0.01 dBm.
struct Transceiver {
    int32_t least_launch; // over its whole life and at all temperatures
    int32_t greatest_launch;
    int32_t sensitivity; // with less there are more bit errors than one in 10^12
    int32_t overload;    // with more there are, too
};

struct OpticalClass {
    std::string_view name;
    Transceiver olt; // D in IEEE 802.3, for downstream
    Transceiver onu; // U, for upstream
    // The greatest channel insertion losses that the class is made for, in 0.01 dB.
    int32_t greatest_loss_up;
    int32_t greatest_loss_down;
    uint32_t reach; // km
};

std::span<const OpticalClass> optical_classes();
// Returns null when there is no such class.
const OpticalClass *find_optical_class(std::string_view name);
// Returns the class of ports for which nobody has chosen one.
const OpticalClass &usual_class();

// Modules of OLTs report that light is lost when there is so much less than the sensitivity, in 0.01 dB, and then hear
// nothing. ONUs lose synchronisation where one bit in 25 is wrong. Neither hears anything with so much more than its
// overload.
inline constexpr int32_t olt_loss_below_sensitivity = 322;
inline constexpr int32_t onu_loss_below_sensitivity = 600;
inline constexpr int32_t saturation_above_overload = 300;

// A LossRange says which losses a link is made for, in 0.01 dB.
struct LossRange {
    int32_t least;
    int32_t greatest;
};
// Returns the range for the light of one direction. The ends may be of different classes. What the sender's class
// allows for penalties, as by dispersion, is taken off.
LossRange losses_between(const OpticalClass &olt, const OpticalClass &onu, Direction direction);

} // namespace ponsim
