#include "snmp/core/mib.h"

#include <algorithm>
#include <utility>

namespace front::snmp
{
namespace
{

const Oid if_entry{1, 3, 6, 1, 2, 1, 2, 2, 1}, if_number{1, 3, 6, 1, 2, 1, 2, 1},
    if_table_last_change{1, 3, 6, 1, 2, 1, 31, 1, 5};

// Returns a table of one object, whose instance is 0.
ObjectTable scalar(const Oid &object, std::string_view name, Type type, uint64_t value)
{
    const auto part = std::make_shared<Part>(0, 1);
    part->add_row({});
    part->put(0, value);
    return {object, {{.number = 0, .name = name, .type = type}}, {part}};
}

Oid entry_of(const TableInfo &info, const MibSettings &settings)
{
    if (info.is_standard) return info.entry;
    Oid entry = settings.root;
    entry.insert(entry.end(), info.entry.begin(), info.entry.end());
    return entry;
}

// Returns what the master is told of: the root, and each table and scalar of a standard.
std::vector<Oid> regions_of(std::span<const TableInfo *const> infos, const MibSettings &settings)
{
    std::vector<Oid> regions{settings.root};
    for (const TableInfo *info : infos)
        if (info->is_standard) regions.emplace_back(info->entry.begin(), info->entry.end() - 1);
    if (settings.standard_tables) regions.insert(regions.end(), {if_number, if_table_last_change});
    std::ranges::sort(regions, OidLess());
    return regions;
}

} // namespace

Mib::Mib(MibSettings wanted) : settings(std::move(wanted))
{
    for (const TableInfo &info : table_infos())
        if (settings.standard_tables || !info.is_standard) infos.push_back(&info);
    std::ranges::sort(infos, OidLess(), [this](const TableInfo *info) { return entry_of(*info, settings); });
    made.resize(infos.size());
}

bool Mib::make(const TableInfo &info, const Source &olt, const Times &times, Made &what)
{
    Made now{.part = {}, .name = olt.name, .readings = {}, .facts = info.of_facts ? olt.facts : nullptr, .at = times};
    for (const Table table : info.made_of) {
        const TableState &state = olt.snapshot->state(table);
        now.readings.emplace_back(state.generation, state.read);
    }
    const bool has_restarted = times.started != what.at.started; // and so sysUpTime counts from elsewhere
    const bool is_new_second = times.now / 1000 != what.at.now / 1000;
    if (what.part && !has_restarted && now.name == what.name && now.readings == what.readings &&
        now.facts == what.facts && !(info.of_time && is_new_second))
        return false;
    size_t width = 0;
    for (const IndexKind &kind : info.index)
        width += kind.width;
    const auto part = std::make_shared<Part>(width, info.columns.size());
    info.make(*part, {olt, times, has_restarted ? nullptr : what.part.get()});
    now.part = part;
    what = std::move(now);
    return true;
}

void Mib::add_interface_scalars(std::vector<ObjectTable> &tables, const Times &times)
{
    const auto table = std::ranges::find(tables, if_entry, &ObjectTable::entry);
    Oid now;
    for (const auto &part : table->parts)
        for (size_t row = 0; row < part->rows(); ++row)
            now.push_back(part->index_of(row)[0]);
    if (now != std::exchange(interfaces, now)) interfaces_changed = times.now;
    tables.push_back(scalar(if_number, "ifNumber", Type::integer, now.size()));
    tables.push_back(
        scalar(if_table_last_change, "ifTableLastChange", Type::time_ticks, time_ticks(interfaces_changed, times)));
    std::ranges::sort(tables, OidLess(), &ObjectTable::entry);
}

std::shared_ptr<const Objects> Mib::objects(std::span<const Source> olts, const Times &times)
{
    bool is_different = !latest;
    for (size_t table = 0; table < infos.size(); ++table) {
        std::map<uint32_t, Made> kept;
        for (const Source &olt : olts) {
            Made &what = kept[olt.index];
            if (auto before = made[table].extract(olt.index)) what = std::move(before.mapped());
            is_different |= make(*infos[table], olt, times, what);
        }
        is_different |= !made[table].empty(); // of OLTs that are gone
        made[table] = std::move(kept);
    }
    if (!is_different) return latest;

    std::vector<ObjectTable> tables;
    for (size_t table = 0; table < infos.size(); ++table) {
        tables.push_back({entry_of(*infos[table], settings), infos[table]->columns, {}});
        for (const auto &[index, what] : made[table])
            if (what.part->rows() > 0) tables.back().parts.push_back(what.part);
    }
    if (settings.standard_tables) add_interface_scalars(tables, times);
    latest = std::make_shared<const Objects>(std::move(tables), regions_of(infos, settings));
    return latest;
}

} // namespace front::snmp
