// Records makes the records of all families from rows: those of a state file, and those of a configuration. It is where
// rows are held to what the families say of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "model/change/change.h"
#include "store/stored.h"

namespace ponsim
{

// This error says which row cannot be, and why: it names the table, the key, the field and what the field must be.
class RowError : public StoreError
{
public:
    RowError(size_t of_row, const std::string &problem) : StoreError(problem), row(of_row) {}

    size_t row; // counted from 0 in the order in which rows were taken
};

class Records
{
public:
    // The rows are those of an OLT with so many PON ports.
    explicit Records(uint32_t ports);
    ~Records();

    // Takes the rows one by one, in any order. A row is looked at once, when it comes. Throws RowError.
    void take(const Row &row);
    // Returns the records of all rows, as the change of an OLT that was just set up. Throws RowError when the rows do
    // not belong together.
    Change finish();

private:
    struct Tables;

    std::unique_ptr<Tables> tables;
};

} // namespace ponsim
