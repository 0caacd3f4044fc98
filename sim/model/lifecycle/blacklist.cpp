#include "model/lifecycle/blacklist.h"

#include <span>
#include <vector>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/alarm/alarms.h"
#include "model/lifecycle/registration.h"
#include "model/olt/bound.h"

namespace ponsim
{
namespace
{

Plan put_on(const Olt &olt, const PonPort &port, std::span<const Mac> macs, const std::string &text)
{
    Plan plan{BSP_OK};
    OnuIds taken = ids_of(port.blacklist);
    for (const Mac &mac : macs) {
        const std::optional<uint32_t> id = lowest_free(taken);
        if (!id) return {PON_ERR_TABLE_FULL};
        taken.set(*id);
        plan.change.put<BlacklistEntry>({port.number, *id}, BlacklistEntry{mac, text});
        if (const std::optional<uint32_t> onu_id = olt.id_at(port.number, mac))
            plan.change.drop<Binding>({port.number, *onu_id});
        if (port.ranged(mac)) raise(olt, alarm_key(port, mac, Alarm::rejected), {AlarmCause::black_list}, plan.change);
    }
    return plan;
}

Plan take_off(const Olt &olt, const PonPort &port, const OnuIds &ids)
{
    Plan plan{BSP_OK};
    Registration registration(olt, port, port.authentication, plan.change);
    for (uint32_t id = 0; id < onus_per_port; ++id) {
        if (!ids[id]) continue;
        plan.change.drop<BlacklistEntry>({port.number, id});
        if (const Arrival *arrival = port.ranged(port.blacklist[id]->mac)) registration.add(*arrival, false);
    }
    return plan;
}

} // namespace

Plan add_to_blacklist(const Olt &olt, uint32_t pon_port, const Mac &mac, const std::string &text)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    if (!is_station(mac)) return {PON_ERR_BAD_MAC};
    const auto found = port->blacklist_ids.find(mac);
    if (found == port->blacklist_ids.end()) return put_on(olt, *port, {&mac, 1}, text);
    return {BSP_OK, change_of<BlacklistEntry>({pon_port, found->second}, BlacklistEntry{mac, text})};
}

Plan reject_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id)
{
    if (!olt.port(pon_port)) return {PON_ERR_NO_PORT};
    if (onu_id >= onus_per_port) return {PON_ERR_BAD_ONU_ID};
    return reject_onus(olt, pon_port, OnuIds{}.set(onu_id));
}

Plan reject_onus(const Olt &olt, uint32_t pon_port, const OnuIds &onu_ids)
{
    const PonPort *port = olt.port(pon_port);
    if (const uint32_t status = check_bound(port, onu_ids)) return {status};
    std::vector<Mac> macs;
    for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id)
        if (onu_ids[onu_id]) macs.push_back(port->bindings[onu_id]->mac);
    return put_on(olt, *port, macs, {});
}

Plan remove_from_blacklist(const Olt &olt, uint32_t pon_port, const Mac &mac)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    const auto found = port->blacklist_ids.find(mac);
    if (found == port->blacklist_ids.end()) return {PON_ERR_NOT_LISTED};
    return take_off(olt, *port, OnuIds{}.set(found->second));
}

Plan remove_from_blacklist(const Olt &olt, uint32_t pon_port, const OnuIds &ids)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    if (ids.none()) return {PON_ERR_BAD_RECORD};
    if ((ids & ~ids_of(port->blacklist)).any()) return {PON_ERR_NOT_LISTED};
    return take_off(olt, *port, ids);
}

} // namespace ponsim
