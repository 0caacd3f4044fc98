#include "model/rules/blocks.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/lifecycle/debug.h"
#include "model/lifecycle/images.h"
#include "model/olt/fdb.h"
#include "model/olt/interfaces.h"
#include "model/olt/llid.h"
#include "model/olt/mpcp.h"
#include "model/olt/uni_config.h"
#include "model/onu/classification.h"
#include "model/onu/gateway_settings.h"
#include "model/onu/multicast_settings.h"
#include "model/onu/onu_config.h"
#include "model/onu/service_settings.h"
#include "model/port/p2p.h"
#include "text/utf8.h"

namespace ponsim
{
namespace
{

// Whose block it is.
enum class Owner : uint8_t { olt, pon_port, uplink };

struct BlockRule {
    uint32_t channel;
    uint32_t command;
    Owner owner;
    uint32_t first_index;
    uint32_t last_index;
    uint32_t least_size;
    uint32_t greatest_size;
    bool (*is_good)(uint32_t ports, std::string_view bytes);
};

template <class Value>
Value value_of(std::string_view bytes)
{
    Value value{};
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
}

// Returns whether the block holds a value that is allowed where it is set.
template <class Value>
bool holds_good(uint32_t, std::string_view bytes)
{
    return is_good(value_of<Value>(bytes));
}

template <uint32_t least, uint32_t greatest>
bool holds_word(uint32_t, std::string_view bytes)
{
    const auto word = value_of<uint32_t>(bytes);
    return word >= least && word <= greatest;
}

bool holds_any(uint32_t, std::string_view)
{
    return true;
}

bool holds_p2p_entry(uint32_t ports, std::string_view bytes)
{
    const auto entry = value_of<P2pEntry>(bytes);
    return is_good(entry) && entry.to_port >= 1 && entry.to_port <= ports && entry.from_onu <= any_onu &&
           entry.to_onu <= any_onu;
}

bool holds_name(uint32_t, std::string_view bytes)
{
    return text::is_utf8(bytes) && !text::has_control_characters(bytes);
}

bool holds_flags(uint32_t, std::string_view bytes)
{
    return std::ranges::all_of(bytes.substr(0, 4), [](char flag) { return flag == 0 || flag == 1; });
}

bool holds_phy(uint32_t, std::string_view bytes)
{
    const PhyControl phy{static_cast<uint8_t>(bytes[0])};
    return !phy.has(PhyControl::reset | PhyControl::speed | PhyControl::restart_autoneg);
}

bool holds_uni_profile(uint32_t, std::string_view bytes)
{
    return is_good_config(OnuBlock('\0' + std::string(bytes)));
}

template <class Value>
constexpr BlockRule rule_of(uint32_t command, Owner owner, uint32_t first, uint32_t last,
                            bool (*is_good)(uint32_t, std::string_view))
{
    return {BSP_MSG_PLAT, command, owner, first, last, sizeof(Value), sizeof(Value), is_good};
}

constexpr uint32_t status_size = 32;
constexpr uint32_t oui_size = 3;

constexpr BlockRule block_rules[] = {
    rule_of<uint32_t>(BSP_CMD_P2P_STATE_SET, Owner::pon_port, 0, 0, holds_word<1, 1>),
    rule_of<uint32_t>(BSP_CMD_P2P_OWN_PORT_SET, Owner::pon_port, 0, 0, holds_word<1, ge_uplinks>),
    rule_of<P2pConfig>(BSP_CMD_P2P_CFG_SET, Owner::pon_port, 0, 0, holds_good<P2pConfig>),
    rule_of<P2pEntry>(BSP_CMD_P2P_ENTRY_SET, Owner::pon_port, 0, max_p2p_entries - 1, holds_p2p_entry),
    rule_of<FdbConfig>(BSP_CMD_FDB_CFG_SET, Owner::olt, 0, 0, holds_good<FdbConfig>),
    rule_of<LlidBehavior>(BSP_CMD_LLID_BEHAVIOR_SET, Owner::pon_port, 1, onus_per_port, holds_good<LlidBehavior>),
    rule_of<Mpcp>(BSP_CMD_MPCP_SET, Owner::pon_port, mpcp_index, mpcp_index, holds_good<Mpcp>),
    {BSP_MSG_PLAT, BSP_CMD_OPTICS_STATUS_SET, Owner::pon_port, 0, 0, status_size, status_size, holds_flags},
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_GE_PHY_SET, Owner::uplink, 0, 0, 1, 1, holds_phy},
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_CTC_OAM, Owner::pon_port, 0, 0, 1, 1, holds_any},
    {BSP_MSG_DEBUG, BSP_CMD_DEBUG_ONU, Owner::pon_port, 0, 0, 1, 1, holds_any},
    {BSP_MSG_PON, BSP_CMD_UNI_PROFILE_SET, Owner::olt, 1, max_uni_profiles, uni_profile_size, uni_profile_size,
     holds_uni_profile},
    {BSP_MSG_PON, BSP_CMD_OUI_SET, Owner::olt, 0, 0, oui_size, oui_size, holds_any},
    {BSP_MSG_UPGRADE, BSP_CMD_UPGRADE_TYPE_BIND_PORT, Owner::pon_port, 0, 0, 1, longest_type_name, holds_name},
    {BSP_MSG_ONU_OAM, BSP_CMD_OAM_PRINT, Owner::olt, 0, 0, sizeof(uint32_t), sizeof(uint32_t), holds_word<1, 2>},
};

bool is_owner(Owner owner, uint32_t ports, uint32_t number)
{
    switch (owner) {
    case Owner::olt:
        return number == 0;
    case Owner::pon_port:
        return number >= 1 && number <= ports;
    case Owner::uplink:
        return number >= 1 && number <= ge_uplinks;
    }
    return false;
}

// A SettingRule says what is allowed of a setting whatever the ONU is. An ONU of another kind can have come since. The
// handlers that send settings use the same sizes and checks.
struct SettingRule {
    uint32_t command;
    uint32_t first; // UNI port or number; 0: of the ONU itself
    uint32_t last;
    uint32_t size;
    bool (*is_good)(const OnuBlock &block);
};

// The time since which an ONU has its ports switched on, or 0.
bool is_good_since(const OnuBlock &block)
{
    return natural_bounds<ModelTime>().contains(static_cast<int64_t>(value_of<ModelTime>(block.bytes())));
}
// What any UNI port can offer.
bool is_offer(const OnuBlock &block)
{
    return is_good_offer(block, all_abilities());
}
// Before a port receives its first configuration as one block, it remembers none.
bool is_config_or_none(const OnuBlock &block)
{
    return block == OnuBlock(port_config_size) || is_good_config(block);
}
bool has_good_banks(const OnuBlock &block)
{
    return is_good(value_of<Banks>(block.bytes()));
}

constexpr SettingRule setting_rules[] = {
    {BSP_CMD_ONU_ADMIN_STATE_GET, 1, max_unis, switch_size, is_good_switch},
    {BSP_CMD_ONU_AUTONEG_GET, 1, max_unis, switch_size, is_good_switch},
    {BSP_CMD_ONU_AUTONEG_ADV_GET, 1, max_unis, abilities_size, is_offer},
    {BSP_CMD_ONU_PAUSE_GET, 1, max_unis, pause_size, is_good_pause},
    {BSP_CMD_ONU_RATE_LIMIT_GET, 1, max_unis, rate_limit_size, is_good_rate_limit},
    {BSP_CMD_ONU_VLAN_GET, 1, max_unis, vlan_size, is_good_vlan},
    {BSP_CMD_ONU_LOOP_DETECT_GET, 1, max_unis, switch_size, is_good_switch},
    {BSP_CMD_ONU_PORT_CONFIG_SET, 1, max_unis, port_config_size, is_config_or_none},
    {BSP_CMD_ONU_CLASSIFICATION_GET, 1, max_unis, classification_size, is_good_classification},
    {BSP_CMD_ONU_MC_GROUP_MAX_GET, 1, max_unis, group_max_size, is_good_group_max},
    {BSP_CMD_ONU_MC_VLAN_MODE_GET, 1, max_unis, mc_tags_size, is_good_tags},
    {BSP_CMD_ONU_MC_VLAN_GET, 1, max_unis, mc_vlans_size, is_good_vlans},
    {BSP_CMD_ONU_MC_GROUP_GET, 0, 0, mc_groups_size, is_good_groups},
    {BSP_CMD_ONU_MC_SWITCH_GET, 0, 0, mc_mode_size, is_good_mc_mode},
    {BSP_CMD_ONU_FAST_LEAVE_GET, 0, 0, fast_leave_size, is_good_fast_leave},
    {BSP_CMD_ONU_MGMT_GET, 0, 0, management_size, is_good_management},
    {BSP_CMD_ONU_FEC_GET, 0, 0, fec_size, is_good_fec},
    {BSP_CMD_ONU_TIME_GET, 0, 0, time_size, is_good_time},
    {BSP_CMD_ONU_MULTI_LLID_SET, 0, 0, llids_size, is_good_llids},
    {BSP_CMD_ONU_CATV_SET, 0, 0, sizeof(ModelTime), is_good_since},
    {BSP_CMD_ONU_BANKS_GET, 0, 0, sizeof(Banks), has_good_banks},
    {BSP_CMD_VIEW_ONU_WAN, 1, max_wans, wan_size, is_good_wan},
    {BSP_CMD_VIEW_ONU_WLAN, 1, max_wlans, wlan_size, is_good_wlan},
    {BSP_CMD_VIEW_ONU_ACL, 1, max_acl_rules, acl_size, is_good_acl_rule},
    {BSP_CMD_VIEW_ONU_DHCP, 0, 0, dhcp_size, is_good_dhcp},
};

constexpr size_t settings_of_onu()
{
    size_t settings = 0;
    for (const SettingRule &rule : setting_rules)
        settings += rule.last - rule.first + 1;
    return settings;
}
static_assert(settings_of_onu() <= max_settings, "an ONU can receive more settings than are kept of it");

std::string size_problem(const std::string &field, size_t size, uint32_t least, uint32_t greatest)
{
    return field + " has " + std::to_string(size) + " bytes, but must have " + std::to_string(least) +
           (least == greatest ? "" : " to " + std::to_string(greatest));
}

} // namespace

std::string problem_of(uint32_t ports, const BlockKey &key, const Block &block)
{
    // Two settings share a code, and differ in their index.
    std::string problem = "no setting of the OLT has this channel and command";
    for (const BlockRule &rule : block_rules) {
        if (rule.channel != key.channel || rule.command != key.command) continue;
        if (!is_owner(rule.owner, ports, key.pon_port) || key.index < rule.first_index || key.index > rule.last_index) {
            problem = "the setting is not one of this port and index";
            continue;
        }
        if (block.bytes.size() < rule.least_size || block.bytes.size() > rule.greatest_size)
            return size_problem("bytes", block.bytes.size(), rule.least_size, rule.greatest_size);
        return rule.is_good(ports, block.bytes) ? "" : "bytes have a value that cannot be set";
    }
    return problem;
}

std::string problem_of(const SettingKey &key, const OnuSetting &setting)
{
    const auto rule = std::ranges::find(setting_rules, key.command, &SettingRule::command);
    if (rule == std::end(setting_rules)) return "no setting of ONUs has this command";
    if (key.uni < rule->first || key.uni > rule->last) return "the setting is not one of this UNI port";
    for (const auto &[field, bytes] : {std::pair<const char *, const std::string &>{"told", setting.sent},
                                       std::pair<const char *, const std::string &>{"before", setting.before}}) {
        if (bytes.size() != rule->size) return size_problem(field, bytes.size(), rule->size, rule->size);
        if (!rule->is_good(OnuBlock(bytes))) return std::string(field) + " has a value that cannot be set";
    }
    return {};
}

} // namespace ponsim
