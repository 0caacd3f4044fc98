#include "model/olt.h"

#include <algorithm>

namespace ponsim
{

const Arrival *PonPort::ranged(const Mac &mac) const
{
    const auto found = std::ranges::lower_bound(arrivals, mac, {}, &Arrival::mac);
    if (found == arrivals.end() || found->mac != mac) return nullptr;
    return found->distance >= limits.min && found->distance <= limits.max ? &*found : nullptr;
}

OnuRecord PonPort::record(const Mac &mac) const
{
    const auto found = onus.find(mac);
    return found == onus.end() ? OnuRecord{} : found->second;
}

bool PonPort::online(const Binding &binding) const
{
    const Arrival *arrival = ranged(binding.mac);
    return arrival && !arrival->silent;
}

Olt::Olt(const Settings &settings) : own_seed(settings.seed)
{
    for (uint32_t number = 1; number <= settings.ports; ++number)
        pon_ports.push_back({number, {}, {}, arrivals_at(settings, number), {}});
}

const PonPort *Olt::port(uint32_t number) const
{
    return number >= 1 && number <= pon_ports.size() ? &pon_ports[number - 1] : nullptr;
}

std::optional<Olt::Place> Olt::find(const Mac &mac) const
{
    const auto found = places.find(mac);
    if (found == places.end()) return std::nullopt;
    return found->second;
}

std::vector<const Arrival *> Olt::waiting(const PonPort &port) const
{
    std::vector<const Arrival *> result;
    for (const Arrival &arrival : port.arrivals) {
        const std::optional<Place> place = find(arrival.mac);
        const bool bound_here = place && place->pon_port == port.number;
        if (!bound_here && port.ranged(arrival.mac)) result.push_back(&arrival);
    }
    return result;
}

void Olt::apply(const Change &change)
{
    for (const auto &[pon_port, onu_id, binding] : change.bindings) {
        forget({pon_port, onu_id});
        pon_ports.at(pon_port - 1).bindings.at(onu_id) = binding;
        if (binding) places[binding->mac] = {pon_port, onu_id};
    }
    for (const auto &[pon_port, mac, record] : change.onus) {
        std::map<Mac, OnuRecord> &onus = pon_ports.at(pon_port - 1).onus;
        if (record == OnuRecord{})
            onus.erase(mac);
        else
            onus[mac] = record;
    }
    for (const auto &[pon_port, limits] : change.ports)
        pon_ports.at(pon_port - 1).limits = limits;
}

// The place that is about to be taken or freed no longer is its ONU's, unless that has moved on within the change.
void Olt::forget(const Place &place)
{
    const std::optional<Binding> &binding = pon_ports.at(place.pon_port - 1).bindings.at(place.onu_id);
    if (binding && find(binding->mac) == place) places.erase(binding->mac);
}

} // namespace ponsim
