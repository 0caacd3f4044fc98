#include "model/plant/plugging.h"

#include <algorithm>
#include <optional>
#include <stdexcept>

#include "model/plant/fibre.h"

namespace ponsim
{
namespace
{

void take_away(PortPopulation &port, const Mac &mac)
{
    const auto found = std::ranges::find(port.arrivals, mac, &Arrival::mac);
    if (found == port.arrivals.end()) return;
    port.branches.at(found->branch).name.clear();
    port.arrivals.erase(found);
}

void plug_in(PortPopulation &port, const Mac &mac, const PluggedOnu &onu)
{
    if (port.branches.size() <= onu.fibre) port.branches.resize(onu.fibre + 1);
    port.branches[onu.fibre] = {onu.name, onu.branch, onu.length, 2 * connector_loss};
    const FibreEnd end = end_of(port.branches, onu.fibre);
    if (onu.branch >= port.branches.size() || end.depth > deepest_fibre)
        throw std::out_of_range("the fibre of an ONU does not begin at its port");
    Arrival arrival{mac, end.distance, onu.silent, onu.loid, onu.password};
    arrival.branch = onu.fibre;
    arrival.loss = end.loss;
    arrival.name = onu.name;
    arrival.load_up = onu.load_up;
    arrival.load_down = onu.load_down;
    arrival.unplugged = onu.state == Plugged::leaving;
    port.arrivals.push_back(std::move(arrival));
}

} // namespace

PortPopulation population_with(PortPopulation found, std::span<const std::pair<Mac, PluggedOnu>> plugged)
{
    for (const auto &[mac, onu] : plugged)
        take_away(found, mac);
    // An ONU that took over the fibre of another one has it. So it comes after those that leave.
    for (const Plugged state : {Plugged::leaving, Plugged::there})
        for (const auto &[mac, onu] : plugged)
            if (onu.state == state) plug_in(found, mac, onu);
    std::ranges::sort(found.arrivals, {}, &Arrival::mac);
    return found;
}

uint32_t ways_of(const Branch &branch)
{
    uint32_t ways = 1;
    while (splitter_loss(ways) + 2 * connector_loss < branch.loss)
        ways *= 2;
    return ways;
}

FibreEnd end_of(std::span<const Branch> branches, uint32_t branch)
{
    FibreEnd end;
    for (std::optional<uint32_t> at = branch; at && end.depth <= deepest_fibre; at = branches[*at].parent) {
        if (*at >= branches.size()) break;
        end.distance += branches[*at].length;
        end.loss += branches[*at].loss;
        ++end.depth;
    }
    return end;
}

} // namespace ponsim
