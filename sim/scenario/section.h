// A Section is a table of a scenario that is read key by key.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/base/time.h"
#include "scenario/keys.h"
#include "scenario/toml_text.h"

namespace ponsim
{

// Writes a value as errors do.
std::string describe(const TomlValue &value);
// Returns what the unknown word may have been meant to be, to be put behind an error.
std::string hint(std::string_view unknown, std::span<const std::string> known);

// Throws a ScenarioError with the file and the line of a value.
[[noreturn]] void fail_at(const TomlValue &at, const std::string &reason);

// Every function throws ScenarioError when the value at the key is not what is asked for, and std::logic_error when the
// key is none that the table may have.
class Section
{
public:
    // Table and keys must outlive the section.
    Section(const TomlValue &table, const Keys &keys);

    // Reports the first key in the file that the table, or a table in it, may not have.
    void check_keys() const;

    bool has(const std::string &key) const { return find(key) != nullptr; }
    uint32_t line() const { return value.line; }

    // Returns no number when the key is missing.
    std::optional<uint64_t> number(const std::string &key, uint64_t least, uint64_t greatest) const;
    uint32_t number_or(const std::string &key, uint32_t least, uint32_t greatest, uint32_t otherwise) const;
    bool flag_or(const std::string &key, bool otherwise) const;
    // Reads UTF-8 without control characters.
    std::optional<std::string> text(const std::string &key, size_t least, size_t most) const;
    // Reads at most 32 letters, digits, '-', '_' and '.', of which the first is a letter or a digit.
    std::optional<std::string> name(const std::string &key) const;
    std::string needed_name(const std::string &key) const;
    // Reads one of the words and returns its index.
    size_t choice_or(const std::string &key, std::span<const std::string_view> words, size_t otherwise) const;
    // Reads seconds, or a text such as "1h 30min".
    std::optional<ModelTime> time(const std::string &key) const;
    // Reads a number, or a text of numbers and ranges such as "1-4,7".
    std::vector<uint32_t> numbers(const std::string &key, uint32_t least, uint32_t greatest) const;
    // Returns the value as it is written. Returns null when the key is missing.
    const TomlValue *written(const std::string &key) const { return find(key); }
    // Returns the values of a table whose keys are free. Returns none when the key is missing.
    const TomlTable &members(const std::string &key) const;
    // Returns the tables of an array. Returns none when the key is missing.
    std::vector<Section> tables(const std::string &key) const;
    // Returns the tables in a table, with their names.
    std::vector<std::pair<std::string, Section>> named_tables(const std::string &key) const;

    // Reports the line of the key or, when it is missing, the line of the table.
    [[noreturn]] void fail(const std::string &key, const std::string &reason) const;
    [[noreturn]] void fail_unknown(const std::string &key, const std::string &what, const std::string &name,
                                   std::span<const std::string> known) const;
    // Reports that the table should have the key, or another value at the key.
    [[noreturn]] void fail_expected(const std::string &key, const std::string &expected) const;

    const std::string &file_name() const { return *value.file; }

private:
    const TomlTable &table() const { return std::get<TomlTable>(value.value); }
    // Returns null when the key is missing.
    const TomlValue *find(const std::string &key) const;
    static void check_name(const TomlValue &at, const std::string &key, const std::string &text);

    const TomlValue &value;
    const Keys &keys;
};

} // namespace ponsim
