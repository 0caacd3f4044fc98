#include "selection/column.h"

#include <charconv>

#include "call/codec/errors.h"
#include "text/words.h"

namespace ponctl
{

size_t column_number(std::string_view option, std::string_view word, std::span<const ListColumn> columns)
{
    for (size_t index = 0; index < columns.size(); ++index)
        if (columns[index].name == word) return index;
    const std::string lower = text::lower_case(word);
    for (size_t index = 0; index < columns.size(); ++index)
        if (text::lower_case(columns[index].title) == lower || columns[index].name == lower) return index;
    std::vector<std::string_view> names;
    for (const ListColumn &column : columns)
        names.push_back(column.name);
    throw call::UsageError(std::string(option) + ": '" + std::string(word) + "' is not a column" +
                           text::suggestion(lower, names) + " (known are " + text::join(names) + ")");
}

bool has_numbers(const ListColumn &column)
{
    switch (column.type) {
    case catalogue::ColumnType::u32:
    case catalogue::ColumnType::u64:
    case catalogue::ColumnType::real:
        return true;
    case catalogue::ColumnType::text:
    case catalogue::ColumnType::mac:
    case catalogue::ColumnType::boolean:
        break;
    }
    return false;
}

double cell_number(const std::string &cell)
{
    double number = 0;
    std::from_chars(cell.data(), cell.data() + cell.size(), number);
    return number;
}

} // namespace ponctl
