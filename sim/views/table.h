// The rows of a view as JSON. Which columns there are, of which types, and which may be null, the catalogue says by the
// type of the row.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "generated/view_rows.h"
#include "model/base/mac.h"

namespace ponsim
{

template <class Row>
class Table
{
public:
    Table() : writer(buffer) { writer.StartArray(); }

    // Writes the row at once: its texts may be those of temporaries, and it is to be one itself.
    void add(Row &&row)
    {
        writer.StartObject();
        row.each([this](std::string_view name, const auto &value) {
            writer.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()));
            put(value);
        });
        writer.EndObject();
    }

    // Of all rows; there come none behind it.
    std::string text()
    {
        writer.EndArray();
        return {buffer.GetString(), buffer.GetSize()};
    }

private:
    void put(uint32_t value) { writer.Uint(value); }
    void put(uint64_t value) { writer.Uint64(value); } // of a count, which is far below 2^53
    void put(double value) { writer.Double(value); }
    void put(bool value) { writer.Bool(value); }
    void put(std::string_view value) { writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size())); }
    void put(const Mac &value) { put(to_text(value)); }
    template <class Value>
    void put(const std::optional<Value> &value)
    {
        value ? put(*value) : static_cast<void>(writer.Null());
    }

    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer;
};

} // namespace ponsim
