// Writes a view's result, row by row, and holds it to the columns that the catalogue promises.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "catalogue.h"
#include "model/base/mac.h"

namespace ponsim
{

class Table
{
public:
    explicit Table(const catalogue::View &view);
    // Of the view that a command asks for.
    Table(uint32_t channel, uint32_t command);

    // The next cell of the row; the row ends with its last column. Throws std::logic_error when name or type are not
    // those of the column.
    void cell(std::string_view name, uint32_t value);
    void cell(std::string_view name, uint64_t value); // of a count, which is far below 2^53
    void cell(std::string_view name, double value);
    void cell(std::string_view name, bool value);
    void cell(std::string_view name, std::string_view value);
    void cell(std::string_view name, const Mac &value);
    void cell(std::string_view name, std::nullopt_t); // of any type
    template <class Value>
    void cell(std::string_view name, const std::optional<Value> &value)
    {
        value ? cell(name, *value) : cell(name, std::nullopt);
    }

    // The JSON text. Throws std::logic_error within a row.
    std::string_view text();

private:
    void next(std::string_view name, std::optional<catalogue::ColumnType> type);
    void end_cell();

    const catalogue::View &view;
    size_t column = 0;
    bool ended = false;
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer;
};

} // namespace ponsim
