// JSON of rows and of what is beside them. Texts come from OLTs and ONUs: what is no UTF-8 is written with escapes.
#pragma once

#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "collector/snapshot.h"
#include "text/hex.h"
#include "text/json.h"
#include "text/utf8.h"

namespace front
{

class Json
{
public:
    Json() : writer(buffer) {}
    Json(const Json &) = delete;
    Json &operator=(const Json &) = delete;

    text::json::Writer *operator->() { return &writer; }
    std::string text() const { return {buffer.GetString(), buffer.GetSize()}; }

    void key(std::string_view name) { writer.Key(name.data(), static_cast<rapidjson::SizeType>(name.size())); }
    // Writes a document that is JSON already.
    void raw(std::string_view document) { writer.RawValue(document.data(), document.size(), rapidjson::kObjectType); }

    template <class Value>
    void put(const Value &value)
    {
        if constexpr (std::is_same_v<Value, bool>)
            writer.Bool(value);
        else if constexpr (std::is_same_v<Value, view::Mac>)
            put_text(text::mac_text(value));
        else if constexpr (std::is_floating_point_v<Value>)
            std::isfinite(value) ? writer.Double(value) : writer.Null();
        else if constexpr (std::is_unsigned_v<Value>)
            writer.Uint64(value);
        else if constexpr (std::is_integral_v<Value>)
            writer.Int64(value);
        else
            put_text(value);
    }
    template <class Value>
    void put(const std::optional<Value> &value)
    {
        value ? put(*value) : null();
    }
    void null() { writer.Null(); }

    template <class Value>
    void member(std::string_view name, const Value &value)
    {
        key(name);
        put(value);
    }
    void null_member(std::string_view name)
    {
        key(name);
        null();
    }
    // Writes null for an empty text.
    void member_or_null(std::string_view name, std::string_view value)
    {
        value.empty() ? null_member(name) : member(name, value);
    }
    // Writes the columns of a row as members of the object that is being written.
    template <class Row>
    void columns(Row row)
    {
        row.fill([this](const char *name, const auto &value) { member(name, value); });
    }
    template <class Row>
    void row(const Row &row_of_view)
    {
        writer.StartObject();
        columns(row_of_view);
        writer.EndObject();
    }
    template <class Rows>
    void rows(std::string_view name, const Rows &all)
    {
        key(name);
        writer.StartArray();
        for (const auto &one : all)
            row(one);
        writer.EndArray();
    }

private:
    void put_text(std::string_view value)
    {
        if (!text::is_utf8(value)) return put_text(text::printable(value));
        writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    }

    text::json::Buffer buffer;
    text::json::Writer writer;
};

} // namespace front
