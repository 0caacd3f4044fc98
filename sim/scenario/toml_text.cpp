#include "scenario/toml_text.h"

#include <toml++/toml.h>

namespace ponsim
{
namespace
{

TomlValue value_of(const toml::node &node)
{
    TomlValue value{node.source().begin.line, node.source().begin.column, {}};
    if (const auto *flag = node.as_boolean()) {
        value.value = flag->get();
    } else if (const auto *number = node.as_integer()) {
        value.value = number->get();
    } else if (const auto *decimal = node.as_floating_point()) {
        value.value = decimal->get();
    } else if (const auto *text = node.as_string()) {
        value.value = text->get();
    } else if (const auto *array = node.as_array()) {
        TomlArray elements;
        for (const toml::node &element : *array)
            elements.push_back(value_of(element));
        value.value = std::move(elements);
    } else if (const auto *table = node.as_table()) {
        TomlTable members;
        for (const auto &[key, member] : *table)
            members.emplace(std::string(key.str()), value_of(member));
        value.value = std::move(members);
    }
    return value;
}

} // namespace

TomlValue read_toml(std::string_view text)
{
    try {
        return value_of(toml::parse(text));
    } catch (const toml::parse_error &error) {
        throw TomlError(error.source().begin.line, std::string(error.description()));
    }
}

} // namespace ponsim
