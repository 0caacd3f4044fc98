// The image banks of ONUs, and how they are updated.
#include "generated/service_words.h"
#include "handlers/remote.h"

namespace ponsim
{

std::span<const Handler> onu_images_handlers()
{
    return {};
}

} // namespace ponsim
