#include "model/onu/gateway.h"

#include <algorithm>
#include <array>

#include "bsp_pon.h"
#include "generated/service_words.h"
#include "model/base/random.h"
#include "model/onu/ipv4.h"

namespace ponsim
{
namespace
{

constexpr std::string_view sip_server = "sip.example.net";

// The Nature of an ONU follows from the seed.
struct Nature {
    double catv_input; // dBm
    uint16_t internet_vlan;
    WanIpMode internet_ip;
    uint32_t sip_user; // number of the first POTS port's user
    uint32_t wired;    // how many stations are not in a WLAN
    bool filters;      // the ONU has an access control rule
    std::array<uint32_t, max_wlans> clients;
    std::array<uint32_t, max_wans> leases; // how many addresses are leased
};

Nature nature_of(const Olt &olt, const RemoteOnu &onu)
{
    Random random = random_for(olt.seed(), Purpose::gateway, onu.binding->mac);
    Nature nature{};
    nature.catv_input = -(static_cast<double>(random.below(80)) / 10);
    nature.internet_vlan = static_cast<uint16_t>(100 + random.below(900));
    nature.internet_ip = random.happens(50) ? ip_dhcp : ip_pppoe;
    nature.sip_user = 20000000 + random.below(70000000);
    nature.wired = random.below(4);
    nature.filters = random.happens(50);
    for (uint32_t &clients : nature.clients)
        clients = random.below(6);
    for (uint32_t &lease : nature.leases)
        lease = lease_gateway + 1 + random.below(4000000);
    return nature;
}

// SettingSides holds both sides of a setting: what the OLT has sent, and what the ONU has.
struct SettingSides {
    OnuBlock local;
    OnuBlock remote;
};

SettingSides sides_of(const Olt &olt, const RemoteOnu &onu, uint32_t command, uint32_t index, const OnuBlock &otherwise)
{
    const SettingKey key = onu.key(command, index);
    return {setting_of(olt, key, Side::local, otherwise), setting_of(olt, key, Side::remote, otherwise)};
}

std::vector<Wan> wans_of(const Olt &olt, const RemoteOnu &onu, const Nature &nature)
{
    namespace at = layout::onu_wan;
    std::vector<Wan> wans;
    for (uint32_t index = 1; index <= max_wans; ++index) {
        const SettingSides sides = sides_of(olt, onu, BSP_CMD_VIEW_ONU_WAN, index, first_wan(olt, onu, index));
        if (sides.local.get(at::mode) == wan_removed) continue;
        Wan wan{index, sides.local, onu.online() && sides.remote == sides.local, {}};
        const auto ip_mode = sides.local.get(at::ip_mode);
        if (wan.up && (ip_mode == ip_dhcp || ip_mode == ip_pppoe)) wan.lease = nature.leases[index - 1];
        wans.push_back(std::move(wan));
    }
    return wans;
}

std::vector<Wlan> wlans_of(const Olt &olt, const RemoteOnu &onu, const Nature &nature)
{
    std::vector<Wlan> wlans;
    for (uint32_t index = 1; index <= max_wlans; ++index) {
        const SettingSides sides = sides_of(olt, onu, BSP_CMD_VIEW_ONU_WLAN, index, first_wlan(olt, onu, index));
        const bool enabled = sides.remote.get(layout::onu_wlan::enabled) != 0;
        wlans.push_back({index, sides.local, enabled ? nature.clients[index - 1] : 0});
    }
    return wlans;
}

std::vector<VoicePort> voice_of(const RemoteOnu &onu, const Nature &nature, const std::vector<Wan> &wans)
{
    const bool registered = std::ranges::any_of(wans, [](const Wan &wan) {
        return wan.up && wan.sent.get(layout::onu_wan::mode) == wan_route &&
               wan.sent.get(layout::onu_wan::service) == wan_voice;
    });
    std::vector<VoicePort> ports;
    for (uint32_t pots = 1; pots <= onu.device.type->pots_ports; ++pots)
        ports.push_back({pots, std::to_string(nature.sip_user + pots - 1), std::string(sip_server), registered});
    return ports;
}

std::vector<AclRule> acl_of(const Olt &olt, const RemoteOnu &onu)
{
    std::vector<AclRule> rules;
    for (uint32_t index = 1; index <= max_acl_rules; ++index) {
        const SettingSides sides = sides_of(olt, onu, BSP_CMD_VIEW_ONU_ACL, index, first_acl_rule(olt, onu, index));
        if (sides.local.get(layout::onu_acl::action) != acl_removed) rules.push_back({index, sides.local});
    }
    return rules;
}

// Each station leases an address as long as there are free ones.
DhcpServer dhcp_of(const Olt &olt, const RemoteOnu &onu, uint32_t stations)
{
    namespace at = layout::onu_dhcp;
    const SettingSides sides = sides_of(olt, onu, BSP_CMD_VIEW_ONU_DHCP, 0, first_dhcp(olt, onu, 0));
    if (sides.remote.get(at::enabled) == 0) return {sides.local, 0};
    const uint32_t addresses = get_ipv4(sides.remote, at::last) - get_ipv4(sides.remote, at::first) + 1;
    return {sides.local, std::min(stations, addresses)};
}

} // namespace

bool is_gateway_onu(const RemoteOnu &onu)
{
    return onu.device.type->pots_ports > 0;
}

UserServices user_services(const Olt &olt, const RemoteOnu &onu)
{
    const Nature nature = nature_of(olt, onu);
    UserServices services{onu.port->number, onu.onu_id, onu.online(), wans_of(olt, onu, nature), {}, {}, {}, {}, {}};
    services.voice = voice_of(onu, nature, services.wans);
    if (has_catv(onu.device)) services.catv = Catv{switched_on(olt, onu, Side::local), nature.catv_input};
    if (!is_gateway_onu(onu)) return services;
    services.wlans = wlans_of(olt, onu, nature);
    services.acl = acl_of(olt, onu);
    uint32_t stations = nature.wired;
    for (const Wlan &wlan : services.wlans)
        stations += wlan.clients;
    services.dhcp = dhcp_of(olt, onu, stations);
    return services;
}

OnuBlock first_wan(const Olt &olt, const RemoteOnu &onu, uint32_t index)
{
    namespace at = layout::onu_wan;
    constexpr uint16_t voice_vlan = 4000;
    constexpr uint8_t voice_priority = 5;
    const bool gateway = is_gateway_onu(onu);
    OnuBlock block(wan_size);
    if (index == 1) {
        const Nature nature = nature_of(olt, onu);
        block.put(at::mode, gateway ? wan_route : wan_bridge);
        block.put(at::service, wan_internet);
        block.put(at::ip_mode, gateway ? nature.internet_ip : ip_none);
        block.put(at::vlan, nature.internet_vlan);
        block.put(at::name, "internet");
    } else if (index == 2 && gateway) {
        block.put(at::mode, wan_route);
        block.put(at::service, wan_voice);
        block.put(at::ip_mode, ip_dhcp);
        block.put(at::priority, voice_priority);
        block.put(at::vlan, voice_vlan);
        block.put(at::name, "voice");
    }
    return block;
}

OnuBlock first_wlan(const Olt &, const RemoteOnu &onu, uint32_t index)
{
    namespace at = layout::onu_wlan;
    const std::string mac = text::mac_text(onu.binding->mac);
    OnuBlock block(wlan_size);
    block.put(at::enabled, index == 1);
    block.put(at::security, wlan_wpa2);
    block.put(at::name, "home-" + mac.substr(12, 2) + mac.substr(15, 2) + '-' + std::to_string(index));
    return block;
}

OnuBlock first_acl_rule(const Olt &olt, const RemoteOnu &onu, uint32_t index)
{
    namespace at = layout::onu_acl;
    OnuBlock block(acl_size);
    if (index != 1 || !nature_of(olt, onu).filters) return block;
    block.put(at::action, acl_deny); // file shares are not reached from outside the home
    block.put(at::direction, acl_upstream);
    block.put(at::protocol, ip_tcp);
    block.put(at::first_port, 137);
    block.put(at::last_port, 139);
    return block;
}

OnuBlock first_dhcp(const Olt &, const RemoteOnu &, uint32_t)
{
    namespace at = layout::onu_dhcp;
    constexpr uint32_t network = 0xc0a80100; // 192.168.1.0
    OnuBlock block(dhcp_size);
    block.put(at::enabled, 1);
    block.put(at::lease_time, 86400);
    put_ipv4(block, at::address, network + 1);
    put_ipv4(block, at::mask, 0xffffff00);
    put_ipv4(block, at::first, network + 100);
    put_ipv4(block, at::last, network + 199);
    return block;
}

} // namespace ponsim
