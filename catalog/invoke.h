// This file calls any operation of the library by its catalogue entry.
#pragma once

#include "catalogue.h"

namespace catalogue
{

// A Value is one argument: a number, or a pointer to what the operation reads or writes.
struct Value {
    uint32_t number = 0;
    void *pointer = nullptr;
};

// Calls the operation with one value for each argument, in the order of the entry. Returns its status word.
uint32_t invoke(const Operation &operation, std::span<const Value> values);

} // namespace catalogue
