#include "model/lifecycle/deregistration.h"

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/alarm/alarms.h"
#include "model/lifecycle/debug.h"
#include "model/lifecycle/registration.h"

namespace ponsim
{
namespace
{

void deregister(const Olt &olt, const PonPort &port, const Mac &mac, Change &change)
{
    begin_registration(olt, port, mac, olt.now() + shortest_absence, change);
    raise(olt, alarm_key(port, mac, Alarm::deregistered), {AlarmCause::command}, change);
    report(olt, DebugSwitch::onu, port.number, mac, "deregistered by command", change);
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

} // namespace ponsim
