// Views that their own command codes name.
#pragma once

#include "frame/exchange.h"
#include "frame/request.h"

namespace frame
{

// Of the PON channel, of a port or an ONU.
FRAME_SHARED uint32_t get_view(uint32_t pon_port, uint32_t onu_id, uint32_t command, db_handle **db_out, uint32_t bound,
                               Way way, uint32_t preset = sizeof(bsp_pon_msg))
{
    Request<bsp_pon_msg> request{command};
    request->pon_port = pon_port;
    request->onu_id = onu_id;
    return get_database(*request, preset, command, bound, db_out, way);
}

// The same of a channel of its own, of the whole OLT.
FRAME_SHARED uint32_t get_view_of_all(uint32_t command, db_handle **db_out, Way way)
{
    Request<bsp_pon_msg_ext> request{command};
    return get_database(*request, sizeof *request, command, small_view, db_out, way);
}

} // namespace frame
