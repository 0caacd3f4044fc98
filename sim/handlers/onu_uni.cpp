// The UNI ports of ONUs: link, rate limits, VLANs, classification, loops.
#include "generated/service_words.h"
#include "handlers/remote.h"

namespace ponsim
{

std::span<const Handler> onu_uni_handlers()
{
    return {};
}

} // namespace ponsim
