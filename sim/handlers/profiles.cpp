// Profiles, stored under action codes.
#include "generated/service_words.h"
#include "handlers/record.h"

namespace ponsim
{

std::span<const Handler> profiles_handlers()
{
    return {};
}

} // namespace ponsim
