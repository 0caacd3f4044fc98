// This file measures which light receivers bear.
#include "model/base/search.h"
#include "model/olt/light.h"
#include "model/port/fibre.h"
#include "page.h"
#include "scenes.h"

namespace ponsim
{
namespace
{

// One ONU is near the port of this OLT. Attenuation decides how much light there is.
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

constexpr uint64_t medium = 1800; // 0.01 dB; with this, light is neither too weak nor too strong
constexpr uint64_t most = 4500;

// Returns the least power, or the greatest, with which a receiver has no bit errors.
double least_good(Link &link, Direction direction)
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

double greatest_good(Link &link, Direction direction)
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

// These are in dBm.
struct Limits {
    std::string name;
    std::string source;
    double olt_sensitivity;
    double olt_overload;
    double onu_sensitivity;
    double onu_overload;
};

} // namespace

PageSection optics_section()
{
    const Limits classes[] = {{"PX10", "60.3: 1000BASE-PX10", -24, -1, -24, -3},
                              {"PX20", "60.4: 1000BASE-PX20", -27, -6, -24, -3},
                              {"PX20+", "YD/T 1688.3", -30, -6, -27, -3},
                              {"PX30", "802.3bk: 1000BASE-PX30", -29.78, -9.38, -27, -8}};
    PageSection section{
        "Optical classes",
        "One ONU is near its port. An attenuator is turned in steps of 0.01 dB until the receiver has bit errors. "
        "What it receives one step before that is compared with the limit of its class.",
        {}};
    for (const Limits &limits : classes) {
        Link link(limits.name);
        const auto add = [&](const std::string &what, double expected, double measured) {
            section.rows.push_back(
                {limits.name + ", " + what, "dBm", "limit of the class", limits.source, expected, measured, 0.005, 2});
        };
        add("sensitivity of the OLT", limits.olt_sensitivity, least_good(link, Direction::up));
        add("overload of the OLT", limits.olt_overload, greatest_good(link, Direction::up));
        add("sensitivity of the ONU", limits.onu_sensitivity, least_good(link, Direction::down));
        add("overload of the ONU", limits.onu_overload, greatest_good(link, Direction::down));
    }
    return section;
}

} // namespace ponsim
