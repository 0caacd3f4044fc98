// This file makes a listing of the rows of a result database, as the command line wants them.
#pragma once

#include "call/json.h"
#include "catalogue.h"
#include "output/database.h"
#include "output/exit_code.h"
#include "output/output.h"

namespace ponctl
{

// Returns the rows and columns of a result database that the command line wants, in its order. The view says of which
// types the columns are; it may be null. Throws a UsageError when what is wanted names no column of the listing.
Database listed_rows(const Output &output, db_handle *database, const catalogue::View *view);

// Prints the rows that the command line wants.
void print_listing(const Output &output, db_handle *database, const catalogue::View *view, TableStyle style = {});

} // namespace ponctl
