#include "configuration/difference.h"

#include <algorithm>

namespace ponctl
{
namespace
{

using RowsByKey = std::map<std::vector<ConfigCell>, const ConfigRow *>;

RowsByKey rows_of(const Configuration &configuration, const std::string &table)
{
    RowsByKey rows;
    for (const ConfigRow &row : configuration.rows)
        if (row.table == table) rows[configuration.tables.at(table).key_of(row)] = &row;
    return rows;
}

bool is_text(const ConfigCell &cell)
{
    return std::holds_alternative<std::string>(cell);
}

// Returns why the OLT cannot have a row, or an empty text.
std::string problem_of(const Configuration &own, const Configuration &wanted, const ConfigTable &table,
                       const ConfigRow &row)
{
    for (size_t index = 0; index < table.key.size(); ++index) {
        const auto *number = std::get_if<int64_t>(&row.cells[index]);
        if (!number) continue;
        if (table.key[index] == "pon_port" && *number > own.ports)
            return "the OLT has no PON port " + std::to_string(*number);
        // The cages behind those of the PON ports are the uplinks', which have other numbers at another OLT.
        if (table.key[index] == "cage" && own.ports != wanted.ports && *number > std::min(own.ports, wanted.ports))
            return "the OLT has another module in cage " + std::to_string(*number);
    }
    return {};
}

// A row of which a part is configured keeps its state. Returns whether there is a row left.
bool set_configured(ConfigRow &row, const ConfigTable &table, const ConfigRow *wanted)
{
    const std::vector<size_t> configured = table.configured_cells();
    // Without its configured values the row is as if nothing had ever been configured. Only texts have such a value.
    if (!wanted && !std::ranges::all_of(configured, [&row](size_t index) { return is_text(row.cells[index]); }))
        return false;
    for (const size_t index : configured)
        row.cells[index] = wanted ? wanted->cells[index] : ConfigCell(std::string());
    return true;
}

// Returns whether a row of another OLT configures something.
bool configures(const ConfigRow &row, const ConfigTable &table)
{
    return std::ranges::any_of(table.configured_cells(), [&row](size_t index) {
        const auto *text = std::get_if<std::string>(&row.cells[index]);
        return !text || !text->empty();
    });
}

} // namespace

std::vector<ConfigDifference> differences(const Configuration &before, const Configuration &after)
{
    const auto old_settings = settings_of(before), new_settings = settings_of(after);
    std::map<ConfigPlace, ConfigDifference> found;
    for (const auto &[place, setting] : old_settings)
        found[place] = {setting, setting.value, {}};
    for (const auto &[place, setting] : new_settings) {
        ConfigDifference &difference = found[place];
        difference.setting = setting;
        difference.after = setting.value;
    }
    std::vector<ConfigDifference> different;
    for (const auto &[place, difference] : found)
        if (difference.before != difference.after) different.push_back(difference);
    return different;
}

Fitted fitted(const Configuration &own, const Configuration &wanted)
{
    Fitted result;
    for (const auto &[name, table] : own.tables) {
        RowsByKey rows = rows_of(own, name);
        if (table.configured.empty()) {
            for (const auto &[key, row] : rows)
                result.rows.push_back(*row);
            continue;
        }
        const auto theirs = wanted.tables.find(name);
        if (theirs == wanted.tables.end() || theirs->second != table) {
            result.left_out.push_back("table " + name + ": its rows have other values");
            for (const auto &[key, row] : rows)
                result.rows.push_back(*row);
            continue;
        }
        const bool is_all_configured = table.configured.size() == table.values.size();
        RowsByKey coming = rows_of(wanted, name);
        for (auto row = coming.begin(); row != coming.end();) {
            const std::string problem = problem_of(own, wanted, table, *row->second);
            if (!problem.empty() && configures(*row->second, table))
                result.left_out.push_back(name + " " + key_text(table, *row->second) + ": " + problem);
            row = problem.empty() ? std::next(row) : coming.erase(row);
        }
        for (const auto &[key, row] : rows) {
            const auto found = coming.find(key);
            ConfigRow merged = *row;
            const ConfigRow *const there = found == coming.end() ? nullptr : found->second;
            if (is_all_configured ? there != nullptr : set_configured(merged, table, there))
                result.rows.push_back(is_all_configured ? *there : merged);
        }
        for (const auto &[key, row] : coming)
            if (!rows.contains(key) && (is_all_configured || configures(*row, table))) result.rows.push_back(*row);
    }
    for (const auto &[name, table] : wanted.tables)
        if (!table.configured.empty() && !own.tables.contains(name))
            result.left_out.push_back("table " + name + ": the OLT has no such table");
    return result;
}

} // namespace ponctl
