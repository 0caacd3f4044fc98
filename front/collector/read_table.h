// How each table of an OLT is read.
#pragma once

#include "collector/snapshot.h"

namespace front
{

// Thrown when an exchange failed, so that the OLT need not be asked for other tables now.
struct NoAnswer : Fault {
    NoAnswer() : Fault("the OLT does not answer") {}
};

// Reads a table into the snapshot, in as many exchanges as the OLT has ports at most, and that of stations in one for
// 100 of them. Throws a Fault when it cannot be read, or is not as the catalogue says; the snapshot is as before then.
void read_table(Table table, Snapshot &snapshot);

} // namespace front
