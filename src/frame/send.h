// This file has the settings of the PON channel, and the records that the caller built.
#pragma once

#include "frame/exchange.h"
#include "frame/request.h"

namespace frame
{

// A null `mac` names no ONU by its MAC address. A null block means that there is none.
FRAME_SHARED uint32_t send(uint32_t pon_port, uint32_t onu_id, uint32_t command, const uint8_t *mac, Route route,
                           uint32_t value = 0, const void *block = nullptr, uint32_t size = 0)
{
    Request<bsp_pon_msg> request{command, pon_port, onu_id};
    request->arg_value = value;
    if (mac) request.put_mac(mac);
    request.put(&bsp_pon_msg::data429, block, size);
    return set(*request, route);
}

// Sends a copy of the caller's record with the operation's command.
FRAME_SHARED uint32_t send_copy(const bsp_pon_msg *record, uint32_t command, Route route)
{
    return set(*Request{command, *record}, route);
}

// Sends the caller's record itself, which must not be null. The operation's command stays in it.
template <class Record>
FRAME_SHARED uint32_t send_stamped(Record *record, uint32_t command, Route route)
{
    if (!record) return BSP_ERR_PARAM;
    record->*Head<Record>::command = command;
    return set(*record, route);
}

} // namespace frame
