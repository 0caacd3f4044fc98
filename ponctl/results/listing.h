// This file makes a listing, as the command line wants it: of the rows of a result database, or of rows that a command
// makes itself.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "call/json.h"
#include "catalogue.h"
#include "output/database.h"
#include "output/exit_code.h"
#include "output/output.h"
#include "output/table.h"
#include "selection/selection.h"

namespace ponctl
{

// Returns the rows and columns of a result database that the command line wants, in its order. The view says of which
// types the columns are; it may be null. Throws a UsageError when what is wanted names no column of the listing.
Database listed_rows(const Output &output, db_handle *database, const catalogue::View *view);

// Keeps the names of the columns that the command line wants for CSV, which has its heading also without rows.
void keep_columns(const Output &output, const db_handle *database, const catalogue::View *view);

// Prints the rows that the command line wants, in the order of the view unless another one is wanted.
void print_listing(const Output &output, db_handle *database, const catalogue::View *view, TableStyle style = {});

// A Listing has rows that a command makes itself.
class Listing
{
public:
    struct Column {
        std::string name; // as in JSON
        Table::Heading heading;
        catalogue::ColumnType type = catalogue::ColumnType::text;
        std::string unit = {};
    };
    // The rows are chosen and put in order by their values.
    struct Cell {
        ListCell value;
        std::string shown = {}; // in a table; empty: the value
    };

    explicit Listing(std::vector<Column> all);

    void add(std::vector<Cell> cells);
    // Returns the rows and columns that the command line wants.
    Selected selected(const Output &output) const;
    // `write_row` writes all of a row in JSON, as an object.
    void print(const Output &output, const std::function<void(JsonText &, size_t row)> &write_row) const;

private:
    void write_chosen(JsonText &json, const std::vector<size_t> &wanted, size_t row, const JsonText &whole) const;

    std::vector<Column> columns;
    std::vector<std::vector<Cell>> rows;
};

} // namespace ponctl
