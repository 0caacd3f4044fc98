#include "views/table.h"

#include <stdexcept>

namespace ponsim
{

using catalogue::ColumnType;

Table::Table(const catalogue::View &shown) : view(shown), writer(buffer)
{
    writer.StartArray();
}

Table::Table(uint32_t channel, uint32_t command)
    : Table(*catalogue::find_view(*catalogue::find_command(channel, command)))
{
}

void Table::next(std::string_view name, std::optional<ColumnType> type)
{
    const catalogue::Column &expected = view.columns[column];
    if (name != expected.name || (type && *type != expected.type))
        throw std::logic_error("view " + std::string(view.name) + ": " + std::string(name) + " where column " +
                               std::string(expected.name) + " is due, or of another type");
    if (column == 0) writer.StartObject();
    writer.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()));
}

void Table::end_cell()
{
    if (++column < view.columns.size()) return;
    column = 0;
    writer.EndObject();
}

void Table::cell(std::string_view name, uint32_t value)
{
    next(name, ColumnType::u32);
    writer.Uint(value);
    end_cell();
}

void Table::cell(std::string_view name, uint64_t value)
{
    next(name, ColumnType::u64);
    writer.Uint64(value);
    end_cell();
}

void Table::cell(std::string_view name, double value)
{
    next(name, ColumnType::real);
    writer.Double(value);
    end_cell();
}

void Table::cell(std::string_view name, bool value)
{
    next(name, ColumnType::boolean);
    writer.Bool(value);
    end_cell();
}

void Table::cell(std::string_view name, std::string_view value)
{
    next(name, ColumnType::text);
    writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    end_cell();
}

void Table::cell(std::string_view name, const Mac &value)
{
    next(name, ColumnType::mac);
    const std::string text = to_text(value);
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
    end_cell();
}

void Table::cell(std::string_view name, std::nullopt_t)
{
    next(name, std::nullopt);
    writer.Null();
    end_cell();
}

std::string_view Table::text()
{
    if (column != 0) throw std::logic_error("view " + std::string(view.name) + ": a row is not complete");
    if (!ended) writer.EndArray();
    ended = true;
    return {buffer.GetString(), buffer.GetSize()};
}

} // namespace ponsim
