#include "model/port/sla.h"

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/olt/bound.h"
#include "model/olt/demand.h"
#include "model/olt/mpcp.h"

namespace ponsim
{
Plan set_sla(const Olt &olt, uint32_t pon_port, uint32_t onu_id, const std::optional<Sla> &sla)
{
    if (const uint32_t status = find_bound(olt, pon_port, onu_id, {}).status) return {status};
    if (sla && !is_good(*sla)) return {PON_ERR_BAD_SLA};
    const PonPort &port = *olt.port(pon_port);
    Binding binding = *port.bindings[onu_id];
    Granted granted = granted_at(olt, port);
    granted.fixed -= binding.sla ? binding.sla->fixed : 0;
    granted.assured -= binding.sla ? binding.sla->assured : 0;
    if (sla && sla->fixed + sla->assured > granted.free()) return {PON_ERR_SLA_CAPACITY};
    binding.sla = sla;
    return {BSP_OK, change_of<Binding>({pon_port, onu_id}, binding)};
}

Plan set_sla_down(const Olt &olt, uint32_t pon_port, uint32_t onu_id, std::optional<uint32_t> maximum)
{
    if (const uint32_t status = find_bound(olt, pon_port, onu_id, {}).status) return {status};
    if (maximum && (*maximum < 1 || *maximum > line_rate)) return {PON_ERR_BAD_SLA};
    Binding binding = *olt.port(pon_port)->bindings[onu_id];
    binding.sla_down = maximum;
    return {BSP_OK, change_of<Binding>({pon_port, onu_id}, binding)};
}

Granted granted_at(const Olt &olt, const PonPort &port)
{
    Granted granted{.capacity = admissible(mpcp_of(olt, port.number), ids_of(port.bindings).count())};
    for (const std::optional<Binding> &binding : port.bindings) {
        if (!binding || !binding->sla) continue;
        ++granted.onus;
        granted.fixed += binding->sla->fixed;
        granted.assured += binding->sla->assured;
    }
    return granted;
}

} // namespace ponsim
