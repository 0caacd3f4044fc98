#include "snmp/core/mib.h"

#include <algorithm>

namespace front::snmp
{
namespace
{

Oid entry_of(const TableInfo &info, const MibSettings &settings)
{
    if (info.is_standard) return info.entry;
    Oid entry = settings.root;
    entry.insert(entry.end(), info.entry.begin(), info.entry.end());
    return entry;
}

// Returns what the master is told of: the root, and each table of a standard.
std::vector<Oid> regions_of(std::span<const TableInfo *const> infos, const MibSettings &settings)
{
    std::vector<Oid> regions{settings.root};
    for (const TableInfo *info : infos)
        if (info->is_standard) regions.emplace_back(info->entry.begin(), info->entry.end() - 1);
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
    latest = std::make_shared<const Objects>(std::move(tables), regions_of(infos, settings));
    return latest;
}

} // namespace front::snmp
