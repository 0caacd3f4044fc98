#include "snmp/core/part.h"

#include <algorithm>

namespace front::snmp
{

bool is_below(OidView oid, OidView top)
{
    return oid.size() >= top.size() && std::ranges::equal(oid.first(top.size()), top);
}

int compare(OidView one, OidView other)
{
    const auto [left, right] = std::ranges::mismatch(one, other);
    if (left != one.end() && right != other.end()) return *left < *right ? -1 : 1;
    return (left != one.end()) - (right != other.end());
}

bool Part::add_row(OidView index)
{
    if (rows() > 0 && compare(index_of(rows() - 1), index) >= 0) return false;
    indexes.insert(indexes.end(), index.begin(), index.end());
    ++count;
    return true;
}

void Part::put(size_t column, const Item &item)
{
    if (!item.present) return;
    const auto length = static_cast<uint32_t>(std::min(item.octets.size(), longest_text));
    Cell cell{static_cast<uint32_t>(rows() - 1), length, item.number};
    if (length > 0) {
        cell.number = texts.size();
        texts.append(item.octets, 0, length);
    }
    cells[column].push_back(cell);
}

std::optional<size_t> Part::find(size_t column, OidView index, bool include) const
{
    const std::vector<Cell> &in = cells[column];
    const auto found = std::ranges::partition_point(in, [&](const Cell &cell) {
        const int order = compare(index_of(cell.row), index);
        return order < 0 || (order == 0 && !include);
    });
    if (found == in.end()) return std::nullopt;
    return found - in.begin();
}

Value Part::value(size_t column, size_t number, Type type) const
{
    const Cell &cell = cells[column][number];
    switch (type) {
    case Type::octets:
    case Type::ip_address:
        return {.type = type, .octets = texts.substr(cell.length > 0 ? cell.number : 0, cell.length)};
    case Type::oid:
        return {.type = type, .oid = {0, 0}}; // what has no identifier of its own; there is no other
    default:
        return {.type = type, .number = cell.number};
    }
}

std::optional<Value> Part::at(size_t column, OidView index, Type type) const
{
    const auto cell = find(column, index, true);
    if (!cell || compare(index_of_cell(column, *cell), index) != 0) return std::nullopt;
    return value(column, *cell, type);
}

} // namespace front::snmp
