// The rows of a view as JSON. Which columns there are, of which types, and which may be null, the catalogue says by the
// type of the row.
#pragma once

#include <cstdint>
#include <cstring>
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
    Table() { put_raw("["); }

    // Writes the row at once: its texts may be those of temporaries, and it is to be one itself.
    void add(Row &&row)
    {
        if (buffer.GetSize() > 1) put_raw(",");
        row.each([this](std::string_view key, const auto &value) {
            put_raw(key);
            put(value);
        });
        put_raw("}");
    }

    // Of all rows; there come none behind it.
    std::string text()
    {
        put_raw("]");
        return {buffer.GetString(), buffer.GetSize()};
    }

private:
    void put_raw(std::string_view json) { std::memcpy(buffer.Push(json.size()), json.data(), json.size()); }
    // Each value is a document of its own for the writer.
    rapidjson::Writer<rapidjson::StringBuffer> &value_writer()
    {
        writer.Reset(buffer);
        return writer;
    }
    void put(uint32_t value) { value_writer().Uint(value); }
    void put(uint64_t value) { value_writer().Uint64(value); } // of a count, which is far below 2^53
    void put(double value) { value_writer().Double(value); }
    void put(bool value) { value_writer().Bool(value); }
    void put(std::string_view value)
    {
        value_writer().String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    }
    void put(const Mac &value) { put(text::mac_text(value)); }
    template <class Value>
    void put(const std::optional<Value> &value)
    {
        value ? put(*value) : put_raw("null");
    }

    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer;
};

} // namespace ponsim
