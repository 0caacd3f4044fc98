#include "configuration/difference.h"

#include <algorithm>
#include <map>
#include <set>

#include "text/number.h"

namespace config
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

// Named has what a configuration names elsewhere, and so has to have itself: UNI profiles by their number, and upgrade
// types by their name.
struct Named {
    std::set<std::string> uni_profiles;
    std::map<std::string, std::string> upgrade_types; // with the kind of ONU that each is for

    explicit Named(const Configuration &configuration)
    {
        for (const ConfigRow &row : configuration.rows) {
            const ConfigTable &table = configuration.tables.at(row.table);
            if (command_name_of(table, row) == "BSP_CMD_UNI_PROFILE_SET")
                uni_profiles.insert(key_cell_text(table, row, "idx"));
            if (row.table != "upgrade_type") continue;
            std::string vendor, model;
            for (const auto &[place, setting] : settings_of(table, row)) {
                if (setting.name == "vendor") vendor = setting.value;
                if (setting.name == "model") model = setting.value;
            }
            upgrade_types[key_cell_text(table, row, "name")] = vendor + " " + model;
        }
    }
};

// A Fitting says what an OLT cannot have of a configuration.
class Fitting
{
public:
    Fitting(const Configuration &of_olt, const Configuration &of_file, const AbilitiesOfOnus &known)
        : own(of_olt), wanted(of_file), onus(known), named(of_file)
    {
    }

    // Returns why the OLT cannot have a row, or an empty text.
    std::string problem_of(const ConfigTable &table, const ConfigRow &row) const
    {
        for (size_t index = 0; index < table.key.size(); ++index) {
            const auto *number = std::get_if<int64_t>(&row.cells[index]);
            if (!number) continue;
            if (table.key[index] == "pon_port" && *number > own.ports) return no_port(std::to_string(*number));
            // The cages behind those of the PON ports are the uplinks', which have other numbers at another OLT.
            if (table.key[index] == "cage" && own.ports != wanted.ports && *number > std::min(own.ports, wanted.ports))
                return "the OLT has another module in cage " + std::to_string(*number);
        }
        for (const auto &[place, setting] : settings_of(table, row))
            if (const std::string problem = problem_of(table, row, setting); !problem.empty()) return problem;
        return misfit_of(onus, table, row);
    }

private:
    static std::string no_port(const std::string &port) { return "the OLT has no PON port " + port; }

    std::string problem_of(const ConfigTable &table, const ConfigRow &row, const ConfigSetting &setting) const
    {
        const std::string_view command = command_name_of(table, row);
        if (command == "BSP_CMD_P2P_ENTRY_SET" && setting.name == "to_port" &&
            text::to_number<uint32_t>(setting.value).value_or(0) > own.ports)
            return no_port(setting.value);
        if (command == "BSP_CMD_ONU_PORT_CONFIG_SET" && setting.name == "profile" && setting.value != "0" &&
            wanted.tables.contains("block") && !named.uni_profiles.contains(setting.value))
            return "there is no UNI profile " + setting.value;
        const bool is_type =
            setting.name == "upgrade_type" || (command == "BSP_CMD_UPGRADE_TYPE_BIND_PORT" && setting.name == "name");
        return is_type && wanted.tables.contains("upgrade_type") ? problem_of_type(table, row, setting.value)
                                                                 : std::string();
    }

    std::string problem_of_type(const ConfigTable &table, const ConfigRow &row, const std::string &name) const
    {
        const auto type = named.upgrade_types.find(name);
        if (type == named.upgrade_types.end()) return "there is no upgrade type " + name;
        const auto port = text::to_number<uint32_t>(key_cell_text(table, row, "pon_port"));
        const auto onu = onus.find({port.value_or(0), key_cell_text(table, row, "mac")});
        if (onu == onus.end() || onu->second.kind() == type->second) return {};
        return "the ONU is a " + onu->second.kind() + ", and upgrade type " + name + " is for a " + type->second;
    }

    const Configuration &own, &wanted;
    const AbilitiesOfOnus &onus;
    const Named named;
};

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

Fitted fitted(const Configuration &own, const Configuration &wanted, const AbilitiesOfOnus &onus)
{
    const Fitting fitting(own, wanted, onus);
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
            const std::string problem = fitting.problem_of(table, *row->second);
            if (!problem.empty() && configures(*row->second, table))
                result.left_out.push_back(name + " " + key_text(table, *row->second) + ": " + problem);
            if (!problem.empty())
                if (const auto there = rows.find(row->first); there != rows.end()) row->second = there->second;
            const bool stays = problem.empty() || rows.contains(row->first);
            row = stays ? std::next(row) : coming.erase(row);
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

} // namespace config
