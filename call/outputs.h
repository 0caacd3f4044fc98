// This file gives what an operation delivered as values.
#pragma once

#include <functional>

#include "call/invocation.h"
#include "call/json.h"

namespace call
{

// Visits the arguments through which the operation delivered something, by their indices.
void for_each_output(const Invocation &called, const std::function<void(size_t index)> &visit);

// Writes what the operation delivered through one argument: the rows of a database as an array of objects, a record as
// an object of its fields, a number, or a text.
void write_output(JsonText &json, const Invocation &called, size_t index);

// Writes an object of all that the operation delivered, or null when it was not answered.
void write_outputs(JsonText &json, const Invocation &called);

} // namespace call
