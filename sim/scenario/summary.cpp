#include "scenario/summary.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include "model/plant/device.h"
#include "model/plant/fibre.h"
#include "model/plant/optical_class.h"
#include "text/written.h"

namespace ponsim
{
namespace
{

int32_t loss_of(const Arrival &arrival, Direction direction)
{
    return arrival.loss + fibre_loss(arrival.distance, direction);
}

// A Budget compares the loss of an ONU's light in one direction with what the link is made for.
struct Budget {
    const Arrival *onu;
    Direction direction;
    int32_t loss;
    LossRange range;

    int32_t margin() const { return range.greatest - loss; }
    int32_t excess() const { return loss - range.least; } // negative: the receiver may be overloaded
};

std::vector<Budget> budgets_of(const Topology &topology, const PortPopulation &port)
{
    std::vector<Budget> budgets;
    for (const Arrival &onu : port.arrivals) {
        const DeviceType *kind = topology.equipment_of(onu.mac).kind;
        const bool own = kind && kind->optics;
        for (const Direction direction : directions)
            budgets.push_back({&onu, direction, loss_of(onu, direction),
                               losses_between(*port.optics, own ? *kind->optics : *port.optics, direction)});
    }
    return budgets;
}

std::string losses_of(const PortPopulation &port)
{
    if (port.arrivals.empty()) return "-";
    const auto loss = [](const Arrival &arrival) { return loss_of(arrival, Direction::up); };
    const auto [least, greatest] = std::ranges::minmax(port.arrivals, {}, loss);
    return to_db(loss(least)) + " to " + to_db(loss(greatest));
}

// Returns the row of a port in the summary.
std::string summary_of(const OltScenario &olt, uint32_t number)
{
    const PortPopulation &port = olt.settings.topology->ports[number - 1];
    const auto bound = std::ranges::count(olt.provisioning.of<Binding>(), number,
                                          [](const Entry<Binding> &entry) { return entry.key.pon_port; });
    const std::vector<Budget> budgets = budgets_of(*olt.settings.topology, port);
    const std::string margin = budgets.empty() ? "-" : to_db(std::ranges::min(budgets, {}, &Budget::margin).margin());
    char row[200];
    snprintf(row, sizeof row, "%-32s  %4u  %4zu  %5td  %6zu  %-16s  %-5s  %10s\n", olt.name.c_str(), number,
             port.arrivals.size(), bound, port.branches.size(), losses_of(port).c_str(),
             std::string(port.optics->name).c_str(), margin.c_str());
    return row;
}

// Returns a line about the ONUs whose margin is negative, with what is said of the worst one. Returns none without any.
template <class Margin, class Text>
std::string warning_of(const std::vector<Budget> &budgets, Margin margin, Text text)
{
    const Arrival *last = nullptr;
    size_t onus = 0;
    for (const Budget &budget : budgets)
        if ((budget.*margin)() < 0 && budget.onu != last) {
            last = budget.onu;
            ++onus;
        }
    if (onus == 0) return {};
    const Budget worst = std::ranges::min(budgets, {}, margin);
    const std::string others = onus > 1 ? " (and " + std::to_string(onus - 1) + " more)" : "";
    return "the light of " + worst.onu->name + others + text(worst) + '\n';
}

std::string warnings_of(const OltScenario &olt, uint32_t number)
{
    const PortPopulation &port = olt.settings.topology->ports[number - 1];
    const std::vector<Budget> budgets = budgets_of(*olt.settings.topology, port);
    const auto where = [](const Budget &budget) {
        return budget.direction == Direction::up ? " dB upstream" : " dB downstream";
    };
    const std::string much = warning_of(budgets, &Budget::margin, [&](const Budget &worst) {
        return " is too weak: it loses " + to_db(worst.loss) + where(worst) + ", and the optics are made for " +
               to_db(worst.range.greatest) + " at most";
    });
    const std::string little = warning_of(budgets, &Budget::excess, [&](const Budget &worst) {
        return " may overload the receiver: it loses " + to_db(worst.loss) + where(worst) +
               ", and the optics are made for " + to_db(worst.range.least) + " at least";
    });
    std::string text;
    for (const std::string &warning : {much, little})
        if (!warning.empty()) text += olt.name + ", port " + std::to_string(number) + ": warning: " + warning;
    return text;
}

// Returns nothing when there is none.
std::string counted(size_t count, const std::string &what)
{
    return count == 0 ? "" : "; " + std::to_string(count) + ' ' + what;
}

} // namespace

std::string summary_of(const Scenario &scenario)
{
    std::string text =
        "OLT                               Port  ONUs  Bound  Fibres  Loss to ONUs, dB  Class  Margin, dB\n";
    for (const OltScenario &olt : scenario.olts)
        for (uint32_t number = 1; number <= olt.settings.ports; ++number)
            text += summary_of(olt, number);
    for (const OltScenario &olt : scenario.olts)
        text += olt.name + ": " + std::to_string(olt.events.size()) + " events" +
                (olt.events.empty() ? "" : ", the last at " + text::time_text(olt.events.back().at)) +
                counted(olt.failing.size(), "parts that fail") + counted(olt.curves.size(), "load curves") +
                counted(olt.checks.size(), "expectations") + '\n';
    for (const OltScenario &olt : scenario.olts)
        for (uint32_t number = 1; number <= olt.settings.ports; ++number)
            text += warnings_of(olt, number);
    return text;
}

std::string to_db(int32_t loss)
{
    const std::string rest = std::to_string(std::abs(loss) % 100);
    return (loss < 0 ? "-" : "") + std::to_string(std::abs(loss) / 100) + '.' + std::string(2 - rest.size(), '0') +
           rest;
}

} // namespace ponsim
