#include "call/view_check.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <vector>

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include "call/json.h"
#include "text/hex.h"
#include "text/number.h"
#include "text/words.h"

namespace call
{
namespace
{

using catalogue::Column;
using catalogue::ColumnType;
using catalogue::View;

// A Scan reads a document and collects the columns of all its rows.
class Scan : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Scan>
{
public:
    std::set<std::string> columns;

    bool StartArray()
    {
        if (depth == 0) row_depth = 2;
        return ++depth <= deepest_document;
    }
    bool StartObject() { return ++depth <= deepest_document; }
    bool EndArray(rapidjson::SizeType) { return depth-- > 0; }
    bool EndObject(rapidjson::SizeType) { return depth-- > 0; }
    bool Key(const char *name, rapidjson::SizeType length, bool)
    {
        if (depth == row_depth && columns.size() <= most_columns) columns.emplace(name, length);
        return true;
    }

private:
    size_t depth = 0;
    size_t row_depth = 1; // the depth of the members of rows: 2 in an array
};

std::string_view cell_of(const db_handle *database, uint32_t row, const char *column)
{
    const char *text = db_get_text(database, row, column);
    return text ? text : "";
}

bool is_of_type(const db_handle *database, uint32_t row, const char *column, ColumnType wanted)
{
    const db_type type = db_get_type(database, row, column);
    const std::string_view cell = cell_of(database, row, column);
    switch (wanted) {
    case ColumnType::u32:
        return type == DB_INTEGER && text::to_number<uint32_t>(cell);
    case ColumnType::u64:
        return (type == DB_INTEGER || type == DB_REAL) && text::to_number<uint64_t>(cell);
    case ColumnType::real:
        return type == DB_INTEGER || type == DB_REAL;
    case ColumnType::boolean:
        return type == DB_BOOL;
    case ColumnType::mac:
        return type == DB_TEXT && text::to_mac(cell);
    case ColumnType::text:
        return type == DB_TEXT;
    }
    return false;
}

std::string_view name_of(ColumnType type)
{
    switch (type) {
    case ColumnType::u32:
        return "a number of 32 bits";
    case ColumnType::u64:
        return "a number of 64 bits";
    case ColumnType::real:
        return "a number";
    case ColumnType::boolean:
        return "true or false";
    case ColumnType::mac:
        return "a MAC address";
    case ColumnType::text:
        return "a text";
    }
    return {};
}

// Returns the columns that only one of the view and the database has.
std::string columns_fault(const std::set<std::string> &found, const View &view)
{
    std::vector<std::string_view> missing, unknown;
    for (const Column &column : view.columns)
        if (!found.contains(std::string(column.name))) missing.push_back(column.name);
    for (const std::string_view name : found)
        if (std::ranges::find(view.columns, name, &Column::name) == view.columns.end()) unknown.push_back(name);
    const auto columns = [](const std::vector<std::string_view> &names) {
        constexpr size_t most = 10;
        const std::span<const std::string_view> first(names.data(), std::min(names.size(), most));
        return (names.size() > 1 ? "columns " : "column ") + text::join(first) + (names.size() > most ? " ..." : "");
    };
    std::string fault;
    if (!missing.empty()) fault = "the result lacks the " + columns(missing);
    if (!unknown.empty())
        fault += (fault.empty() ? "the result has" : " and has") + (" beyond its view the " + columns(unknown));
    return fault;
}

std::string cells_fault(const db_handle *database, const View &view)
{
    for (uint32_t row = 0; row < db_rows(database); ++row)
        for (const Column &column : view.columns) {
            const char *const name = column.name.data();
            const bool is_null = db_get_type(database, row, name) == DB_NONE;
            if (is_null ? column.nullable : is_of_type(database, row, name, column.type)) continue;
            constexpr size_t longest = 40;
            std::string cell(cell_of(database, row, name));
            if (cell.size() > longest) cell = cell.substr(0, longest) + "...";
            return "the result is wrong in row " + std::to_string(row + 1) + ": " + name + " is " +
                   (is_null ? "missing" : "'" + cell + "'") + ", not " + std::string(name_of(column.type));
        }
    return {};
}

} // namespace

std::string fault_of(const db_handle *database, const View *view)
{
    const std::string_view document = document_of(database);
    rapidjson::MemoryStream in(document.data(), document.size());
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;
    Scan scan;
    if (rapidjson::Reader().Parse<flags>(in, scan).IsError())
        return "the result is not JSON, is cut, or is nested more than " + std::to_string(deepest_document) +
               " levels deep";
    if (db_rows(database) == 0) return compact(document) == "[]" ? "" : "the result is not a table";
    if (scan.columns.size() > most_columns)
        return "the result has more than the " + std::to_string(most_columns) + " columns that there can be";
    if (!view) return {};
    const std::string fault = columns_fault(scan.columns, *view);
    return fault.empty() ? cells_fault(database, *view) : fault;
}

} // namespace call
