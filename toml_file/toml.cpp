#include "toml_file/toml.h"

#include <algorithm>
#include <charconv>

#include <toml++/toml.h>

namespace toml_file
{
namespace
{

Value value_of(const toml::node &node, const std::shared_ptr<const std::string> &file)
{
    Value value{file, node.source().begin.line, node.source().begin.column, {}};
    if (const auto *flag = node.as_boolean()) {
        value.value = flag->get();
    } else if (const auto *number = node.as_integer()) {
        value.value = number->get();
    } else if (const auto *decimal = node.as_floating_point()) {
        value.value = decimal->get();
    } else if (const auto *text = node.as_string()) {
        value.value = text->get();
    } else if (const auto *array = node.as_array()) {
        Array elements;
        for (const toml::node &element : *array)
            elements.push_back(value_of(element, file));
        value.value = std::move(elements);
    } else if (const auto *table = node.as_table()) {
        Table members;
        for (const auto &[key, member] : *table)
            members.emplace(std::string(key.str()), value_of(member, file));
        value.value = std::move(members);
    }
    return value;
}

// Writes a text between double quotes.
std::string in_quotes(std::string_view text)
{
    constexpr char digits[] = "0123456789abcdef";
    std::string all = "\"";
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '"' || character == '\\')
            all += {'\\', character};
        else if (byte < ' ' || byte == 0x7f)
            all += {'\\', 'u', '0', '0', digits[byte >> 4], digits[byte & 15]};
        else
            all += character;
    }
    return all + '"';
}

std::string decimal_text(double number)
{
    char digits[32];
    std::string text(digits, std::to_chars(digits, std::end(digits), number).ptr);
    return text.find_first_not_of("-0123456789") == std::string::npos ? text + ".0" : text;
}

// Returns whether the value is written under a heading with double brackets for each table.
bool has_headings(const Value &value)
{
    const Array *array = value.array();
    return array && !array->empty() &&
           std::ranges::all_of(*array, [](const Value &each) { return each.table() != nullptr; });
}

// Writes a value behind a key, or in an array.
std::string inline_text(const Value &value)
{
    const auto joined = [](const auto &all, const char *open, const char *close, auto text_of) {
        std::string text;
        for (const auto &each : all)
            text += (text.empty() ? "" : ", ") + text_of(each);
        return open + text + close;
    };
    if (const Table *table = value.table())
        return joined(*table, "{", "}",
                      [](const auto &member) { return in_quotes(member.first) + " = " + inline_text(member.second); });
    if (const Array *array = value.array()) return joined(*array, "[", "]", inline_text);
    if (const auto *flag = std::get_if<bool>(&value.value)) return *flag ? "true" : "false";
    if (const auto *number = std::get_if<int64_t>(&value.value)) return std::to_string(*number);
    if (const auto *number = std::get_if<double>(&value.value)) return decimal_text(*number);
    if (const auto *text = std::get_if<std::string>(&value.value)) return in_quotes(*text);
    throw std::logic_error("a value that cannot be written");
}

// Writes the table whose heading, of which `name` is the first part, stands before it. Tables with headings of their
// own come behind the values.
void write_table(const Table &table, const std::string &name, std::string &text)
{
    for (const auto &[key, value] : table)
        if (!value.table() && !has_headings(value)) text += in_quotes(key) + " = " + inline_text(value) + '\n';
    for (const auto &[key, value] : table) {
        const std::string heading = name + in_quotes(key);
        if (const Table *member = value.table()) {
            text += '[' + heading + "]\n";
            write_table(*member, heading + '.', text);
        } else if (has_headings(value)) {
            for (const Value &each : *value.array()) {
                text += "[[" + heading + "]]\n";
                write_table(*each.table(), heading + '.', text);
            }
        }
    }
}

} // namespace

Value read_toml(std::string_view text, const std::string &file)
{
    try {
        return value_of(toml::parse(text), std::make_shared<const std::string>(file));
    } catch (const toml::parse_error &error) {
        throw SyntaxError(error.source().begin.line, std::string(error.description()));
    }
}

std::string write_toml(const Table &table)
{
    std::string text;
    write_table(table, "", text);
    return text;
}

} // namespace toml_file
