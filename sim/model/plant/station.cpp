#include "model/plant/station.h"

#include "model/base/random.h"
#include "model/plant/device.h"
#include "model/plant/population.h"

namespace ponsim
{
namespace
{

constexpr uint8_t locally_administered = 0x06; // the ONUs' own addresses begin with another byte
constexpr uint32_t most_behind_uni = 3;
constexpr uint8_t stations_of_network = 6;
constexpr uint32_t default_vlan = 1;

Station next_station(Random &random, const Mac &mac)
{
    constexpr auto spread = static_cast<uint32_t>(longest_silence - shortest_silence);
    Station station{
        .mac = mac, .port = 0, .vlan = 0, .phase = 0, .period = shortest_silence + random.below(spread + 1)};
    station.phase = random.below(static_cast<uint32_t>(station.period));
    return station;
}

uint32_t next_vlan(Random &random, const UniConfig &config)
{
    const uint64_t drawn = random.next();
    if (config.vlans.empty()) return config.pvid;
    return config.vlans[drawn % config.vlans.size()].network;
}

} // namespace

std::optional<ModelTime> Station::last_frame(ModelTime time) const
{
    if (time < phase) return std::nullopt;
    return time - (time - phase) % period;
}

ModelTime Station::next_frame(ModelTime time) const
{
    const std::optional<ModelTime> last = last_frame(time);
    return last ? *last + period : phase;
}

std::vector<Station> stations_behind(uint64_t seed, const Mac &onu, const Device &device)
{
    const std::vector<UniConfig> configs = default_configs(seed, onu, device);
    Random random = random_for(seed, Purpose::stations, onu);
    std::vector<Station> stations;
    for (uint32_t index = 0; index < device.unis.size(); ++index) {
        const uint32_t count = 1 + random.below(most_behind_uni);
        for (uint32_t n = 0; n < count; ++n) {
            // The address holds the bytes that make the ONU's address unique, and the number of the station.
            const auto number = static_cast<uint8_t>(index * most_behind_uni + n);
            Station station = next_station(random, {locally_administered, onu[1], onu[3], onu[4], onu[5], number});
            station.port = index + 1;
            station.vlan = next_vlan(random, configs[index]);
            stations.push_back(station);
        }
    }
    return stations;
}

std::vector<Station> network_stations(uint64_t seed)
{
    Random random = random_for(seed, Purpose::stations, {});
    std::vector<Station> stations;
    for (uint8_t n = 0; n < stations_of_network; ++n) {
        const auto byte = static_cast<uint8_t>(random.next());
        // The address has a 0 where others have the PON port, and no PON port has number 0.
        Station station = next_station(random, {locally_administered, byte, byte, 0, 0, n});
        station.port = 1 + random.below(ge_uplinks);
        station.vlan = n < 2 ? default_vlan : 100 + random.below(900);
        stations.push_back(station);
    }
    return stations;
}

} // namespace ponsim
