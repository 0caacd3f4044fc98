// A table of a scenario that is read key by key: what it may have is what is asked for.
#pragma once

#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/base/time.h"
#include "scenario/toml_text.h"

namespace ponsim
{

// The longest time that a scenario can speak of: ten years.
inline constexpr ModelTime longest_time = 10ull * 365 * 24 * 3600 * ms_per_second;

// Every function throws ScenarioError where the table has something else at the key than what is asked for.
class Section
{
public:
    // Both must outlive it.
    Section(const std::string &file, const TomlValue &table);

    bool has(const std::string &key) const { return table().contains(key); }
    uint32_t line() const { return value.line; }

    // None where the key is not there.
    std::optional<uint64_t> number(const std::string &key, uint64_t least, uint64_t greatest);
    uint32_t number_or(const std::string &key, uint32_t least, uint32_t greatest, uint32_t otherwise);
    bool flag_or(const std::string &key, bool otherwise);
    // UTF-8 without control characters.
    std::optional<std::string> text(const std::string &key, size_t least, size_t most);
    // Letters, digits, '-', '_' and '.', with a letter or a digit at first: at most 32.
    std::optional<std::string> name(const std::string &key);
    std::string needed_name(const std::string &key);
    // One of the words; its index.
    size_t choice_or(const std::string &key, std::span<const std::string_view> words, size_t otherwise);
    // Seconds, or a text as "1h 30min".
    std::optional<ModelTime> time(const std::string &key);
    // A number, or a text of numbers and ranges as "1-4,7".
    std::vector<uint32_t> numbers(const std::string &key, uint32_t least, uint32_t greatest);
    // Of an array of tables; none where the key is not there.
    std::vector<Section> tables(const std::string &key);
    // Of a table of tables, with their names.
    std::vector<std::pair<std::string, Section>> named_tables(const std::string &key);

    // To be called when all keys that there can be were asked for.
    void end() const;

    // At the line of the key or, where it is not there, of the table.
    [[noreturn]] void fail(const std::string &key, const std::string &reason) const;
    [[noreturn]] void fail_unknown(const std::string &key, const std::string &what, const std::string &name,
                                   std::span<const std::string> known) const;

private:
    const TomlTable &table() const { return std::get<TomlTable>(value.value); }
    // Null where it is not there.
    const TomlValue *ask(const std::string &key);
    [[noreturn]] void fail_expected(const std::string &key, const std::string &expected) const;
    void check_name(uint32_t at, const std::string &key, const std::string &text) const;
    [[noreturn]] void fail_at(uint32_t at, const std::string &reason) const;

    const std::string &file;
    const TomlValue &value;
    std::set<std::string> asked;
};

} // namespace ponsim
