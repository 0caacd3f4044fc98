#include "toml_file/section.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <tuple>

#include "text/utf8.h"
#include "text/words.h"
#include "text/written.h"

namespace toml_file
{
namespace
{

// An Unknown is a key that its table may not have.
struct Unknown {
    std::string key;
    const Value *value;
    const Keys *keys; // those that the table may have
};

// Adds the keys that the table and the tables in it may not have. What is no table is left to whoever reads it.
void add_unknown(const Value &value, const Keys &keys, std::vector<Unknown> &unknown)
{
    const auto *table = std::get_if<Table>(&value.value);
    if (!table) return;
    for (const auto &[name, member] : *table) {
        const auto key = std::ranges::find(keys, name, &Key::name);
        const auto *named = std::get_if<Table>(&member.value);
        const auto *array = std::get_if<Array>(&member.value);
        if (key == keys.end()) {
            unknown.push_back({name, &member, &keys});
        } else if (named && key->named) {
            for (const auto &[own_name, each] : *named)
                add_unknown(each, key->tables, unknown);
        } else if (named && key->single) {
            add_unknown(member, key->tables, unknown);
        } else if (array && !key->named) {
            for (const Value &each : *array)
                add_unknown(each, key->tables, unknown);
        }
    }
}

} // namespace

Value read_table(std::string_view text, const std::string &name)
{
    try {
        return read_toml(text, name);
    } catch (const SyntaxError &error) {
        throw Error(name + ":" + std::to_string(error.line) + ": " + error.what());
    }
}

Value read_table_file(const std::string &file)
{
    std::ifstream stream(file);
    std::ostringstream text;
    if (stream.peek() != std::ifstream::traits_type::eof()) text << stream.rdbuf();
    if (!stream.is_open() || stream.bad() || text.bad()) throw Error(file + ": cannot be read");
    return read_table(text.str(), file);
}

const Key &key_of(const Keys &keys, const std::string &name)
{
    const auto found = std::ranges::find(keys, name, &Key::name);
    if (found == keys.end()) throw std::logic_error("tables of scenarios have no key " + name);
    return *found;
}

std::string hint(std::string_view unknown, std::span<const std::string> known)
{
    const std::vector<std::string_view> names(known.begin(), known.end());
    const std::string near = text::suggestion(unknown, names);
    if (!near.empty() || known.empty()) return near;
    return "; known are " + text::join(names);
}

std::string describe(const Value &value)
{
    if (const auto *flag = std::get_if<bool>(&value.value)) return *flag ? "true" : "false";
    if (const auto *number = std::get_if<int64_t>(&value.value)) return std::to_string(*number);
    if (const auto *text = std::get_if<std::string>(&value.value)) return '"' + *text + '"';
    if (std::holds_alternative<double>(value.value)) return "a number with a decimal point";
    if (std::holds_alternative<Array>(value.value)) return "an array";
    if (std::holds_alternative<Table>(value.value)) return "a table";
    return "a date or a time";
}

Section::Section(const Value &of, const Keys &allowed) : value(of), keys(allowed)
{
    if (!std::holds_alternative<Table>(value.value)) fail_at(value, "expected a table, found " + describe(value));
}

void fail_at(const Value &at, const std::string &reason)
{
    throw Error(*at.file + ":" + std::to_string(at.line) + ": " + reason);
}

void Section::fail(const std::string &key, const std::string &reason) const
{
    const auto found = members().find(key);
    fail_at(found == members().end() ? value : found->second, key + ": " + reason);
}

void Section::fail_expected(const std::string &key, const std::string &expected) const
{
    const auto found = members().find(key);
    fail(key, "expected " + expected + (found == members().end() ? "" : ", found " + describe(found->second)));
}

void Section::fail_unknown(const std::string &key, const std::string &what, const std::string &unknown,
                           std::span<const std::string> known) const
{
    fail(key, "there is no " + what + " " + unknown + hint(unknown, known));
}

const Value *Section::find(const std::string &key) const
{
    static_cast<void>(key_of(keys, key));
    const auto found = members().find(key);
    return found == members().end() ? nullptr : &found->second;
}

std::optional<uint64_t> Section::number(const std::string &key, uint64_t least, uint64_t greatest) const
{
    const Value *found = find(key);
    if (!found) return std::nullopt;
    const auto *number = std::get_if<int64_t>(&found->value);
    if (!number || *number < 0 || static_cast<uint64_t>(*number) < least || static_cast<uint64_t>(*number) > greatest)
        fail_expected(key, "a number from " + std::to_string(least) + " to " + std::to_string(greatest));
    return static_cast<uint64_t>(*number);
}

uint32_t Section::number_or(const std::string &key, uint32_t least, uint32_t greatest, uint32_t otherwise) const
{
    return static_cast<uint32_t>(number(key, least, greatest).value_or(otherwise));
}

double Section::decimal_or(const std::string &key, double least, double greatest, double otherwise) const
{
    const Value *found = find(key);
    if (!found) return otherwise;
    const auto *whole = std::get_if<int64_t>(&found->value);
    const auto *decimal = std::get_if<double>(&found->value);
    const double number = whole ? static_cast<double>(*whole) : decimal ? *decimal : least - 1;
    if (!(number >= least && number <= greatest)) {
        char bounds[64];
        std::snprintf(bounds, sizeof bounds, "a number from %g to %g", least, greatest);
        fail_expected(key, bounds);
    }
    return number;
}

bool Section::flag_or(const std::string &key, bool otherwise) const
{
    const Value *found = find(key);
    if (!found) return otherwise;
    const auto *flag = std::get_if<bool>(&found->value);
    if (!flag) fail_expected(key, "true or false");
    return *flag;
}

std::optional<std::string> Section::text(const std::string &key, size_t least, size_t most) const
{
    const Value *found = find(key);
    if (!found) return std::nullopt;
    const auto *text = std::get_if<std::string>(&found->value);
    if (!text || text->size() < least || text->size() > most || !text::is_printable(*text))
        fail_expected(key, "a text of " + std::to_string(least) + " to " + std::to_string(most) +
                               " bytes without control characters");
    return *text;
}

std::string Section::path(const std::string &key) const
{
    constexpr size_t longest = 4096;
    std::string path = text(key, 1, longest).value_or("");
    if (!path.empty() && path[0] != '/') fail_expected(key, "a path from the root");
    return path;
}

void Section::check_name(const Value &at, const std::string &key, const std::string &text)
{
    if (!text::is_name(text))
        fail_at(at, key + ": expected a name of at most " + std::to_string(text::longest_name) +
                        " letters, digits, '-', '_' and '.', found \"" + text + '"');
}

std::optional<std::string> Section::name(const std::string &key) const
{
    const Value *found = find(key);
    if (!found) return std::nullopt;
    const auto *text = std::get_if<std::string>(&found->value);
    if (!text) fail_expected(key, "a name");
    check_name(*found, key, *text);
    return *text;
}

std::string Section::needed_name(const std::string &key) const
{
    std::optional<std::string> found = name(key);
    if (!found) fail_expected(key, "a name");
    return *found;
}

size_t Section::choice_or(const std::string &key, std::span<const std::string_view> words, size_t otherwise) const
{
    const Value *found = find(key);
    if (!found) return otherwise;
    const auto *text = std::get_if<std::string>(&found->value);
    const auto word = text ? std::ranges::find(words, *text) : words.end();
    if (word != words.end()) return static_cast<size_t>(word - words.begin());
    std::string expected;
    for (const std::string_view &each : words) {
        if (!expected.empty()) expected += &each == &words.back() ? " or " : ", ";
        expected += '"' + std::string(each) + '"';
    }
    fail_expected(key, expected);
}

std::optional<uint64_t> Section::time(const std::string &key) const
{
    const Value *found = find(key);
    if (!found) return std::nullopt;
    std::optional<uint64_t> time;
    if (const auto *number = std::get_if<int64_t>(&found->value)) time = text::read_time(std::to_string(*number) + "s");
    if (const auto *text = std::get_if<std::string>(&found->value)) time = text::read_time(*text);
    if (!time) fail_expected(key, "seconds, or a time as \"1d 2h 30min 5s\", of at most ten years");
    return time;
}

std::vector<uint32_t> Section::numbers(const std::string &key, uint32_t least, uint32_t greatest) const
{
    const Value *found = find(key);
    const std::string expected = "numbers from " + std::to_string(least) + " to " + std::to_string(greatest) +
                                 ", each once, as \"" + std::to_string(least) + "-" + std::to_string(greatest) + "\"";
    const auto *text = found ? std::get_if<std::string>(&found->value) : nullptr;
    const auto read = text ? text::read_numbers(*text, least, greatest) : std::nullopt;
    if (!read) fail_expected(key, expected);
    return {read->begin(), read->end()};
}

const Table &Section::members(const std::string &key) const
{
    static const Table none;
    const Value *found = find(key);
    if (!found) return none;
    const auto *table = std::get_if<Table>(&found->value);
    if (!table) fail_expected(key, "a table");
    return *table;
}

std::vector<Section> Section::tables(const std::string &key) const
{
    const Keys &below = key_of(keys, key).tables;
    const Value *found = find(key);
    if (!found) return {};
    const auto *array = std::get_if<Array>(&found->value);
    if (!array) fail_expected(key, "tables with [[double brackets]]");
    std::vector<Section> sections;
    for (const Value &each : *array)
        sections.emplace_back(each, below);
    return sections;
}

std::optional<Section> Section::table(const std::string &key) const
{
    const Keys &below = key_of(keys, key).tables;
    const Value *found = find(key);
    if (!found) return std::nullopt;
    if (!found->table()) fail_expected(key, "a table, as [" + key + "]");
    return Section(*found, below);
}

std::vector<std::pair<std::string, Section>> Section::named_tables(const std::string &key) const
{
    const Keys &below = key_of(keys, key).tables;
    const Value *found = find(key);
    if (!found) return {};
    const auto *members = std::get_if<Table>(&found->value);
    if (!members) fail_expected(key, "tables with names, as [" + key + ".NAME]");
    std::vector<std::pair<std::string, Section>> sections;
    for (const auto &[name, member] : *members) {
        check_name(member, key, name);
        sections.emplace_back(name, Section(member, below));
    }
    return sections;
}

void Section::check_keys() const
{
    std::vector<Unknown> unknown;
    add_unknown(value, keys, unknown);
    if (unknown.empty()) return;
    const Unknown &first = *std::ranges::min_element(unknown, {}, [](const Unknown &each) {
        return std::tuple(*each.value->file, each.value->line, each.value->column);
    });
    std::vector<std::string> known;
    for (const Key &key : *first.keys)
        known.push_back(key.name);
    fail_at(*first.value, first.key + ": an unknown key" + hint(first.key, known));
}

} // namespace toml_file
