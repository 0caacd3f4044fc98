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
constexpr uint32_t shortest_drop = 50;
constexpr uint32_t longest_drop = 1000;

// Writes `number` with leading zeros.
std::string digits(uint32_t number, size_t count)
{
    const std::string text = std::to_string(number);
    return std::string(count - text.size(), '0') + text;
}

} // namespace

std::string problem_of(const Settings &settings)
{
    const auto beyond = [](const char *name, uint32_t number, uint32_t least, uint32_t greatest) {
        if (number >= least && number <= greatest) return std::string();
        return std::string(name) + " is " + std::to_string(number) + ", but must be " + std::to_string(least) + " to " +
               std::to_string(greatest);
    };
    for (const std::string &problem :
         {beyond("ports", settings.ports, 1, max_ports), beyond("arrivals", settings.arrivals, 0, onus_per_port),
          beyond("silent", settings.silent, 0, 100)})
        if (!problem.empty()) return problem;
    return {};
}

Equipment Topology::equipment_of(const Mac &mac) const
{
    const auto found = equipment.find(mac);
    return found == equipment.end() ? Equipment{} : found->second;
}

Branch found_feeder()
{
    return {"feeder", std::nullopt, feeder, splitter_loss(onus_per_port) + 2 * connector_loss};
}

Arrival onu_of_number(const Settings &settings, uint32_t pon_port, uint32_t number)
{
    const uint64_t olt = Random{settings.seed, 0}.next();
    // Each ONU has a stream of its own, so that it stays the same when there are more ports or more ONUs.
    Random random{settings.seed, uint64_t{pon_port} << 32 | (number + 1)};
    const auto byte = [](uint64_t value) { return static_cast<uint8_t>(value); };
    // Port and number make the address of an ONU that is found unique. The random byte before them mixes the order.
    const uint32_t last = number < onus_per_port ? number : onus_per_port + number % onus_per_port;
    const Mac mac{locally_administered, byte(olt), byte(olt >> 8), byte(random.next()), byte(pon_port), byte(last)};
    const uint32_t distance = nearest + random.below(farthest - nearest + 1);
    const bool silent = random.happens(settings.silent);
    // Port and number make the LOID unique, too. The password follows from the LOID.
    const std::string drawn = digits(random.below(1000000), 6);
    return {mac, distance, silent, "loid" + drawn + digits(pon_port, 2) + digits(number % 1000, 3), "pw" + drawn};
}

uint32_t drop_of(const Arrival &arrival, uint32_t distance)
{
    const uint32_t drawn = shortest_drop + arrival.distance % (longest_drop - shortest_drop + 1);
    return std::min(drawn, max_distance - distance);
}

PortPopulation population_at(const Settings &settings, uint32_t pon_port)
{
    PortPopulation port;
    port.branches.push_back(found_feeder());
    for (uint32_t index = 0; index < settings.arrivals; ++index) {
        Arrival arrival = onu_of_number(settings, pon_port, index);
        arrival.branch = static_cast<uint32_t>(port.branches.size());
        port.branches.push_back(
            {"drop-" + std::to_string(index + 1), 0, arrival.distance - feeder, 2 * connector_loss});
        arrival.loss = port.branches[0].loss + port.branches.back().loss;
        port.arrivals.push_back(std::move(arrival));
    }
    std::ranges::sort(port.arrivals, {}, &Arrival::mac);
    return port;
}

} // namespace ponsim
