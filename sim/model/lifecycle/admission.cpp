#include "model/lifecycle/admission.h"

#include <algorithm>
#include <vector>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/alarm/alarms.h"
#include "model/lifecycle/images.h"
#include "model/lifecycle/registration.h"
#include "model/lifecycle/upgrade.h"
#include "model/olt/bound.h"

namespace ponsim
{
namespace
{

Plan refuse(uint32_t status)
{
    return {status};
}

Plan release_if(const Olt &olt, uint32_t pon_port, bool (*wanted)(const PonPort &, const Binding &))
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return refuse(PON_ERR_NO_PORT);
    Plan plan{BSP_OK};
    for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id)
        if (port->bindings[onu_id] && wanted(*port, *port->bindings[onu_id]))
            plan.change.drop<Binding>({pon_port, onu_id});
    return plan;
}

} // namespace

Plan bind_onu(const Olt &olt, uint32_t pon_port, std::optional<uint32_t> onu_id, const Binding &binding)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return refuse(PON_ERR_NO_PORT);
    if (onu_id >= onus_per_port) return refuse(PON_ERR_BAD_ONU_ID);
    if (!is_station(binding.mac)) return refuse(PON_ERR_BAD_MAC);
    if (port->refuses(binding.mac)) return refuse(PON_ERR_BLACKLISTED);
    if (!port->record(binding.mac).supported) return refuse(PON_ERR_UNSUPPORTED);

    Binding bound = binding;
    if (const std::optional<OnuKey> key = olt.find(binding.mac)) {
        if (key->pon_port != pon_port || (onu_id && key->onu_id != *onu_id)) return refuse(PON_ERR_ALREADY_BOUND);
        onu_id = key->onu_id;
        bound = *port->bindings[*onu_id];
        bound.mode = binding.mode;
        bound.text_a = binding.text_a;
        bound.text_b = binding.text_b;
        bound.text_c = binding.text_c;
    } else if (!onu_id) {
        onu_id = lowest_free(ids_of(port->bindings));
        if (!onu_id) return refuse(PON_ERR_PORT_FULL);
    } else if (port->bindings[*onu_id]) {
        return refuse(PON_ERR_ID_IN_USE);
    }
    return {BSP_OK, change_of<Binding>({pon_port, *onu_id}, bound)};
}

Plan release_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id, const Mac &mac)
{
    const Named onu = find_bound(olt, pon_port, onu_id, mac);
    if (onu.status != BSP_OK) return refuse(onu.status);
    return {BSP_OK, removal_of<Binding>({pon_port, onu.onu_id})};
}

Plan release_onus(const Olt &olt, uint32_t pon_port, const OnuIds &onu_ids)
{
    if (const uint32_t status = check_bound(olt.port(pon_port), onu_ids)) return refuse(status);
    Plan plan{BSP_OK};
    for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id)
        if (onu_ids[onu_id]) plan.change.drop<Binding>({pon_port, onu_id});
    return plan;
}

Plan release_all(const Olt &olt, uint32_t pon_port)
{
    return release_if(olt, pon_port, [](const PonPort &, const Binding &) { return true; });
}

Plan release_offline(const Olt &olt, uint32_t pon_port)
{
    return release_if(olt, pon_port, [](const PonPort &port, const Binding &binding) {
        return port.state(binding) == OnuState::offline;
    });
}

Plan reboot_onus(const Olt &olt, uint32_t pon_port, const OnuIds &onu_ids)
{
    const PonPort *port = olt.port(pon_port);
    if (const uint32_t status = check_bound(port, onu_ids)) return refuse(status);
    Plan plan{BSP_OK};
    std::vector<Mac> macs;
    for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id) {
        if (!onu_ids[onu_id]) continue;
        const Binding &binding = *port->bindings[onu_id];
        if (!port->online(binding)) return refuse(PON_ERR_OFFLINE);
        OnuRecord record = port->record(binding.mac);
        ++record.reboots;
        start_committed(olt, *port, binding.mac, record, plan.change);
        plan.change.put<OnuRecord>({pon_port, binding.mac}, record);
        boot(olt, *port, binding.mac, plan.change);
        raise(olt, alarm_key(*port, binding.mac, Alarm::dying_gasp), {AlarmCause::reboot}, plan.change);
        macs.push_back(binding.mac);
    }
    interrupt_runs(olt, *port, macs, plan.change);
    return plan;
}

Plan sort_onus(const Olt &olt, uint32_t pon_port, const OnuIds &onu_ids)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return refuse(PON_ERR_NO_PORT);
    if (onu_ids.none()) return refuse(PON_ERR_BAD_RECORD);
    std::vector<uint32_t> ids;
    std::vector<const Binding *> bindings;
    for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id) {
        if (!onu_ids[onu_id] || !port->bindings[onu_id]) continue;
        ids.push_back(onu_id);
        bindings.push_back(&*port->bindings[onu_id]);
    }
    if (ids.empty()) return refuse(PON_ERR_NOT_BOUND);
    std::ranges::sort(bindings, {}, &Binding::mac);
    Plan plan{BSP_OK};
    for (size_t index = 0; index < ids.size(); ++index)
        if (bindings[index] != &*port->bindings[ids[index]])
            plan.change.put<Binding>({pon_port, ids[index]}, *bindings[index]);
    return plan;
}

Plan set_ranging_limits(const Olt &olt, uint32_t pon_port, const RangingLimits &limits)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return refuse(PON_ERR_NO_PORT);
    if (limits.min > limits.max || limits.max > max_distance) return refuse(PON_ERR_BAD_RECORD);
    Plan plan{BSP_OK};
    plan.change.put<PortRecord>(pon_port, {limits, static_cast<uint32_t>(port->authentication.mode)});
    change_limits(olt, *port, limits, plan.change);
    return plan;
}

Plan set_supported(const Olt &olt, uint32_t pon_port, const Mac &mac, bool supported)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return refuse(PON_ERR_NO_PORT);
    if (!is_station(mac)) return refuse(PON_ERR_BAD_MAC);
    OnuRecord record = port->record(mac);
    if (record.supported == supported) return {BSP_OK};
    if (!port->onus.contains(mac) && port->onus.size() >= max_onu_records) return refuse(PON_ERR_TABLE_FULL);
    record.supported = supported;
    return {BSP_OK, change_of<OnuRecord>({pon_port, mac}, record)};
}

} // namespace ponsim
