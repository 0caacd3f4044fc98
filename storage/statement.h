// A Statement is a prepared statement of SQLite. It is kept as long as its database.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "storage/row.h"

struct sqlite3;
struct sqlite3_stmt;

namespace storage
{

// This error says what could not be stored or read, and why.
class Error : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

class Statement
{
public:
    Statement(sqlite3 *db, std::string_view sql);

    // These set the values of the parameters, beginning with the first. What is bound must live until the statement has
    // run.
    Statement &bind(int64_t value);
    Statement &bind(std::string_view text);
    Statement &bind(std::span<const uint8_t> bytes);

    Statement &bind_real(double value);
    Statement &bind_null();
    Statement &bind_cell(const Cell &cell);

    // Runs a statement that returns no rows.
    void run();
    // Goes to the next row. Returns false after the last one. Then the statement can be run again.
    bool row();

    // These return columns of the row, counted from 0.
    bool is_null(int column) const;
    int64_t number(int column) const;
    double real(int column) const;
    std::string text(int column) const;
    std::span<const uint8_t> bytes(int column) const;
    // Returns the whole row. None of its values may be null.
    std::vector<Cell> cells() const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt *statement) const;
    };

    void check(int result);
    void check_memory(const void *value, int column) const;

    std::unique_ptr<sqlite3_stmt, Finalize> statement;
    int bound = 0;
};

} // namespace storage
