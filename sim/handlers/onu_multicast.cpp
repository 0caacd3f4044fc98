// Multicast at ONUs and their UNI ports.
#include "generated/service_words.h"
#include "handlers/remote.h"

namespace ponsim
{

std::span<const Handler> onu_multicast_handlers()
{
    return {};
}

} // namespace ponsim
