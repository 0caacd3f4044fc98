// TOML texts are read into values that know where they stand.
#pragma once

#include <cstdint>
#include <map>
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
    uint32_t line;
    uint32_t column;
    std::variant<std::monostate, bool, int64_t, double, std::string, TomlArray, TomlTable> value;
};

class TomlError : public std::runtime_error
{
public:
    TomlError(uint32_t at, const std::string &reason) : std::runtime_error(reason), line(at) {}

    const uint32_t line;
};

// Returns the text's table. Throws TomlError.
TomlValue read_toml(std::string_view text);

} // namespace ponsim
