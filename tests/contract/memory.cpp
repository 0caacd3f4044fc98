#include "memory.h"

#include <algorithm>
#include <utility>

namespace contract
{
namespace
{

constexpr size_t guard = 64;
constexpr uint8_t guard_byte = 0x5E;

} // namespace

Bytes pattern(size_t size)
{
    Bytes bytes(size);
    for (size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<uint8_t>(0x81 + 7 * i + i / 256);
    return bytes;
}

Memory::Memory(Bytes content, size_t offset, size_t guard_behind)
    : original(std::move(content)), start(offset), storage(offset + original.size() + guard_behind, guard_byte)
{
    std::copy(original.begin(), original.end(), storage.begin() + static_cast<ptrdiff_t>(start));
}

Memory Memory::to_read(Bytes content)
{
    return {std::move(content), guard + 1, 0};
}

Memory Memory::to_write(Bytes content, bool aligned)
{
    return {std::move(content), aligned ? guard : guard + 1, guard};
}

bool Memory::guards_stand() const
{
    const auto is_guard = [](uint8_t byte) { return byte == guard_byte; };
    const auto before_end = storage.begin() + static_cast<ptrdiff_t>(start);
    const auto behind = before_end + static_cast<ptrdiff_t>(original.size());
    return std::all_of(storage.begin(), before_end, is_guard) && std::all_of(behind, storage.end(), is_guard);
}

Bytes Memory::part(size_t from, size_t length) const
{
    const auto begin = storage.begin() + static_cast<ptrdiff_t>(from);
    return {begin, begin + static_cast<ptrdiff_t>(length)};
}

} // namespace contract
