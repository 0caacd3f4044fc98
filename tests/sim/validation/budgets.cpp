// This file measures how much light may be lost on the way, and how much is.
#include <cmath>

#include "link.h"
#include "model/port/optics.h"
#include "page.h"

namespace ponsim
{
namespace
{

// These are in dBm.
struct Budget {
    std::string name;
    std::string source;
    double onu_launch; // the least that the class allows
    double olt_sensitivity;
    double olt_launch;
    double onu_sensitivity;
};

// Returns the power with which the sender launches, in dBm.
double launched(const Link &link, Direction direction)
{
    return link.received(direction) + path_loss(link.port(1), link.ends(), direction) / 100.0;
}

// Makes the laser of the ONU so old, or that of the port so dim, that it launches no more than this, in dBm.
void weaken(Link &link, Direction direction, double launch)
{
    constexpr double hours_per_db = 100000; // for an ONU's laser
    const double excess = launched(link, direction) - launch;
    if (direction == Direction::down) {
        link.simulator.change(dim_laser(link.olt(), 1, static_cast<int32_t>(std::lround(100 * excess))).change);
    } else {
        OnuRecord record = link.port(1).record(link.ends().mac);
        record.added_hours = static_cast<uint32_t>(std::lround(hours_per_db * excess));
        link.simulator.change(change_of<OnuRecord>({1, link.ends().mac}, record));
    }
    link.simulator.advance(link.olt().now());
}

// Returns the greatest loss, in dB, over which the weakest laser of the class is received without bit errors.
double greatest_loss_of(const Budget &budget, Direction direction)
{
    Link link(budget.name);
    const double launch = direction == Direction::up ? budget.onu_launch : budget.olt_launch;
    weaken(link, direction, launch);
    least_good(link, direction);
    return path_loss(link.port(1), link.ends(), direction) / 100.0;
}

// A Tree has a splitter at the end of its feeder, and an ONU at each end of the splitter.
struct Tree : Scene {
    Tree(uint32_t ways, uint32_t length)
        : Scene("[service.home]\n[[olt]]\nports = 1\n[[olt.port]]\nnumber = 1\n[[olt.port.branch]]\nname = "
                "\"main\"\nlength = " +
                std::to_string(length) + "\nsplit = " + std::to_string(ways) +
                "\n[[olt.port.onu]]\nname = \"end\"\nservice = \"home\"\nbranch = \"main\"\ndrop = 1000\n")
    {
    }
    double loss(Direction direction) const { return path_loss(port(1), onu(1, "end"), direction) / 100.0; }
};

} // namespace

PageSection budget_section()
{
    const Budget budgets[] = {{"PX10", "60.3: 1000BASE-PX10", -1, -24, -3, -24},
                              {"PX20", "60.4: 1000BASE-PX20", -1, -27, 2, -24},
                              {"PX20+", "YD/T 1688.3", 0, -30, 2.5, -27},
                              {"PX30", "802.3bk: 1000BASE-PX30", 0.62, -29.78, 3, -27}};
    PageSection section{"Budgets",
                        "A laser launches the least that its class allows: that of the ONU is old, that of the port is "
                        "dimmed. The attenuator is turned as above. What is lost on the way one step before there are "
                        "bit errors is the power budget. A tree of fibres loses what its parts lose.",
                        {}};
    for (const Budget &budget : budgets) {
        const std::string formula = "least launch power - sensitivity";
        section.rows.push_back({budget.name + ", power budget upstream", "dB", formula, budget.source,
                                budget.onu_launch - budget.olt_sensitivity, greatest_loss_of(budget, Direction::up),
                                0.005, 2});
        section.rows.push_back({budget.name + ", power budget downstream", "dB", formula, budget.source,
                                budget.olt_launch - budget.onu_sensitivity, greatest_loss_of(budget, Direction::down),
                                0.005, 2});
    }
    struct Case {
        uint32_t ways;
        uint32_t length; // m
    };
    for (const auto [ways, length] : {Case{8, 9000}, Case{32, 19000}, Case{64, 4000}}) {
        const Tree tree(ways, length);
        const std::string what = std::to_string(length / 1000 + 1) + " km with a splitter into " + std::to_string(ways);
        const double parts = 3.3 * std::log2(ways) + 4 * 0.25;
        const double km = length / 1000.0 + 1;
        section.rows.push_back({what + ", upstream", "dB", "0.35 dB a km + 3.3 dB a halving + 4 connectors of 0.25 dB",
                                "G.652 cables as laid; planning values", 0.35 * km + parts, tree.loss(Direction::up),
                                0.005, 2});
        section.rows.push_back(
            {what + ", downstream", "dB", "0.25 dB a km + 3.3 dB a halving + 4 connectors of 0.25 dB",
             "G.652 cables as laid; planning values", 0.25 * km + parts, tree.loss(Direction::down), 0.005, 2});
    }
    return section;
}

} // namespace ponsim
