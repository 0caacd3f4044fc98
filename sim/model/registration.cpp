#include "model/registration.h"

#include "model/alarms.h"

namespace ponsim
{

Registration::Registration(const Olt &model, const PonPort &at, const Authentication &rules, Change &planned)
    : olt(model), port(at), authentication(rules), change(planned), taken(ids_of(at.bindings))
{
}

void Registration::add(const Arrival &arrival, bool was_registered)
{
    const std::optional<uint32_t> bound_id = olt.id_at(port.number, arrival.mac);
    const Binding *binding = bound_id ? &*port.bindings[*bound_id] : nullptr;
    if (binding && arrival.silent) return;
    if (authentication.turns_away(arrival, binding)) {
        const bool turned_away_before = was_registered && port.authentication.turns_away(arrival, binding);
        if (!turned_away_before) raise(port, arrival.mac, Alarm::auth_failed, change);
    } else if (!olt.find(arrival.mac) && authentication.accepts(arrival) && port.record(arrival.mac).supported) {
        const std::optional<uint32_t> onu_id = lowest_free(taken);
        if (!onu_id) return;
        taken.set(*onu_id);
        change.bindings.push_back(
            {port.number, *onu_id,
             Binding{.mac = arrival.mac, .mode = 0, .text_a = {}, .text_b = {}, .text_c = {}, .description = {}}});
    }
}

void change_reach(const Olt &olt, const PonPort &port, const Reach &reach, Change &change)
{
    Registration registration(olt, port, port.authentication, change);
    for (const Arrival &arrival : port.arrivals) {
        const bool was_ranged = port.reach().contains(arrival);
        if (was_ranged == reach.contains(arrival)) continue;
        if (was_ranged) {
            const std::optional<uint32_t> onu_id = olt.id_at(port.number, arrival.mac);
            if (onu_id && port.online(*port.bindings[*onu_id])) raise(port, arrival.mac, Alarm::los, change);
        } else if (port.refuses(arrival.mac)) {
            raise(port, arrival.mac, Alarm::rejected, change);
        } else {
            registration.add(arrival, false);
        }
    }
}

} // namespace ponsim
