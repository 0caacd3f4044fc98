#include "model/olt/uni_config.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <iterator>
#include <set>

#include "bsp_pon.h"
#include "generated/service_words.h"

namespace ponsim
{
namespace
{

namespace offer = layout::onu_autoneg_adv;
namespace rate = layout::onu_rate_limit;
namespace vlan = layout::onu_vlan;

constexpr uint32_t most_abilities = 5;
constexpr uint32_t least_burst = 1522; // the longest frame has to pass
constexpr uint32_t greatest_burst = 0xffffff;
constexpr uint32_t default_burst = 16384;
constexpr uint32_t greatest_vlan = 4094;
constexpr uint32_t greatest_priority = 7;
constexpr uint32_t least_ethertype = 0x0600;

bool is_vlan(uint32_t id)
{
    return id >= 1 && id <= greatest_vlan;
}

OnuBlock word(bool on)
{
    OnuBlock block(switch_size);
    block.put(layout::onu_admin_state::on, on);
    return block;
}

OnuBlock offered_block(const Uni &uni, uint32_t offered)
{
    OnuBlock block(abilities_size);
    const std::span<const Ability> abilities = abilities_of(uni);
    uint32_t count = 0;
    for (size_t index = 0; index < abilities.size(); ++index)
        if (offered >> index & 1) block.put(offer::ability[count++], abilities[index].technology);
    block.put(offer::count, count);
    return block;
}

// Returns which of the abilities are offered. A bit stands for each.
uint32_t offered_of(std::span<const Ability> abilities, const OnuBlock &block)
{
    uint32_t offered = 0;
    for (uint32_t number = 0; number < block.get(offer::count); ++number) {
        const auto technology = block.get(offer::ability[number]);
        const auto found = std::ranges::find(abilities, technology, &Ability::technology);
        if (found != abilities.end()) offered |= uint32_t{1} << std::distance(abilities.begin(), found);
    }
    return offered;
}

OnuBlock rate_limit_block(const UniConfig &config)
{
    OnuBlock block(rate_limit_size);
    if (config.ingress) {
        block.put(rate::up_on, 1);
        block.put(rate::up_cir, *config.ingress);
        block.put(rate::up_cbs, default_burst);
        block.put(rate::up_ebs, default_burst);
    }
    if (config.egress) {
        block.put(rate::down_on, 1);
        block.put(rate::down_cir, *config.egress);
        block.put(rate::down_pir, *config.egress);
    }
    return block;
}

OnuBlock vlan_block(const UniConfig &config)
{
    OnuBlock block(vlan_size);
    block.put(vlan::mode, config.vlan_mode);
    block.put(vlan::count, config.vlans.size());
    block.put(vlan::pvid, config.pvid);
    block.put(vlan::priority, config.priority);
    block.put(vlan::tpid, config.tpid);
    uint32_t number = 0;
    for (const Vlan &entry : config.vlans) {
        block.put(vlan::user[number], entry.user);
        block.put(vlan::network[number++], entry.network);
    }
    return block;
}

// A Part is what one command configures at a UNI port.
struct Part {
    uint32_t command; // the command that queries it
    OnuBlock (*block_of)(const Uni &uni, const UniConfig &config);
    void (*take)(const Uni &uni, const OnuBlock &block, UniConfig &config);
};

constexpr Part parts[] = {
    {BSP_CMD_ONU_ADMIN_STATE_GET, [](const Uni &, const UniConfig &config) { return word(config.enabled); },
     [](const Uni &, const OnuBlock &block, UniConfig &config) { config.enabled = block == word(true); }},
    {BSP_CMD_ONU_AUTONEG_GET, [](const Uni &, const UniConfig &config) { return word(config.autoneg); },
     [](const Uni &, const OnuBlock &block, UniConfig &config) { config.autoneg = block == word(true); }},
    {BSP_CMD_ONU_AUTONEG_ADV_GET,
     [](const Uni &uni, const UniConfig &config) { return offered_block(uni, config.offered); },
     [](const Uni &uni, const OnuBlock &block, UniConfig &config) {
         config.offered = offered_of(abilities_of(uni), block);
     }},
    {BSP_CMD_ONU_PAUSE_GET,
     [](const Uni &, const UniConfig &config) { return OnuBlock(std::string(1, static_cast<char>(config.pause))); },
     [](const Uni &, const OnuBlock &block, UniConfig &config) {
         config.pause = block.get(layout::onu_pause::on) != 0;
     }},
    {BSP_CMD_ONU_RATE_LIMIT_GET, [](const Uni &, const UniConfig &config) { return rate_limit_block(config); },
     [](const Uni &, const OnuBlock &block, UniConfig &config) {
         const auto limit = [&block](layout::At<uint8_t> on, layout::At<uint32_t> value) {
             return block.get(on) ? std::optional(block.get(value)) : std::nullopt;
         };
         config.ingress = limit(rate::up_on, rate::up_cir);
         config.egress = limit(rate::down_on, rate::down_pir);
     }},
    {BSP_CMD_ONU_VLAN_GET, [](const Uni &, const UniConfig &config) { return vlan_block(config); },
     [](const Uni &, const OnuBlock &block, UniConfig &config) { take_vlan(block, config); }},
};

} // namespace

void take_vlan(const OnuBlock &block, UniConfig &config)
{
    config.vlan_mode = static_cast<VlanMode>(block.get(vlan::mode));
    config.pvid = block.get(vlan::pvid);
    config.priority = block.get(vlan::priority);
    config.tpid = block.get(vlan::tpid);
    config.vlans.clear();
    for (uint32_t number = 0; number < block.get(vlan::count); ++number)
        config.vlans.push_back({block.get(vlan::user[number]), block.get(vlan::network[number])});
}

std::vector<UniConfig> uni_configs(const Olt &olt, const RemoteOnu &onu, Side side)
{
    std::vector<UniConfig> configs = default_configs(olt.seed(), onu.binding->mac, onu.device);
    for (uint32_t index = 0; index < configs.size(); ++index) {
        const Uni &uni = onu.device.unis[index];
        for (const Part &part : parts) {
            const SettingKey key = onu.key(part.command, index + 1);
            if (olt.setting(key))
                part.take(uni, setting_of(olt, key, side, part.block_of(uni, configs[index])), configs[index]);
        }
    }
    return configs;
}

std::vector<std::optional<LinkMode>> uni_links(const Olt &olt, const RemoteOnu &onu)
{
    return uni_links(olt, onu, uni_configs(olt, onu, Side::remote));
}

std::vector<std::optional<LinkMode>> uni_links(const Olt &olt, const RemoteOnu &onu, std::span<const UniConfig> configs)
{
    std::vector<std::optional<LinkMode>> links;
    for (uint32_t index = 0; index < configs.size(); ++index) {
        const LoopRecord *loop = olt.loop({onu.port->number, onu.binding->mac, index + 1});
        Uni uni = onu.device.unis[index];
        if (loop && loop->looped && !uni.partner) uni.partner = LinkMode{uni.line_rate, true};
        links.push_back(loop && loop->shut ? std::nullopt : link_of(uni, configs[index]));
    }
    return links;
}

bool is_uni_config(const SettingKey &key)
{
    return key.uni != 0 && std::ranges::find(parts, key.command, &Part::command) != std::end(parts);
}

OnuBlock default_block(const Olt &olt, const RemoteOnu &onu, uint32_t uni, uint32_t command)
{
    const auto part = std::ranges::find(parts, command, &Part::command);
    return part->block_of(onu.device.unis[uni - 1], default_configs(olt.seed(), onu.binding->mac, onu.device)[uni - 1]);
}

bool is_good_switch(const OnuBlock &block)
{
    return block == word(true) || block == word(false);
}

bool is_good_pause(const OnuBlock &block)
{
    return block.get(layout::onu_pause::on) <= 1;
}

bool is_good_offer(const OnuBlock &block, std::span<const Ability> abilities)
{
    const auto count = block.get(offer::count);
    if (count < 1 || count > abilities.size()) return false;
    // An ability that is none of these, or that is there twice, is missing here.
    if (std::popcount(offered_of(abilities, block)) != static_cast<int>(count)) return false;
    for (uint32_t number = count; number < most_abilities; ++number)
        if (block.get(offer::ability[number])) return false;
    return true;
}

bool is_good_rate_limit(const OnuBlock &block)
{
    const auto up_on = block.get(rate::up_on);
    const auto down_on = block.get(rate::down_on);
    // The values of a direction that is not limited do not count, and can be anything.
    if (up_on > 1 || down_on > 1) return false;
    const auto is_rate = [](uint32_t value) { return value >= 1 && value <= max_rate_limit; };
    const auto committed_burst = block.get(rate::up_cbs);
    if (up_on && (!is_rate(block.get(rate::up_cir)) || committed_burst < least_burst ||
                  committed_burst > greatest_burst || block.get(rate::up_ebs) > greatest_burst))
        return false;
    const auto peak = block.get(rate::down_pir);
    return !down_on || (is_rate(peak) && block.get(rate::down_cir) <= peak);
}

bool is_good_vlan(const OnuBlock &block)
{
    if (block.get(vlan::mode) > static_cast<uint8_t>(VlanMode::trunk) || block.get(vlan::count) > max_vlans)
        return false;
    UniConfig config{};
    take_vlan(block, config);
    const bool translates = config.vlan_mode == VlanMode::translation;
    const bool trunk = config.vlan_mode == VlanMode::trunk;
    std::set<uint32_t> networks;
    for (const Vlan &entry : config.vlans) {
        if (!is_vlan(entry.user) || !is_vlan(entry.network)) return false;
        if (trunk && entry.user != entry.network) return false;
        if (!networks.insert(entry.network).second) return false;
    }
    const bool ascending =
        std::ranges::adjacent_find(config.vlans, std::greater_equal{}, &Vlan::user) == config.vlans.end();
    const bool zero_elsewhere = block == vlan_block(config);
    return is_vlan(config.pvid) && config.priority <= greatest_priority && config.tpid >= least_ethertype &&
           ascending && zero_elsewhere && config.vlans.empty() != (translates || trunk);
}

uint32_t check_offer(const RemoteOnu &onu, uint32_t uni, const OnuBlock &block)
{
    return is_good_offer(block, abilities_of(onu.device.unis[uni - 1])) ? BSP_OK : PON_ERR_BAD_RECORD;
}

uint32_t check_vlan(const RemoteOnu &onu, uint32_t, const OnuBlock &block)
{
    if (!is_good_vlan(block)) return PON_ERR_BAD_RECORD;
    const auto mode = static_cast<VlanMode>(block.get(vlan::mode));
    const DeviceType &type = *onu.device.type;
    const bool able =
        mode == VlanMode::translation ? type.vlan_translation : mode != VlanMode::trunk || type.vlan_trunk;
    return able ? BSP_OK : PON_ERR_NOT_ABLE;
}

OnuBlock abilities_block(const Uni &uni)
{
    return offered_block(uni, every_ability);
}

} // namespace ponsim
