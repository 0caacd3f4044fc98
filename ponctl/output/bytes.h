// This file prints records and bytes as results.
#pragma once

#include <cstdint>
#include <span>

#include "call/codec/decode.h"
#include "output/exit_code.h"
#include "output/output.h"

namespace ponctl
{

// Prints the fields of a record that are not zero, or all fields of a block.
void print_fields(const Output &output, const Reading &reading);

// Prints bytes with their offsets in decimal, as the catalogue counts them, and the name of each field beside its first
// line. A run of lines of zeros is printed as one line with a star.
void print_bytes(const Output &output, std::span<const uint8_t> bytes, const Reading *reading = nullptr);

} // namespace ponctl
