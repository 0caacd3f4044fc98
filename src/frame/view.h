// Views of the PON channel, of a port or an ONU, that their own command codes name.
#pragma once

#include "frame/exchange.h"
#include "frame/request.h"

namespace frame
{

FRAME_SHARED uint32_t get_view(uint32_t pon_port, uint32_t onu_id, uint32_t command, db_handle **db_out, uint32_t bound,
                               Failure failure = Failure::report, uint32_t preset = sizeof(bsp_pon_msg),
                               Site site = Site::here())
{
    Request<bsp_pon_msg> request{command};
    request->pon_port = pon_port;
    request->onu_id = onu_id;
    return get_database(BSP_MSG_PON, &*request, sizeof *request, preset, command, bound, db_out, failure, site);
}

} // namespace frame
