// Documents in JSON: what operations deliver, as values.
#pragma once

#include <memory>
#include <string>

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "board/datastore.h"
#include "call/codec/decode.h"

namespace call
{

// A writer to which a document can be passed on: a number as it was written, whatever its size and precision.
template <class Base>
struct Passing : Base {
    using Base::Base;
    bool RawNumber(const char *text, rapidjson::SizeType length, bool)
    {
        return Base::RawValue(text, length, rapidjson::kNumberType);
    }
};

// A JSON document in memory, laid out for people.
class JsonText
{
    using Writer = Passing<rapidjson::PrettyWriter<rapidjson::StringBuffer>>;

public:
    JsonText();
    JsonText(const JsonText &) = delete;
    JsonText &operator=(const JsonText &) = delete;

    // What was written so far.
    std::string_view written() const { return {buffer.GetString(), buffer.GetSize()}; }

    Writer *operator->() { return &writer; }

    void key(std::string_view name) { writer.Key(name.data(), static_cast<rapidjson::SizeType>(name.size())); }
    // A text that need not be UTF-8: if it is not, each of its bytes counts as one character.
    void text(std::string_view text);
    // key and text; the number or null.
    void member(std::string_view name, std::string_view value);
    void member(std::string_view name, uint32_t value);
    // A number that is a text already.
    void number(const std::string &digits);
    // "status" and "status_name", which is null where the word has no name.
    void status(uint32_t status);
    // An array of the ids of a set.
    void ids(const IdSet &set);
    // An object of the cells of a row.
    void row(db_handle *database, uint32_t row);
    // The contents of a file: a text where they are one throughout, else as hexadecimal digits.
    void content(std::span<const uint8_t> bytes);
    // A document that is JSON already; as a text if it is not.
    void document(std::string_view document);
    // That of a result database; null where there is no database.
    void document(const db_handle *database);
    // The same; an empty array where there is no database.
    void list(const db_handle *database);
    // The value of one field of a record.
    void field(const catalogue::Field &field, const Reading &reading);
    // An object of a record's fields, each as its type: numbers, texts, MAC addresses as texts, sets of ids as arrays
    // of numbers, bytes as hexadecimal digits without the zeros at their end.
    void record(const Reading &reading);

private:
    rapidjson::StringBuffer buffer;
    Writer writer;
};

// A JSON document in one line.
std::string compact(std::string_view document);

struct FreeDatabase {
    void operator()(db_handle *database) const { db_free(database); }
};
using Database = std::unique_ptr<db_handle, FreeDatabase>;

// The JSON text of a result database.
std::string_view document_of(const db_handle *database);

// Whether contents of a file are a text throughout: UTF-8 without control characters but tabs and line ends.
bool is_text(std::string_view content);

} // namespace call
