#include "views/optics.h"

#include "bsp_pon.h"
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
    Table table(BSP_MSG_PLAT, BSP_CMD_VIEW_SFP_INFO);
    const Readings readings = module.readings(now);
    for (uint32_t index = 0; index < quantities; ++index) {
        const QuantityFormat &format = format_of(Quantity{index});
        const Thresholds &thresholds = module.type().thresholds[index];
        const bool measured = index != received_power || module.receives();
        const auto real = [&format](int32_t reading) {
            return static_cast<double>(format.convert(reading)) / format.per_unit;
        };
        table.cell("quantity", format.name);
        measured ? table.cell("value", real(readings[index])) : table.cell("value", std::nullopt);
        table.cell("unit", format.unit);
        table.cell("low_alarm", real(thresholds.low_alarm));
        table.cell("low_warning", real(thresholds.low_warning));
        table.cell("high_warning", real(thresholds.high_warning));
        table.cell("high_alarm", real(thresholds.high_alarm));
        if (measured)
            table.cell("state", to_text(standing(readings[index], thresholds)));
        else
            table.cell("state", std::nullopt);
    }
    return std::string(table.text());
}

} // namespace ponsim
