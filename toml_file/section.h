// A Section is a table of a file that is read key by key.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "toml_file/toml.h"

namespace toml_file
{

struct Key;
using Keys = std::vector<Key>;

// A Key with tables stands before an array of tables, each of which may have those keys. When the tables are named, it
// stands before a table of them, and when it is single, before one table.
struct Key {
    std::string name;
    Keys tables = {};
    bool named = false;
    bool single = false; // it stands before one table
};

// Throws std::logic_error when there is no such key.
const Key &key_of(const Keys &keys, const std::string &name);

// This error says what is wrong with a file, and where.
class Error : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Reads the table of a text, which has this name, or of a file. Throws an Error.
Value read_table(std::string_view text, const std::string &name);
Value read_table_file(const std::string &file);

// Writes a value as errors do.
std::string describe(const Value &value);
// Returns what the unknown word may have been meant to be, to be put behind an error.
std::string hint(std::string_view unknown, std::span<const std::string> known);

// Throws an Error with the file and the line of a value.
[[noreturn]] void fail_at(const Value &at, const std::string &reason);

// Every function throws an Error when the value at the key is not what is asked for, and std::logic_error when the
// key is none that the table may have.
class Section
{
public:
    // Table and keys must outlive the section.
    Section(const Value &table, const Keys &keys);

    // Reports the first key in the file that the table, or a table in it, may not have.
    void check_keys() const;

    bool has(const std::string &key) const { return find(key) != nullptr; }
    uint32_t line() const { return value.line; }

    // Returns no number when the key is missing.
    std::optional<uint64_t> number(const std::string &key, uint64_t least, uint64_t greatest) const;
    uint32_t number_or(const std::string &key, uint32_t least, uint32_t greatest, uint32_t otherwise) const;
    // Reads a number with or without a decimal point.
    double decimal_or(const std::string &key, double least, double greatest, double otherwise) const;
    bool flag_or(const std::string &key, bool otherwise) const;
    // Reads UTF-8 without control characters.
    std::optional<std::string> text(const std::string &key, size_t least, size_t most) const;
    // Reads a path that begins at the root. The text is empty when the key is missing.
    std::string path(const std::string &key) const;
    // Reads at most 32 letters, digits, '-', '_' and '.', of which the first is a letter or a digit.
    std::optional<std::string> name(const std::string &key) const;
    std::string needed_name(const std::string &key) const;
    // Reads one of the words and returns its index.
    size_t choice_or(const std::string &key, std::span<const std::string_view> words, size_t otherwise) const;
    // Reads seconds, or a text such as "1h 30min".
    std::optional<uint64_t> time(const std::string &key) const;
    // Reads a number, or a text of numbers and ranges such as "1-4,7".
    std::vector<uint32_t> numbers(const std::string &key, uint32_t least, uint32_t greatest) const;
    // Returns the value as it is written. Returns null when the key is missing.
    const Value *written(const std::string &key) const { return find(key); }
    // Returns the values of a table whose keys are free. Returns none when the key is missing.
    const Table &members(const std::string &key) const;
    // Returns the tables of an array. Returns none when the key is missing.
    std::vector<Section> tables(const std::string &key) const;
    // Returns the table at the key. Returns none when the key is missing.
    std::optional<Section> table(const std::string &key) const;
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
    const Table &members() const { return std::get<Table>(value.value); }
    // Returns null when the key is missing.
    const Value *find(const std::string &key) const;
    static void check_name(const Value &at, const std::string &key, const std::string &text);

    const Value &value;
    const Keys &keys;
};

} // namespace toml_file
