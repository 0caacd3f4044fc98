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

namespace toml_file
{

struct Value;
using Array = std::vector<Value>;
using Table = std::map<std::string, Value>;

// A value of another kind, such as a date, holds std::monostate.
struct Value {
    std::shared_ptr<const std::string> file; // its name
    uint32_t line;
    uint32_t column;
    std::variant<std::monostate, bool, int64_t, double, std::string, Array, Table> value;

    // Returns null when the value is no table.
    const Table *table() const { return std::get_if<Table>(&value); }
    const Array *array() const { return std::get_if<Array>(&value); }
};

class SyntaxError : public std::runtime_error
{
public:
    SyntaxError(uint32_t at, const std::string &reason) : std::runtime_error(reason), line(at) {}

    const uint32_t line;
};

// Returns the table of a file's text. Throws SyntaxError.
Value read_toml(std::string_view text, const std::string &file);

// Returns a text of the table. The same table gives the same text. Throws std::logic_error when there is a value that
// holds std::monostate.
std::string write_toml(const Table &table);

} // namespace toml_file
