// Debug switches make the service write to its log what happens to ONUs.
#pragma once

#include <string_view>

#include "bsp_pon.h"
#include "model/change/plan.h"
#include "model/olt/olt.h"

namespace ponsim
{

enum class DebugSwitch : uint32_t { ctc_oam = BSP_CMD_DEBUG_CTC_OAM, onu = BSP_CMD_DEBUG_ONU };

// Sets the switch of one PON port, or of all ports when the port is 0.
Plan set_debug(const Olt &olt, DebugSwitch what, uint32_t pon_port, bool on);

// Adds a line about an ONU to the log of the change when the port's switch is on.
void report(const Olt &olt, DebugSwitch what, uint32_t pon_port, const Mac &mac, std::string_view event,
            Change &change);

} // namespace ponsim
