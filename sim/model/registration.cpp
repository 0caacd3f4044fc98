#include "model/registration.h"

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/alarms.h"
#include "model/images.h"
#include "model/mpcp.h"
#include "model/upgrade.h"

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

void begin_registration(const Olt &olt, const PonPort &port, const Mac &mac, ModelTime from, Change &change)
{
    const ModelTime interval = mpcp_of(olt, port.number).discovery_interval;
    OnuRecord &record = edit(change, port, mac);
    record.phase = Phase::discovery;
    record.phase_ends = (from + interval - 1) / interval * interval;
}

namespace
{

// What comes of an ONU that is on the fibre and was not.
void arrive(const PonPort &port, const Arrival &arrival, Registration &registration, Change &change)
{
    if (port.refuses(arrival.mac))
        raise(port, arrival.mac, Alarm::rejected, change);
    else
        registration.add(arrival, false);
}

} // namespace

void change_reach(const Olt &olt, const PonPort &port, const Reach &reach, Change &change)
{
    Registration registration(olt, port, port.authentication, change);
    for (const Arrival &arrival : port.arrivals) {
        const bool powered = port.record(arrival.mac).powered;
        if (!powered || port.reach().contains(arrival) == reach.contains(arrival)) continue;
        if (reach.contains(arrival))
            arrive(port, arrival, registration, change);
        else if (olt.online(port, arrival.mac))
            raise(port, arrival.mac, Alarm::los, change);
    }
}

Plan set_power(const Olt &olt, uint32_t pon_port, const Mac &mac, bool on)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    const Arrival *arrival = port->arrived(mac);
    if (!arrival) return {PON_ERR_NOT_ARRIVED};
    OnuRecord record = port->record(mac);
    if (record.powered == on) return {BSP_OK};
    record.powered = on;
    Plan plan{BSP_OK};
    if (on) {
        start_committed(olt, *port, mac, record, plan.change);
        interrupt_runs(olt, *port, {&mac, 1}, plan.change);
    }
    plan.change.onus.push_back({pon_port, mac, record});
    if (on && port->reach().contains(*arrival)) {
        Registration registration(olt, *port, port->authentication, plan.change);
        arrive(*port, *arrival, registration, plan.change);
    } else if (!on && olt.online(*port, mac)) {
        raise(*port, mac, Alarm::dying_gasp, plan.change);
        raise(*port, mac, Alarm::los, plan.change);
    }
    return plan;
}

} // namespace ponsim
