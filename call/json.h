// This file writes what operations deliver as values in JSON.
#pragma once

#include <memory>
#include <string>

#include <rapidjson/stringbuffer.h>

#include "board/datastore.h"
#include "call/codec/decode.h"
#include "call/codec/json_writer.h"

namespace call
{

// This many levels of arrays and objects are nested in each other at most, in what a service delivers.
inline constexpr size_t deepest_document = 16;

// Returns whether a text is JSON that is not nested deeper.
bool is_document(std::string_view text);

// A JsonText is a JSON document in memory.
class JsonText
{

public:
    explicit JsonText(JsonLayout layout = JsonLayout::lines);
    JsonText(const JsonText &) = delete;
    JsonText &operator=(const JsonText &) = delete;

    // Returns what was written so far. Its texts have escapes for all that a terminal must not see.
    std::string written() const;

    JsonWriter *operator->() { return &writer; }
    JsonWriter &operator*() { return writer; }

    void key(std::string_view name) { writer.Key(name.data(), static_cast<rapidjson::SizeType>(name.size())); }
    // Writes a text that need not be UTF-8. If it is not, each of its bytes counts as one character.
    void text(std::string_view text);
    // These write a key with a text, or with a number.
    void member(std::string_view name, std::string_view value);
    void member(std::string_view name, uint32_t value);
    // Writes a key with a text, or with null when the text is empty.
    void member_or_null(std::string_view name, std::string_view value);
    // These write a key with null, with a truth, and with an array of texts.
    void null(std::string_view name);
    void truth(std::string_view name, bool value);
    void texts(std::string_view name, std::span<const std::string> values);
    // Writes "ipc_result".
    void ipc_result(int32_t result);
    // Writes a number that is a text already.
    void number(const std::string &digits);
    // Writes "status" and "status_name". The name is null when the word has none.
    void status(uint32_t status);
    // Writes an array of the ids of a set.
    void ids(const IdSet &set);
    // Writes the value of a cell, or null when there is none.
    void cell(const db_handle *database, uint32_t row, const char *column);
    // Writes an object of the cells of a row.
    void row(db_handle *database, uint32_t row);
    // Writes the contents of a file: as a text if the whole file is text, otherwise as hexadecimal digits.
    void content(std::span<const uint8_t> bytes);
    // Writes a value that a JsonText has written in one line.
    void written_value(std::string_view value);
    // Writes a document that is JSON already. If it is not JSON, or nested deeper than deepest_document, it is written
    // as a text: the indentation of such a document could be thousands of times as long as the document.
    void document(std::string_view document);
    // Writes the document of a result database, or null when there is no database.
    void document(const db_handle *database);
    // As above, but writes an empty array when there is no database.
    void list(const db_handle *database);
    // Writes the value of one field of a record.
    void field(const catalogue::Field &field, const Reading &reading);
    // Writes a key with the value of a field. What its number means stands behind it, under the key with _name or
    // _names at its end. A power of light is written in dBm, under the key with _dbm at its end.
    void member(std::string_view name, const catalogue::Field &known, const Reading &reading);
    // Writes only what the number of a field means, if the catalogue says it.
    void names(std::string_view name, const catalogue::Field &known, const Reading &reading);
    // Writes an object of a record's fields. Each field is written as its type: a number, a text, an address as a
    // text, a set of ids as an array of numbers, bytes as hexadecimal digits without the zeros at their end.
    void record(const Reading &reading);

private:
    rapidjson::StringBuffer buffer;
    JsonWriter writer;
};

// Returns a JSON document in one line.
std::string compact(std::string_view document);

struct FreeDatabase {
    void operator()(db_handle *database) const { db_free(database); }
};
using Database = std::unique_ptr<db_handle, FreeDatabase>;

// Returns the JSON text of a result database.
std::string_view document_of(const db_handle *database);

// Returns whether the whole contents of a file are text: UTF-8 without control characters other than tabs and line
// ends.
bool is_text(std::string_view content);

} // namespace call
