// How an OLT is asked for what a table is made of.
#pragma once

#include <cstdint>

#include "board/datastore.h"
#include "collector/read_table.h"

namespace front
{

// Thrown where less of a table may be asked for.
struct TooLarge : Fault {
    using Fault::Fault;
};

// Throws a Fault unless the status says that all is well.
void check(uint32_t status);

// Asks for a table, with an operation that hands out a database through the pointer, and adds its rows.
template <class Row, class Ask>
void ask(Rows<Row> &table, Ask operation)
{
    db_handle *handle = nullptr;
    const uint32_t status = operation(&handle);
    Database database(handle, db_free);
    check(status);
    if (!handle) throw Fault("the OLT leaves no table");
    add_rows(table, std::move(database));
}

// Returns the OLT, whose ports are asked one by one. Throws a Fault while it is not known.
const view::basic_info &olt_of(const Snapshot &snapshot);

} // namespace front
