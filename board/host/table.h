// A Table is a JSON document that is read as rows and columns.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "board/datastore.h"

namespace board
{

struct Cell {
    const char *name;
    const char *text; // NUL-terminated
    uint32_t name_length;
    uint32_t text_length;
    db_type kind; // DB_REAL stands for a number of either type

    db_type type() const;
};

class Table
{
public:
    // Reads a document that is an array of objects or one object. Any other text makes a table of no rows.
    explicit Table(std::string_view document);

    uint32_t rows() const { return static_cast<uint32_t>(row_starts.size() - 1); }
    const std::vector<const char *> &columns() const { return column_names; }
    // Returns null when there is no such cell. When a row has several cells of one name, the last one counts.
    const Cell *find(uint32_t row, std::string_view column) const;

private:
    class Reader;

    std::unique_ptr<char[]> texts; // a copy of the document, in which the texts of the cells are made
    std::vector<Cell> cells;
    std::vector<uint32_t> row_starts; // the first cell of each row, and the end
    std::vector<const char *> column_names;
};

} // namespace board
