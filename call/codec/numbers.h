// Numbers of a record, of every width, sign and scale that a field can have.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "catalogue.h"

namespace call
{

bool is_number(catalogue::FieldType type);

// The number in a field's bytes, in its unit.
double number_of(const catalogue::Field &field, std::span<const uint8_t> bytes);
// The same as a text: a scaled one with as many decimals as its scale has.
std::string number_text(const catalogue::Field &field, std::span<const uint8_t> bytes);
// How many decimals these are.
int decimals_of(const catalogue::Field &field);

// The bytes of a number that a command line gives in the field's unit, in the first field.size bytes of the result. A
// UsageError that starts with `name` where the field cannot hold it.
uint64_t parse_number(std::string_view name, std::string_view text, const catalogue::Field &field);

} // namespace call
