// This file prints result databases as results.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "board/datastore.h"
#include "catalogue.h"
#include "output/output.h"

namespace ponctl
{

// A TableStyle says how a result database is printed for people.
struct TableStyle {
    bool filled_only = false;                     // leaves out the columns that hold nothing in any row
    std::string_view worded = {};                 // the column whose numbers are printed as words
    std::span<const std::string_view> words = {}; // the words of its numbers, from 0 on
    bool chosen = false;                          // shows the columns of the database alone, in their order
};

// Prints a result database: first the view's columns, then those that only the database has.
void print_database(const Output &output, db_handle *database, const catalogue::View *view,
                    const TableStyle &style = {});

// Result databases of several owners are printed as one table, with a first column that names the owner.
struct Owned {
    std::string owner;
    db_handle *database;
};
void print_databases(const Output &output, const std::string &owner_title, std::span<const Owned> databases,
                     const catalogue::View *view, const TableStyle &style = {});

// Prints one row of a result database, with a line for each column.
void print_row(const Output &output, db_handle *database, uint32_t row, const catalogue::View *view);

} // namespace ponctl
