#include "call/json.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include "call/codec/meaning.h"
#include "call/codec/numbers.h"
#include "text/character.h"
#include "text/utf8.h"

namespace call
{
namespace
{

using catalogue::Field;
using catalogue::FieldType;

// A DepthLimit stops the reading of a document that is nested too deeply.
struct DepthLimit : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, DepthLimit> {
    bool StartObject() { return ++depth <= deepest_document; }
    bool StartArray() { return ++depth <= deepest_document; }
    bool EndObject(rapidjson::SizeType) { return depth-- > 0; }
    bool EndArray(rapidjson::SizeType) { return depth-- > 0; }

    size_t depth = 0;
};

bool is_plain(char character)
{
    return JsonWriter::is_harmless(character) || character == '\n';
}

// Returns a JSON document with escapes for what a terminal must not see. All that is not ASCII stands in its texts.
std::string with_escapes(std::string_view document)
{
    std::string safe;
    safe.reserve(document.size());
    while (true) {
        // Most of it is plain, and taken as a whole.
        const auto plain = static_cast<size_t>(std::ranges::find_if_not(document, is_plain) - document.begin());
        safe.append(document, 0, plain);
        document.remove_prefix(plain);
        if (document.empty()) return safe;
        const text::Character character = text::first_character(document);
        if (character.shown || character.code == '\n') {
            safe.append(document, 0, character.length);
        } else {
            char escape[sizeof "\\u0000"];
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(character.code & 0xffff));
            safe.append(escape);
        }
        document.remove_prefix(character.length);
    }
}

void pass_on(std::string_view document, JsonWriter &writer)
{
    rapidjson::MemoryStream in(document.data(), document.size());
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;
    rapidjson::Reader().Parse<flags>(in, writer);
}

std::string_view text_of(std::span<const uint8_t> bytes)
{
    return {reinterpret_cast<const char *>(bytes.data()), bytes.size()};
}

void write_field(JsonText &json, const Field &field, std::span<const uint8_t> bytes)
{
    switch (field.type) {
    case FieldType::u8:
    case FieldType::u16:
    case FieldType::s16:
    case FieldType::u32:
    case FieldType::s32:
    case FieldType::u64:
        json.number(number_text(field, bytes));
        break;
    case FieldType::mac:
        json.text(text::mac_text(bytes.first<6>()));
        break;
    case FieldType::text:
        json.text(field_text(bytes));
        break;
    case FieldType::bytes:
        json.text(text::to_hex(without_trailing_zeros(bytes)));
        break;
    case FieldType::ipv4:
    case FieldType::oui:
    case FieldType::date:
        json.text(composed_text(field, bytes));
        break;
    case FieldType::list:
    case FieldType::ports:
        json->StartArray();
        for (const uint32_t number : numbers_in(field, bytes))
            json->Uint(number);
        json->EndArray();
        break;
    case FieldType::idset: {
        IdSet set;
        std::memcpy(set.data(), bytes.data(), sizeof set);
        json.ids(set);
        break;
    }
    }
}

} // namespace

JsonText::JsonText(JsonLayout layout) : writer(buffer, layout) {}

std::string JsonText::written() const
{
    const std::string_view document(buffer.GetString(), buffer.GetSize());
    return writer.is_harmless() ? std::string(document) : with_escapes(document);
}

void JsonText::text(std::string_view text)
{
    std::string utf8;
    if (!text::is_utf8(text)) {
        for (const char c : text) {
            const auto byte = static_cast<unsigned char>(c);
            if (byte >= 0x80) utf8.push_back(static_cast<char>(0xc0 | byte >> 6));
            utf8.push_back(static_cast<char>(byte >= 0x80 ? 0x80 | (byte & 0x3f) : byte));
        }
        text = utf8;
    }
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void JsonText::member(std::string_view name, std::string_view value)
{
    key(name);
    text(value);
}

void JsonText::member(std::string_view name, uint32_t value)
{
    key(name);
    writer.Uint(value);
}

void JsonText::member_or_null(std::string_view name, std::string_view value)
{
    value.empty() ? null(name) : member(name, value);
}

void JsonText::null(std::string_view name)
{
    key(name);
    writer.Null();
}

void JsonText::truth(std::string_view name, bool value)
{
    key(name);
    writer.Bool(value);
}

void JsonText::texts(std::string_view name, std::span<const std::string> values)
{
    key(name);
    writer.StartArray();
    for (const std::string &value : values)
        text(value);
    writer.EndArray();
}

void JsonText::ipc_result(int32_t result)
{
    key("ipc_result");
    writer.Int(result);
}

void JsonText::number(const std::string &digits)
{
    writer.RawNumber(digits.data(), static_cast<rapidjson::SizeType>(digits.size()), true);
}

void JsonText::status(uint32_t status)
{
    member("status", status);
    const catalogue::Status *known = catalogue::find_status(status);
    member_or_null("status_name", known ? known->name : std::string_view());
}

void JsonText::ids(const IdSet &set)
{
    writer.StartArray();
    for (uint32_t id = 0; id <= max_onu_id; ++id)
        if (holds(set, id)) writer.Uint(id);
    writer.EndArray();
}

void JsonText::cell(const db_handle *database, uint32_t row, const char *column)
{
    const char *value = db_get_text(database, row, column);
    if (!value)
        writer.Null();
    else if (db_get_type(database, row, column) == DB_TEXT)
        text(value);
    else
        document(value);
}

void JsonText::row(db_handle *database, uint32_t row)
{
    writer.StartObject();
    for (uint32_t column = 0; column < db_columns(database); ++column) {
        const char *name = db_column_name(database, column);
        key(name);
        cell(database, row, name);
    }
    writer.EndObject();
}

void JsonText::content(std::span<const uint8_t> bytes)
{
    if (is_text(text_of(bytes)))
        text(text_of(bytes));
    else
        text(text::to_hex(bytes));
}

void JsonText::written_value(std::string_view value)
{
    writer.Raw(value, rapidjson::kObjectType);
}

void JsonText::document(std::string_view document)
{
    if (!is_document(document)) return text(document);
    pass_on(document, writer);
}

void JsonText::document(const db_handle *database)
{
    if (database)
        document(document_of(database));
    else
        writer.Null();
}

void JsonText::list(const db_handle *database)
{
    document(database ? document_of(database) : "[]");
}

void JsonText::record(const Reading &reading)
{
    writer.StartObject();
    for (const Field *field : shown_fields(reading))
        member(field->name, *field, reading);
    writer.EndObject();
}

void JsonText::member(std::string_view name, const catalogue::Field &known, const Reading &reading)
{
    const auto bytes = field_bytes(known, reading.bytes);
    if (known.unit == "uW") {
        char dbm[32];
        std::snprintf(dbm, sizeof dbm, "%.2f", dbm_of(number_of(known, bytes)));
        key(std::string(name) + "_dbm");
        return number(dbm);
    }
    key(name);
    field(known, reading);
    names(name, known, reading);
}

void JsonText::names(std::string_view name, const catalogue::Field &known, const Reading &reading)
{
    const auto bytes = field_bytes(known, reading.bytes);
    if (const auto value = name_of(known, bytes)) member(std::string(name) + "_name", *value);
    if (!known.flags.empty()) texts(std::string(name) + "_names", flags_of(known, bytes));
}

void JsonText::field(const catalogue::Field &field, const Reading &reading)
{
    if (const auto notation = notation_of(reading, field)) {
        const auto bytes = field_bytes(field, reading.bytes);
        const bool is_address = *notation == catalogue::Notation::mac || *notation == catalogue::Notation::ipv4;
        return is_address ? text(decided_text(*notation, bytes)) : number(big_endian_digits(bytes));
    }
    write_field(*this, field, field_bytes(field, reading.bytes));
}

std::string_view document_of(const db_handle *database)
{
    uint32_t length = 0;
    const char *text = db_text(database, &length);
    return {text, length};
}

std::string compact(std::string_view document)
{
    JsonText line(JsonLayout::one_line);
    pass_on(document, *line);
    return line.written();
}

bool is_document(std::string_view text)
{
    rapidjson::MemoryStream in(text.data(), text.size());
    DepthLimit limit;
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;
    return !rapidjson::Reader().Parse<flags>(in, limit).IsError();
}

bool is_text(std::string_view content)
{
    return text::is_printable(content, "\t\n");
}

} // namespace call
