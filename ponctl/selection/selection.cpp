#include "selection/selection.h"

#include <algorithm>
#include <numeric>
#include <optional>

#include "call/codec/values.h"
#include "text/words.h"

namespace ponctl
{
namespace
{

struct SortKey {
    size_t column;
    bool is_descending;
};

// Returns whether a row comes before another one by this key. Empty cells come last in either order.
bool comes_before(const ListCell &cell, const ListCell &other, const ListColumn &column, bool is_descending)
{
    if (!cell || !other) return cell && !other;
    const std::string &first = is_descending ? *other : *cell, &second = is_descending ? *cell : *other;
    return has_numbers(column) ? cell_number(first) < cell_number(second) : first < second;
}

} // namespace

Selected select(const Selection &selection, std::span<const ListColumn> columns,
                std::span<const std::vector<ListCell>> rows, const Where::Clock &clock)
{
    Selected selected;
    std::optional<Where> where;
    if (!selection.where.empty()) where.emplace(selection.where, columns, clock);
    for (size_t row = 0; row < rows.size(); ++row)
        if (!where || where->wants(rows[row])) selected.rows.push_back(row);

    std::vector<SortKey> keys;
    if (!selection.sort.empty())
        for (const std::string &word : text::split(selection.sort, ',')) {
            const bool is_descending = word.starts_with('-');
            keys.push_back({column_number("--sort", word.substr(is_descending ? 1 : 0), columns), is_descending});
        }
    for (auto key = keys.rbegin(); key != keys.rend(); ++key)
        std::ranges::stable_sort(selected.rows, [&](size_t one, size_t other) {
            return comes_before(rows[one][key->column], rows[other][key->column], columns[key->column],
                                key->is_descending);
        });

    if (!selection.limit.empty()) {
        const size_t most = call::parse_number("--limit", selection.limit);
        selected.rows.resize(std::min(selected.rows.size(), most));
    }
    if (selection.columns.empty()) {
        selected.columns.resize(columns.size());
        std::iota(selected.columns.begin(), selected.columns.end(), size_t{0});
    } else {
        for (const std::string &word : text::split(selection.columns, ','))
            selected.columns.push_back(column_number("--columns", word, columns));
    }
    return selected;
}

} // namespace ponctl
