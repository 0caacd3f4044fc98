#include "model/olt/bound.h"

#include "bsp_pon.h"
#include "generated/service_words.h"

namespace ponsim
{

uint32_t check_bound(const PonPort *port, const OnuIds &onu_ids)
{
    if (!port) return PON_ERR_NO_PORT;
    if (onu_ids.none()) return PON_ERR_BAD_RECORD;
    return (onu_ids & ~ids_of(port->bindings)).any() ? PON_ERR_NOT_BOUND : BSP_OK;
}

Named find_bound(const Olt &olt, uint32_t pon_port, uint32_t onu_id, const Mac &mac)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return {PON_ERR_NO_PORT, onu_id};
    if (onu_id >= onus_per_port) return {PON_ERR_BAD_ONU_ID, onu_id};

    if (!is_zero(mac)) {
        const std::optional<uint32_t> bound_id = olt.id_at(pon_port, mac);
        if (onu_id == 0 && bound_id) onu_id = *bound_id;
        const bool id_names_one = onu_id != 0 && port->bindings[onu_id];
        if (!bound_id && !id_names_one) return {PON_ERR_NOT_BOUND, onu_id};
        if (bound_id != onu_id) return {PON_ERR_MISMATCH, onu_id};
    }
    return {port->bindings[onu_id] ? BSP_OK : PON_ERR_NOT_BOUND, onu_id};
}

} // namespace ponsim
