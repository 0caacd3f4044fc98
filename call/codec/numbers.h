// These functions read and write numbers of a record, of every width, sign and scale that a field can have.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "catalogue.h"

namespace call
{

bool is_number(catalogue::FieldType type);

// Returns the number in a field's bytes, in the field's unit.
double number_of(const catalogue::Field &field, std::span<const uint8_t> bytes);
// Returns the number as a text. A scaled number has as many decimals as its scale.
std::string number_text(const catalogue::Field &field, std::span<const uint8_t> bytes);
// Returns how many decimals such a number has.
int decimals_of(const catalogue::Field &field);

// Returns the bytes of a number that a command line gives in the field's unit, in the first field.size bytes of the
// result. Throws a UsageError that starts with `name` when the field cannot hold the number.
uint64_t parse_number(std::string_view name, std::string_view text, const catalogue::Field &field);

} // namespace call
