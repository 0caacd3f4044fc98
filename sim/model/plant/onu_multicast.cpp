#include "model/plant/onu_multicast.h"

#include "model/base/random.h"

namespace ponsim
{
namespace
{

constexpr uint32_t first_vlan = 3900; // first of the multicast VLANs that ONUs come with

} // namespace

bool knows_multicast(const DeviceType &type)
{
    return type.igmp_snooping || type.multicast_control;
}

bool is_vlan(uint32_t vlan)
{
    return vlan >= 1 && vlan <= 4094;
}

bool is_group(const Mac &mac)
{
    const bool ipv4 = mac[0] == 0x01 && mac[1] == 0x00 && mac[2] == 0x5e;
    const bool ipv6 = mac[0] == 0x33 && mac[1] == 0x33;
    return ipv4 || ipv6;
}

std::vector<UniViewers> viewers_of(uint64_t seed, const Mac &mac, const Device &device)
{
    std::vector<UniViewers> unis(device.unis.size());
    if (!knows_multicast(*device.type)) return unis;
    Random random = random_for(seed, Purpose::viewers, mac);
    const uint32_t vlan = first_vlan + random.below(8);
    for (UniViewers &uni : unis) {
        for (uint32_t count = random.below(3); uni.vlans.size() < count;)
            uni.vlans.push_back(vlan + static_cast<uint32_t>(uni.vlans.size()));
        uint8_t channel = 0;
        for (uint32_t count = random.below(5); uni.watched.size() < count;) {
            channel = static_cast<uint8_t>(channel + 1 + random.below(50));
            uni.watched.push_back({0x01, 0x00, 0x5e, 0x0a, 0x00, channel});
        }
    }
    return unis;
}

std::vector<McGroup> wanted_groups(uint32_t uni, const UniViewers &viewers, std::span<const uint32_t> vlans)
{
    std::vector<McGroup> groups;
    if (vlans.empty()) return groups;
    for (const Mac &mac : viewers.watched)
        groups.push_back({uni, vlans[groups.size() % vlans.size()], mac});
    return groups;
}

} // namespace ponsim
