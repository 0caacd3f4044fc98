#include "results/listing.h"

#include <algorithm>

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

} // namespace

Database listed_rows(const Output &output, db_handle *database, const catalogue::View *view)
{
    const std::vector<ListColumn> columns = columns_of(database, view);
    std::vector<std::vector<ListCell>> rows;
    for (uint32_t row = 0; row < db_rows(database); ++row)
        rows.push_back(cells_of(database, row, columns));
    const Selected selected = select(*output.selection, columns, rows, seconds_of_service);
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
    if (output.selection) {
        wanted = listed_rows(output, database, view);
        database = wanted.get();
        style.chosen = !output.selection->columns.empty();
    }
    if (output.format == Format::json)
        Json(output.stream).list(database);
    else
        print_database(output, database, view, style);
}

} // namespace ponctl
