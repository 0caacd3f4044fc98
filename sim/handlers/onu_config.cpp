// The configuration of ONUs, LOIDs and the OUI, the ARP table and UNI profiles.
#include "generated/service_words.h"
#include "handlers/record.h"

namespace ponsim
{

std::span<const Handler> onu_config_handlers()
{
    return {};
}

} // namespace ponsim
