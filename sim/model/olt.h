// The modelled OLT. It is changed by apply() alone; what a request changes is planned by functions that only read it.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <vector>

#include "model/change.h"
#include "model/population.h"

namespace ponsim
{

struct PonPort {
    uint32_t number;
    RangingLimits limits;
    std::array<std::optional<Binding>, onus_per_port> bindings; // by ONU id
    std::vector<Arrival> arrivals;                              // in order of MAC address
    std::map<Mac, OnuRecord> onus;                              // those that differ from a new one

    // The ONU as it has arrived and is ranged; null when it has not or is not.
    const Arrival *ranged(const Mac &mac) const;
    OnuRecord record(const Mac &mac) const;
    // Whether the bound ONU answers. It does not when it is silent, has not arrived here, or is not ranged.
    bool online(const Binding &binding) const;
};

class Olt
{
public:
    explicit Olt(const Settings &settings);

    // What the devices of its ONUs follow from.
    uint64_t seed() const { return own_seed; }

    // In order of number.
    const std::vector<PonPort> &ports() const { return pon_ports; }
    // Null when there is no such port.
    const PonPort *port(uint32_t number) const;

    // Where an ONU is bound.
    struct Place {
        uint32_t pon_port;
        uint32_t onu_id;

        bool operator==(const Place &) const = default;
    };
    std::optional<Place> find(const Mac &mac) const;

    // The ONUs that wait at a port, that is, have arrived, are ranged and not bound there; in order of MAC address.
    std::vector<const Arrival *> waiting(const PonPort &port) const;

    // Ports and ids of the change must exist.
    void apply(const Change &change);

private:
    void forget(const Place &place);

    uint64_t own_seed;
    std::vector<PonPort> pon_ports;
    std::map<Mac, Place> places;
};

} // namespace ponsim
