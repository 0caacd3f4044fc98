#include "table.h"

#include <cstring>
#include <unordered_set>

#include <rapidjson/reader.h>

#include "text/json.h"
#include "text/number.h"

namespace board
{
namespace
{

// This bound keeps a hostile document from using up the stack. RapidJSON's way to read without recursion is a good deal
// slower.
constexpr uint32_t deepest = 100;

// A cell of the documents that services write takes this many bytes or more. The guess reserves enough cells, so that
// they are not moved.
constexpr size_t bytes_a_cell = 12;

} // namespace

// A Reader takes the document's events. RapidJSON makes the texts of names and strings inside the copy of the document,
// where they stand. Numbers and nested values are cut out there, too, when the byte behind them has been read.
class Table::Reader
{
public:
    using Ch = char;
    using SizeType = rapidjson::SizeType;

    Reader(Table &filled, std::string_view source) : table(filled), document(source), stream(filled.texts.get()) {}

    bool read()
    {
        rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, text::json::Memory> reader;
        constexpr unsigned flags = rapidjson::kParseInsituFlag | rapidjson::kParseNumbersAsStringsFlag;
        table.cells.reserve(document.size() / bytes_a_cell);
        if (!reader.Parse<flags>(stream, *this)) return false;
        table.row_starts.push_back(static_cast<uint32_t>(table.cells.size()));
        return true;
    }

    bool Null() { return literal(DB_NONE, "null"); }
    bool Bool(bool value) { return value ? literal(DB_BOOL, "true") : literal(DB_BOOL, "false"); }
    bool RawNumber(const char *text, SizeType length, bool) { return cut(DB_REAL, text, length); }
    bool String(const char *text, SizeType length, bool) { return cell(DB_TEXT, text, length); }
    bool StartObject()
    {
        terminate();
        if (depth == row_depth) table.row_starts.push_back(static_cast<uint32_t>(table.cells.size()));
        return open();
    }
    bool StartArray()
    {
        if (depth == row_depth && depth != 0) return false;
        if (depth == 0) row_depth = 1;
        return open();
    }
    bool Key(const char *text, SizeType length, bool)
    {
        terminate();
        if (depth == row_depth + 1) {
            name = text;
            name_length = length;
        }
        return true;
    }
    bool EndObject(SizeType) { return close(); }
    bool EndArray(SizeType) { return close(); }

    // The reader's flags exclude these events.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(int64_t) { return false; }
    bool Uint64(uint64_t) { return false; }
    bool Double(double) { return false; }

private:
    // A value inside a row is a cell. A value deeper than that is a part of a cell. Outside of a row only the array of
    // rows is allowed.
    bool cell(db_type kind, const char *text, size_t length)
    {
        if (depth == row_depth + 1)
            table.cells.push_back({name, text, name_length, static_cast<uint32_t>(length), kind});
        return depth > row_depth;
    }
    // Adds a cell whose text is not terminated yet, because the byte behind it is still to be read.
    bool cut(db_type kind, const char *text, size_t length)
    {
        terminate();
        unterminated = const_cast<char *>(text) + length;
        return cell(kind, text, length);
    }
    void terminate()
    {
        if (unterminated) *unterminated = '\0';
        unterminated = nullptr;
    }
    // The reader has just read the word.
    bool literal(db_type kind, std::string_view word) { return cut(kind, here() - word.size(), word.size()); }
    // The reader has just read the bracket.
    bool open()
    {
        if (depth == row_depth + 1) nested = here() - 1;
        return ++depth <= deepest;
    }
    bool close()
    {
        terminate();
        --depth;
        if (depth != row_depth + 1) return true;
        const size_t length = static_cast<size_t>(here() - nested);
        std::memcpy(nested, document.data() + (nested - table.texts.get()), length);
        return cut(DB_NESTED, nested, length);
    }
    char *here() { return table.texts.get() + stream.Tell(); }

    Table &table;
    std::string_view document;
    rapidjson::InsituStringStream stream;
    uint32_t depth = 0;
    uint32_t row_depth = 0; // the depth at which rows start: 1 in an array
    const char *name = nullptr;
    uint32_t name_length = 0;
    char *nested = nullptr;       // start of the nested value that is being read
    char *unterminated = nullptr; // end of a text, which gets its NUL there later
};

db_type Cell::type() const
{
    if (kind != DB_REAL) return kind;
    return text::to_number<int64_t>({text, text_length}) ? DB_INTEGER : DB_REAL;
}

Table::Table(std::string_view document) : texts(new char[document.size() + 1])
{
    std::memcpy(texts.get(), document.data(), document.size());
    texts[document.size()] = '\0';
    if (!Reader(*this, document).read()) {
        cells.clear();
        row_starts.assign(1, 0);
    }
    if (rows() == 0) return;
    std::unordered_set<std::string_view> seen;
    for (uint32_t at = 0; at < row_starts[1]; ++at) {
        const Cell &cell = cells[at];
        if (seen.insert({cell.name, cell.name_length}).second) column_names.push_back(cell.name);
    }
}

const Cell *Table::find(uint32_t row, std::string_view column) const
{
    if (row >= rows()) return nullptr;
    for (uint32_t at = row_starts[row + 1]; at > row_starts[row]; --at) {
        const Cell &cell = cells[at - 1];
        if (column == std::string_view(cell.name, cell.name_length)) return &cell;
    }
    return nullptr;
}

} // namespace board
