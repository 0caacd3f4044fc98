#include "views/gateway.h"

#include <algorithm>
#include <cstring>

#include "generated/service_words.h"
#include "model/onu/ipv4.h"
#include "views/table.h"

namespace ponsim
{
namespace
{

constexpr std::string_view wan_modes[] = {"removed", "bridge", "route"};
constexpr std::string_view wan_services[] = {"", "internet", "voice", "management", "other"};
constexpr std::string_view wan_ip_modes[] = {"", "static", "DHCP", "PPPoE"};
constexpr std::string_view wlan_securities[] = {"open", "WPA2", "WPA2/WPA3", "WPA3"};
constexpr std::string_view acl_actions[] = {"removed", "permit", "deny"};
constexpr std::string_view acl_directions[] = {"", "upstream", "downstream"};

template <size_t size>
std::string text_at(const OnuBlock &block, layout::At<layout::Text<size>> at)
{
    const layout::Text<size> text = block.get(at);
    return {text.data(), strnlen(text.data(), size)};
}

std::string network_text(uint32_t address, uint32_t mask)
{
    return ipv4_text(address) + '/' + std::to_string(mask_length(mask));
}

// Returns no value when the value is 0, which means that there is none.
std::optional<uint32_t> unless_0(uint32_t value)
{
    return value == 0 ? std::nullopt : std::optional(value);
}

std::optional<uint32_t> address_of(const Wan &wan)
{
    return wan.lease ? wan.lease : unless_0(get_ipv4(wan.sent, layout::onu_wan::address));
}

std::optional<std::string> address_text(const Wan &wan)
{
    const std::optional<uint32_t> address = address_of(wan);
    if (!address) return std::nullopt;
    return network_text(*address, wan.lease ? lease_mask : get_ipv4(wan.sent, layout::onu_wan::mask));
}

// Returns a gateway only where there is an address, and even then there may be none.
std::optional<std::string> gateway_text(const Wan &wan)
{
    if (!address_of(wan)) return std::nullopt;
    const std::optional<uint32_t> gateway =
        wan.lease ? lease_gateway : unless_0(get_ipv4(wan.sent, layout::onu_wan::gateway));
    return gateway ? std::optional(ipv4_text(*gateway)) : std::nullopt;
}

void add_wan(Table<view::onu_wans> &table, const Wan &wan)
{
    namespace at = layout::onu_wan;
    const auto ip_mode = wan.sent.get(at::ip_mode);
    table.add({.index = wan.index,
               .name = text_at(wan.sent, at::name),
               .mode = wan_modes[wan.sent.get(at::mode)],
               .service = wan_services[wan.sent.get(at::service)],
               .vlan = unless_0(wan.sent.get(at::vlan)),
               .priority = wan.sent.get(at::priority),
               .ip_mode = ip_mode == ip_none ? std::nullopt : std::optional(wan_ip_modes[ip_mode]),
               .address = address_text(wan),
               .gateway = gateway_text(wan),
               .state = wan.up ? "up" : "connecting"});
}

// Returns no network when the mask says that any address is meant.
std::optional<std::string> network_at(const OnuBlock &sent, Ipv4Field address, Ipv4Field mask)
{
    if (get_ipv4(sent, mask) == 0) return std::nullopt;
    return network_text(get_ipv4(sent, address), get_ipv4(sent, mask));
}

void add_rule(Table<view::onu_acl_rules> &table, const AclRule &rule)
{
    namespace at = layout::onu_acl;
    table.add({.index = rule.index,
               .action = acl_actions[rule.sent.get(at::action)],
               .direction = acl_directions[rule.sent.get(at::direction)],
               .protocol = unless_0(rule.sent.get(at::protocol)),
               .source = network_at(rule.sent, at::source, at::source_mask),
               .dest = network_at(rule.sent, at::dest, at::dest_mask),
               .first_port = unless_0(rule.sent.get(at::first_port)),
               .last_port = unless_0(rule.sent.get(at::last_port))});
}

std::optional<std::string_view> state_text(const VoicePort &port, bool online)
{
    if (!online) return std::nullopt;
    return port.registered ? "registered" : "unregistered";
}

std::optional<double> input_of(const Catv &catv, bool online)
{
    return online ? std::optional(catv.input) : std::nullopt;
}

bool is_enabled(const Wlan &wlan)
{
    return wlan.sent.get(layout::onu_wlan::enabled) != 0;
}

} // namespace

std::string wan_table(const UserServices &onu, uint32_t index)
{
    Table<view::onu_wans> table;
    for (const Wan &wan : onu.wans)
        if (index == 0 || index == wan.index) add_wan(table, wan);
    return table.text();
}

std::string wlan_table(const UserServices &onu)
{
    namespace at = layout::onu_wlan;
    Table<view::onu_wlans> table;
    for (const Wlan &wlan : onu.wlans)
        table.add({.index = wlan.index,
                   .enabled = is_enabled(wlan),
                   .name = text_at(wlan.sent, at::name),
                   .channel = unless_0(wlan.sent.get(at::channel)),
                   .security = wlan_securities[wlan.sent.get(at::security)],
                   .hidden = wlan.sent.get(at::hidden) != 0,
                   .clients = wlan.clients});
    return table.text();
}

std::string catv_table(const UserServices &onu)
{
    Table<view::onu_catv_port> table;
    if (onu.catv) table.add({.on = onu.catv->on, .input = input_of(*onu.catv, onu.online)});
    return table.text();
}

std::string voip_table(const UserServices &onu)
{
    Table<view::onu_voice_ports> table;
    for (const VoicePort &port : onu.voice)
        table.add({.pots = port.pots, .user = port.user, .server = port.server, .state = state_text(port, onu.online)});
    return table.text();
}

std::string acl_table(const UserServices &onu)
{
    Table<view::onu_acl_rules> table;
    for (const AclRule &rule : onu.acl)
        add_rule(table, rule);
    return table.text();
}

std::string dhcp_table(const UserServices &onu)
{
    namespace at = layout::onu_dhcp;
    Table<view::onu_dhcp_server> table;
    if (onu.dhcp) {
        const OnuBlock &sent = onu.dhcp->sent;
        table.add({.enabled = sent.get(at::enabled) != 0,
                   .address = network_text(get_ipv4(sent, at::address), get_ipv4(sent, at::mask)),
                   .first = ipv4_text(get_ipv4(sent, at::first)),
                   .last = ipv4_text(get_ipv4(sent, at::last)),
                   .lease_time = sent.get(at::lease_time),
                   .leases = onu.dhcp->leases});
    }
    return table.text();
}

std::string wlans_of_port_table(std::span<const UserServices> onus)
{
    Table<view::onu_wlan_table> table;
    for (const UserServices &onu : onus) {
        if (onu.wlans.empty()) continue;
        uint32_t clients = 0;
        for (const Wlan &wlan : onu.wlans)
            clients += wlan.clients;
        table.add({.pon_port = onu.pon_port,
                   .onu_id = onu.onu_id,
                   .wlans = static_cast<uint32_t>(onu.wlans.size()),
                   .enabled = static_cast<uint32_t>(std::ranges::count_if(onu.wlans, is_enabled)),
                   .clients = onu.online ? std::optional(clients) : std::nullopt});
    }
    return table.text();
}

std::string wans_of_port_table(std::span<const UserServices> onus)
{
    Table<view::onu_wan_table> table;
    for (const UserServices &onu : onus) {
        const auto up = static_cast<uint32_t>(std::ranges::count_if(onu.wans, &Wan::up));
        const auto addressed =
            std::ranges::find_if(onu.wans, [](const Wan &wan) { return address_of(wan).has_value(); });
        table.add({.pon_port = onu.pon_port,
                   .onu_id = onu.onu_id,
                   .wans = static_cast<uint32_t>(onu.wans.size()),
                   .up = onu.online ? std::optional(up) : std::nullopt,
                   .address =
                       addressed == onu.wans.end() ? std::nullopt : std::optional(ipv4_text(*address_of(*addressed)))});
    }
    return table.text();
}

std::string catv_of_port_table(std::span<const UserServices> onus)
{
    Table<view::onu_catv_table> table;
    for (const UserServices &onu : onus)
        if (onu.catv)
            table.add({.pon_port = onu.pon_port,
                       .onu_id = onu.onu_id,
                       .on = onu.catv->on,
                       .input = input_of(*onu.catv, onu.online)});
    return table.text();
}

std::string sip_of_port_table(std::span<const UserServices> onus)
{
    Table<view::onu_sip_table> table;
    for (const UserServices &onu : onus)
        for (const VoicePort &port : onu.voice)
            table.add({.pon_port = onu.pon_port,
                       .onu_id = onu.onu_id,
                       .pots = port.pots,
                       .user = port.user,
                       .server = port.server,
                       .state = state_text(port, onu.online)});
    return table.text();
}

} // namespace ponsim
