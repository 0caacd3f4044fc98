// This file checks whether a result database is what the catalogue says of it.
#pragma once

#include <string>

#include "board/datastore.h"
#include "catalogue.h"

namespace call
{

// A result database has at most so many columns, whatever it is. The views of the catalogue have far fewer.
inline constexpr uint32_t most_columns = 256;

// Returns what is wrong with a result database, for people, or an empty text. A database must be a table whose document
// is not cut and not nested deeper than deepest_document. With a view, every row must have a value for each column, of
// the column's type, and no other columns: a value may be null only where the column is nullable. The view may be null.
std::string fault_of(const db_handle *database, const catalogue::View *view);

} // namespace call
