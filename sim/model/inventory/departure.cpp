#include "model/inventory/departure.h"

#include <algorithm>

#include "model/inventory/forgetting.h"
#include "model/port/loops.h"

namespace ponsim
{
namespace
{

// Returns whether no link of the ONU is left that could fail.
bool has_left(const Olt &olt, const OnuAtPort &key)
{
    const PonPort &port = *olt.port(key.pon_port);
    const OnuRecord &record = port.record(key.mac);
    return !record.powered || record.phase == Phase::booting || record.phase == Phase::discovery ||
           !port.limits.contain(port.arrived(key.mac)->distance);
}

void end_loops(const Olt &olt, const OnuAtPort &onu, Change &change)
{
    for (auto at = olt.loops().lower_bound({onu.pon_port, onu.mac, 0});
         at != olt.loops().end() && at->first.pon_port == onu.pon_port && at->first.mac == onu.mac; ++at)
        change.add(set_loop(olt, at->first, false).change);
}

// What the port has of the ONU stays as long as the ONU is bound there. What the ONU itself has goes with it.
void depart(const Olt &olt, const OnuAtPort &key, Change &change)
{
    const PonPort &port = *olt.port(key.pon_port);
    const Arrival &arrival = *port.arrived(key.mac);
    const bool bound = olt.id_at(key.pon_port, key.mac).has_value();
    if (bound || is_found(olt, key)) {
        PluggedOnu gone = olt.kept<PluggedOnu>().at(key);
        gone.state = Plugged::gone;
        change.put<PluggedOnu>(key, gone);
    } else {
        change.drop<PluggedOnu>(key);
    }
    const auto has_its_fibre = [&](const Arrival &other) {
        return other.branch == arrival.branch && other.mac != arrival.mac;
    };
    if (port.damage.contains(arrival.branch) && std::ranges::none_of(port.arrivals, has_its_fibre))
        change.drop<Damage>({key.pon_port, arrival.branch});
    const OnuRecord before = port.record(key.mac);
    change.put<OnuRecord>(
        key, {.supported = before.supported, .reboots = before.reboots, .upgrade_type = before.upgrade_type});
    if (bound) {
        forget<PluggedDevice>(olt, key, change);
        end_loops(olt, key, change);
        return;
    }
    forget_own(olt, key, change);
}

std::optional<ModelTime> next(const Olt &olt)
{
    if (std::ranges::none_of(olt.leaving(), [&](const OnuAtPort &key) { return has_left(olt, key); }))
        return std::nullopt;
    return olt.now();
}

Change happen(const Olt &olt)
{
    Change change;
    for (const OnuAtPort &key : olt.leaving())
        if (has_left(olt, key)) depart(olt, key, change);
    return change;
}

} // namespace

const Process departure_process{next, happen};

} // namespace ponsim
