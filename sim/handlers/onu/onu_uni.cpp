// These commands concern the UNI ports of ONUs: link, rate limits, VLANs, classification and loops.
#include "views/onu_uni.h"

#include <stdexcept>

#include "generated/service_words.h"
#include "handlers/remote.h"
#include "model/olt/uni_config.h"
#include "model/onu/classification.h"
#include "model/port/loops.h"

namespace ponsim
{
namespace
{

template <uint32_t command>
OnuBlock unless_told(const Olt &olt, const RemoteOnu &onu, uint32_t uni)
{
    return default_block(olt, onu, uni, command);
}

template <uint32_t command>
constexpr BlockSetting part(uint32_t size, uint32_t (*check)(const RemoteOnu &, uint32_t, const OnuBlock &))
{
    return {command, true, size, unless_told<command>, check};
}

constexpr BlockSetting admin_state = part<BSP_CMD_ONU_ADMIN_STATE_GET>(switch_size, check_block<is_good_switch>);
constexpr BlockSetting autoneg = part<BSP_CMD_ONU_AUTONEG_GET>(switch_size, check_block<is_good_switch>);
constexpr BlockSetting offered = part<BSP_CMD_ONU_AUTONEG_ADV_GET>(abilities_size, check_offer);
constexpr BlockSetting pause = part<BSP_CMD_ONU_PAUSE_GET>(pause_size, check_block<is_good_pause>);
constexpr BlockSetting rate_limit = part<BSP_CMD_ONU_RATE_LIMIT_GET>(rate_limit_size, check_block<is_good_rate_limit>);
constexpr BlockSetting vlan = part<BSP_CMD_ONU_VLAN_GET>(vlan_size, check_vlan);
constexpr BlockSetting loop_detect{BSP_CMD_ONU_LOOP_DETECT_GET, true, switch_size,
                                   [](const Olt &, const RemoteOnu &, uint32_t) { return loop_detect_block(true); },
                                   check_block<is_good_switch>};

uint32_t uni_of(const Request &request)
{
    return request.read<bsp_onu_msg>().onu_uni_port;
}

Outcome autoneg_local(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_and_uni_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    return answer_with(request, abilities_block(found.onu.device.unis[uni_of(request) - 1]));
}

Outcome phy_info(const Olt &olt, const Request &request)
{
    namespace at = layout::onu_phy_info;
    constexpr uint32_t size = 24;
    enum Negotiation : uint32_t { off, without_result, complete };
    const FoundOnu found = onu_and_uni_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    const uint32_t index = uni_of(request) - 1;
    const std::vector<UniConfig> configs = uni_configs(olt, found.onu, Side::remote);
    const UniConfig &config = configs[index];
    const std::optional<LinkMode> link = uni_links(olt, found.onu, configs)[index];
    OnuBlock block(size);
    block.put(at::line_rate, found.onu.device.unis[index].line_rate);
    if (link) {
        block.put(at::link, 1);
        block.put(at::speed, link->speed);
        block.put(at::full_duplex, link->full_duplex);
        block.put(at::pause, config.pause && link->full_duplex);
    }
    if (config.autoneg) block.put(at::negotiation, link ? complete : without_result);
    return answer_with(request, block);
}

Outcome get_loop_detect(const Olt &olt, const Request &request)
{
    namespace at = layout::onu_loop_detect;
    constexpr uint32_t size = 8;
    enum State : uint32_t { none, looped, shut };
    const FoundOnu found = onu_and_uni_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    const UniKey key{found.onu.port->number, found.onu.binding->mac, uni_of(request)};
    const bool on = detects_loops(olt, key, Side::remote);
    const auto record = olt.loops().find(key);
    const bool seen = on && record != olt.loops().end() && record->second.looped;
    OnuBlock block(size);
    block.put(at::on, on);
    block.put(at::state, olt.shut(key) ? shut : seen ? looped : none);
    return answer_with(request, block);
}

Outcome get_classification(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_and_uni_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    return answer_with(request, classification(olt, found.onu, uni_of(request), Side::remote));
}

Outcome set_classification(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_and_uni_of(olt, request);
    if (found.status != BSP_OK) return {found.status};
    return to_outcome(classify(olt, found.onu, uni_of(request), data_of(request, classification_size)));
}

Outcome view_vlans(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_of(olt, request, false);
    if (found.status != BSP_OK) return {found.status};
    const std::vector<UniConfig> configs = uni_configs(olt, found.onu, Side::local);
    return {BSP_OK, {}, onu_vlans_table(found.onu.port->number, found.onu.onu_id, configs)};
}

// The caller reads the text in the answer as a table, whatever the status is.
Outcome link_state(const Olt &olt, const Request &request)
{
    const FoundOnu found = onu_of(olt, request, false);
    std::vector<UniLink> unis;
    if (found.status == BSP_OK) {
        const RemoteOnu &onu = found.onu;
        const std::vector<UniConfig> configs = uni_configs(olt, onu, Side::local);
        const std::vector<std::optional<LinkMode>> links = uni_links(olt, onu);
        for (uint32_t index = 0; index < configs.size(); ++index)
            unis.push_back({configs[index].enabled, link_text(onu.state, links[index]),
                            olt.shut({onu.port->number, onu.binding->mac, index + 1})});
    }
    const std::string table = onu_links_table(unis);
    Outcome outcome = answer_with(request, table);
    outcome.status = found.status;
    if (found.status == BSP_OK) outcome.result = table;
    return outcome;
}

using catalogue::Call;

constexpr auto handlers =
    family(rows_of<admin_state>(BSP_MSG_ONU_INFO), rows_of<autoneg>(BSP_MSG_ONU_INFO),
           Handler{BSP_MSG_ONU_INFO, BSP_CMD_ONU_AUTONEG_LOCAL_GET, autoneg_local}, rows_of<offered>(BSP_MSG_ONU_INFO),
           Handler{BSP_MSG_ONU_INFO, BSP_CMD_ONU_PHY_INFO_GET, phy_info}, rows_of<pause>(BSP_MSG_ONU_CFG),
           rows_of<rate_limit>(BSP_MSG_ONU_CFG),
           Handler{BSP_MSG_ONU_CFG, BSP_CMD_ONU_LOOP_DETECT_GET, get_loop_detect, Call::get},
           Handler{BSP_MSG_ONU_CFG, BSP_CMD_ONU_LOOP_DETECT_SET, set<loop_detect>, Call::set},
           rows_of<vlan>(BSP_MSG_ONU_CFG), Handler{BSP_MSG_ONU_CFG, BSP_CMD_VIEW_ONU_VLAN, view_vlans},
           Handler{BSP_MSG_ONU_INFO, BSP_CMD_ONU_CLASSIFICATION_GET, get_classification, Call::get},
           Handler{BSP_MSG_ONU_INFO, BSP_CMD_ONU_CLASSIFICATION_SET, set_classification, Call::set},
           Handler{BSP_MSG_ONU_CFG, BSP_CMD_ONU_LINK_STATE_GET, link_state});

} // namespace

const BlockSetting &uni_setting(uint32_t command)
{
    for (const BlockSetting *setting : {&admin_state, &autoneg, &offered, &pause, &rate_limit, &vlan, &loop_detect})
        if (setting->command == command) return *setting;
    throw std::logic_error("no setting of UNI ports has the command " + std::to_string(command));
}

std::span<const Handler> onu_uni_handlers()
{
    return handlers;
}

} // namespace ponsim
