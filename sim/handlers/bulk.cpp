// Tables of all ONUs, and of the OLT and its PON ports.
#include "generated/service_words.h"
#include "handlers/record.h"

namespace ponsim
{

std::span<const Handler> bulk_handlers()
{
    return {};
}

} // namespace ponsim
