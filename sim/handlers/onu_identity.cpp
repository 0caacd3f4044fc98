// What ONUs are: identity, capabilities, memory, optics; tables of them.
#include "generated/service_words.h"
#include "handlers/remote.h"

namespace ponsim
{

std::span<const Handler> onu_identity_handlers()
{
    return {};
}

} // namespace ponsim
