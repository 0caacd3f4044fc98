// This file has the memory that a test lends to an operation.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace contract
{

using Bytes = std::vector<uint8_t>;

// Returns bytes of which no two neighbours are equal.
Bytes pattern(size_t size);

class Memory
{
public:
    Memory() = default;
    // Returns memory that an operation reads. Not one byte more than `content` is readable. It starts at an odd
    // address.
    static Memory to_read(Bytes content);
    // Returns memory that an operation writes, or reads as words. It lies between guard bytes, at an odd address or
    // aligned for words.
    static Memory to_write(Bytes content, bool aligned);

    void *pointer() { return storage.data() + start; }
    Bytes bytes() const { return part(start, original.size()); }
    const Bytes &as_lent() const { return original; }
    bool unchanged() const { return bytes() == original; }
    bool guards_stand() const;

private:
    Memory(Bytes content, size_t offset, size_t guard_behind);
    Bytes part(size_t from, size_t length) const;

    Bytes original;
    size_t start = 0;
    Bytes storage;
};

} // namespace contract
