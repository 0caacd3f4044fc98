// The rows of a view, read from result databases into the structures that the catalogue gives them. A row is taken as
// it is or not at all: every column must be there with a value of its type, which is null only where the catalogue
// allows it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "board/datastore.h"
#include "generated/view_rows.h"

namespace front
{

// A Fault says in a line why a table of the OLT could not be read.
struct Fault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The texts of rows belong to the databases that they came in.
using Database = std::shared_ptr<const db_handle>;

template <class Row>
struct Rows {
    std::vector<Database> databases;
    std::vector<Row> rows;
};

// A Cell is where one value of a row is read from. Each function throws a Fault when there is no such value.
class Cell
{
public:
    Cell(const db_handle *from, uint32_t number, const char *name) : database(from), row(number), column(name) {}

    void read(uint32_t &value) const;
    void read(uint64_t &value) const;
    void read(double &value) const;
    void read(bool &value) const;
    void read(std::string_view &value) const;
    void read(view::Mac &value) const;
    template <class Value>
    void read(std::optional<Value> &value) const
    {
        if (is_null())
            value.reset();
        else
            read(value.emplace());
    }

private:
    bool is_null() const;
    uint64_t number(uint64_t most) const;
    [[noreturn]] void refuse(const char *wanted) const;

    const db_handle *database;
    uint32_t row;
    const char *column;
};

// Adds the rows of a result database. Throws a Fault and adds nothing when one of them is not as the catalogue says.
template <class Row>
void add_rows(Rows<Row> &table, Database database)
{
    const uint32_t count = db_rows(database.get());
    std::vector<Row> rows(count);
    for (uint32_t number = 0; number < count; ++number)
        rows[number].fill([&](const char *column, auto &value) { Cell(database.get(), number, column).read(value); });
    table.rows.insert(table.rows.end(), rows.begin(), rows.end());
    table.databases.push_back(std::move(database));
}

} // namespace front
