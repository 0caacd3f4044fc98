#include "results/listing.h"

#include <algorithm>
#include <numeric>

#include <rapidjson/document.h>

#include "call/invocation.h"
#include "output/consent.h"
#include "output/exit_code.h"
#include "output/json.h"
#include "selection/selection.h"

namespace ponctl
{
namespace
{

std::vector<ListColumn> columns_of(const db_handle *database, const catalogue::View *view)
{
    std::vector<ListColumn> columns;
    if (view)
        for (const catalogue::Column &column : view->columns)
            columns.push_back(
                {std::string(column.name), std::string(column.title), column.type, std::string(column.unit)});
    for (uint32_t index = 0; index < db_columns(database); ++index) {
        const std::string name = db_column_name(database, index);
        if (std::ranges::find(columns, name, &ListColumn::name) != columns.end()) continue;
        const db_type type = db_get_type(database, 0, name.c_str());
        const bool is_number = type == DB_INTEGER || type == DB_REAL;
        columns.push_back({name, name, is_number ? catalogue::ColumnType::real : catalogue::ColumnType::text, {}});
    }
    return columns;
}

std::vector<ListCell> cells_of(const db_handle *database, uint32_t row, const std::vector<ListColumn> &columns)
{
    std::vector<ListCell> cells;
    for (const ListColumn &column : columns) {
        const char *text = db_get_text(database, row, column.name.c_str());
        cells.push_back(text ? ListCell(text) : std::nullopt);
    }
    return cells;
}

// Returns for how many seconds the service has been there, by its own time.
double seconds_of_service()
{
    const Invocation olt("bsp_pon_get_basic_info", {}, consent());
    double seconds = 0;
    if (!olt.good() || db_get_real(olt.database(), 0, "uptime", &seconds))
        throw UsageError("--where: the service does not say its time, from which '-ago' counts");
    return seconds;
}

// Returns whether the rows are in the order of the view. Rows without a value in a column come last.
bool is_in_order(const db_handle *database, const catalogue::View &view)
{
    const auto key_of = [&](uint32_t row) {
        std::vector<int64_t> key;
        for (const catalogue::Column &column : view.columns.first(view.order)) {
            int64_t number = INT64_MAX;
            db_get_integer(database, row, std::string(column.name).c_str(), &number);
            key.push_back(number);
        }
        return key;
    };
    for (uint32_t row = 1; row < db_rows(database); ++row)
        if (key_of(row) < key_of(row - 1)) return false;
    return true;
}

// Returns what the command line wants of a listing, which has the order of the view unless another one is wanted.
Selection selection_of(const Output &output, const catalogue::View *view)
{
    Selection selection = output.selection ? *output.selection : Selection{};
    if (!view || !selection.sort.empty()) return selection;
    for (const catalogue::Column &column : view->columns.first(view->order))
        selection.sort.append(selection.sort.empty() ? "" : ",").append(column.name);
    return selection;
}

void keep_columns(const Output &output, const std::vector<ListColumn> &columns)
{
    if (!output.columns) return;
    std::vector<size_t> wanted(columns.size());
    std::iota(wanted.begin(), wanted.end(), size_t{0});
    if (output.selection) wanted = select(*output.selection, columns, {}, seconds_of_service).columns;
    output.columns->clear();
    for (const size_t index : wanted)
        output.columns->push_back(columns[index].name);
}

} // namespace

void keep_columns(const Output &output, const db_handle *database, const catalogue::View *view)
{
    keep_columns(output, columns_of(database, view));
}

Database listed_rows(const Output &output, db_handle *database, const catalogue::View *view)
{
    const std::vector<ListColumn> columns = columns_of(database, view);
    std::vector<std::vector<ListCell>> rows;
    for (uint32_t row = 0; row < db_rows(database); ++row)
        rows.push_back(cells_of(database, row, columns));
    const Selected selected = select(selection_of(output, view), columns, rows, seconds_of_service);
    JsonText json;
    json->StartArray();
    for (const size_t row : selected.rows) {
        json->StartObject();
        for (const size_t index : selected.columns) {
            const char *const name = columns[index].name.c_str();
            json.key(name);
            json.cell(database, static_cast<uint32_t>(row), name);
        }
        json->EndObject();
    }
    json->EndArray();
    return Database(db_from_string(compact(json.written()).c_str()));
}

void print_listing(const Output &output, db_handle *database, const catalogue::View *view, TableStyle style)
{
    Database wanted;
    keep_columns(output, database, view);
    if (output.selection || (view && !is_in_order(database, *view))) {
        wanted = listed_rows(output, database, view);
        database = wanted.get();
        style.chosen = output.selection && !output.selection->columns.empty();
    }
    if (output.format == Format::json)
        Json(output.stream).list(database);
    else
        print_database(output, database, view, style);
}

Listing::Listing(std::vector<Column> all) : columns(std::move(all)) {}

void Listing::add(std::vector<Cell> cells)
{
    rows.push_back(std::move(cells));
}

Selected Listing::selected(const Output &output) const
{
    std::vector<ListColumn> all;
    for (const Column &column : columns)
        all.push_back({column.name, column.heading.title, column.type, column.unit});
    keep_columns(output, all);
    std::vector<std::vector<ListCell>> values;
    for (const auto &row : rows) {
        auto &cells = values.emplace_back();
        for (const Cell &cell : row)
            cells.push_back(cell.value);
    }
    return select(output.selection ? *output.selection : Selection{}, all, values, seconds_of_service);
}

// A column that the whole row does not have is written as its value.
void Listing::write_chosen(JsonText &json, const std::vector<size_t> &wanted, size_t row, const JsonText &whole) const
{
    rapidjson::Document members;
    members.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag>(whole.written().c_str());
    json->StartObject();
    for (const size_t index : wanted) {
        const Column &column = columns[index];
        json.key(column.name);
        const auto member = members.FindMember(column.name.c_str());
        if (member != members.MemberEnd() && member->value.IsNull())
            json->Null();
        else if (member != members.MemberEnd() && member->value.IsString())
            column.type == catalogue::ColumnType::text ? json.text(member->value.GetString())
                                                       : json.number(member->value.GetString());
        else if (const ListCell &value = rows[row][index].value)
            json.text(*value);
        else
            json->Null();
    }
    json->EndObject();
}

void Listing::print(const Output &output, const std::function<void(JsonText &, size_t row)> &write_row) const
{
    const Selected wanted = selected(output);
    const bool is_chosen = output.selection && !output.selection->columns.empty();
    if (output.format == Format::json) {
        Json json(output.stream);
        json->StartArray();
        for (const size_t row : wanted.rows) {
            if (!is_chosen) {
                write_row(json, row);
                continue;
            }
            JsonText whole;
            write_row(whole, row);
            write_chosen(json, wanted.columns, row, whole);
        }
        json->EndArray();
        return;
    }
    std::vector<Table::Heading> headings;
    for (const size_t index : wanted.columns)
        headings.push_back(columns[index].heading);
    Table table(std::move(headings), is_chosen);
    for (const size_t row : wanted.rows) {
        std::vector<std::string> cells;
        for (const size_t index : wanted.columns) {
            const Cell &cell = rows[row][index];
            cells.push_back(cell.shown.empty() ? cell.value.value_or("-") : cell.shown);
        }
        table.add(std::move(cells));
    }
    table.print(output);
}

} // namespace ponctl
