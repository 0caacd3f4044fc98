// What the store and those that use it call rows and errors.
#pragma once

#include "storage/row.h"
#include "storage/statement.h"

namespace ponsim
{

using storage::Blob;
using storage::Cell;
using storage::Row;
using storage::Statement;
using StoreError = storage::Error;

} // namespace ponsim
