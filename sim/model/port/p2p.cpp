#include "model/port/p2p.h"

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/base/block.h"
#include "model/olt/bound.h"
#include "model/olt/llid.h"
#include "model/plant/station.h"
#include "model/port/sla.h"

namespace ponsim
{
namespace
{

constexpr uint32_t max_vlan = 4094;
constexpr uint32_t min_ethertype = 0x600;
constexpr uint32_t max_ethertype = 0xffff;

// Keeps one block of a port. Without bytes the port has what it has at first.
Plan keep(uint32_t command, uint32_t pon_port, uint32_t index, std::optional<std::string> &&bytes)
{
    Plan plan{BSP_OK};
    plan.change.add(block_at({BSP_MSG_PLAT, command, pon_port, index}, std::move(bytes)));
    return plan;
}

// Returns a value as a block, or no block when it is the value that there is at first.
template <class Value>
std::optional<std::string> unless_first(const Value &value)
{
    return value == Value{} ? std::nullopt : std::optional(to_block(value));
}

} // namespace

bool is_good(const P2pConfig &config)
{
    const bool all_vlans = config.first_vlan == 0 && config.last_vlan == 0;
    const bool some_vlans =
        config.first_vlan >= 1 && config.first_vlan <= config.last_vlan && config.last_vlan <= max_vlan;
    return config.rest <= 1 && config.broadcast <= 1 && config.multicast <= 1 && config.rate <= line_rate &&
           (all_vlans || some_vlans);
}

bool is_good(const P2pEntry &entry)
{
    const bool ethertype = entry.traffic >= min_ethertype && entry.traffic <= max_ethertype;
    return entry.action >= P2pAction::forward && entry.action <= P2pAction::drop && (entry.traffic == 0 || ethertype) &&
           entry.rate <= line_rate;
}

bool p2p_on(const Olt &olt, uint32_t pon_port)
{
    return from_block(olt.block(BSP_MSG_PLAT, BSP_CMD_P2P_STATE_SET, pon_port), uint32_t{0}) != 0;
}

uint32_t p2p_own_port(const Olt &olt, uint32_t pon_port)
{
    return from_block(olt.block(BSP_MSG_PLAT, BSP_CMD_P2P_OWN_PORT_SET, pon_port), uint32_t{0});
}

P2pConfig p2p_config(const Olt &olt, uint32_t pon_port)
{
    return from_block(olt.block(BSP_MSG_PLAT, BSP_CMD_P2P_CFG_SET, pon_port), P2pConfig{});
}

std::optional<P2pEntry> p2p_entry(const Olt &olt, uint32_t pon_port, uint32_t number)
{
    const std::string *block = olt.block(BSP_MSG_PLAT, BSP_CMD_P2P_ENTRY_SET, pon_port, number);
    if (!block) return std::nullopt;
    return from_block(block, P2pEntry{});
}

uint32_t p2p_onus(const Olt &olt, const PonPort &port)
{
    if (!p2p_on(olt, port.number)) return 0;
    uint32_t onus = 0;
    for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id) {
        const std::optional<Binding> &binding = port.bindings[onu_id];
        if (!binding || !binding->p2p || !port.online(*binding)) continue;
        const LlidBehavior behavior = llid_behavior(olt, port.number, to_llid(onu_id));
        onus += behavior.frames != Frames::dropped && behavior.isolated == 0;
    }
    return onus;
}

Plan set_p2p(const Olt &olt, uint32_t pon_port, uint32_t onu, uint32_t on)
{
    if (on > 1) return {PON_ERR_BAD_RECORD};
    if (onu == whole_p2p_port) {
        if (pon_port != 0 && !olt.port(pon_port)) return {PON_ERR_NO_PORT};
        Plan plan{BSP_OK};
        for (const PonPort &port : olt.ports())
            if (pon_port == 0 || pon_port == port.number)
                plan.change.add(block_at({BSP_MSG_PLAT, BSP_CMD_P2P_STATE_SET, port.number, 0}, unless_first(on)));
        return plan;
    }
    if (const uint32_t status = find_bound(olt, pon_port, onu, {}).status) return {status};
    Binding binding = *olt.port(pon_port)->bindings[onu];
    binding.p2p = on != 0;
    return {BSP_OK, change_of<Binding>({pon_port, onu}, binding)};
}

Plan set_p2p_own_port(const Olt &olt, uint32_t pon_port, uint32_t own_port)
{
    if (!olt.port(pon_port)) return {PON_ERR_NO_PORT};
    if (own_port > ge_uplinks) return {PON_ERR_BAD_RECORD};
    return keep(BSP_CMD_P2P_OWN_PORT_SET, pon_port, 0, unless_first(own_port));
}

Plan set_p2p_config(const Olt &olt, uint32_t pon_port, const P2pConfig &config)
{
    if (!olt.port(pon_port)) return {PON_ERR_NO_PORT};
    if (!is_good(config)) return {PON_ERR_BAD_RECORD};
    return keep(BSP_CMD_P2P_CFG_SET, pon_port, 0, unless_first(config));
}

Plan set_p2p_entry(const Olt &olt, uint32_t pon_port, uint32_t number, const P2pEntry &entry)
{
    if (!olt.port(pon_port)) return {PON_ERR_NO_PORT};
    if (number >= max_p2p_entries || entry.action > P2pAction::drop) return {PON_ERR_BAD_RECORD};
    if (entry.action == P2pAction::none) return keep(BSP_CMD_P2P_ENTRY_SET, pon_port, number, std::nullopt);
    if (!olt.port(entry.to_port)) return {PON_ERR_NO_PORT};
    if (entry.from_onu > any_onu || entry.to_onu > any_onu) return {PON_ERR_BAD_ONU_ID};
    if (!is_good(entry)) return {PON_ERR_BAD_RECORD};
    return keep(BSP_CMD_P2P_ENTRY_SET, pon_port, number, to_block(entry));
}

} // namespace ponsim
