// Results on standard output: tables for people, JSON and CSV for programs, bytes for whoever must see them.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include <rapidjson/filewritestream.h>
#include <rapidjson/prettywriter.h>

#include "board/datastore.h"
#include "decode.h"
#include "exchange.h"

namespace ponctl
{

enum class Format {
    table,
    json,
    hex,
    csv // made of the JSON; commands never see it
};

struct Output {
    std::FILE *stream;
    Format format = Format::table;
    bool headings = true;
    bool terminal = false; // tables are fitted to it
    bool colours = false;
};

// What a terminal takes for the start of bold text.
inline constexpr const char *bold = "\033[1m";
// The same for the colour of a word, wherever it stands in a table; null: it has none.
const char *colour_of(std::string_view word);

// A table, fitted to the terminal; on anything else every cell stands whole on its line. Where a terminal is too narrow
// for all columns, some are left out, empty ones first and then from the last on, and standard error says which.
class Table
{
public:
    // What becomes of a column on a terminal that is too narrow.
    enum class Fit {
        whole, // stays as it is
        right, // stays as it is, aligned to the right: numbers
        cut,
        wrap // goes on in further lines
    };
    struct Heading {
        std::string title;
        Fit fit = Fit::whole;
    };

    explicit Table(std::vector<Heading> titles) : headings(std::move(titles)) {}
    void add(std::vector<std::string> row) { rows.push_back(std::move(row)); }
    void print(const Output &output) const;

private:
    static int flags_of(Fit fit);
    // How wide a column is, and how wide at least where it is narrowed.
    size_t width_of(size_t column) const;
    size_t least_width_of(size_t column) const;
    bool is_empty(size_t column) const;
    // The columns for a terminal of this width.
    std::vector<size_t> columns_in(size_t terminal_width) const;

    std::vector<Heading> headings;
    std::vector<std::vector<std::string>> rows;
};

// A writer to which a document can be passed on: a number as it was written, whatever its size and precision.
template <class Base>
struct Passing : Base {
    using Base::Base;
    bool RawNumber(const char *text, rapidjson::SizeType length, bool)
    {
        return Base::RawValue(text, length, rapidjson::kNumberType);
    }
};

// A JSON document on a stream, ended with a new line.
class Json
{
    using Writer = Passing<rapidjson::PrettyWriter<rapidjson::FileWriteStream>>;

public:
    explicit Json(std::FILE *stream);
    // How many there were.
    static size_t written();
    ~Json();
    Json(const Json &) = delete;
    Json &operator=(const Json &) = delete;

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
    char buffer[4096];
    rapidjson::FileWriteStream file;
    Writer writer;
};

// A text with everything that a terminal could take for a command written as \xNN.
std::string printable(std::string_view text);

// A text of any number of lines. What a terminal could take for a command is written as printable() does.
void print_text(const Output &output, std::string_view text);

// The contents of a file: a text where they are one throughout, else bytes. In JSON a text, or hexadecimal digits.
void print_content(const Output &output, std::span<const uint8_t> bytes);

// A UsageError where bytes are wanted of what the catalogue says.
void refuse_hex(const Output &output);

// Rows of what the catalogue says under their names, which JSON has in lower case.
void print_texts(const Output &output, const std::vector<std::string> &names,
                 const std::vector<std::vector<std::string>> &rows);

// The fields of a record that are not zero; of a block all.
void print_fields(const Output &output, const Reading &reading);

// Bytes with their offsets in decimal, as the catalogue counts them, and the name of each field beside its first line.
// A run of lines of zeros is one line with a star.
void print_bytes(const Output &output, std::span<const uint8_t> bytes, const Reading *reading = nullptr);

// Requests that were not sent: which call on which channel, the record, and its bytes.
void print_requests(const Output &output, std::span<const Exchange> requests);

// How a command ended that has no result: as a JSON object.
void print_ending(const Output &output, const Exchange &last, int exit_code);

// A JSON document in one line.
std::string compact(std::string_view document);

// The JSON text of a result database.
std::string_view document_of(const db_handle *database);

// How a result database is printed for people.
struct TableStyle {
    bool filled_only = false;                     // without the columns that hold nothing in any row
    std::string_view worded = {};                 // the column whose numbers are printed as words
    std::span<const std::string_view> words = {}; // of its numbers from 0 on
};

// A result database: rows by the view's columns, then by those that only the database has.
void print_database(const Output &output, db_handle *database, const catalogue::View *view,
                    const TableStyle &style = {});

// Result databases of several owners as one table, with a first column that names the owner.
struct Owned {
    std::string owner;
    db_handle *database;
};
void print_databases(const Output &output, const std::string &owner_title, std::span<const Owned> databases,
                     const catalogue::View *view);

// One row of a result database, a line a column.
void print_row(const Output &output, db_handle *database, uint32_t row, const catalogue::View *view);

} // namespace ponctl
