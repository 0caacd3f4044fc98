// A prepared statement of SQLite, kept for as long as its database.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "store/row.h"

struct sqlite3;
struct sqlite3_stmt;

namespace ponsim
{

// What the store could not do, and why.
class StoreError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

class Statement
{
public:
    Statement(sqlite3 *db, std::string_view sql);

    // Values of the parameters, from the first on; those bound must live until the statement has run.
    Statement &bind(int64_t value);
    Statement &bind(std::string_view text);
    Statement &bind(std::span<const uint8_t> bytes);

    Statement &bind_cell(const Cell &cell);

    // Runs a statement that gives no rows.
    void run();
    // The next row; false after the last, and the statement can be run again.
    bool row();

    // Columns of the row, counted from 0.
    int64_t number(int column) const;
    std::string text(int column) const;
    std::span<const uint8_t> bytes(int column) const;
    // The whole row, none of whose values is null.
    std::vector<Cell> cells() const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt *statement) const;
    };

    void check(int result);

    std::unique_ptr<sqlite3_stmt, Finalize> statement;
    int bound = 0;
};

} // namespace ponsim
