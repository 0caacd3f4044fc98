#include "output/csv.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include <rapidjson/document.h>

#include "output/exit_code.h"
#include "output/output.h"
#include "text/utf8.h"

namespace ponctl
{
namespace
{

using Value = rapidjson::Value;
// A Row has values by their names, in order.
using Row = std::vector<std::pair<std::string, std::string>>;

std::string text_of(const Value &value)
{
    if (value.IsString()) return {value.GetString(), value.GetStringLength()};
    if (value.IsBool()) return value.GetBool() ? "true" : "false";
    return {};
}

bool is_structure(const Value &value)
{
    return value.IsObject() || value.IsArray();
}

bool is_list_of_objects(const Value &value)
{
    return value.IsArray() && !value.Empty() && value[0].IsObject();
}

std::string name_in(const std::string &outer, const std::string &name)
{
    return outer.empty() ? name : outer + "." + name;
}

// A Flattening makes rows of values, of which the names and texts have most_bytes at most. Names of outer objects are
// repeated in the names of their members.
class Flattening
{
public:
    void flatten(const Value &value, const std::string &name, Row &row)
    {
        count(name.size());
        if (value.IsObject()) {
            for (const auto &member : value.GetObject())
                flatten(member.value, name_in(name, text_of(member.name)), row);
        } else if (value.IsArray() && std::ranges::any_of(value.GetArray(), is_structure)) {
            for (rapidjson::SizeType index = 0; index < value.Size(); ++index)
                flatten(value[index], name_in(name, std::to_string(index)), row);
        } else if (value.IsArray()) {
            std::string texts;
            for (const Value &each : value.GetArray())
                texts += (texts.empty() ? "" : " ") + text_of(each);
            add(name, texts, row);
        } else {
            add(name, text_of(value), row);
        }
    }

    // Adds the rows of an object whose member `inner` is a list, or null.
    void flatten_inner(const Value &object, const std::string &inner, std::vector<Row> &rows)
    {
        Row outer;
        for (const auto &member : object.GetObject())
            if (text_of(member.name) != inner) flatten(member.value, text_of(member.name), outer);
        const auto list = object.FindMember(inner.c_str());
        if (list == object.MemberEnd() || !list->value.IsArray()) return;
        for (const Value &each : list->value.GetArray()) {
            Row &row = rows.emplace_back();
            for (const auto &[name, value] : outer) {
                count(name.size());
                add(name, value, row);
            }
            flatten(each, inner, row);
        }
    }

private:
    void count(size_t length)
    {
        if (length > left) throw TooLarge("the result is too large to be written as CSV; -o json has it");
        left -= length;
    }

    void add(const std::string &name, const std::string &value, Row &row)
    {
        count(value.size());
        row.emplace_back(name, value);
    }

    size_t left = most_bytes;
};

// Returns the only member of these objects that is a list of objects, or nothing when there is none, or several.
std::optional<std::string> inner_list(const Value &list)
{
    std::optional<std::string> name;
    for (const Value &each : list.GetArray()) {
        if (!each.IsObject()) continue;
        for (const auto &member : each.GetObject()) {
            if (!is_list_of_objects(member.value)) continue;
            if (name && *name != text_of(member.name)) return std::nullopt;
            name = text_of(member.name);
        }
    }
    return name;
}

std::vector<Row> rows_of(const Value &document)
{
    std::vector<Row> rows;
    Flattening flattening;
    if (document.IsArray()) {
        const std::optional<std::string> inner = inner_list(document);
        for (const Value &each : document.GetArray()) {
            if (inner && each.IsObject())
                flattening.flatten_inner(each, *inner, rows);
            else
                flattening.flatten(each, each.IsObject() ? "" : "value", rows.emplace_back());
        }
        return rows;
    }
    Row values;
    flattening.flatten(document, "", values);
    if (!document.IsObject()) return {{{"value", values.front().second}}};
    for (auto &[name, value] : values)
        rows.push_back({{"name", std::move(name)}, {"value", std::move(value)}});
    return rows;
}

// Returns whether a spreadsheet would take a text for a formula.
bool is_formula(std::string_view text)
{
    if (text.find_first_of("=+-@") != 0) return false;
    double number = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error != std::errc{} || stop != text.data() + text.size() || !std::isfinite(number);
}

std::string cell(const std::string &value)
{
    const std::string text = (is_formula(value) ? "'" : "") + text::printable(value);
    if (text.find_first_of("\",") == text.npos) return text;
    std::string whole = "\"";
    for (const char c : text)
        whole.append(c == '"' ? 2 : 1, c);
    return whole + '"';
}

std::string line_of(const std::vector<std::string> &cells)
{
    std::string line;
    for (const std::string &text : cells)
        line += (&text == &cells.front() ? "" : ",") + cell(text);
    return line + "\n";
}

} // namespace

void print_csv(const Output &output, std::string_view document, std::string &heading,
               const std::vector<std::string> &columns_of_none)
{
    rapidjson::Document parsed;
    parsed.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag>(document.data(),
                                                                                         document.size());
    const std::vector<Row> rows = rows_of(parsed);
    std::vector<std::string> names;
    std::unordered_map<std::string_view, size_t> columns;
    for (const Row &row : rows)
        for (const auto &named : row)
            if (columns.emplace(named.first, names.size()).second) names.push_back(named.first);
    if (rows.empty()) names = columns_of_none;
    if (names.empty()) return;
    if (rows.size() > most_cells / names.size())
        throw TooLarge("the result has " + std::to_string(rows.size()) + " rows of " + std::to_string(names.size()) +
                       " columns, too many to be written as CSV; -o json has it");
    std::string text;
    if (const std::string line = line_of(names); output.headings && line != heading) text = heading = line;
    for (const Row &row : rows) {
        std::vector<std::string> cells(names.size());
        for (const auto &[name, value] : row)
            cells[columns.at(name)] = value;
        text += line_of(cells);
    }
    std::fwrite(text.data(), 1, text.size(), output.stream);
}

} // namespace ponctl
