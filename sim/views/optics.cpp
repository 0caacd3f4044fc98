#include "views/optics.h"

#include "views/table.h"

namespace ponsim
{
namespace
{

std::string_view to_text(Standing standing)
{
    switch (standing) {
    case Standing::normal:
        return "normal";
    case Standing::low_warning:
        return "low warning";
    case Standing::low_alarm:
        return "low alarm";
    case Standing::high_warning:
        return "high warning";
    case Standing::high_alarm:
        return "high alarm";
    }
    return {};
}

} // namespace

Standing standing(int32_t reading, const Thresholds &thresholds)
{
    if (reading > thresholds.high_alarm) return Standing::high_alarm;
    if (reading < thresholds.low_alarm) return Standing::low_alarm;
    if (reading > thresholds.high_warning) return Standing::high_warning;
    if (reading < thresholds.low_warning) return Standing::low_warning;
    return Standing::normal;
}

std::string module_table(const Module &module, ModelTime now)
{
    Table<view::sfp_quantities> table;
    const Readings readings = module.readings(now);
    for (uint32_t index = 0; index < quantities; ++index) {
        const QuantityFormat &format = format_of(Quantity{index});
        const Thresholds &thresholds = module.type().thresholds[index];
        const bool measured = index != received_power || module.receives();
        const auto real = [&format](int32_t reading) {
            return static_cast<double>(format.convert(reading)) / format.per_unit;
        };
        const std::string_view state = to_text(standing(readings[index], thresholds));
        table.add({.quantity = format.name,
                   .value = measured ? std::optional(real(readings[index])) : std::nullopt,
                   .unit = format.unit,
                   .low_alarm = real(thresholds.low_alarm),
                   .low_warning = real(thresholds.low_warning),
                   .high_warning = real(thresholds.high_warning),
                   .high_alarm = real(thresholds.high_alarm),
                   .state = measured ? std::optional(state) : std::nullopt});
    }
    return table.text();
}

} // namespace ponsim
