#include "web/olt_state.h"

#include <functional>

namespace front
{
namespace
{

size_t number_of(Table table)
{
    return static_cast<size_t>(table);
}

// Returns whether a table was read again, and has other contents now.
bool differs(Table table, const Snapshot &before, const Snapshot &after)
{
    if (before.state(table).generation == after.state(table).generation) return false;
    const auto changed = [](const auto &one, const auto &other) { return one == nullptr || one->rows != other->rows; };
    switch (table) {
    case Table::olt:
        return changed(before.olt, after.olt);
    case Table::ports:
        return changed(before.ports, after.ports);
    case Table::onus:
        return changed(before.onus, after.onus);
    case Table::alarms:
        return changed(before.alarms, after.alarms);
    case Table::loops:
        return changed(before.loops, after.loops);
    case Table::stats:
        return changed(before.stats, after.stats);
    case Table::counters:
        return changed(before.counters, after.counters);
    case Table::unis:
        return changed(before.unis, after.unis);
    case Table::upgrades:
        return changed(before.upgrades, after.upgrades);
    case Table::optics:
        return changed(before.optics, after.optics);
    case Table::modules:
        return changed(before.modules, after.modules);
    case Table::capabilities:
        return changed(before.capabilities, after.capabilities);
    case Table::uplinks:
        return changed(before.uplinks, after.uplinks);
    case Table::mpcp:
        return changed(before.mpcp, after.mpcp);
    case Table::stations:
        return changed(before.stations, after.stations);
    }
    return true;
}

} // namespace

const Fact *OltState::fact(FactKind kind, uint32_t port, const std::string &mac, const std::string &detail) const
{
    const auto found = facts->find({kind, port, mac, detail});
    return found == facts->end() ? nullptr : &found->second;
}

bool OltState::is_reached() const
{
    const Fact *const reach = fact(FactKind::reach, 0, {});
    return reach && reach->value == "reached";
}

UnixTime OltState::reached_since() const
{
    const Fact *const reach = fact(FactKind::reach, 0, {});
    return reach ? reach->since : 0;
}

std::string OltState::version_of(std::initializer_list<Table> tables) const
{
    std::string text = name + "." + std::to_string(facts_version);
    for (const Table table : tables)
        text += "." + std::to_string(versions[number_of(table)]);
    return text;
}

std::shared_ptr<const OltState> state_behind(const OltState &before, std::shared_ptr<const Snapshot> snapshot,
                                             const Facts &facts, bool facts_changed)
{
    auto state = std::make_shared<OltState>(before);
    for (const TableKind &kind : table_kinds())
        if (differs(kind.table, *before.snapshot, *snapshot)) ++state->versions[number_of(kind.table)];
    state->snapshot = std::move(snapshot);
    if (facts_changed) {
        state->facts = std::make_shared<Facts>(facts);
        ++state->facts_version;
    }
    return state;
}

} // namespace front
