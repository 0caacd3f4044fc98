#include "output/database.h"

#include <algorithm>
#include <array>
#include <utility>

#include "board/datastore.h"
#include "call/json.h"
#include "call/view_check.h"
#include "catalogue.h"
#include "output/bytes.h"
#include "output/exit_code.h"
#include "output/output.h"
#include "output/table.h"
#include "output/text.h"

namespace ponctl
{
namespace
{

std::string cell_text(db_handle *database, uint32_t row, const char *column)
{
    switch (db_get_type(database, row, column)) {
    case DB_NONE:
        return "-";
    case DB_BOOL: {
        int value = 0;
        db_get_bool(database, row, column, &value);
        return value ? "yes" : "no";
    }
    case DB_INTEGER:
    case DB_REAL:
    case DB_TEXT:
    case DB_NESTED:
        break;
    }
    const char *text = db_get_text(database, row, column);
    return text ? text : "-";
}

// Returns a number as its word, if it has one.
std::string cell_word(db_handle *database, uint32_t row, const std::string &column,
                      std::span<const std::string_view> words)
{
    int64_t number = 0;
    const bool known = db_get_integer(database, row, column.c_str(), &number) == 0 && number >= 0 &&
                       static_cast<uint64_t>(number) < words.size();
    return known ? std::string(words[static_cast<size_t>(number)]) : cell_text(database, row, column.c_str());
}

bool is_empty(std::span<const Owned> databases, const std::string &column)
{
    for (const Owned &owned : databases)
        for (uint32_t row = 0; row < db_rows(owned.database); ++row)
            if (db_get_type(owned.database, row, column.c_str()) != DB_NONE) return false;
    return true;
}

struct ViewColumn {
    std::string name;
    Table::Heading heading;
    bool hexadecimal = false;
};

std::string cell_text(db_handle *database, uint32_t row, const ViewColumn &column)
{
    int64_t number = 0;
    if (!column.hexadecimal || db_get_integer(database, row, column.name.c_str(), &number) != 0)
        return cell_text(database, row, column.name.c_str());
    char text[32];
    std::snprintf(text, sizeof text, "0x%04llx", static_cast<unsigned long long>(number));
    return text;
}

Table::Fit fit_of(catalogue::ColumnType type)
{
    switch (type) {
    case catalogue::ColumnType::u32:
    case catalogue::ColumnType::u64:
        return Table::Fit::right;
    case catalogue::ColumnType::real:
        return Table::Fit::decimal;
    case catalogue::ColumnType::mac:
    case catalogue::ColumnType::boolean:
        return Table::Fit::whole;
    case catalogue::ColumnType::text:
        return Table::Fit::wrap;
    }
    return Table::Fit::wrap;
}

ViewColumn shown_column(const catalogue::Column &column)
{
    std::string title(column.title);
    if (!column.unit.empty()) title.append(" (").append(column.unit).append(")");
    return {std::string(column.name), {title, fit_of(column.type), column.priority}, column.hexadecimal};
}

// Returns the columns that somebody chose.
std::vector<ViewColumn> chosen_columns_of(const db_handle *database, const catalogue::View *view)
{
    std::vector<ViewColumn> columns;
    for (uint32_t index = 0; index < db_columns(database); ++index) {
        const std::string name = db_column_name(database, index);
        const auto found = view ? std::ranges::find(view->columns, name, &catalogue::Column::name)
                                : std::span<const catalogue::Column>::iterator{};
        columns.push_back(view && found != view->columns.end() ? shown_column(*found)
                                                               : ViewColumn{name, {name, Table::Fit::wrap}});
    }
    return columns;
}

std::vector<ViewColumn> columns_of(std::span<const Owned> databases, const catalogue::View *view)
{
    std::vector<ViewColumn> columns;
    if (view)
        for (const catalogue::Column &column : view->columns)
            columns.push_back(shown_column(column));
    for (const Owned &owned : databases)
        for (uint32_t index = 0; index < db_columns(owned.database); ++index) {
            const std::string name = db_column_name(owned.database, index);
            if (std::ranges::find(columns, name, &ViewColumn::name) == columns.end())
                columns.push_back({name, {name, Table::Fit::wrap}});
        }
    return columns;
}

// Prints the rows of databases. If the owners have a title, they stand in a first column.
void print_rows(const Output &output, const std::string &owner_title, std::span<const Owned> databases,
                const catalogue::View *view, const TableStyle &style)
{
    const auto with_rows =
        std::ranges::find_if(databases, [](const Owned &owned) { return db_rows(owned.database) > 0; });
    std::vector<ViewColumn> columns = style.chosen && with_rows != databases.end()
                                          ? chosen_columns_of(with_rows->database, view)
                                          : columns_of(databases, view);
    if (style.filled_only)
        std::erase_if(columns, [databases](const ViewColumn &column) { return is_empty(databases, column.name); });
    std::vector<Table::Heading> headings;
    if (!owner_title.empty()) headings.push_back({owner_title});
    for (const ViewColumn &column : columns)
        headings.push_back({column.heading.title, column.name == style.worded ? Table::Fit::whole : column.heading.fit,
                            column.heading.priority});
    Table table(std::move(headings), style.chosen);
    for (const auto &[owner, database] : databases)
        for (uint32_t row = 0; row < db_rows(database); ++row) {
            std::vector<std::string> cells;
            if (!owner_title.empty()) cells.push_back(owner);
            for (const ViewColumn &column : columns)
                cells.push_back(column.name == style.worded ? cell_word(database, row, column.name, style.words)
                                                            : cell_text(database, row, column));
            table.add(std::move(cells));
        }
    table.print(output);
}

void print_document(const Output &output, std::string_view document)
{
    print_bytes(output, {reinterpret_cast<const uint8_t *>(document.data()), document.size()});
}

} // namespace

void print_database(const Output &output, db_handle *database, const catalogue::View *view, const TableStyle &style)
{
    const std::string_view document = document_of(database);
    if (output.format == Format::hex) return print_document(output, document);
    if ((db_rows(database) == 0 && document != "[]") || db_columns(database) > most_columns) {
        print_line(output, document);
        return;
    }
    print_rows(output, {}, std::array{Owned{{}, database}}, view, style);
}

void print_databases(const Output &output, const std::string &owner_title, std::span<const Owned> databases,
                     const catalogue::View *view, const TableStyle &style)
{
    print_rows(output, owner_title, databases, view, style);
}

void print_row(const Output &output, db_handle *database, uint32_t row, const catalogue::View *view)
{
    if (output.format == Format::hex) return print_document(output, document_of(database));
    Table table({{"FIELD"}, {"VALUE", Table::Fit::wrap}});
    for (const ViewColumn &column : columns_of(std::array{Owned{{}, database}}, view))
        table.add({column.heading.title, cell_text(database, row, column)});
    table.print(output);
}

} // namespace ponctl
