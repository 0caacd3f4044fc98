// These templates repeat fields: the tables describe a repeated field once, and it is expanded while the tables are
// compiled.
#pragma once

#include "catalogue.h"

#include <algorithm>
#include <array>

namespace catalogue
{

// A Repeated field occurs `times` times, each `every` bytes behind the one before, as name_1, name_2 and so on.
struct Repeated {
    Field field;
    uint32_t times;
    uint32_t every;
};

constexpr size_t digits(uint32_t number)
{
    return number < 10 ? 1 : 1 + digits(number / 10);
}

constexpr size_t name_length(const Repeated &row, uint32_t index)
{
    return row.times == 1 ? 0 : row.field.name.size() + 1 + digits(index + 1);
}

constexpr size_t count_of(std::span<const Repeated> rows)
{
    size_t count = 0;
    for (const Repeated &row : rows)
        count += row.times;
    return count;
}

constexpr size_t length_of_names(std::span<const Repeated> rows)
{
    size_t length = 0;
    for (const Repeated &row : rows)
        for (uint32_t index = 0; index < row.times; ++index)
            length += name_length(row, index);
    return length;
}

// This text holds the names of all repeated fields, one behind the other.
template <const auto &rows>
constexpr auto names = [] {
    std::array<char, length_of_names(rows)> text{};
    char *end = text.data();
    for (const Repeated &row : rows)
        for (uint32_t index = 0; row.times > 1 && index < row.times; ++index) {
            *std::ranges::copy(row.field.name, end).out = '_';
            end += name_length(row, index);
            char *digit = end;
            for (uint32_t number = index + 1; number != 0; number /= 10)
                *--digit = static_cast<char>('0' + number % 10);
        }
    return text;
}();

// This array holds all fields, in order of offset.
template <const auto &rows>
constexpr auto expanded = [] {
    std::array<Field, count_of(rows)> fields{};
    size_t count = 0;
    const char *name = names<rows>.data();
    for (const Repeated &row : rows)
        for (uint32_t index = 0; index < row.times; ++index) {
            Field &field = fields[count++] = row.field;
            if (row.times == 1) continue;
            field.name = {name, name_length(row, index)};
            name += field.name.size();
            field.offset += index * row.every;
            field.place = index + 1;
        }
    std::ranges::sort(fields, {}, &Field::offset);
    return fields;
}();

} // namespace catalogue
