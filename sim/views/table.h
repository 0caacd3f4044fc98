// A table holds the rows of a view as JSON. The type of the row, which comes from the catalogue, says which columns
// there are, which types they have, and which may be null.
#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "generated/view_rows.h"
#include "model/base/mac.h"
#include "text/json.h"

namespace ponsim
{

template <class Row>
class Table
{
public:
    Table() { put_raw("["); }

    // Writes the row at once, because its texts may belong to temporaries. So the row must be a temporary itself.
    void add(Row &&row)
    {
        if (buffer.GetSize() > 1) put_raw(",");
        row.each([this](std::string_view key, const auto &value) {
            put_raw(key);
            put(value);
        });
        put_raw("}");
    }

    // Ends the table and returns its text. No row can be added after this.
    std::string text()
    {
        put_raw("]");
        return {buffer.GetString(), buffer.GetSize()};
    }

private:
    void put_raw(std::string_view json) { std::memcpy(buffer.Push(json.size()), json.data(), json.size()); }
    // For the writer each value is a document of its own.
    text::json::Writer &value_writer()
    {
        writer.Reset(buffer);
        return writer;
    }
    void put(uint32_t value) { value_writer().Uint(value); }
    void put(uint64_t value) { value_writer().Uint64(value); } // a count, which is far below 2^53
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

    text::json::Buffer buffer;
    text::json::Writer writer;
};

} // namespace ponsim
