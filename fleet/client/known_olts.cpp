#include "fleet/client/known_olts.h"

#include <utility>

#include "call/codec/errors.h"
#include "fleet/selection/selector.h"

namespace fleet
{
namespace
{

// A broker is not to fill the memory of its clients.
constexpr size_t most_known = 100'000, most_problems = 100;

} // namespace

bool KnownOlts::InOrder::operator()(const std::string &name, const std::string &other) const
{
    return comes_before(name, other);
}

void KnownOlts::take(const Topics &topics, const Message &message)
{
    const std::string olt = topics.olt_of(message.topic), bridge = topics.bridge_of(message.topic);
    try {
        if (!olt.empty())
            take_inventory(olt, message.payload);
        else if (!bridge.empty())
            take_state(bridge, message.payload);
    } catch (const call::UsageError &error) {
        add_problem(message.topic + ": " + error.what());
    }
}

void KnownOlts::take_inventory(const std::string &olt, const std::string &text)
{
    // An empty message takes back what was said before.
    if (text.empty()) {
        if (inventories.erase(olt) > 0) tell(olt);
        return;
    }
    Inventory read = inventory_from_json(text);
    if (read.olt != olt) throw call::UsageError("the inventory is of the OLT '" + read.olt + "'");
    if (inventories.size() >= most_known && !inventories.contains(olt))
        throw call::UsageError("there are too many OLTs");
    inventories[olt] = {std::move(read), round};
    tell(olt);
}

void KnownOlts::take_state(const std::string &bridge, const std::string &text)
{
    const BridgeState state = text.empty() ? BridgeState() : bridge_state_from_json(text);
    if (bridges.size() >= most_known && !bridges.contains(bridge)) throw call::UsageError("there are too many bridges");
    const bool was_online = bridges.contains(bridge) && bridges[bridge].what.online;
    bridges[bridge] = {state, round};
    if (state.online != was_online) tell_olts_of(bridge);
}

void KnownOlts::tell(const std::string &olt) const
{
    if (changed) changed(olt);
}

void KnownOlts::tell_olts_of(const std::string &bridge) const
{
    std::vector<std::string> names;
    for (const auto &[name, told] : inventories)
        if (told.what.bridge == bridge) names.push_back(name);
    for (const std::string &name : names)
        tell(name);
}

void KnownOlts::forget_old()
{
    std::erase_if(bridges, [this](const auto &each) { return each.second.round < round; });
    std::erase_if(inventories, [this](const auto &each) { return each.second.round < round; });
    std::map<std::string, size_t> counts;
    for (const auto &[olt, told] : inventories)
        ++counts[told.what.bridge];
    for (const auto &[bridge, told] : bridges)
        if (told.what.online && told.what.olts > counts[bridge])
            add_problem("the bridge " + bridge + " answers for " + std::to_string(told.what.olts) +
                        " OLTs, and the inventories of " + std::to_string(told.what.olts - counts[bridge]) +
                        " of them have not come: you may not see them, or the broker keeps too few messages");
}

bool KnownOlts::is_online(const Inventory &inventory) const
{
    const auto bridge = bridges.find(inventory.bridge);
    return inventory.answers && bridge != bridges.end() && bridge->second.what.online;
}

std::vector<Olt> KnownOlts::olts() const
{
    std::vector<Olt> all;
    for (const auto &[name, told] : inventories)
        all.push_back({told.what, is_online(told.what)});
    return all;
}

std::optional<Olt> KnownOlts::find(const std::string &olt) const
{
    const auto found = inventories.find(olt);
    if (found == inventories.end()) return std::nullopt;
    return Olt{found->second.what, is_online(found->second.what)};
}

void KnownOlts::add_problem(const std::string &problem)
{
    if (problems.size() < most_problems) problems.push_back(problem);
}

std::vector<std::string> KnownOlts::take_problems()
{
    return std::exchange(problems, {});
}

} // namespace fleet
