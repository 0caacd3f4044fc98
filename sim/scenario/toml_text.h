// TOML texts are read into values that know where they stand, and values are written as texts.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace ponsim
{

struct TomlValue;
using TomlArray = std::vector<TomlValue>;
using TomlTable = std::map<std::string, TomlValue>;

// A value of another kind, such as a date, holds std::monostate.
struct TomlValue {
    std::shared_ptr<const std::string> file; // its name
    uint32_t line;
    uint32_t column;
    std::variant<std::monostate, bool, int64_t, double, std::string, TomlArray, TomlTable> value;

    // Returns null when the value is no table.
    const TomlTable *table() const { return std::get_if<TomlTable>(&value); }
    const TomlArray *array() const { return std::get_if<TomlArray>(&value); }
};

class TomlError : public std::runtime_error
{
public:
    TomlError(uint32_t at, const std::string &reason) : std::runtime_error(reason), line(at) {}

    const uint32_t line;
};

// Returns the table of a file's text. Throws TomlError.
TomlValue read_toml(std::string_view text, const std::string &file);

// Returns a text of the table. The same table gives the same text. Throws std::logic_error when there is a value that
// holds std::monostate.
std::string write_toml(const TomlTable &table);

} // namespace ponsim
