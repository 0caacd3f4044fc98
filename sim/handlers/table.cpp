#include <algorithm>
#include <tuple>
#include <vector>

#include "handlers/handler.h"

namespace ponsim
{
namespace
{

std::tuple<uint32_t, uint32_t> key(const Handler &handler)
{
    return {handler.channel, handler.command};
}

// Of all families, in order of channel and command.
std::vector<Handler> all_handlers()
{
    std::vector<Handler> all;
    for (std::span<const Handler> family : {alarm_handlers(),         authentication_handlers(),
                                            binding_handlers(),       bulk_handlers(),
                                            chip_handlers(),          configuration_handlers(),
                                            device_handlers(),        fdb_handlers(),
                                            list_handlers(),          loop_handlers(),
                                            onu_config_handlers(),    onu_gateway_handlers(),
                                            onu_identity_handlers(),  onu_images_handlers(),
                                            onu_multicast_handlers(), onu_performance_handlers(),
                                            onu_services_handlers(),  onu_uni_handlers(),
                                            optics_handlers(),        p2p_handlers(),
                                            profiles_handlers(),      sla_handlers(),
                                            upgrade_handlers(),       view_handlers()})
        all.insert(all.end(), family.begin(), family.end());
    std::ranges::sort(all, {}, key);
    return all;
}

} // namespace

const Handler *find_handler(uint32_t channel, uint32_t command, catalogue::Call call)
{
    static const std::vector<Handler> handlers = all_handlers();
    for (const Handler &handler : std::ranges::equal_range(handlers, std::tuple{channel, command}, {}, key))
        if (!handler.call || handler.call == call) return &handler;
    return nullptr;
}

} // namespace ponsim
