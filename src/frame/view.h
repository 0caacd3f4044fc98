// This file has the views that their own command codes name.
#pragma once

#include "frame/exchange.h"
#include "frame/request.h"

namespace frame
{

// A View is a view's command, with the bound of its database in KiB.
struct View {
    uint16_t command;
    uint16_t kibibytes;

    constexpr View(uint32_t code, uint32_t bound)
        : command(static_cast<uint16_t>(code)), kibibytes(static_cast<uint16_t>(bound / 1024))
    {
    }
    uint32_t bound() const { return kibibytes * 1024u; }
};

// Asks for a view of the PON channel about a port or an ONU.
FRAME_SHARED uint32_t get_view(uint32_t pon_port, uint32_t onu_id, View view, db_handle **db_out, Route route)
{
    const uint32_t command = view.command;
    Request<bsp_pon_msg> request{command, pon_port, onu_id};
    return get_database(*request, whole<bsp_pon_msg>, command, view.bound(), db_out, route);
}

// Asks for a view of the whole OLT on a channel of its own.
FRAME_SHARED uint32_t get_view_of_all(uint32_t command, db_handle **db_out, Route route)
{
    Request<bsp_pon_msg_ext> request{command};
    return get_database(*request, whole<bsp_pon_msg_ext>, command, small_view, db_out, route);
}

// Asks for a view of the whole OLT through the general query. The request holds nothing but the command.
FRAME_SHARED uint32_t get_stored_view(uint32_t command, db_handle **db_out)
{
    return bsp_pon_config_by_db(db_out, &*Request<bsp_pon_msg>{command});
}

// As above, for the port or ONU that the caller's record names.
FRAME_SHARED uint32_t get_stored_view(uint32_t command, db_handle **db_out, bsp_pon_msg *record)
{
    record->cmd = command;
    return bsp_pon_config_by_db(db_out, record);
}

} // namespace frame
