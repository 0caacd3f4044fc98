// What ONUs do for their users: WAN connections, WLAN, CATV, voice, ACL and DHCP.
#include "generated/service_words.h"
#include "handlers/remote.h"

namespace ponsim
{

std::span<const Handler> onu_gateway_handlers()
{
    return {};
}

} // namespace ponsim
