#include "table.h"

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <new>
#include <unordered_set>

#include <rapidjson/reader.h>

namespace board
{
namespace
{

// RapidJSON takes memory for granted; its own allocator returns null where there is none.
struct Allocator {
    static const bool kNeedFree = true;

    void *Malloc(size_t size) { return size ? checked(std::malloc(size)) : nullptr; }
    void *Realloc(void *block, size_t, size_t size)
    {
        if (size) return checked(std::realloc(block, size));
        std::free(block);
        return nullptr;
    }
    static void Free(void *block) { std::free(block); }

private:
    static void *checked(void *block)
    {
        if (!block) throw std::bad_alloc();
        return block;
    }
};

db_type type_of_number(std::string_view text)
{
    int64_t value;
    const auto [rest, error] = std::from_chars(text.begin(), text.end(), value);
    return error == std::errc{} && rest == text.end() ? DB_INTEGER : DB_REAL;
}

} // namespace

// Takes the document's events. RapidJSON makes the texts of names and strings in the copy of the document, where they
// stand; numbers and nested values are cut out there when everything is read and their last byte's neighbour is free.
class Table::Reader
{
public:
    using Ch = char;
    using SizeType = rapidjson::SizeType;

    Reader(Table &filled, std::string_view source) : table(filled), document(source), stream(filled.texts.get()) {}

    bool read()
    {
        rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, Allocator> reader;
        constexpr unsigned flags =
            rapidjson::kParseInsituFlag | rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;
        if (!reader.Parse<flags>(stream, *this)) return false;
        table.row_starts.push_back(static_cast<uint32_t>(table.cells.size()));
        for (Cell &cell : table.cells) {
            char *const text = const_cast<char *>(cell.text);
            if (cell.type == DB_NESTED)
                std::memcpy(text, document.data() + (text - table.texts.get()), cell.text_length);
            text[cell.text_length] = '\0';
        }
        return true;
    }

    bool Null() { return literal(DB_NONE, "null"); }
    bool Bool(bool value) { return value ? literal(DB_BOOL, "true") : literal(DB_BOOL, "false"); }
    bool RawNumber(const char *text, SizeType length, bool)
    {
        return cell(type_of_number({text, length}), text, length);
    }
    bool String(const char *text, SizeType length, bool) { return cell(DB_TEXT, text, length); }
    bool StartObject()
    {
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
        if (depth == row_depth + 1) {
            name = text;
            name_length = length;
        }
        return true;
    }
    bool EndObject(SizeType) { return close(); }
    bool EndArray(SizeType) { return close(); }

    // Events that the reader's flags exclude.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(int64_t) { return false; }
    bool Uint64(uint64_t) { return false; }
    bool Double(double) { return false; }

private:
    // Inside a row is a cell, deeper a part of one. Outside of a row only the array of rows may stand.
    bool cell(db_type type, const char *text, size_t length)
    {
        if (depth == row_depth + 1)
            table.cells.push_back({name, text, name_length, static_cast<uint32_t>(length), type});
        return depth > row_depth;
    }
    // The word has been read, so that its text is made in its place.
    bool literal(db_type type, std::string_view word)
    {
        return cell(type, table.texts.get() + stream.Tell() - word.size(), word.size());
    }
    bool open()
    {
        if (depth == row_depth + 1) nested_start = stream.Tell();
        ++depth;
        return true;
    }
    bool close()
    {
        --depth;
        if (depth != row_depth + 1) return true;
        return cell(DB_NESTED, table.texts.get() + nested_start, stream.Tell() + 1 - nested_start);
    }

    Table &table;
    std::string_view document;
    rapidjson::InsituStringStream stream;
    uint32_t depth = 0;
    uint32_t row_depth = 0; // at which rows start: 1 in an array
    const char *name = nullptr;
    uint32_t name_length = 0;
    size_t nested_start = 0;
};

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
