#include "views/loop.h"

#include <algorithm>
#include <limits>

#include "bsp_pon.h"
#include "model/port/loops.h"
#include "views/table.h"

namespace ponsim
{
namespace
{

std::string_view to_text(LoopState state)
{
    switch (state) {
    case LoopState::looped:
        return "looped";
    case LoopState::shut:
        return "shut";
    case LoopState::recovered:
        return "recovered";
    }
    return {};
}

// Whole seconds between two times; the greatest number where it is no longer one of 32 bits.
uint32_t seconds_between(ModelTime from, ModelTime to)
{
    return static_cast<uint32_t>(
        std::min<ModelTime>((to - from) / ms_per_second, std::numeric_limits<uint32_t>::max()));
}

} // namespace

std::string loop_table(const Olt &olt)
{
    Table table(BSP_MSG_LOOP_DETECT, BSP_CMD_LOOP_INFO);
    for (const auto &[place, record] : olt.loops()) {
        table.cell("pon_port", place.pon_port);
        table.cell("onu_id", olt.id_at(place.pon_port, place.mac));
        table.cell("mac", place.mac);
        table.cell("uni", place.uni);
        table.cell("state", to_text(state_of(record)));
        table.cell("detected", record.detected);
        table.cell("changed", seconds_between(record.since, olt.now()));
        const std::optional<ModelTime> recovery = recovery_of(olt, record);
        recovery ? table.cell("recovers", seconds_between(olt.now(), *recovery)) : table.cell("recovers", std::nullopt);
    }
    return std::string(table.text());
}

} // namespace ponsim
