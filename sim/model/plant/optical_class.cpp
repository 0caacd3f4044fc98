#include "model/plant/optical_class.h"

#include <algorithm>
#include <iterator>

namespace ponsim
{
namespace
{

// PX10, PX20 and PX30 are 1000BASE-PX of IEEE 802.3, clause 60: average launch powers, receive sensitivities, greatest
// average receive powers and channel insertion losses. PX30 came with 802.3bk. PX20+ is that of YD/T 1688.3.
constexpr OpticalClass classes[] = {
    {"PX10", {-300, 200, -2400, -100}, {-100, 400, -2400, -300}, 2000, 1950, 10},
    {"PX20", {200, 700, -2700, -600}, {-100, 400, -2400, -300}, 2400, 2350, 20},
    {"PX20+", {250, 700, -3000, -600}, {0, 400, -2700, -300}, 2800, 2800, 20},
    {"PX30", {300, 700, -2978, -938}, {62, 562, -2700, -800}, 2900, 2900, 20},
};

} // namespace

std::span<const OpticalClass> optical_classes()
{
    return classes;
}

const OpticalClass *find_optical_class(std::string_view name)
{
    const auto *found = std::ranges::find(classes, name, &OpticalClass::name);
    return found == std::end(classes) ? nullptr : found;
}

const OpticalClass &usual_class()
{
    return classes[3];
}

LossRange losses_between(const OpticalClass &olt, const OpticalClass &onu, Direction direction)
{
    const bool up = direction == Direction::up;
    const Transceiver &sender = up ? onu.onu : olt.olt;
    const Transceiver &receiver = up ? olt.olt : onu.onu;
    const int32_t penalties = up ? onu.onu.least_launch - onu.olt.sensitivity - onu.greatest_loss_up
                                 : olt.olt.least_launch - olt.onu.sensitivity - olt.greatest_loss_down;
    return {sender.greatest_launch - receiver.overload, sender.least_launch - receiver.sensitivity - penalties};
}

} // namespace ponsim
