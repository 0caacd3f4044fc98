#include "model/onu/onu_config.h"

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/base/block.h"
#include "model/olt/uni_config.h"

namespace ponsim
{
namespace
{

namespace at = layout::onu_port_config_set;

constexpr uint32_t rate_limits_from = at::up_cir.offset, vlans_from = at::vlan_mode.offset;
constexpr uint32_t vlans_width = at::profile.offset + port_config_size - vlans_from;

// Both layouts have the fields of the settings in the same order and at the same distances.
static_assert(at::down_on.offset - rate_limits_from ==
              layout::onu_rate_limit::down_on.offset - layout::onu_rate_limit::up_cir.offset);
static_assert(at::user.offset - vlans_from == layout::onu_vlan::user.offset - layout::onu_vlan::mode.offset);
static_assert(at::user.offset - at::admin.offset ==
              layout::uni_profile::user.offset - layout::uni_profile::admin.offset);

OnuBlock word(uint8_t value)
{
    return OnuBlock(to_block<uint32_t>(value));
}

// Returns `width` bytes from an offset on, in a block of `size`.
OnuBlock cut(const OnuBlock &config, uint32_t from, uint32_t width, uint32_t size)
{
    std::string bytes = config.bytes().substr(from - at::profile.offset, width);
    bytes.resize(size);
    return OnuBlock(bytes);
}

} // namespace

std::optional<OnuBlock> uni_profile(const Olt &olt, uint32_t id)
{
    const std::string *settings = olt.block(BSP_MSG_PON, BSP_CMD_UNI_PROFILE_SET, 0, id);
    if (!settings) return std::nullopt;
    return OnuBlock(static_cast<char>(id) + *settings);
}

Plan set_uni_profile(const Olt &olt, uint32_t id, const std::optional<std::string> &settings)
{
    if (id < 1 || id > max_uni_profiles || (!settings && !uni_profile(olt, id))) return {PON_ERR_NO_UNI_PROFILE};
    Plan plan{BSP_OK};
    plan.change.add(block_at({BSP_MSG_PON, BSP_CMD_UNI_PROFILE_SET, 0, id}, settings));
    return plan;
}

OnuBlock port_config(const Olt &olt, const UniKey &key)
{
    return setting_of(olt, {key.pon_port, key.mac, BSP_CMD_ONU_PORT_CONFIG_SET, key.uni}, Side::local,
                      OnuBlock(port_config_size));
}

uint32_t ProfileUser::profile() const
{
    return config.get(at::profile);
}

std::vector<ProfileUser> profile_users(const Olt &olt)
{
    std::vector<ProfileUser> users;
    for (const PonPort &port : olt.ports())
        for (uint32_t onu_id = 0; onu_id < onus_per_port; ++onu_id)
            for (uint32_t uni = 1; port.bindings[onu_id] && uni <= max_unis; ++uni) {
                const ProfileUser user{port.number, onu_id, uni,
                                       port_config(olt, {port.number, port.bindings[onu_id]->mac, uni})};
                if (user.profile() != 0) users.push_back(user);
            }
    return users;
}

std::array<ConfigPart, 5> parts_of(const OnuBlock &config)
{
    return {{{BSP_CMD_ONU_ADMIN_STATE_GET, word(config.get(at::admin))},
             {BSP_CMD_ONU_AUTONEG_GET, word(config.get(at::autoneg))},
             {BSP_CMD_ONU_PAUSE_GET, cut(config, at::pause.offset, 1, 1)},
             {BSP_CMD_ONU_RATE_LIMIT_GET, cut(config, rate_limits_from, rate_limit_size, rate_limit_size)},
             {BSP_CMD_ONU_VLAN_GET, cut(config, vlans_from, vlans_width, vlan_size)}}};
}

bool is_good_config(const OnuBlock &config)
{
    const auto [admin, autoneg, pause, rate_limit, vlan] = parts_of(config);
    return config.get(at::profile) <= max_uni_profiles && is_good_switch(admin.block) &&
           is_good_switch(autoneg.block) && is_good_pause(pause.block) && is_good_rate_limit(rate_limit.block) &&
           is_good_vlan(vlan.block);
}

} // namespace ponsim
