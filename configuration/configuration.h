// This file reads the text of an OLT's configuration, as "config save" writes it. The first line of the text names the
// values of the rows behind it and says which of them somebody configures; the others are the state of the OLT.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <variant>
#include <vector>

#include "call/codec/errors.h"

namespace config
{

// Errors and values are those of the call library.
using namespace call;

struct ConfigBytes {
    std::string bytes;

    auto operator<=>(const ConfigBytes &) const = default;
};

// A ConfigCell is a value of a row.
using ConfigCell = std::variant<int64_t, std::string, ConfigBytes>;

struct ConfigRow {
    std::string table;
    std::vector<ConfigCell> cells; // the key, and the values behind it
};

// A ConfigTable names what the rows of a table hold.
struct ConfigTable {
    std::vector<std::string> key, values, configured;

    // Returns the cells of a row that are its key.
    std::vector<ConfigCell> key_of(const ConfigRow &row) const;
    // Returns which of the values are configured, by their position in the row.
    std::vector<size_t> configured_cells() const;
    bool operator==(const ConfigTable &) const = default;
};

class Configuration
{
public:
    // Throws a UsageError that starts with the name when the text is not a configuration, or does not name its values.
    Configuration(const std::string &name, const std::string &text);

    uint32_t ports = 0;
    std::string first_line;
    std::string olt; // what makes it this OLT, and the version of the rows
    std::map<std::string, ConfigTable> tables;
    std::vector<ConfigRow> rows;
};

// Returns the text of a configuration of these rows, for the OLT whose first line this is.
std::string text_of(const std::string &first_line, const std::vector<ConfigRow> &rows);

// A ConfigSetting is one configured value as people read it: "binding 1/5 description = shop".
struct ConfigSetting {
    std::string table, key, name, value;
    bool is_secret = false; // the value is a password

    // Returns the setting with this value.
    std::string line(const std::string &shown) const
    {
        return table + (key.empty() ? "" : " " + key) + " " + name + " = " + shown;
    }
};
// A ConfigPlace puts settings in order: by table, by key with numbers as numbers, and by the place in the row.
using ConfigPlace = std::tuple<std::string, std::vector<ConfigCell>, size_t>;

// Returns all that is configured. Empty texts are left out, because they configure nothing.
std::map<ConfigPlace, ConfigSetting> settings_of(const Configuration &configuration);

// Returns what a row configures, each value at its place in the row.
std::map<size_t, ConfigSetting> settings_of(const ConfigTable &table, const ConfigRow &row);

// Returns the cell of a row in this column of its key, as people read it. The text is empty when there is none.
std::string key_cell_text(const ConfigTable &table, const ConfigRow &row, std::string_view column);

// Returns the name of the command by whose code a row is kept. The name is empty when it is kept by none that the
// catalogue knows.
std::string_view command_name_of(const ConfigTable &table, const ConfigRow &row);

// Returns a row's key as people write it: "1/5" for an ONU.
std::string key_text(const ConfigTable &table, const ConfigRow &row);

} // namespace config
