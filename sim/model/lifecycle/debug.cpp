#include "model/lifecycle/debug.h"

#include "generated/service_words.h"

namespace ponsim
{

Plan set_debug(const Olt &olt, DebugSwitch what, uint32_t pon_port, bool on)
{
    if (pon_port != 0 && !olt.port(pon_port)) return {PON_ERR_NO_PORT};
    Plan plan{BSP_OK};
    const auto bytes = on ? std::optional(std::string(1, '\1')) : std::nullopt;
    for (const PonPort &port : olt.ports())
        if (pon_port == 0 || pon_port == port.number)
            plan.change.add(block_at({BSP_MSG_DEBUG, static_cast<uint32_t>(what), port.number, 0}, bytes));
    return plan;
}

void report(const Olt &olt, DebugSwitch what, uint32_t pon_port, const Mac &mac, std::string_view event, Change &change)
{
    if (!olt.block(BSP_MSG_DEBUG, static_cast<uint32_t>(what), pon_port)) return;
    const std::optional<uint32_t> onu_id = olt.id_at(pon_port, mac);
    change.log.push_back(std::string(what == DebugSwitch::onu ? "ONU" : "CTC OAM") + ": port " +
                         std::to_string(pon_port) + (onu_id ? " id " + std::to_string(*onu_id) : std::string()) + ' ' +
                         text::mac_text(mac) + ": " + std::string(event));
}

} // namespace ponsim
