#include "model/plant/population.h"

#include <algorithm>

#include "model/base/random.h"
#include "model/plant/fibre.h"

namespace ponsim
{
namespace
{

constexpr uint8_t locally_administered = 0x02;
constexpr uint32_t feeder = 100;     // m, from the port to the splitter
constexpr uint32_t nearest = 200;    // m
constexpr uint32_t farthest = 19500; // m

// Writes `number` with leading zeros.
std::string digits(uint32_t number, size_t count)
{
    const std::string text = std::to_string(number);
    return std::string(count - text.size(), '0') + text;
}

} // namespace

Equipment Topology::equipment_of(const Mac &mac) const
{
    const auto found = equipment.find(mac);
    return found == equipment.end() ? Equipment{} : found->second;
}

PortPopulation population_at(const Settings &settings, uint32_t pon_port)
{
    PortPopulation port;
    port.branches.push_back({"feeder", std::nullopt, feeder, splitter_loss(128) + 2 * connector_loss});
    const uint64_t olt = Random{settings.seed, 0}.next();
    for (uint32_t index = 0; index < settings.arrivals; ++index) {
        // Each ONU has a stream of its own, so that it stays the same when there are more ports or more ONUs.
        Random random{settings.seed, uint64_t{pon_port} << 32 | (index + 1)};
        const auto byte = [](uint64_t value) { return static_cast<uint8_t>(value); };
        // Port and index make the address unique. The random byte before them mixes the order.
        const Mac mac{locally_administered, byte(olt),      byte(olt >> 8),
                      byte(random.next()),  byte(pon_port), byte(index)};
        const uint32_t distance = nearest + random.below(farthest - nearest + 1);
        const bool silent = random.happens(settings.silent);
        // Port and index make the LOID unique, too. The password follows from the LOID.
        const std::string drawn = digits(random.below(1000000), 6);
        Arrival arrival{mac, distance, silent, "loid" + drawn + digits(pon_port, 2) + digits(index, 3), "pw" + drawn};
        arrival.branch = static_cast<uint32_t>(port.branches.size());
        port.branches.push_back({"drop-" + std::to_string(index + 1), 0, distance - feeder, 2 * connector_loss});
        arrival.loss = port.branches[0].loss + port.branches.back().loss;
        port.arrivals.push_back(std::move(arrival));
    }
    std::ranges::sort(port.arrivals, {}, &Arrival::mac);
    return port;
}

} // namespace ponsim
