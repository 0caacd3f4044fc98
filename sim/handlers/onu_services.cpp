// The management address, FEC, time and LLIDs of ONUs; what is printed of OAM.
#include "generated/service_words.h"
#include "handlers/remote.h"

namespace ponsim
{

std::span<const Handler> onu_services_handlers()
{
    return {};
}

} // namespace ponsim
