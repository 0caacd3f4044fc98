#include "fields.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace fuzz
{

void put_number(std::minstd_rand &chance, const catalogue::Field &field, std::span<uint8_t> bytes)
{
    constexpr uint64_t telling[] = {0,    1,     2,          3,          4,          5,         7,   8,
                                    16,   31,    32,         63,         127,        128,       255, 1000,
                                    4095, 65535, 0x7fffffff, 0x80000000, UINT32_MAX, UINT64_MAX};
    if (field.offset >= bytes.size()) return;
    const uint64_t number = telling[chance() % std::size(telling)];
    const size_t room = std::min<size_t>(field.size, bytes.size() - field.offset);
    std::memcpy(bytes.data() + field.offset, &number, std::min(room, sizeof number));
}

void put_numbers(std::minstd_rand &chance, std::span<const catalogue::Field> fields, std::span<uint8_t> bytes)
{
    for (const catalogue::Field &field : fields)
        if (chance() % 2) put_number(chance, field, bytes);
}

void put_one_number(std::minstd_rand &chance, std::span<const catalogue::Field> fields, std::span<uint8_t> bytes)
{
    if (!fields.empty()) put_number(chance, fields[chance() % fields.size()], bytes);
}

} // namespace fuzz
