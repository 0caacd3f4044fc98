// Requests about one ONU, or about a PON port.
#pragma once

#include "frame/exchange.h"
#include "frame/request.h"

namespace admission
{

// A null `mac` names no ONU by its MAC address.
FRAME_SHARED uint32_t send(uint32_t pon_port, uint32_t onu_id, uint32_t command, const uint8_t *mac = nullptr,
                           uint32_t value = 0, frame::Way way = frame::on(BSP_MSG_PON))
{
    frame::Request<bsp_pon_msg> request{command};
    request->pon_port = pon_port;
    request->onu_id = onu_id;
    request->arg_value = value;
    if (mac) request.put_mac(mac);
    return frame::set(*request, way);
}

} // namespace admission
