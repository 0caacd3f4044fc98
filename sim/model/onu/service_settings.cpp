#include "model/onu/service_settings.h"

#include "generated/service_words.h"
#include "model/base/block.h"
#include "model/onu/ipv4.h"

namespace ponsim
{
namespace
{

enum ManagementMode : uint8_t { management_off = 0, management_static = 1 };
enum TimeMode : uint8_t { time_of_olt = 0, time_by_sntp = 1 };

constexpr uint8_t max_dscp = 63;
constexpr uint32_t least_interval = 16, greatest_interval = 86400; // s
constexpr int16_t westmost_zone = -720, eastmost_zone = 840;       // min
constexpr uint32_t max_llids = 8;

} // namespace

bool is_good_management(const OnuBlock &block)
{
    namespace at = layout::onu_mgmt;
    if (block.get(at::mode) == management_off) return block == OnuBlock(management_size);
    if (block.get(at::mode) != management_static) return false;
    const uint32_t address = get_ipv4(block, at::address);
    const uint32_t mask = get_ipv4(block, at::mask);
    return is_host(address, mask) && is_gateway(get_ipv4(block, at::gateway), address, mask) &&
           block.get(at::vlan) <= max_vlan && block.get(at::priority) <= max_vlan_priority &&
           block.get(at::dscp) <= max_dscp;
}

bool is_good_time(const OnuBlock &block)
{
    namespace at = layout::onu_time;
    const auto mode = block.get(at::mode);
    const auto interval = block.get(at::interval);
    const auto zone = block.get(at::zone);
    return (mode == time_of_olt || (mode == time_by_sntp && get_ipv4(block, at::server) != 0)) &&
           interval >= least_interval && interval <= greatest_interval && zone >= westmost_zone &&
           zone <= eastmost_zone && block.get(at::summer) <= 1;
}

bool is_good_fec(const OnuBlock &block)
{
    const auto mode = block.get(layout::onu_fec::mode);
    return mode == fec_enabled || mode == fec_disabled;
}

bool is_good_llids(const OnuBlock &block)
{
    const auto llids = from_block<uint32_t>(&block.bytes(), 0);
    return llids >= 1 && llids <= max_llids;
}

} // namespace ponsim
