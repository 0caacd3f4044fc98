// Mutators of targets whose inputs have records change these by whole fields. A record keeps its size.
#pragma once

#include <cstdint>
#include <random>
#include <span>

#include "catalogue.h"

namespace fuzz
{

// Gives a field a number at which programs often decide differently. Of a field that the bytes end in, what is there is
// written.
void put_number(std::minstd_rand &chance, const catalogue::Field &field, std::span<uint8_t> bytes);

// Gives such a number to half of the fields, or to one of them.
void put_numbers(std::minstd_rand &chance, std::span<const catalogue::Field> fields, std::span<uint8_t> bytes);
void put_one_number(std::minstd_rand &chance, std::span<const catalogue::Field> fields, std::span<uint8_t> bytes);

} // namespace fuzz
