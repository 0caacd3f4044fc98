// A Link is one ONU near a port, with an attenuator between them.
#pragma once

#include "model/base/search.h"
#include "model/olt/light.h"
#include "model/port/fibre.h"
#include "scenes.h"

namespace ponsim
{

struct Link : Scene {
    explicit Link(const std::string &optical_class)
        : Scene("[service.home]\n[[olt]]\nports = 1\n[[olt.port]]\nnumber = 1\nclass = \"" + optical_class +
                "\"\n[[olt.port.branch]]\nname = \"main\"\n[[olt.port.onu]]\nname = \"near\"\nservice = \"home\"\ndrop "
                "= 50\n")
    {
    }

    const Arrival &ends() const { return onu(1, "near"); }
    // Makes the fibre lose this much more light, in 0.01 dB.
    void attenuate(uint64_t loss)
    {
        simulator.change(set_damage(port(1), ends().branch, static_cast<int32_t>(loss)).change);
        simulator.advance(olt().now());
    }
    const Reception &reception(Direction direction) const { return port(1).record(ends().mac).reception(direction); }
    // Returns the received power in dBm.
    double received(Direction direction) const
    {
        return received_level(olt(), port(1), ends(), direction, olt().now()) / 100.0;
    }
};

inline constexpr uint64_t medium = 1800; // 0.01 dB; with this, light is neither too weak nor too strong
inline constexpr uint64_t most = 4500;

// Returns the least power, or the greatest, with which a receiver has no bit errors.
inline double least_good(Link &link, Direction direction)
{
    const uint64_t loss = first_second(medium, most, [&](uint64_t more) {
        link.attenuate(medium);
        link.attenuate(more);
        return link.reception(direction).light != Light::good;
    });
    link.attenuate(medium);
    link.attenuate(loss - 1);
    return link.received(direction);
}

inline double greatest_good(Link &link, Direction direction)
{
    const uint64_t loss = first_second(1, medium, [&](uint64_t less) {
        link.attenuate(medium);
        link.attenuate(less);
        return link.reception(direction).light == Light::good;
    });
    link.attenuate(medium);
    link.attenuate(loss);
    return link.received(direction);
}

} // namespace ponsim
