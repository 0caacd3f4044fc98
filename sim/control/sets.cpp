#include "control/sets.h"

#include <algorithm>
#include <set>

#include "bsp_pon.h"
#include "text/hex.h"
#include "text/number.h"
#include "text/words.h"

namespace ponsim
{
namespace
{

bool is_all(const std::string &element)
{
    return element == "all" || element == "*";
}

bool is_pattern(const std::string &element)
{
    return element.find('*') != std::string::npos;
}

// Returns whether the name is one of a pattern, in which each star stands for any text.
bool fits(std::string_view name, std::string_view pattern)
{
    const size_t first = pattern.find('*');
    if (first == std::string_view::npos) return name == pattern;
    const std::string_view begin = pattern.substr(0, first);
    const std::string_view end = pattern.substr(pattern.rfind('*') + 1);
    if (name.size() < begin.size() + end.size() || !name.starts_with(begin) || !name.ends_with(end)) return false;
    name = name.substr(begin.size(), name.size() - begin.size() - end.size());
    // Each text between two stars is looked for as early as it can be.
    for (const std::string &part : text::split(pattern.substr(first, pattern.size() - first - end.size()), '*')) {
        const size_t found = name.find(part);
        if (found == std::string_view::npos) return false;
        name.remove_prefix(found + part.size());
    }
    return true;
}

struct NumberRange {
    uint32_t first;
    uint32_t last;
};

std::optional<NumberRange> range_of(const std::string &element)
{
    const size_t middle = std::min(element.find('-'), element.size());
    const auto first = text::to_number<uint32_t>(element.substr(0, middle));
    const auto last = middle < element.size() ? text::to_number<uint32_t>(element.substr(middle + 1)) : first;
    if (!first || !last || *first > *last) return std::nullopt;
    return NumberRange{*first, *last};
}

std::vector<std::string> elements_of(const std::string &word)
{
    std::vector<std::string> elements = text::split(word, ',');
    if (elements.empty() || std::ranges::count(elements, "") > 0)
        throw ControlError('"' + word + "\": expected elements with a comma between each two, as 1,3-5");
    return elements;
}

std::string ports_text(const Ports &ports)
{
    std::string text = ports.size() == 1 ? "PON port " : "PON ports ";
    for (size_t index = 0; index < ports.size(); ++index)
        text += (index == 0 ? "" : ", ") + std::to_string(ports[index]->number);
    return text;
}

// A Selection has no target twice, and keeps the order in which they are named.
template <class Target>
class Selection
{
public:
    std::vector<Target> targets;

    void add(const Target &target)
    {
        if (seen.insert(target).second) targets.push_back(target);
    }

private:
    std::set<Target> seen;
};

std::optional<uint32_t> branch_called(const PonPort &port, const std::string &name)
{
    const auto found = std::ranges::find(port.branches, name, &Branch::name);
    if (name.empty() || found == port.branches.end()) return std::nullopt;
    return static_cast<uint32_t>(found - port.branches.begin());
}

// Adds the ONUs that fulfil a condition. Returns whether there are any.
template <class Condition>
bool add_if(const Ports &ports, Selection<OnuAtPort> &selection, Condition condition)
{
    bool any = false;
    for (const PonPort *port : ports)
        for (const Arrival &arrival : port->arrivals)
            if (!arrival.unplugged && condition(*port, arrival)) {
                selection.add({port->number, arrival.mac});
                any = true;
            }
    return any;
}

void add_beyond(const Ports &ports, const std::string &name, Selection<OnuAtPort> &selection)
{
    const bool known =
        std::ranges::any_of(ports, [&](const PonPort *port) { return branch_called(*port, name).has_value(); });
    if (!known) throw ControlError('@' + name + ": there is no branch " + name + " at " + ports_text(ports));
    const bool any = add_if(ports, selection, [&](const PonPort &port, const Arrival &arrival) {
        const std::optional<uint32_t> branch = branch_called(port, name);
        return branch && is_beyond(port, arrival, *branch);
    });
    if (!any) throw ControlError('@' + name + ": there is no ONU beyond this branch");
}

// An id may be that of an ONU that has not arrived, which the command itself refuses. Ranges only mean those that have.
void add_ids(const Ports &ports, const std::string &element, const NumberRange &range, Selection<OnuAtPort> &selection)
{
    if (range.last >= onus_per_port)
        throw ControlError(element + ": expected ONU ids from 0 to " + std::to_string(onus_per_port - 1));
    bool any = false;
    for (const PonPort *port : ports)
        for (uint32_t id = range.first; id <= range.last; ++id) {
            const std::optional<Binding> &binding = port->bindings[id];
            if (!binding) continue;
            const Arrival *arrival = port->arrived(binding->mac);
            if (range.first != range.last && (!arrival || arrival->unplugged)) continue;
            selection.add({port->number, binding->mac});
            any = true;
        }
    if (any) return;
    throw ControlError(element + ": no ONU " + (range.first == range.last ? "" : "that has arrived ") +
                       "is bound to such an id of " + ports_text(ports));
}

void add_mac(const Ports &ports, const std::string &element, const Mac &mac, Selection<OnuAtPort> &selection)
{
    if (add_if(ports, selection, [&](const PonPort &, const Arrival &arrival) { return arrival.mac == mac; })) return;
    const bool leaves = std::ranges::any_of(ports, [&](const PonPort *port) { return port->arrived(mac); });
    // Whether an ONU has arrived is for the command to say. It may be different when an event happens.
    if (ports.size() == 1 && !leaves) return selection.add({ports[0]->number, mac});
    throw ControlError(element + ": there is no such ONU at " + ports_text(ports));
}

void add_onus(const Ports &ports, const std::string &element, Selection<OnuAtPort> &selection)
{
    const auto is_called = [&](const PonPort &, const Arrival &arrival) { return arrival.name == element; };
    if (add_if(ports, selection, is_called)) return;
    if (is_all(element)) {
        if (add_if(ports, selection, [](const PonPort &, const Arrival &) { return true; })) return;
        throw ControlError(element + ": there are no ONUs at " + ports_text(ports));
    }
    if (is_pattern(element)) {
        const auto is_one = [&](const PonPort &, const Arrival &arrival) { return fits(arrival.name, element); };
        if (add_if(ports, selection, is_one)) return;
        throw ControlError(element + ": no ONU at " + ports_text(ports) + " has such a name");
    }
    if (element.starts_with('@')) return add_beyond(ports, element.substr(1), selection);
    const size_t mark = element.starts_with("id:") ? 3 : 0;
    if (const std::optional<NumberRange> range = range_of(element.substr(mark)))
        return add_ids(ports, element, *range, selection);
    if (const auto mac = text::to_mac(element)) return add_mac(ports, element, *mac, selection);
    throw ControlError(element + ": expected a MAC address, as 02:00:5e:10:00:01, or the name of an ONU at " +
                       ports_text(ports));
}

// Adds the branches that fulfil a condition. Returns whether there are any.
template <class Condition>
bool add_if(const Ports &ports, Selection<BranchKey> &selection, Condition condition)
{
    bool any = false;
    for (const PonPort *port : ports)
        for (uint32_t branch = 0; branch < port->branches.size(); ++branch) {
            const std::string &name = port->branches[branch].name;
            if (name.empty() || !condition(name)) continue;
            selection.add({port->number, branch});
            any = true;
        }
    return any;
}

void add_branches(const Ports &ports, const std::string &element, Selection<BranchKey> &selection)
{
    if (add_if(ports, selection, [&](const std::string &name) { return name == element; })) return;
    if (add_if(ports, selection, [&](const std::string &name) { return is_all(element) || fits(name, element); }))
        return;
    Selection<OnuAtPort> onus;
    try {
        add_onus(ports, element, onus);
    } catch (const ControlError &) {
        // The element is neither a branch nor an ONU. The error below says so.
    }
    bool any = false;
    for (const auto &[pon_port, mac] : onus.targets)
        for (const PonPort *port : ports)
            if (const Arrival *arrival = port->number == pon_port ? port->arrived(mac) : nullptr) {
                selection.add({pon_port, arrival->branch});
                any = true;
            }
    if (!any)
        throw ControlError(element + ": expected a branch of " + ports_text(ports) +
                           ", as feeder or drop-1, or the MAC address or name of an ONU that has arrived there");
}

// Returns whether a change of one ONU may decide what becomes of another one.
bool couples(const Change &change)
{
    return !change.of<UpgradeRun>().empty() || !change.of<LoopRecord>().empty();
}

} // namespace

Ports control_ports(const Olt &olt, const std::string &word)
{
    Ports ports;
    for (const uint32_t number : control_numbers(word, 1, static_cast<uint32_t>(olt.ports().size())))
        ports.push_back(olt.port(number));
    return ports;
}

std::vector<OnuAtPort> control_onus(const Ports &ports, const std::string &word)
{
    Selection<OnuAtPort> selection;
    for (const std::string &element : elements_of(word))
        add_onus(ports, element, selection);
    return selection.targets;
}

std::vector<BranchKey> control_branches(const Ports &ports, const std::string &word)
{
    Selection<BranchKey> selection;
    for (const std::string &element : elements_of(word))
        add_branches(ports, element, selection);
    return selection.targets;
}

std::vector<uint32_t> control_numbers(const std::string &word, uint32_t least, uint32_t greatest)
{
    std::set<uint32_t> numbers;
    for (const std::string &element : elements_of(word)) {
        NumberRange range{least, greatest};
        if (!is_all(element)) {
            const std::optional<NumberRange> given = range_of(element);
            if (!given && element.find('-') != std::string::npos)
                throw ControlError(element + ": expected a range, as 1-4");
            range = given ? *given : NumberRange{0, 0};
            for (const uint32_t number : {range.first, range.last})
                if (!given || number < least || number > greatest)
                    static_cast<void>(control_number(given ? std::to_string(number) : element, least, greatest));
        }
        for (uint32_t number = range.first; number <= range.last; ++number)
            numbers.insert(number);
    }
    return {numbers.begin(), numbers.end()};
}

std::vector<UniKey> control_unis(const Olt &olt, const std::vector<OnuAtPort> &onus, const std::string &word)
{
    std::vector<UniKey> unis;
    for (const auto &[pon_port, mac] : onus) {
        const auto most = is_all(word) ? static_cast<uint32_t>(olt.device_of(mac).unis.size()) : max_unis;
        for (const uint32_t uni : control_numbers(word, 1, most))
            unis.push_back({pon_port, mac, uni});
    }
    return unis;
}

bool is_beyond(const PonPort &port, const Arrival &arrival, uint32_t branch)
{
    for (std::optional<uint32_t> at = arrival.branch; at; at = port.branches.at(*at).parent)
        if (*at == branch) return true;
    return false;
}

std::string text_of(const Olt &olt, const OnuAtPort &onu)
{
    const Arrival *arrival = olt.port(onu.pon_port)->arrived(onu.mac);
    const std::string name = arrival && !arrival->name.empty() ? arrival->name : text::mac_text(onu.mac);
    return name + " at PON port " + std::to_string(onu.pon_port);
}

std::string text_of(const Olt &olt, const UniKey &uni)
{
    return "UNI port " + std::to_string(uni.uni) + " of " + text_of(olt, OnuAtPort{uni.pon_port, uni.mac});
}

std::string text_of(const Olt &olt, const BranchKey &branch)
{
    return olt.port(branch.pon_port)->branches.at(branch.branch).name + " at PON port " +
           std::to_string(branch.pon_port);
}

std::string text_of(const Olt &, uint32_t number)
{
    return std::to_string(number);
}

void add(Change &change, const Change &more)
{
    change.Kept::add(more);
    change.flushes.insert(change.flushes.end(), more.flushes.begin(), more.flushes.end());
    change.log.insert(change.log.end(), more.log.begin(), more.log.end());
    change.faults.insert(change.faults.end(), more.faults.begin(), more.faults.end());
}

template <class Target>
Plan plan_each(const Olt &olt, const std::vector<Target> &targets,
               const std::function<Plan(const Olt &, const Target &)> &plan_one)
{
    Plan all{BSP_OK};
    // As long as no change decides what becomes of another one, each is planned for the OLT as it is. Otherwise the
    // changes are made one after the other at a second OLT.
    std::optional<Olt> second;
    for (size_t index = 0; index < targets.size(); ++index) {
        const Plan one = plan_one(second ? *second : olt, targets[index]);
        if (one.status != BSP_OK) return {one.status, {}, targets.size() > 1 ? text_of(olt, targets[index]) : ""};
        if (index + 1 < targets.size() && !second && couples(one.change)) {
            second.emplace(olt);
            second->apply(all.change);
        }
        if (second) second->apply(one.change);
        add(all.change, one.change);
    }
    return all;
}

template Plan plan_each(const Olt &, const std::vector<OnuAtPort> &,
                        const std::function<Plan(const Olt &, const OnuAtPort &)> &);
template Plan plan_each(const Olt &, const std::vector<UniKey> &,
                        const std::function<Plan(const Olt &, const UniKey &)> &);
template Plan plan_each(const Olt &, const std::vector<BranchKey> &,
                        const std::function<Plan(const Olt &, const BranchKey &)> &);
template Plan plan_each(const Olt &, const std::vector<uint32_t> &,
                        const std::function<Plan(const Olt &, const uint32_t &)> &);

} // namespace ponsim
