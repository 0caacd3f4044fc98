#include "model/olt/interfaces.h"

#include "bsp_pon.h"
#include "model/base/block.h"
#include "model/base/random.h"
#include "model/olt/olt.h"

namespace ponsim
{

// The address is made as the ONUs' addresses are, but has 0 for the port before the last byte.
Mac interface_address(uint64_t seed, Interface interface, uint32_t number)
{
    const uint64_t olt = Random{seed, 0}.next();
    const auto byte = [](uint64_t value) { return static_cast<uint8_t>(value); };
    return {0x02, byte(olt), byte(olt >> 8), 0, 0, byte(static_cast<uint32_t>(interface) << 5 | number)};
}

PhyControl phy_control(const Olt &olt, uint32_t uplink)
{
    return {from_block(olt.block(BSP_MSG_DEBUG, BSP_CMD_DEBUG_GE_PHY_SET, uplink), PhyControl{}.bits)};
}

} // namespace ponsim
