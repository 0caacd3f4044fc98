#include "scenario/composition.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

#include "text/number.h"
#include "toml_file/section.h"

namespace ponsim
{
namespace
{

constexpr size_t deepest_include = 8; // files that can include one another
constexpr size_t most_files = 100;
constexpr char include_key[] = "include";
constexpr char variables_key[] = "variables";

toml_file::Value parse(std::string_view text, const std::string &file)
{
    try {
        return toml_file::read_toml(text, file);
    } catch (const toml_file::SyntaxError &error) {
        throw ScenarioError(file + ':' + std::to_string(error.line) + ": " + error.what());
    }
}

// Refuses dates and times, which are nothing that a scenario has.
void refuse_dates(const toml_file::Value &value)
{
    if (std::holds_alternative<std::monostate>(value.value))
        fail_at(value, "expected no date and no time of day: model time is written as \"1d 2h 30min\"");
    if (const toml_file::Array *array = value.array())
        for (const toml_file::Value &each : *array)
            refuse_dates(each);
    if (const toml_file::Table *table = value.table())
        for (const auto &[key, each] : *table)
            refuse_dates(each);
}

// A Merger joins the tables of files.
class Merger
{
public:
    // Returns the table of a text together with what it includes.
    toml_file::Table read(std::string_view text, const std::string &file, bool is_file)
    {
        const toml_file::Value value = parse(text, file);
        toml_file::Table own = *value.table();
        refuse_dates(value);
        const auto include = own.extract(include_key);
        if (!include) return own;
        if (!is_file) fail_at(include.mapped(), "include: expected in a file, from whose folder files are named");
        const auto folder = std::filesystem::path(file).parent_path();
        within.push_back(std::filesystem::weakly_canonical(file));
        toml_file::Table all;
        for (const auto &[name, at] : names_of(include.mapped()))
            merge(all, included(*at, (folder / name).string()));
        within.pop_back();
        merge(all, std::move(own));
        return all;
    }

private:
    using Name = std::pair<std::string, const toml_file::Value *>;

    static std::vector<Name> names_of(const toml_file::Value &include)
    {
        const char *expected = "include: expected a list of files, as [\"plant.toml\"]";
        if (!include.array()) fail_at(include, expected);
        std::vector<Name> names;
        for (const toml_file::Value &each : *include.array()) {
            const auto *name = std::get_if<std::string>(&each.value);
            if (!name || name->empty()) fail_at(each, expected);
            names.emplace_back(*name, &each);
        }
        return names;
    }

    toml_file::Table included(const toml_file::Value &at, const std::string &file)
    {
        if (std::ranges::count(within, std::filesystem::weakly_canonical(file)) > 0)
            fail_at(at, "include: " + file + " includes itself");
        if (within.size() >= deepest_include)
            fail_at(at,
                    "include: expected at most " + std::to_string(deepest_include) + " files that include one another");
        if (++files > most_files) fail_at(at, "include: expected at most " + std::to_string(most_files) + " files");
        std::string text;
        try {
            text = text_of_file(file);
        } catch (const ScenarioError &error) {
            fail_at(at, std::string("include: ") + error.what());
        }
        return read(text, file, true);
    }

    // Adds a table to what stands before it. Lists become longer. Of two values with a name the later one holds, also
    // in tables of named tables.
    static void merge(toml_file::Table &all, toml_file::Table &&later)
    {
        for (auto &[key, value] : later) {
            const auto earlier = all.find(key);
            if (earlier == all.end()) {
                all.emplace(key, std::move(value));
            } else if (earlier->second.array() && value.array()) {
                auto &list = std::get<toml_file::Array>(earlier->second.value);
                for (toml_file::Value &each : std::get<toml_file::Array>(value.value))
                    list.push_back(std::move(each));
            } else if (earlier->second.table() && value.table()) {
                for (auto &[name, each] : std::get<toml_file::Table>(value.value))
                    std::get<toml_file::Table>(earlier->second.value).insert_or_assign(name, std::move(each));
            } else {
                earlier->second = std::move(value);
            }
        }
    }

    std::vector<std::filesystem::path> within; // the files that are being read, each included by the one before
    size_t files = 0;
};

// The Variables of a scenario stand in its texts as ${name}.
class Variables
{
public:
    Variables(const toml_file::Value &of, const std::vector<Overrides::Variable> &overrides) : values(of)
    {
        if (!values.table()) fail_at(values, "variables: expected a table, found " + describe(values));
        for (const auto &[name, value] : *values.table())
            if (value.array() || value.table())
                fail_at(value, "variables: expected a number, a text, true or false, found " + describe(value));
        for (const Overrides::Variable &each : overrides)
            set(each);
    }

    // Puts the values into all texts. A text that is nothing but a variable becomes its value.
    void put_into(toml_file::Value &value) const
    {
        if (auto *array = std::get_if<toml_file::Array>(&value.value))
            for (toml_file::Value &each : *array)
                put_into(each);
        if (auto *table = std::get_if<toml_file::Table>(&value.value))
            for (auto &[key, each] : *table)
                put_into(each);
        const auto *text = std::get_if<std::string>(&value.value);
        if (!text || text->find("${") == text->npos) return;
        const size_t end = text->find('}');
        if (text->starts_with("${") && end == text->size() - 1)
            value.value = named(value, text->substr(2, end - 2)).value;
        else
            value.value = replaced(value, *text);
    }

private:
    std::vector<std::string> names() const
    {
        std::vector<std::string> all;
        for (const auto &[name, value] : *values.table())
            all.push_back(name);
        return all;
    }

    const toml_file::Value &named(const toml_file::Value &at, const std::string &name) const
    {
        const auto found = values.table()->find(name);
        if (found == values.table()->end())
            fail_at(at, "there is no variable " + name + toml_file::hint(name, names()));
        return found->second;
    }

    std::string replaced(const toml_file::Value &at, std::string_view text) const
    {
        std::string all;
        for (size_t begin = text.find("${"); begin != text.npos; begin = text.find("${")) {
            const size_t end = text.find('}', begin);
            if (end == text.npos) fail_at(at, "expected } behind the name of a variable");
            const toml_file::Value &value = named(at, std::string(text.substr(begin + 2, end - begin - 2)));
            all += text.substr(0, begin);
            const auto *own = std::get_if<std::string>(&value.value);
            if (std::holds_alternative<double>(value.value))
                fail_at(at, "expected no number with a decimal point in a text");
            all += own ? *own : describe(value);
            text.remove_prefix(end + 1);
        }
        return all += text;
    }

    // Gives a variable another value, which is of the kind of the value in the text.
    void set(const Overrides::Variable &wanted)
    {
        auto &table = std::get<toml_file::Table>(values.value);
        const auto found = table.find(wanted.name);
        if (found == table.end())
            throw ScenarioError("--set: there is no variable " + wanted.name + toml_file::hint(wanted.name, names()));
        auto &value = found->second.value;
        const auto number = text::to_number<int64_t>(wanted.value);
        const auto real = text::to_real(wanted.value);
        const bool is_flag = wanted.value == "true" || wanted.value == "false";
        if (std::holds_alternative<std::string>(value))
            value = wanted.value;
        else if (std::holds_alternative<bool>(value) && is_flag)
            value = wanted.value == "true";
        else if (std::holds_alternative<int64_t>(value) && number)
            value = *number;
        else if (std::holds_alternative<double>(value) && real)
            value = *real;
        else
            throw ScenarioError("--set: the variable " + wanted.name + " is " + describe(found->second) +
                                " in the scenario, and cannot be " + wanted.value);
    }

    toml_file::Value values;
};

} // namespace

std::string text_of_file(const std::string &file)
{
    std::ifstream in(file, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(in), {}};
    if (!in) throw ScenarioError(file + ": cannot be read: " + std::strerror(errno));
    return text;
}

Composition compose(std::string_view text, const std::string &file, bool is_file, const Overrides &overrides)
{
    const toml_file::Value own = parse(text, file);
    const bool is_composed = own.table()->contains(include_key) || own.table()->contains(variables_key) ||
                             overrides.seed || !overrides.variables.empty();
    if (!is_composed) return {own, std::string(text)};
    toml_file::Value all{own.file, own.line, own.column, Merger().read(text, file, is_file)};
    auto &table = std::get<toml_file::Table>(all.value);
    if (const auto variables = table.extract(variables_key))
        Variables(variables.mapped(), overrides.variables).put_into(all);
    else if (!overrides.variables.empty())
        throw ScenarioError("--set: " + file + " has no variables");
    if (overrides.seed)
        table.insert_or_assign("seed",
                               toml_file::Value{own.file, own.line, own.column, static_cast<int64_t>(*overrides.seed)});
    return {all, toml_file::write_toml(table)};
}

} // namespace ponsim
