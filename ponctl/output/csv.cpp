#include "output/csv.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include <rapidjson/document.h>

#include "output/output.h"

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

void flatten(const Value &value, const std::string &name, Row &row)
{
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
        row.emplace_back(name, texts);
    } else {
        row.emplace_back(name, text_of(value));
    }
}

// Returns the only member of these objects that is a list of objects, or nothing when there is none, or several.
std::optional<std::string> inner_list(const Value &list)
{
    std::vector<std::string> names;
    for (const Value &each : list.GetArray())
        if (each.IsObject())
            for (const auto &member : each.GetObject())
                if (is_list_of_objects(member.value) && std::ranges::find(names, text_of(member.name)) == names.end())
                    names.push_back(text_of(member.name));
    return names.size() == 1 ? std::optional(names.front()) : std::nullopt;
}

// Adds the rows of an object whose member `inner` is a list, or null.
void add_inner(const Value &object, const std::string &inner, std::vector<Row> &rows)
{
    Row outer;
    for (const auto &member : object.GetObject())
        if (text_of(member.name) != inner) flatten(member.value, text_of(member.name), outer);
    const auto list = object.FindMember(inner.c_str());
    if (list == object.MemberEnd() || !list->value.IsArray()) return;
    for (const Value &each : list->value.GetArray()) {
        rows.push_back(outer);
        flatten(each, inner, rows.back());
    }
}

std::vector<Row> rows_of(const Value &document)
{
    std::vector<Row> rows;
    if (document.IsArray()) {
        const std::optional<std::string> inner = inner_list(document);
        for (const Value &each : document.GetArray()) {
            if (inner && each.IsObject())
                add_inner(each, *inner, rows);
            else
                flatten(each, each.IsObject() ? "" : "value", rows.emplace_back());
        }
        return rows;
    }
    Row values;
    flatten(document, "", values);
    if (!document.IsObject()) return {{{"value", values.front().second}}};
    for (auto &[name, value] : values)
        rows.push_back({{"name", std::move(name)}, {"value", std::move(value)}});
    return rows;
}

std::string cell(const std::string &text)
{
    const auto quoted = [](unsigned char byte) { return byte < ' ' || byte == 0x7f || byte == '"' || byte == ','; };
    if (std::ranges::none_of(text, quoted)) return text;
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

void print_csv(const Output &output, std::string_view document, std::string &heading)
{
    rapidjson::Document parsed;
    parsed.Parse<rapidjson::kParseNumbersAsStringsFlag>(document.data(), document.size());
    const std::vector<Row> rows = rows_of(parsed);
    std::vector<std::string> names;
    for (const Row &row : rows)
        for (const auto &named : row)
            if (std::ranges::find(names, named.first) == names.end()) names.push_back(named.first);
    if (names.empty()) return;
    std::string text;
    if (const std::string line = line_of(names); output.headings && line != heading) text = heading = line;
    for (const Row &row : rows) {
        std::vector<std::string> cells;
        for (const std::string &name : names) {
            const auto named = std::ranges::find(row, name, &Row::value_type::first);
            cells.push_back(named == row.end() ? "" : named->second);
        }
        text += line_of(cells);
    }
    std::fwrite(text.data(), 1, text.size(), output.stream);
}

} // namespace ponctl
