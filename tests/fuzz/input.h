// An Input is read from its beginning by a fuzz target.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

namespace fuzz
{

class Input
{
public:
    Input(const uint8_t *data, size_t size) : rest(data, size) {}

    bool empty() const { return rest.empty(); }
    // Returns a number. Bytes that are missing at the end are zeros.
    template <class Number>
    Number take()
    {
        Number number{};
        const std::span<const uint8_t> bytes = take_bytes(sizeof number);
        std::ranges::copy(bytes, reinterpret_cast<uint8_t *>(&number));
        return number;
    }
    // Returns so many bytes, or all that are left.
    std::span<const uint8_t> take_bytes(size_t count)
    {
        const std::span<const uint8_t> taken = rest.first(std::min(count, rest.size()));
        rest = rest.subspan(taken.size());
        return taken;
    }

private:
    std::span<const uint8_t> rest;
};

} // namespace fuzz
