#include "snmp/core/objects.h"

#include <algorithm>

namespace front::snmp
{
namespace
{

// Returns the first part that has a row behind this index, or with it.
auto part_of(const ObjectTable &table, OidView index)
{
    return std::ranges::partition_point(
        table.parts, [&](const auto &part) { return compare(part->index_of(part->rows() - 1), index) < 0; });
}

Binding binding_of(const ObjectTable &table, size_t column, const Part &part, size_t cell)
{
    const ColumnKind &kind = table.columns[column];
    const OidView index = part.index_of_cell(column, cell);
    Oid name;
    name.reserve(table.entry.size() + 1 + index.size());
    name = table.entry;
    name.push_back(kind.number);
    name.insert(name.end(), index.begin(), index.end());
    return {std::move(name), part.value(column, cell, kind.type)};
}

// Returns the first instance of a column whose index is behind this one or, where that is included, is this one.
std::optional<Binding> next_in_column(const ObjectTable &table, size_t column, OidView index, bool include)
{
    for (auto part = part_of(table, index); part != table.parts.end(); ++part)
        if (const auto cell = (*part)->find(column, index, include)) return binding_of(table, column, **part, *cell);
    return std::nullopt;
}

std::optional<Binding> next_in(const ObjectTable &table, OidView after, bool include)
{
    OidView below; // of the entry
    if (is_below(after, table.entry)) below = after.subspan(table.entry.size());
    size_t column = 0;
    if (!below.empty()) {
        const auto found = std::ranges::lower_bound(table.columns, below[0], {}, &ColumnKind::number);
        column = static_cast<size_t>(found - table.columns.begin());
        if (found == table.columns.end() || found->number != below[0]) below = {};
    }
    const OidView index = below.empty() ? below : below.subspan(1);
    for (size_t first = column; column < table.columns.size(); ++column)
        if (auto found = next_in_column(table, column, column == first ? index : OidView(), include)) return found;
    return std::nullopt;
}

} // namespace

const ObjectTable *Objects::table_of(OidView oid) const
{
    const auto behind =
        std::ranges::partition_point(tables, [&](const ObjectTable &table) { return compare(table.entry, oid) <= 0; });
    if (behind == tables.begin() || !is_below(oid, (behind - 1)->entry)) return nullptr;
    return &*(behind - 1);
}

bool Objects::has_object(OidView oid) const
{
    const ObjectTable *const table = table_of(oid);
    return table && oid.size() > table->entry.size() &&
           std::ranges::binary_search(table->columns, oid[table->entry.size()], {}, &ColumnKind::number);
}

std::optional<Value> Objects::get(OidView oid) const
{
    std::optional<Binding> found = next(oid, true);
    if (!found || compare(found->name, oid) != 0) return std::nullopt;
    return std::move(found->value);
}

std::optional<Binding> Objects::next(OidView after, bool include, OidView end) const
{
    // Tables before the last one that begins before `after` have nothing behind it.
    auto table =
        std::ranges::partition_point(tables, [&](const ObjectTable &one) { return compare(one.entry, after) <= 0; });
    if (table != tables.begin() && is_below(after, (table - 1)->entry)) --table;
    for (; table != tables.end(); ++table) {
        if (!end.empty() && compare(table->entry, end) >= 0) break;
        std::optional<Binding> found = next_in(*table, after, include);
        if (!found) continue;
        if (!end.empty() && compare(found->name, end) >= 0) break;
        return found;
    }
    return std::nullopt;
}

} // namespace front::snmp
