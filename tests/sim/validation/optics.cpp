// This file measures which light receivers bear.
#include "link.h"
#include "page.h"

namespace ponsim
{
namespace
{

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
