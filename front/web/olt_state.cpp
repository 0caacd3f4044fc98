#include "web/olt_state.h"

#include <functional>

#include "web/json.h"

namespace front
{
namespace
{

size_t number_of(Table table)
{
    return static_cast<size_t>(table);
}

// Returns the contents of a table as a text, which differs when they do.
template <class Row>
std::string contents(const std::shared_ptr<const Rows<Row>> &table)
{
    Json json;
    json->StartArray();
    for (const Row &row : rows_of(table))
        json.row(row);
    json->EndArray();
    return json.text();
}

std::string contents(const std::shared_ptr<const Rows<ModuleQuantity>> &table)
{
    Json json;
    json->StartArray();
    for (const ModuleQuantity &quantity : rows_of(table)) {
        json.put(quantity.cage);
        json.row(quantity.of);
    }
    json->EndArray();
    return json.text();
}

std::string contents(const std::shared_ptr<const Rows<PortCounters>> &table)
{
    std::string text;
    for (const PortCounters &port : rows_of(table))
        for (const uint64_t number : {uint64_t{port.port}, port.in_octets, port.in_unicast, port.in_multicast,
                                      port.in_broadcast, port.in_errors, port.in_discards, port.out_octets,
                                      port.out_unicast, port.out_multicast, port.out_broadcast, port.out_discards})
            text += std::to_string(number) + " ";
    return text;
}

// Returns whether a table was read again, and has other contents now.
bool differs(Table table, const Snapshot &before, const Snapshot &after)
{
    if (before.state(table).generation == after.state(table).generation) return false;
    const auto changed = [](const auto &one, const auto &other) {
        return one == nullptr || contents(one) != contents(other);
    };
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
