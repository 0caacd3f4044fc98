// Performance monitoring of UNI ports.
#include "generated/service_words.h"
#include "handlers/remote.h"

namespace ponsim
{

std::span<const Handler> onu_performance_handlers()
{
    return {};
}

} // namespace ponsim
