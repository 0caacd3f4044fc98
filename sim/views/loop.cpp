#include "views/loop.h"

#include <algorithm>
#include <limits>

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

// Returns the whole seconds between two times. When they do not fit into 32 bits, returns the greatest number that
// does.
uint32_t seconds_between(ModelTime from, ModelTime to)
{
    return static_cast<uint32_t>(
        std::min<ModelTime>((to - from) / ms_per_second, std::numeric_limits<uint32_t>::max()));
}

} // namespace

std::string loop_table(const Olt &olt)
{
    Table<view::loop_info> table;
    for (const auto &[key, record] : olt.loops()) {
        const std::optional<ModelTime> recovery = recovery_of(olt, record);
        table.add({.pon_port = key.pon_port,
                   .onu_id = olt.id_at(key.pon_port, key.mac),
                   .mac = key.mac,
                   .uni = key.uni,
                   .state = to_text(state_of(record)),
                   .detected = record.detected,
                   .changed = seconds_between(record.since, olt.now()),
                   .recovers = recovery ? std::optional(seconds_between(olt.now(), *recovery)) : std::nullopt});
    }
    return table.text();
}

} // namespace ponsim
