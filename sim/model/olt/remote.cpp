#include "model/olt/remote.h"

#include "bsp_pon.h"
#include "generated/service_words.h"

namespace ponsim
{
namespace
{

RemoteOnu onu_at(const Olt &olt, const PonPort &port, uint32_t onu_id)
{
    const Binding &binding = *port.bindings[onu_id];
    return {&port, onu_id, &binding, port.state(binding), device_at(olt, port, binding.mac)};
}

} // namespace

FoundOnu find_onu(const Olt &olt, uint32_t pon_port, uint32_t onu_id)
{
    const PonPort *port = olt.port(pon_port);
    if (!port) return {PON_ERR_NO_PORT};
    if (onu_id >= onus_per_port) return {PON_ERR_BAD_ONU_ID};
    if (!port->bindings[onu_id]) return {PON_ERR_NOT_BOUND};
    return {BSP_OK, onu_at(olt, *port, onu_id)};
}

std::vector<RemoteOnu> onus_of(const Olt &olt, const PonPort &port)
{
    std::vector<RemoteOnu> onus;
    for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id)
        if (port.bindings[onu_id]) onus.push_back(onu_at(olt, port, onu_id));
    return onus;
}

OnuBlock setting_of(const Olt &olt, const SettingKey &key, Side side, const OnuBlock &otherwise)
{
    const OnuSetting *setting = olt.setting(key);
    if (!setting) return otherwise;
    return OnuBlock(side == Side::local || olt.has_come(setting->arrives) ? setting->sent : setting->before);
}

namespace
{

constexpr uint32_t switch_command = BSP_CMD_ONU_CATV_SET;
constexpr layout::At<ModelTime> since_at{352};

// The block holds the time since which they are on, or 0 while they are off. No ONU is configured at time 0.
OnuBlock switch_block(ModelTime since)
{
    OnuBlock block(sizeof since);
    block.put(since_at, since);
    return block;
}

ModelTime since(const Olt &olt, const RemoteOnu &onu, Side side)
{
    return setting_of(olt, onu.key(switch_command), side, switch_block(0)).get(since_at);
}

} // namespace

bool switched_on(const Olt &olt, const RemoteOnu &onu, Side side)
{
    return since(olt, onu, side) != 0;
}

std::optional<ModelTime> on_since(const Olt &olt, const RemoteOnu &onu)
{
    const Ledger *ledger = olt.ledger({onu.port->number, onu.binding->mac});
    if (!ledger || !olt.has_come(ledger->since) || !switched_on(olt, onu, Side::remote)) return std::nullopt;
    return ledger->since;
}

Plan switch_on(const Olt &olt, const RemoteOnu &onu, bool on)
{
    const bool same = switched_on(olt, onu, Side::local) == on;
    const ModelTime arrives = on ? olt.now() + oam_delay : 0;
    Plan plan = send_setting(olt, onu, onu.key(switch_command),
                             switch_block(same ? since(olt, onu, Side::local) : arrives), switch_block(0));
    if (on && !plan.change.empty()) plan.change.put<Ledger>({onu.port->number, onu.binding->mac}, ledger_from(arrives));
    return plan;
}

Plan send_setting(const Olt &olt, const RemoteOnu &onu, const SettingKey &key, const OnuBlock &block,
                  const OnuBlock &otherwise)
{
    if (!onu.online()) return {PON_ERR_OFFLINE};
    if (block == setting_of(olt, key, Side::local, otherwise)) return {BSP_OK};
    const OnuBlock before = setting_of(olt, key, Side::remote, otherwise);
    return {BSP_OK, change_of<OnuSetting>(key, {block.bytes(), before.bytes(), olt.now() + oam_delay})};
}

} // namespace ponsim
