// Calls any operation of the library by its catalogue entry.
#pragma once

#include "catalogue.h"

namespace catalogue
{

// One argument: a number, or a pointer to what the operation reads or writes.
struct Value {
    uint32_t number = 0;
    void *pointer = nullptr;
};

// Calls the operation with one value an argument, in the order of the entry; returns its status word.
uint32_t invoke(const Operation &operation, std::span<const Value> values);

} // namespace catalogue
