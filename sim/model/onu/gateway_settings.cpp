#include "model/onu/gateway_settings.h"

#include <string>

#include "generated/service_words.h"
#include "model/base/text.h"
#include "model/onu/ipv4.h"

namespace ponsim
{
namespace
{

constexpr uint8_t max_channel = 13;
constexpr uint32_t shortest_lease = 60, longest_lease = 864000; // s

// Returns whether the field holds a text that is not empty.
template <size_t size>
bool has_name(const OnuBlock &block, layout::At<layout::Text<size>> at)
{
    std::string name;
    return get_text(block.get(at), name) && !name.empty();
}

bool is_good_address(const OnuBlock &block)
{
    namespace at = layout::onu_wan;
    const uint32_t address = get_ipv4(block, at::address);
    const uint32_t mask = get_ipv4(block, at::mask);
    const uint32_t gateway = get_ipv4(block, at::gateway);
    if (block.get(at::ip_mode) != ip_static) return address == 0 && mask == 0 && gateway == 0;
    return is_host(address, mask) && is_gateway(gateway, address, mask);
}

// Returns whether the address is that of a network with this mask, or both are 0.
bool is_network(uint32_t address, uint32_t mask)
{
    return is_mask(mask) && (address & ~mask) == 0;
}

bool has_good_ports(const OnuBlock &block)
{
    namespace at = layout::onu_acl;
    const auto first = block.get(at::first_port);
    const auto last = block.get(at::last_port);
    const auto protocol = block.get(at::protocol);
    if (first == 0) return last == 0;
    return last >= first && (protocol == ip_tcp || protocol == ip_udp);
}

} // namespace

bool is_good_wan(const OnuBlock &block)
{
    namespace at = layout::onu_wan;
    const auto mode = block.get(at::mode);
    const auto service = block.get(at::service);
    const auto ip_mode = block.get(at::ip_mode);
    if (mode == wan_removed) return block == OnuBlock(wan_size);
    if (mode > wan_route || (mode == wan_bridge) != (ip_mode == ip_none)) return false;
    return service >= wan_internet && service <= wan_other && ip_mode <= ip_pppoe && is_good_address(block) &&
           block.get(at::priority) <= max_vlan_priority && block.get(at::vlan) <= max_vlan && has_name(block, at::name);
}

bool is_good_wlan(const OnuBlock &block)
{
    namespace at = layout::onu_wlan;
    return block.get(at::enabled) <= 1 && block.get(at::channel) <= max_channel &&
           block.get(at::security) <= wlan_wpa3 && block.get(at::hidden) <= 1 && has_name(block, at::name);
}

bool is_good_acl_rule(const OnuBlock &block)
{
    namespace at = layout::onu_acl;
    const auto action = block.get(at::action);
    const auto direction = block.get(at::direction);
    if (action == acl_removed) return block == OnuBlock(acl_size);
    return action <= acl_deny && direction >= acl_upstream && direction <= acl_downstream &&
           is_network(get_ipv4(block, at::source), get_ipv4(block, at::source_mask)) &&
           is_network(get_ipv4(block, at::dest), get_ipv4(block, at::dest_mask)) && has_good_ports(block);
}

bool is_good_dhcp(const OnuBlock &block)
{
    namespace at = layout::onu_dhcp;
    const uint32_t address = get_ipv4(block, at::address);
    const uint32_t mask = get_ipv4(block, at::mask);
    const uint32_t first = get_ipv4(block, at::first);
    const uint32_t last = get_ipv4(block, at::last);
    const auto lease_time = block.get(at::lease_time);
    const auto in_network = [=](uint32_t other) { return is_host(other, mask) && (other & mask) == (address & mask); };
    return block.get(at::enabled) <= 1 && lease_time >= shortest_lease && lease_time <= longest_lease &&
           is_host(address, mask) && in_network(first) && in_network(last) && first <= last &&
           (address < first || address > last);
}

} // namespace ponsim
