#include "model/deregistration.h"

#include <map>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/alarms.h"
#include "model/debug.h"
#include "model/registration.h"

namespace ponsim
{
namespace
{

void deregister(const Olt &olt, const PonPort &port, const Mac &mac, Change &change)
{
    begin_registration(olt, port, mac, olt.now() + shortest_absence, change);
    raise(port, mac, Alarm::deregistered, change);
    report(olt, DebugSwitch::onu, port.number, mac, "deregistered by command", change);
}

void come_back(const Olt &olt, const PonPort &port, const Mac &mac, Registration &registration, Change &change)
{
    OnuRecord &record = edit(change, port, mac);
    record.phase = Phase::registered;
    record.phase_ends = 0;
    const Arrival *arrival = port.arrived(mac);
    if (!arrival || !record.present() || !port.reach().contains(*arrival)) return;
    if (port.refuses(mac)) {
        raise(port, mac, Alarm::rejected, change);
        report(olt, DebugSwitch::onu, port.number, mac, "rejected: on the black list", change);
        return;
    }
    registration.add(*arrival, false);
    if (arrival->silent && olt.id_at(port.number, mac)) return;
    report(olt, DebugSwitch::onu, port.number, mac, "registered", change);
    report(olt, DebugSwitch::ctc_oam, port.number, mac, "extended OAM discovered", change);
}

} // namespace

Plan deregister_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    if (onu_id >= onus_per_port) return {PON_ERR_BAD_ONU_ID};
    const std::optional<Binding> &binding = port->bindings[onu_id];
    if (!binding) return {PON_ERR_NOT_BOUND};
    if (port->state(*binding) == OnuState::offline) return {PON_ERR_OFFLINE};
    Plan plan{BSP_OK};
    deregister(olt, *port, binding->mac, plan.change);
    return plan;
}

Plan deregister_all(const Olt &olt, uint32_t pon_port)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    Plan plan{BSP_OK};
    for (const Arrival &arrival : port->arrivals) {
        const std::optional<uint32_t> onu_id = olt.id_at(pon_port, arrival.mac);
        const bool registered =
            onu_id ? port->state(*port->bindings[*onu_id]) != OnuState::offline : olt.waits(*port, arrival);
        if (registered) deregister(olt, *port, arrival.mac, plan.change);
    }
    return plan;
}

std::optional<ModelTime> next_registration(const Olt &olt)
{
    if (olt.registrations().empty()) return std::nullopt;
    return olt.registrations().begin()->at;
}

Change register_onus(const Olt &olt)
{
    Change change;
    // One a port: ONUs that register together are not bound to the same id.
    std::map<uint32_t, Registration> registrations;
    for (const Olt::Due &due : olt.registrations()) {
        if (due.at > olt.now()) break;
        const PonPort &port = *olt.port(due.pon_port);
        Registration &registration =
            registrations.try_emplace(port.number, olt, port, port.authentication, change).first->second;
        come_back(olt, port, due.mac, registration, change);
    }
    return change;
}

} // namespace ponsim
